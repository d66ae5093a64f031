#include "hosts/workbook/cell_error.h"

#include <array>
#include <utility>

namespace mervane::workbook {

namespace {

constexpr std::array<std::pair<std::int32_t, std::string_view>, 15> errors{{
    {2000, "#NULL!"},
    {2007, "#DIV/0!"},
    {2015, "#VALUE!"},
    {2023, "#REF!"},
    {2029, "#NAME?"},
    {2036, "#NUM!"},
    {2042, "#N/A"},
    {2043, "#GETTING_DATA"},
    {2045, "#SPILL!"},
    {2046, "#CONNECT!"},
    {2047, "#BLOCKED!"},
    {2048, "#UNKNOWN!"},
    {2049, "#FIELD!"},
    {2050, "#CALC!"},
    {2051, "#BUSY!"},
}};

}  // namespace

std::optional<std::int32_t> errorCode(std::string_view text) noexcept {
  for (const auto& [code, name] : errors) {
    if (name == text) return code;
  }
  return std::nullopt;
}

std::string_view errorText(std::int32_t code) noexcept {
  for (const auto& [one, name] : errors) {
    if (one == code) return name;
  }
  return "#VALUE!";
}

}  // namespace mervane::workbook
