#pragma once

#include <map>
#include <string>
#include <vector>

namespace mervane::workbook::tests {

/// What stands in a part against the format: an element that its parent does not have, that comes before one it has to
/// follow, or that is there twice; rows and cells that do not ascend; counts and indexes of styles that do not fit.
/// Empty for a sound part and for one of a kind that is not known here.
///
/// Extension lists and alternate contents are not looked into.
[[nodiscard]] std::vector<std::string> faultsOfPart(const std::string& name, const std::string& xml);

/// The faults of all parts of a workbook file.
[[nodiscard]] std::vector<std::string> faultsOfBook(const std::map<std::string, std::string>& parts);

}  // namespace mervane::workbook::tests
