#include <algorithm>
#include <string_view>

#include "mervane/convert.h"

namespace mervane {

namespace {

/// Order by UTF-16 code units, told from UTF-8. It is the order of the bytes, but that characters beyond the basic
/// plane (lead bytes from 0xF0) are written with surrogates and so sort below U+E000 to U+FFFF (0xEE and 0xEF).
std::partial_ordering compareCodeUnits(std::string_view left, std::string_view right) {
  const auto [l, r] = std::ranges::mismatch(left, right);
  if (l == left.end() || r == right.end()) return left.size() <=> right.size();
  const auto a = static_cast<unsigned char>(*l);
  const auto b = static_cast<unsigned char>(*r);
  constexpr unsigned char aboveSurrogates = 0xEE;
  constexpr unsigned char beyondBasicPlane = 0xF0;
  if (a >= aboveSurrogates && b >= aboveSurrogates && (a >= beyondBasicPlane) != (b >= beyondBasicPlane))
    return b <=> a;
  return a <=> b;
}

std::string_view textOf(const Variant& value) {
  const auto* text = value.getIf<std::string>();
  return text != nullptr ? std::string_view(*text) : std::string_view();
}

}  // namespace

std::partial_ordering compare(const Variant& left, const Variant& right, const Locale& locale) {
  const bool leftIsTextual = left.isText() || left.isEmpty();
  const bool rightIsTextual = right.isText() || right.isEmpty();
  if (leftIsTextual && rightIsTextual) return compareCodeUnits(textOf(left), textOf(right));
  if (left.isText()) {
    (void)toDouble(right, locale);  // Refuses what cannot be compared.
    return std::partial_ordering::greater;
  }
  if (right.isText()) {
    (void)toDouble(left, locale);
    return std::partial_ordering::less;
  }
  const bool withNull = left.kind() == Variant::Kind::null || right.kind() == Variant::Kind::null;
  if (withNull) raise(runtime::invalidUseOfNull);
  return toDouble(left, locale) <=> toDouble(right, locale);
}

}  // namespace mervane
