#include "support/frm_error_message.h"

#include <utility>
#include <vector>

#include "mervane/convert.h"
#include "mervane/runtime_errors.h"
#include "platform/mail.h"
#include "platform/screen.h"
#include "support/globals.h"
#include "support/procedures.h"

namespace mervane {

namespace {

using platform::OptionItem;
using platform::OptionItems;
using platform::twipsPerPixel;

constexpr const char* windowCaption = "Error";
constexpr const char* applicationTitle = "MervaneClass";
constexpr std::int32_t barMargin = 90;        ///< twips left free beside the buttons, both sides together
constexpr std::int32_t narrowestSpacer = 45;  ///< twips; its width in the template

OptionItem designed(const char* key, const char* caption, const char* imageKey, std::int32_t height, float pixels) {
  OptionItem item;
  item.Key = key;
  item.Caption = caption;
  item.imageKey = imageKey;
  item.height = height;
  item.Width = pixels * twipsPerPixel;
  item.automaticWidth = false;
  return item;
}

OptionItems designedTitle() {
  // The caption is replaced before anyone sees it, by a text that is spelt otherwise.
  return OptionItems({designed("TITLE", "An error has occured in ", "icon", 38, 175)});
}

OptionItems designedButtons() {
  std::vector<OptionItem> items{designed("SPACER", "", "", 22, 3), designed("ABORT", "Abort", "abort", 22, 57),
                                designed("RETRY", "Retry", "retry", 22, 57),
                                designed("IGNORE", "Ignore", "ignore", 22, 63),
                                designed("MAIL", "Send to support", "support", 22, 115)};
  items.front().kind = platform::OptionKind::spacer;
  return OptionItems(std::move(items));
}

std::string replaced(const std::string& text, const std::string& what, const std::string& by) {
  std::string result;
  std::size_t from = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
    result.append(text, from, at - from).append(by);
    from = at + what.size();
  }
  return result.append(text, from);
}

}  // namespace

frmErrorMessage::frmErrorMessage() = default;
frmErrorMessage::~frmErrorMessage() = default;

const std::string& frmErrorMessage::ErrorMessage() {
  Load();
  return txtErrorMessage_;
}

void frmErrorMessage::ErrorMessage(const std::string& value) {
  Load();
  txtErrorMessage_ = value;
  window_->setMessage(value);
}

void frmErrorMessage::Load() {
  if (loaded_) return;
  if (!globals::platform().createErrorWindow) raise(runtime::objectNotSet);
  auto window = globals::platform().createErrorWindow();
  if (!window) raise(runtime::objectNotSet);
  suiTitle_ = designedTitle();
  suiButtons_ = designedButtons();
  window->load(windowCaption, suiTitle_, suiButtons_, *this);
  window_ = std::move(window);
  loaded_ = true;
}

void frmErrorMessage::Show() {
  Load();
  if (shown_) raise(runtime::invalidProcedureCall);
  struct Showing {
    frmErrorMessage& form;
    ~Showing() {
      form.shown_ = false;
      form.closingWindow_.reset();
    }
  };
  shown_ = true;
  const Showing showing{*this};
  window_->show();
}

void frmErrorMessage::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  tag_.clear();
  txtErrorMessage_.clear();
  if (!shown_ || closingWindow_) {
    window_.reset();
    return;
  }
  closingWindow_ = std::move(window_);
  closingWindow_->hide();
}

void frmErrorMessage::activated() {
  if (!loaded_) return;
  // 1.
  attempt([&] { suiTitle_.Item("TITLE").Caption = std::string("An error occurred in ") + applicationTitle; });
  // 2. NB: with every return to the window again; the second removal fails and is skipped.
  if (supportMail_.empty()) attempt([&] { suiButtons_.Remove("MAIL"); });
  attempt([&] { window_->itemsChanged(); });
  // 3. NB: once for each return to the window.
  attempt([&] {
    const auto& screen = globals::platform().screen;
    if (!screen) raise(runtime::objectNotSet);
    screen->beep();
  });
}

void frmErrorMessage::resized() {
  if (!loaded_) return;
  // 1. The sum is whole after each item.
  std::int32_t total = 0;
  for (const OptionItem& item : suiButtons_) {
    attempt([&] { total = roundToInt32(total + double{item.Width}); });
  }
  // 2. Each value keeps its 0 where it cannot be read.
  double spacer = 0.0;
  attempt([&] { spacer = double{suiButtons_.Item("SPACER").Width}; });
  double bar = 0.0;
  attempt([&] { bar = double{window_->barWidth()}; });
  // 3. An integer division drops the fraction towards zero.
  std::int32_t width = 0;
  attempt([&] { width = roundToInt32(bar - total + spacer - barMargin) / 2; });
  // 4.
  if (width < narrowestSpacer) width = narrowestSpacer;
  // 5.
  attempt([&] { suiButtons_.Item("SPACER").Width = static_cast<float>(width); });
  attempt([&] { window_->itemsChanged(); });
}

void frmErrorMessage::clicked(const std::string& key) {
  if (!loaded_) return;
  if (!supportMail_.empty() && key == "MAIL") {
    attempt([&] { sendMail(); });
    return;
  }
  tag_ = key;
  attempt([&] { window_->hide(); });
}

void frmErrorMessage::closed() {
  Unload();
}

void frmErrorMessage::sendMail() {
  constexpr const char* line = "%0A";
  const std::string rule(20, '-');
  // 1. NB: nothing else is escaped, so a percent sign or an ampersand in the report may cut the mail short.
  const std::string text = replaced(replaced(txtErrorMessage_, "\r\n", line), "\t", "%09");
  // 2.
  const std::string body = std::string(line) + line + rule + line + text + line + rule;
  // 3.
  const std::string& subject = suiTitle_.Item("TITLE").Caption;
  // 4. and 5.
  const auto& mail = globals::platform().mail;
  if (!mail) raise(runtime::objectNotSet);
  mail->open("mailto:" + supportMail_ + "?subject=" + subject + "&body=" + body);
}

}  // namespace mervane
