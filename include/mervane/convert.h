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
/// Every function either returns or raises: typeMismatch where the kind or the text does not convert (errors,
/// arrays, objects and left out arguments never do), overflow where the value does not fit, invalidUseOfNull for
/// Null. Rounding to integers is to nearest with ties to even, done by own arithmetic: the range is tested first,
/// then the value is rounded, then cast.
namespace mervane {

/// Round half to even; raises overflow for a result outside the type and for a not-a-number.
[[nodiscard]] std::int32_t roundToInt32(double value);
[[nodiscard]] std::int16_t roundToInt16(double value);

/// A text as a number under the locale. Empty result where the text is no number; overflow is raised for a
/// magnitude beyond the double range, and one below it gives 0.
///
/// Taken: blanks around; one sign before or behind the number, or parentheses for a negative one; the currency
/// symbol before or behind; decimal digits with group separators between them, the decimal separator, and an
/// exponent after E or D; "&H" with hexadecimal and "&O" or "&" with octal digits, which spell a 32-bit pattern,
/// so that "&HFFFFFFFF" is -1. Digits are ASCII, and the words for infinity and not-a-number are no numbers.
[[nodiscard]] std::optional<double> parseNumber(std::string_view text, const Locale& locale);

/// The shortest general form with up to 15 significant digits, as automation prints a double: "0.1", "1E+20",
/// "1E-05". A zero has no sign; what is not finite gives "1.#INF", "-1.#INF" or "-1.#IND".
[[nodiscard]] std::string formatNumber(double value, const Locale& locale);
/// The same with up to 7 significant digits, as automation prints a single.
[[nodiscard]] std::string formatSingle(float value, const Locale& locale);
/// The shortest decimal form that reads back as the same double; always with a full stop.
[[nodiscard]] std::string formatExact(double value);

/// Empty is 0, True is -1, a date is its serial number.
[[nodiscard]] double toDouble(const Variant& value, const Locale& locale);
/// Raises overflow for a value beyond the 32-bit float range, an infinite one too; a not-a-number stays one.
[[nodiscard]] float toSingle(const Variant& value, const Locale& locale);
[[nodiscard]] std::int32_t toInt32(const Variant& value, const Locale& locale);
[[nodiscard]] std::int16_t toInt16(const Variant& value, const Locale& locale);
/// A text must be a number or, in any case, the word for true or false of the locale or of English.
[[nodiscard]] bool toBoolean(const Variant& value, const Locale& locale);
/// A date comes out as formatDateAndTime gives it.
[[nodiscard]] std::string toText(const Variant& value, const Locale& locale);

/// Numbers, booleans, the empty value and texts that read as a number in the double range pass; dates, errors,
/// Null, arrays, objects and all other text do not. Never raises.
[[nodiscard]] bool isNumeric(const Variant& value, const Locale& locale);

/// The automation name of the kind: "Empty", "Null", "Boolean", "Integer", "Long", "Single", "Double", "Date",
/// "String", "Error", "Object", "Nothing" for an empty object reference; an array adds "()" to its element type.
[[nodiscard]] std::string typeName(const Variant& value);

/// The automation comparison of two values that both carry their type. Empty equals 0, False and the empty text. A
/// number, boolean or date sorts below any text, whatever the text says, so 5 and "5" differ. Two texts compare by
/// UTF-16 code units. Unordered with a not-a-number. Raises typeMismatch for errors, arrays and objects,
/// invalidUseOfNull for Null.
[[nodiscard]] std::partial_ordering compare(const Variant& left, const Variant& right, const Locale& locale);

/// The automation sum. Two texts are joined; a text beside a number is converted to a double. Empty counts as 0,
/// or as the empty text beside a text. Integers widen on overflow, to the longer integer and then to a double; two
/// singles widen to a double. A date plus anything numeric is a date. Null beside anything gives Null.
[[nodiscard]] Variant add(const Variant& left, const Variant& right, const Locale& locale);
/// The automation quotient, a double. Raises divisionByZero for a zero divisor, and overflow for 0 / 0 and for a
/// finite quotient beyond the double range. Null beside anything gives Null.
[[nodiscard]] Variant divide(const Variant& left, const Variant& right, const Locale& locale);

/// Calendar date and time of day in the locale's short date form, with the whole year, and its time form with
/// seconds. The time is rounded to the nearest second, and the date follows where that reaches midnight. Raises
/// overflow outside the years 100 to 9999.
[[nodiscard]] std::string formatDate(Date date, const Locale& locale);
[[nodiscard]] std::string formatTime(Date date, const Locale& locale);
/// Date and time parted by a blank: the date alone where the time is midnight, the time alone on day 0.
[[nodiscard]] std::string formatDateAndTime(Date date, const Locale& locale);

}  // namespace mervane
