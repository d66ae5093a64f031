#include "hosts/objects/arguments.h"

#include "mervane/convert.h"
#include "mervane/locale.h"

namespace mervane::hosts {

std::int32_t wholeArgument(Arguments arguments, std::size_t position) {
  const Variant& value = given(arguments, position);
  if (const std::int32_t* exact = value.getIf<std::int32_t>()) return *exact;
  return toInt32(value, englishLocale());
}

bool truthArgument(Arguments arguments, std::size_t position) {
  return toBoolean(given(arguments, position), englishLocale());
}

std::string textArgument(Arguments arguments, std::size_t position) {
  return toText(given(arguments, position), englishLocale());
}

std::int32_t columnArgument(Arguments arguments, std::size_t position) {
  if (const std::string* letters = given(arguments, position).getIf<std::string>()) {
    if (const std::optional<sheet::CellAddress> cell = sheet::parseCell(*letters + "1")) return cell->column;
  }
  return wholeArgument(arguments, position);
}

sheet::SheetArea areaArgument(Arguments arguments, std::size_t position, const AreaOf& areaOf) {
  const std::optional<sheet::SheetArea> area = areaOf(given(arguments, position));
  if (!area) raise(runtime::typeMismatch);
  return *area;
}

}  // namespace mervane::hosts
