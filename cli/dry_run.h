#pragma once

#include <vector>

#include "guard/harms.h"
#include "hosts/book/open_book.h"

namespace mervane::cli {

class OutputFile;

/// Lists what a run has changed in a workbook that is not going to be saved: the blocks of cells with what they held
/// before, the charts, the moved rows; and what such a run has to be allowed to harm. For people, or as one JSON
/// object.
void writeDryRun(hosts::OpenBook& book, const std::vector<guard::Harm>& harms, bool json, OutputFile& out);

}  // namespace mervane::cli
