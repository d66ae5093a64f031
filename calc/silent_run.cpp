#include "calc/silent_run.h"

#include <algorithm>
#include <memory>

#include "dialog/store_to_read_from.h"
#include "dialog/store_without_places.h"
#include "mervane/convert.h"
#include "platform/headless/headless_error_window.h"
#include "platform/headless/headless_option_window.h"
#include "platform/message_box.h"
#include "support/globals.h"

namespace mervane::addin {

namespace {

using platform::HeadlessOptionWindow;
using platform::OptionItem;
using platform::OptionKind;

class KeptMessage final : public platform::MessageBox {
 public:
  explicit KeptMessage(std::string& report) : report_(report) {}
  Answer show(const std::string& text, Buttons buttons) override {
    if (report_.empty()) report_ = text;
    return buttons == Buttons::ok ? Answer::ok : Answer::abort;
  }

 private:
  std::string& report_;
};

std::string upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
  });
  return text;
}

/// @return what is wrong with the value, or nothing
std::string chooseIn(HeadlessOptionWindow& window, const OptionItem& item, const std::string& text) {
  for (const OptionItem& choice : item.SubItems) {
    if (text != choice.Caption && text != toText(choice.Value, globals::locale())) continue;
    const std::string caption = choice.Caption;
    window.choose(item.Key, caption);
    return {};
  }
  return "takes 1 to " + std::to_string(item.SubItems.size()) + ", or the name of the choice";
}

/// @return what is wrong with the value, or nothing
std::string switchIn(HeadlessOptionWindow& window, const OptionItem& item, const std::string& text) {
  const std::string word = upper(text);
  const bool on = word == "TRUE" || word == "1";
  if (!on && word != "FALSE" && word != "0") return "takes true or false";
  if (on == item.Checked) return {};
  if (!on && item.kind == OptionKind::radio) return {};  // The other of the pair is the one to switch on.
  const std::string key = item.Key;
  window.click(key);
  return {};
}

/// The layout of the listing is remembered as one setting, which the dialog shows as two.
std::string chooseLayout(HeadlessOptionWindow& window, const std::string& key, const std::string& text) {
  if (text != "0" && text != "1") return key + " takes 1 for one column, or 0 for a column for each cluster";
  window.click(text == "1" ? "SPLITONE" : "SPLITMULTIPLE");
  return {};
}

std::string enter(HeadlessOptionWindow& window, const std::string& key, const std::string& text) {
  const std::string known = upper(key);
  if (known == "OUTSPLIT") return chooseLayout(window, key, text);
  if (!window.options().Contains(known)) return key + " is no option of the dialog";
  const OptionItem& item = window.options().Item(known);
  std::string trouble;
  switch (item.kind) {
    case OptionKind::edit:
    case OptionKind::editWithBrowse:
      if (!window.edit(known, text)) trouble = "does not take " + text;
      break;
    case OptionKind::dropDown:
      trouble = chooseIn(window, item, text);
      break;
    case OptionKind::check:
    case OptionKind::radio:
      trouble = switchIn(window, item, text);
      break;
    default:
      trouble = "holds no value";
  }
  return trouble.empty() ? trouble : key + " " + trouble;
}

}  // namespace

void makeSilent(platform::Services& services, const EnteredOptions& options, Memory memory, std::string& report,
                const std::function<std::string(const platform::OptionItems& items)>& refusalOf) {
  const auto user = std::make_shared<platform::HeadlessUser>();
  user->atNextShowing([options, &report, refusalOf](HeadlessOptionWindow& window) {
    for (const auto& [key, value] : options) {
      report = enter(window, key, toText(value, globals::locale()));
      if (!report.empty()) return;  // The window is closed then.
    }
    if (refusalOf) report = refusalOf(window.options());
    if (!report.empty()) return;
    window.press("CLASSIFY");
  });
  services.createOptionWindow = platform::headlessOptionWindows(user);
  services.createErrorWindow = platform::headlessErrorWindows([&report](platform::HeadlessErrorWindow::View& window) {
    if (report.empty()) report = window.report();
    window.click("ABORT");
  });
  services.messageBox = std::make_shared<KeptMessage>(report);
  if (services.keyStore) {
    services.keyStore = memory == Memory::kept ? dialog::storeWithoutPlaces(services.keyStore)
                                               : dialog::storeToReadFrom(services.keyStore);
  }
  // Nobody is there to be rung for.
  class SilentScreen final : public platform::Screen {
   public:
    explicit SilentScreen(std::shared_ptr<platform::Screen> real) : real_(std::move(real)) {}
    void pointer(std::int32_t shape) override { real_->pointer(shape); }
    void beep() override {}

   private:
    std::shared_ptr<platform::Screen> real_;
  };
  services.screen = std::make_shared<SilentScreen>(services.screen);
}

}  // namespace mervane::addin
