#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "mervane/locale.h"
#include "mervane/variant.h"

/// The automation conversions. This is the only place where a text turns into a number and the other way round.
///
/// Every function either returns or raises: typeMismatch where the kind or the text does not convert, overflow
/// where the value does not fit, invalidUseOfNull for Null. Rounding to integers is to nearest with ties to
/// even, done by own arithmetic: the range is tested first, then the value is rounded, then cast.
namespace mervane {

/// Round half to even; raises overflow for a result outside the type and for a not-a-number.
[[nodiscard]] std::int32_t roundToInt32(double value);
[[nodiscard]] std::int16_t roundToInt16(double value);

/// A text as a number under the locale: blanks around it, a sign, digits with group separators, the decimal
/// separator and an exponent, or &H and &O literals. Empty result where the text is no number. A magnitude
/// beyond the double range raises overflow.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text, const Locale& locale);

/// The shortest general form with up to 15 significant digits, as automation prints a double.
[[nodiscard]] std::string formatNumber(double value, const Locale& locale);
/// The shortest decimal form that reads back as the same double; always with a full stop.
[[nodiscard]] std::string formatExact(double value);

[[nodiscard]] double toDouble(const Variant& value, const Locale& locale);
/// Raises overflow for a finite value beyond the 32-bit float range.
[[nodiscard]] float toSingle(const Variant& value, const Locale& locale);
[[nodiscard]] std::int32_t toInt32(const Variant& value, const Locale& locale);
[[nodiscard]] std::int16_t toInt16(const Variant& value, const Locale& locale);
[[nodiscard]] bool toBoolean(const Variant& value, const Locale& locale);
[[nodiscard]] std::string toText(const Variant& value, const Locale& locale);

/// Numbers, booleans, the empty value and texts that read as a number pass; dates, errors, Null, arrays,
/// objects and all other text do not.
[[nodiscard]] bool isNumeric(const Variant& value, const Locale& locale);

/// The automation name of the kind: "Empty", "Null", "Boolean", "Integer", "Long", "Single", "Double", "Date",
/// "String", "Error", "Object"; an array adds "()" to its element type.
[[nodiscard]] std::string typeName(const Variant& value);

/// The automation comparison: empty equals 0 and the empty text, a number compared with a text that is one
/// sorts below it, two texts compare by code units. Unordered with a not-a-number. Raises typeMismatch for
/// errors, arrays and objects, invalidUseOfNull for Null.
[[nodiscard]] std::partial_ordering compare(const Variant& left, const Variant& right, const Locale& locale);

/// The automation sum and quotient of two values. Two texts are joined by the sum; a text beside a number is
/// converted; integers widen to a double on overflow; the quotient is a double and raises divisionByZero.
[[nodiscard]] Variant add(const Variant& left, const Variant& right, const Locale& locale);
[[nodiscard]] Variant divide(const Variant& left, const Variant& right, const Locale& locale);

/// Calendar date and time of day in the locale's short date form and its time form with seconds. A date
/// without a fraction gives the date alone through toText.
[[nodiscard]] std::string formatDate(Date date, const Locale& locale);
[[nodiscard]] std::string formatTime(Date date, const Locale& locale);

}  // namespace mervane
