#pragma once

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/option_window.h"

namespace mervane::platform {

class HeadlessOptionWindow;

/// The user of option windows that nobody sees. What this user does is a script: one act for each showing, in order.
/// When the acts are used up, or an act leaves the window open, `habit` is done; after that the close box is pressed,
/// so that no showing can hang.
class HeadlessUser {
 public:
  using Act = std::function<void(HeadlessOptionWindow&)>;

  /// Adds the act of the next showing that has none yet.
  void atNextShowing(Act act) { acts_.push_back(std::move(act)); }
  /// What ends every showing for which nothing else does; empty for nothing.
  void habit(Act act) { habit_ = std::move(act); }
  /// Acts that no showing has used yet.
  [[nodiscard]] std::size_t actsLeft() const noexcept { return acts_.size(); }

 private:
  friend class HeadlessOptionWindow;
  std::deque<Act> acts_;
  Act habit_;
};

/// An option window without a screen. It keeps its place and size as they are set, draws nothing, and does what its
/// user does by the same events that a real window reports.
class HeadlessOptionWindow final : public OptionWindow {
 public:
  explicit HeadlessOptionWindow(std::shared_ptr<HeadlessUser> user) : user_(std::move(user)) {}

  // What a user can do. Each is an action on the shown window; none does anything on a hidden one.
  /// @return whether the entry was accepted
  bool edit(const std::string& key, const std::string& text);
  void choose(const std::string& key, const std::string& caption);
  void browse(const std::string& key);
  void click(const std::string& key);
  void press(const std::string& buttonKey);
  /// Drags the window's edges to an outer size in twips.
  void resize(float width, float height);
  void move(float left, float top);
  void close(UnloadMode mode = UnloadMode::userRequest);

  [[nodiscard]] bool isShown() const noexcept { return shown_; }
  [[nodiscard]] const std::string& caption() const noexcept { return caption_; }
  [[nodiscard]] const OptionItems& options() const noexcept { return *options_; }
  [[nodiscard]] const OptionItems& buttons() const noexcept { return *buttons_; }
  /// How often the window has been told to draw its items anew.
  [[nodiscard]] int redraws() const noexcept { return redraws_; }

  // As the dialog sees it.
  void load(const std::string& caption, const OptionItems& options, const OptionItems& buttons,
            OptionWindowEvents& events) override;
  void itemsChanged() override { ++redraws_; }
  void show() override;
  void hide() override { shown_ = false; }
  [[nodiscard]] float measure(WindowMeasure which) const override;
  void setMeasure(WindowMeasure which, float twips) override;
  [[nodiscard]] float listWidth() const override;

 private:
  std::shared_ptr<HeadlessUser> user_;
  std::string caption_;
  const OptionItems* options_ = nullptr;
  const OptionItems* buttons_ = nullptr;
  OptionWindowEvents* events_ = nullptr;
  bool shown_ = false;
  bool laidOut_ = false;
  int redraws_ = 0;
  /// Indexed by WindowMeasure.
  std::array<float, 4> measures_{};
};

/// A factory for `Services`: every window it makes is used by this user.
[[nodiscard]] std::function<std::unique_ptr<OptionWindow>()> headlessOptionWindows(std::shared_ptr<HeadlessUser> user);

}  // namespace mervane::platform
