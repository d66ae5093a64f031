#include "hosts/calc/cell_error.h"

#include <array>

namespace mervane::calc {

namespace {

struct CellError {
  std::int32_t office;
  std::int32_t code;
  std::string_view formula;
};

constexpr std::array<CellError, 7> errors{{
    {521, 2000, "=#NULL!"},
    {532, 2007, "=#DIV/0!"},
    {519, 2015, "=#VALUE!"},
    {524, 2023, "=#REF!"},
    {525, 2029, "=#NAME?"},
    {503, 2036, "=#NUM!"},
    {32767, 2042, "=NA()"},
}};
constexpr std::size_t value = 2;

}  // namespace

std::int32_t errorCodeOf(std::int32_t officeError) noexcept {
  for (const CellError& one : errors) {
    if (one.office == officeError) return one.code;
  }
  // The office has many more errors, all of a formula that makes no value.
  return errors[value].code;
}

std::string_view errorFormula(std::int32_t code) noexcept {
  for (const CellError& one : errors) {
    if (one.code == code) return one.formula;
  }
  return errors[value].formula;
}

}  // namespace mervane::calc
