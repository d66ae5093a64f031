#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/error_window.h"

namespace mervane::platform {

/// An error window without a screen: it hands the report to a function and does what that answers.
class HeadlessErrorWindow final : public ErrorWindow {
 public:
  /// What a user reads and can do.
  class View {
   public:
    virtual ~View() = default;
    [[nodiscard]] virtual const std::string& report() const = 0;
    [[nodiscard]] virtual const OptionItems& title() const = 0;
    [[nodiscard]] virtual const OptionItems& buttons() const = 0;
    /// "ABORT", "RETRY", "IGNORE" and "SPACER" end the showing, "MAIL" does not where an address is known.
    virtual void click(const std::string& key) = 0;
    /// Leaves to another window and comes back.
    virtual void comeBack() = 0;
    virtual void resizeBar(float twips) = 0;
  };
  /// One showing. Where it returns with the window still open, the close box is pressed.
  using Reader = std::function<void(View&)>;

  explicit HeadlessErrorWindow(Reader reader) : reader_(std::move(reader)) {}

  void load(const std::string& caption, const OptionItems& title, const OptionItems& buttons,
            ErrorWindowEvents& events) override;
  void itemsChanged() override {}
  void setMessage(const std::string& text) override { report_ = text; }
  void show() override;
  void hide() override { shown_ = false; }
  [[nodiscard]] float barWidth() const override { return barWidth_; }

 private:
  class Desk;

  static constexpr float designedBarWidth = 4980.0F;

  Reader reader_;
  std::string report_;
  const OptionItems* title_ = nullptr;
  const OptionItems* buttons_ = nullptr;
  ErrorWindowEvents* events_ = nullptr;
  bool shown_ = false;
  float barWidth_ = designedBarWidth;
};

/// A factory for `Services`: every report is given to this reader.
[[nodiscard]] std::function<std::unique_ptr<ErrorWindow>()> headlessErrorWindows(HeadlessErrorWindow::Reader reader);

}  // namespace mervane::platform
