#pragma once

#include <com/sun/star/util/XNumberFormats.hpp>
#include <cstdint>
#include <map>
#include <string>

#include "hosts/calc/office_call.h"

namespace mervane::calc {

class Session;

/// The number formats of the document, by their codes in English.
class NumberFormats {
 public:
  enum class Kind : std::uint8_t { plain, date, truth };

  explicit NumberFormats(const Session& session) : session_(session) {}

  [[nodiscard]] Kind kindOf(sal_Int32 key);
  /// The key of a code, which is added to the document where it is new. Raises for a code that is none.
  [[nodiscard]] sal_Int32 keyOf(const std::string& code);
  [[nodiscard]] std::string codeOf(sal_Int32 key);
  /// The format that a truth value is shown in.
  [[nodiscard]] sal_Int32 truthKey();
  /// What the sheets count as a date's day 0, as a distance to the usual one.
  [[nodiscard]] double daysBehind();

 private:
  [[nodiscard]] uno::Reference<css::util::XNumberFormats> formats();

  const Session& session_;
  uno::Reference<css::util::XNumberFormats> formats_;
  std::map<sal_Int32, Kind> kinds_;
  std::map<std::string, sal_Int32> keys_;
  std::map<sal_Int32, std::string> codes_;
};

}  // namespace mervane::calc
