#pragma once

#include <memory>
#include <string>
#include <vector>

namespace mervane::platform {

/// One regular expression in ECMAScript syntax, as the platform's object offers it. Texts are UTF-8.
class RegularExpression {
 public:
  struct Match {
    std::string text;
    /// Group 1 first; a group that took no part is the empty text.
    std::vector<std::string> subMatches;
  };

  virtual ~RegularExpression() = default;
  virtual void Pattern(const std::string& pattern) = 0;
  virtual void IgnoreCase(bool on) = 0;  ///< off at creation
  virtual void Global(bool on) = 0;      ///< off at creation: only the first match counts
  /// Raises a Failure for a malformed pattern or where the machine gives up on the text.
  [[nodiscard]] virtual std::vector<Match> Execute(const std::string& text) = 0;
  /// `$1` to `$99`, `$&` and `$$` stand for groups, the match and a dollar sign.
  [[nodiscard]] virtual std::string Replace(const std::string& text, const std::string& replacement) = 0;
};

class RegularExpressions {
 public:
  virtual ~RegularExpressions() = default;
  [[nodiscard]] virtual std::unique_ptr<RegularExpression> create() = 0;
};

}  // namespace mervane::platform
