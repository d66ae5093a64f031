#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace mervane::cli {

class Problem;

/// What the program says to people, on standard error; the data go to standard output. A stream that cannot be
/// written to is passed over.
class Talk {
 public:
  enum class Level { quiet, normal, verbose };

  explicit Talk(std::FILE* stream = stderr);
  void level(Level level) noexcept { level_ = level; }
  [[nodiscard]] Level level() const noexcept { return level_; }

  /// "mervane: error: ..." with the advice on a line of its own; said at every level.
  void error(const Problem& problem);
  /// "mervane: warning: ..."; not said when quiet.
  void warning(std::string_view text);
  /// "mervane: ..."; not said when quiet.
  void note(std::string_view text);
  /// The same, said when verbose only.
  void detail(std::string_view text);
  /// Text that was asked for, as it stands; said at every level.
  void text(std::string_view text);

  /// Whether `status` has somewhere to stand.
  [[nodiscard]] bool hasStatusLine() const noexcept { return isTerminal_; }
  /// Replaces the one line that stands at the cursor and is gone with whatever is said next. On a terminal only.
  void status(std::string_view line);
  void clearStatus();

 private:
  void say(std::string_view kind, std::string_view colour, std::string_view text);

  std::FILE* stream_;
  Level level_ = Level::normal;
  bool isTerminal_;
  bool hasColour_;
  bool hasStatus_ = false;
};

}  // namespace mervane::cli
