#include "platform/headless/headless_option_window.h"

#include "mervane/convert.h"
#include "tests/conformance_windows/option_window_conformance.h"

namespace mervane::tests {

namespace {

class HeadlessUserOfTests final : public OptionWindowUser {
 public:
  std::unique_ptr<platform::OptionWindow> makeWindow() override { return platform::headlessOptionWindows(user_)(); }
  void atNextShowing(std::function<void()> script) override {
    user_->atNextShowing([this, script = std::move(script)](platform::HeadlessOptionWindow& window) {
      window_ = &window;
      script();
    });
  }
  void edit(const std::string& key, const std::string& text) override { (void)window_->edit(key, text); }
  void choose(const std::string& key, const std::string& caption) override { window_->choose(key, caption); }
  void browse(const std::string& key) override { window_->browse(key); }
  void click(const std::string& key) override { window_->click(key); }
  void press(const std::string& buttonKey) override { window_->press(buttonKey); }
  void dragWidth(float twips) override { window_->resize(twips, window_->measure(platform::WindowMeasure::height)); }
  void pressCloseBox() override { window_->close(); }

  std::string shownText(const std::string& key) override {
    return toText(window_->options().Item(key).Value, englishLocale());
  }
  bool shownChecked(const std::string& key) override { return window_->options().Item(key).Checked; }
  bool shownAtAll(const std::string& key) override {
    bool open = true;
    for (const platform::OptionItem& item : window_->options()) {
      const bool header = item.kind == platform::OptionKind::groupHeader;
      if (item.Key == key) return header || open;
      if (header) open = item.Expanded;
    }
    return false;
  }

 private:
  std::shared_ptr<platform::HeadlessUser> user_ = std::make_shared<platform::HeadlessUser>();
  platform::HeadlessOptionWindow* window_ = nullptr;
};

std::unique_ptr<OptionWindowUser> makeHeadlessUser() {
  return std::make_unique<HeadlessUserOfTests>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Headless, OptionWindowConformance, testing::Values(&makeHeadlessUser));

}  // namespace mervane::tests
