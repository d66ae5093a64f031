#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace mervane::calc {

/// A formula of the office with its sheets written as in formulas of workbook files: "$Data.B2+'My data'.C3" becomes
/// "Data!B2+'My data'!C3", and what lies in another document "[0]Data!B2". All else stays.
/// @param isSheet whether the document has a sheet of that name; other names may have full stops in them too
[[nodiscard]] std::string withMarkedSheets(std::string_view formula,
                                           const std::function<bool(std::string_view name)>& isSheet);

}  // namespace mervane::calc
