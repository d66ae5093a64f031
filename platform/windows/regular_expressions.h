#pragma once

#include <memory>

#include "platform/regular_expressions.h"

namespace mervane::windows {

/// Regular expressions by the platform's own RegExp object, called late-bound.
class RegularExpressions final : public platform::RegularExpressions {
 public:
  [[nodiscard]] std::unique_ptr<platform::RegularExpression> create() override;
};

}  // namespace mervane::windows
