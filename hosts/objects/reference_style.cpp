#include "hosts/objects/reference_style.h"

#include <optional>
#include <string>

#include "spreadsheet/r1c1.h"

namespace mervane::hosts {

namespace {

constexpr std::int32_t errorValue = 2015;

bool isStyle(std::int32_t number) {
  return number == styleA1 || number == styleR1C1;
}

}  // namespace

std::int32_t referenceStyle(Arguments arguments) {
  const std::int32_t style = wholeArgument(arguments, 0);
  if (!isStyle(style)) raise(runtime::applicationDefined);
  return style;
}

Variant convertFormula(Arguments arguments, const std::function<sheet::CellAddress()>& activeCell,
                       const AreaOf& areaOf) {
  atMost(arguments, 5);
  if (isGiven(arguments, 3)) raise(runtime::applicationDefined);  // forced kinds of reference are not served
  const std::string formula = textArgument(arguments, 0);
  const std::int32_t from = wholeArgument(arguments, 1);
  const std::int32_t to = isGiven(arguments, 2) ? wholeArgument(arguments, 2) : from;
  if (!isStyle(from) || !isStyle(to)) raise(runtime::applicationDefined);
  sheet::CellAddress base = activeCell();
  if (isGiven(arguments, 4)) {
    const sheet::SheetArea relativeTo = areaArgument(arguments, 4, areaOf);
    base = {relativeTo.area.firstRow, relativeTo.area.firstColumn};
  }
  if (from == to) return Variant(formula);
  const std::optional<std::string> converted =
      from == styleR1C1 ? sheet::toA1(formula, base) : sheet::toR1C1(formula, base);
  return converted ? Variant(*converted) : Variant(ErrorValue{errorValue});
}

}  // namespace mervane::hosts
