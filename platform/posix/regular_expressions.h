#pragma once

#include <memory>

#include "platform/regular_expressions.h"

namespace mervane::posix {

/// Regular expressions by PCRE2, set to the meaning that ECMAScript gives a pattern. Matching keeps its state on
/// the heap and within limits, so that no text can overflow the stack; a text on which the limits are reached
/// raises a Failure.
class RegularExpressions final : public platform::RegularExpressions {
 public:
  [[nodiscard]] std::unique_ptr<platform::RegularExpression> create() override;
};

}  // namespace mervane::posix
