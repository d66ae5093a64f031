#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/option_window.h"

namespace mervane::tests {

/// Plays a user on one kind of option window. Everything but `makeWindow` and `atNextShowing` is called by the script
/// of a showing, on the thread that shows, and comes back when the window has taken the action in.
class OptionWindowUser {
 public:
  virtual ~OptionWindowUser() = default;
  [[nodiscard]] virtual std::unique_ptr<platform::OptionWindow> makeWindow() = 0;
  /// The script of the next showing. Where it leaves the window open, the close box is pressed behind it.
  virtual void atNextShowing(std::function<void()> script) = 0;

  virtual void edit(const std::string& key, const std::string& text) = 0;
  virtual void choose(const std::string& key, const std::string& caption) = 0;
  virtual void browse(const std::string& key) = 0;
  virtual void click(const std::string& key) = 0;
  virtual void press(const std::string& buttonKey) = 0;
  /// Drags the window's right edge to an outer width in twips.
  virtual void dragWidth(float twips) = 0;
  virtual void pressCloseBox() = 0;

  /// What the user reads in an item's field.
  [[nodiscard]] virtual std::string shownText(const std::string& key) = 0;
  [[nodiscard]] virtual bool shownChecked(const std::string& key) = 0;
  /// Whether an item can be seen, which those of a collapsed group cannot.
  [[nodiscard]] virtual bool shownAtAll(const std::string& key) = 0;
};

using OptionWindowUserFactory = std::unique_ptr<OptionWindowUser> (*)();

/// INSTANTIATE_TEST_SUITE_P(Native, OptionWindowConformance, testing::Values(&makeNativeUser));
class OptionWindowConformance : public testing::TestWithParam<OptionWindowUserFactory> {
 protected:
  std::unique_ptr<OptionWindowUser> user = GetParam()();
};

}  // namespace mervane::tests
