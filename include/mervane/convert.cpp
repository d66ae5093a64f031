#include "mervane/convert.h"

#include <array>
#include <charconv>
#include <limits>

#include "mervane/failure.h"
#include "mervane/letter_case.h"

namespace mervane {

namespace {

template <class... Visitors>
struct Overloaded : Visitors... {
  using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

/// The kinds that convert to nothing. Each visit names them all through this one set of overloads.
template <class Result>
struct Refusing {
  Result operator()(Null) const { raise(runtime::invalidUseOfNull); }
  Result operator()(ErrorValue) const { raise(runtime::typeMismatch); }
  Result operator()(const std::shared_ptr<const AnyArray>&) const { raise(runtime::typeMismatch); }
  Result operator()(const std::shared_ptr<sheet::Object>&) const { raise(runtime::typeMismatch); }
  Result operator()(Missing) const { raise(runtime::typeMismatch); }
};

double numberIn(const std::string& text, const Locale& locale) {
  const std::optional<double> number = parseNumber(text, locale);
  if (!number) raise(runtime::typeMismatch);
  return *number;
}

float narrowed(double value) {
  constexpr auto highest = static_cast<double>(std::numeric_limits<float>::max());
  if (value > highest || value < -highest) raise(runtime::overflow);
  return static_cast<float>(value);
}

std::string integerText(std::int32_t value) {
  std::array<char, 16> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

bool booleanIn(const std::string& text, const Locale& locale) {
  const std::string word = lowered(text);
  if (word == "true" || word == lowered(locale.trueWord)) return true;
  if (word == "false" || word == lowered(locale.falseWord)) return false;
  return numberIn(text, locale) != 0.0;
}

}  // namespace

double toDouble(const Variant& value, const Locale& locale) {
  const Overloaded convert{
      Refusing<double>{},
      [](std::monostate) { return 0.0; },
      [](bool is) { return is ? -1.0 : 0.0; },
      [](std::int16_t number) { return static_cast<double>(number); },
      [](std::int32_t number) { return static_cast<double>(number); },
      [](float number) { return static_cast<double>(number); },
      [](double number) { return number; },
      [](Date date) { return date.serial; },
      [&](const std::string& text) { return numberIn(text, locale); },
  };
  return std::visit(convert, value.storage());
}

float toSingle(const Variant& value, const Locale& locale) {
  if (const auto* single = value.getIf<float>()) return *single;
  return narrowed(toDouble(value, locale));
}

std::int32_t toInt32(const Variant& value, const Locale& locale) {
  return roundToInt32(toDouble(value, locale));
}

std::int16_t toInt16(const Variant& value, const Locale& locale) {
  return roundToInt16(toDouble(value, locale));
}

bool toBoolean(const Variant& value, const Locale& locale) {
  if (const auto* text = value.getIf<std::string>()) return booleanIn(*text, locale);
  return toDouble(value, locale) != 0.0;
}

std::string toText(const Variant& value, const Locale& locale) {
  const Overloaded convert{
      Refusing<std::string>{},
      [](std::monostate) { return std::string(); },
      [&](bool is) { return is ? locale.trueWord : locale.falseWord; },
      [](std::int16_t number) { return integerText(number); },
      [](std::int32_t number) { return integerText(number); },
      [&](float number) { return formatSingle(number, locale); },
      [&](double number) { return formatNumber(number, locale); },
      [&](Date date) { return formatDateAndTime(date, locale); },
      [](const std::string& text) { return text; },
  };
  return std::visit(convert, value.storage());
}

bool isNumeric(const Variant& value, const Locale& locale) {
  switch (value.kind()) {
    case Variant::Kind::empty:
    case Variant::Kind::boolean:
    case Variant::Kind::int16:
    case Variant::Kind::int32:
    case Variant::Kind::single:
    case Variant::Kind::real:
      return true;
    case Variant::Kind::text:
      try {
        return parseNumber(*value.getIf<std::string>(), locale).has_value();
      } catch (const Failure&) {
        return false;  // Beyond the double range.
      }
    case Variant::Kind::null:
    case Variant::Kind::date:
    case Variant::Kind::error:
    case Variant::Kind::array:
    case Variant::Kind::object:
    case Variant::Kind::missing:
      break;
  }
  return false;
}

std::string typeName(const Variant& value) {
  const Overloaded elementName{
      [](const Array<double>&) { return "Double"; },     [](const Array<float>&) { return "Single"; },
      [](const Array<std::int32_t>&) { return "Long"; }, [](const Array<std::int16_t>&) { return "Integer"; },
      [](const Array<std::uint8_t>&) { return "Byte"; }, [](const Array<std::string>&) { return "String"; },
      [](const Array<Variant>&) { return "Variant"; },
  };
  const Overloaded name{
      [](std::monostate) { return std::string("Empty"); },
      [](Null) { return std::string("Null"); },
      [](bool) { return std::string("Boolean"); },
      [](std::int16_t) { return std::string("Integer"); },
      [](std::int32_t) { return std::string("Long"); },
      [](float) { return std::string("Single"); },
      [](double) { return std::string("Double"); },
      [](Date) { return std::string("Date"); },
      [](const std::string&) { return std::string("String"); },
      [](ErrorValue) { return std::string("Error"); },
      [](Missing) { return std::string("Error"); },
      [&](const std::shared_ptr<const AnyArray>&) {
        return std::string(std::visit(elementName, value.array().storage())) + "()";
      },
      [](const std::shared_ptr<sheet::Object>& object) { return std::string(object ? "Object" : "Nothing"); },
  };
  return std::visit(name, value.storage());
}

}  // namespace mervane
