#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mervane::workbook {

/// Raises applicationDefined, saying what the file is and what to do, unless its first bytes are those of a zip file.
void requireZip(std::string_view bytes, const std::string& fileName);

/// Raises applicationDefined for zip files that are documents of another kind, by the names of their parts.
/// @param mimetype content of the part of that name, empty where there is none.
void requireWorkbookParts(const std::vector<std::string>& names, std::string_view mimetype,
                          const std::string& fileName);

}  // namespace mervane::workbook
