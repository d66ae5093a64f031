#pragma once

#include "hosts/book/file_bytes.h"

/// Whole files, which all hosts of files share.
namespace mervane::workbook {

using hosts::readFile;
using hosts::replaceFile;
using hosts::SaveWatch;
using hosts::shown;

}  // namespace mervane::workbook
