#pragma once

#include "hosts/book/open_book.h"

namespace mervane::cli {

class OutputFile;

/// Lists what a run has changed in a workbook that is not going to be saved: the blocks of cells with what they held
/// before, the charts, the moved rows. For people, or as one JSON object.
void writeDryRun(hosts::OpenBook& book, bool json, OutputFile& out);

}  // namespace mervane::cli
