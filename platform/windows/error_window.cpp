#include "platform/windows/error_window.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <string>

#include "platform/com/text.h"
#include "platform/mnemonics.h"
#include "platform/windows/button_bar.h"
#include "platform/windows/pictures.h"
#include "platform/windows/window_tools.h"

namespace mervane::windows {
namespace {

using platform::ErrorWindowEvents;
using platform::OptionItem;
using platform::OptionItems;

constexpr wchar_t windowClass[] = L"MervaneErrorWindow";
constexpr int firstButton = 100;
constexpr int titleControl = 89;
constexpr int reportControl = 90;
// The design: 5100 by 2955 twips of client area, a band and a bar of 495 with margins of 60 and 30.
constexpr float clientWidth = 5100.0F;
constexpr float clientHeight = 2955.0F;
constexpr float bandHeight = 555.0F;
constexpr float barHeight = 555.0F;
constexpr float edge = 60.0F;
constexpr int buttonHeight = 24;
constexpr int pictureSide = 32;

class ErrorWindow final : public platform::ErrorWindow {
 public:
  ~ErrorWindow() override {
    if (window_ != nullptr) DestroyWindow(window_);
  }

  void load(const std::string& caption, const OptionItems& title, const OptionItems& buttons,
            ErrorWindowEvents& events) override;
  void itemsChanged() override;
  void setMessage(const std::string& text) override { SetWindowTextW(report_, com::toWide(text).c_str()); }
  void show() override;
  void hide() override { end(); }
  [[nodiscard]] float barWidth() const override;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM word, LPARAM data);
  std::optional<LRESULT> on(UINT message, WPARAM word, LPARAM data);
  void layOut();
  void placeBar();
  void paint();
  void fillBar();
  void showTitle();
  void press(const std::string& key);
  void end() { ModalShowing::end(window_, ended_); }

  Scale scale_;
  HWND window_ = nullptr;
  HWND titleText_ = nullptr;
  HWND report_ = nullptr;
  ErrorWindowEvents* events_ = nullptr;
  const OptionItems* title_ = nullptr;
  const OptionItems* buttons_ = nullptr;
  std::unique_ptr<Font> plain_;
  std::unique_ptr<Font> bold_;
  std::unique_ptr<ButtonBar> bar_;
  bool ended_ = false;
  bool shown_ = false;
};

LRESULT CALLBACK ErrorWindow::procedure(HWND window, UINT message, WPARAM word, LPARAM data) {
  auto* self = static_cast<ErrorWindow*>(objectOf(window, message, data));
  if (self != nullptr && self->window_ == window) {
    if (const std::optional<LRESULT> answer = self->on(message, word, data)) return *answer;
  }
  return DefWindowProcW(window, message, word, data);
}

/// The keys that leave the report, answer the window or close it are the window's, though a field of many lines asks
/// for every key where its window is not of the platform's own dialog class.
LRESULT CALLBACK reportProcedure(HWND field, UINT message, WPARAM word, LPARAM data) {
  if (message == WM_GETDLGCODE) return DLGC_WANTARROWS;
  const auto before = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(field, GWLP_USERDATA));
  return CallWindowProcW(before, field, message, word, data);
}

void ErrorWindow::load(const std::string& caption, const OptionItems& title, const OptionItems& buttons,
                       ErrorWindowEvents& events) {
  events_ = &events;
  title_ = &title;
  buttons_ = &buttons;
  registerWindowClass(windowClass, &procedure, GetSysColorBrush(COLOR_BTNFACE));
  constexpr DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
  RECT frame{0, 0, scale_.fromTwips(clientWidth), scale_.fromTwips(clientHeight)};
  AdjustWindowRectEx(&frame, style, FALSE, WS_EX_CONTROLPARENT);
  window_ = CreateWindowExW(WS_EX_CONTROLPARENT | WS_EX_TOPMOST, windowClass, com::toWide(caption).c_str(), style,
                            CW_USEDEFAULT, CW_USEDEFAULT, frame.right - frame.left, frame.bottom - frame.top, nullptr,
                            nullptr, thisModule(), this);
  // The report takes its name for screen readers from the text that stands before it.
  titleText_ =
      CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX | SS_CENTERIMAGE | SS_ENDELLIPSIS, 0, 0, 0,
                      0, window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(titleControl)), thisModule(), nullptr);
  report_ = CreateWindowExW(
      WS_EX_CLIENTEDGE, L"EDIT", L"",
      WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL, 0, 0, 0, 0,
      window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(reportControl)), thisModule(), nullptr);
  if (window_ == nullptr || titleText_ == nullptr || report_ == nullptr) raise(runtime::outOfMemory);
  SetWindowLongPtrW(report_, GWLP_USERDATA,
                    SetWindowLongPtrW(report_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&reportProcedure)));
  // A report has no limit.
  SendMessageW(report_, EM_SETLIMITTEXT, 0, 0);
  plain_ = std::make_unique<Font>(scale_, false);
  bold_ = std::make_unique<Font>(scale_, true);
  SendMessageW(report_, WM_SETFONT, reinterpret_cast<WPARAM>(plain_->get()), FALSE);
  SendMessageW(titleText_, WM_SETFONT, reinterpret_cast<WPARAM>(bold_->get()), FALSE);
  bar_ = std::make_unique<ButtonBar>(window_, scale_, firstButton);
  fillBar();
  showTitle();
  layOut();
}

void ErrorWindow::itemsChanged() {
  // The control that had the focus is made anew.
  const HWND focus = GetFocus();
  const int number = focus != nullptr && GetParent(focus) == window_ ? GetDlgCtrlID(focus) : 0;
  fillBar();
  showTitle();
  placeBar();
  InvalidateRect(window_, nullptr, TRUE);
  if (number >= firstButton) SetFocus(GetDlgItem(window_, number));
}

void ErrorWindow::fillBar() {
  bar_->fill(*buttons_, platform::markedCaptions(*buttons_, {}, '&').buttons, plain_->get());
}

void ErrorWindow::showTitle() {
  for (const OptionItem& item : *title_) setText(titleText_, item.Caption);
}

void ErrorWindow::show() {
  ended_ = false;
  shown_ = true;
  events_->resized();
  ModalShowing showing(window_);
  SetFocus(bar_->control(0));
  showing.run(ended_);
  shown_ = false;
}

float ErrorWindow::barWidth() const {
  RECT client{};
  GetClientRect(window_, &client);
  return scale_.twips(static_cast<int>(client.right)) - 2.0F * edge;
}

void ErrorWindow::layOut() {
  RECT client{};
  GetClientRect(window_, &client);
  const int margin = scale_.fromTwips(edge);
  const int band = scale_.fromTwips(bandHeight);
  const int bar = scale_.fromTwips(barHeight);
  const int textLeft = margin + scale_.pixels(pictureSide + 8);
  SetWindowPos(titleText_, nullptr, textLeft, margin, std::max(client.right - static_cast<long>(textLeft + margin), 0L),
               std::max(band - margin, 0), SWP_NOZORDER | SWP_NOACTIVATE);
  SetWindowPos(report_, nullptr, margin, band + margin / 2, std::max(client.right - 2L * margin, 0L),
               std::max(client.bottom - band - bar - static_cast<long>(margin), 0L), SWP_NOZORDER | SWP_NOACTIVATE);
  placeBar();
  InvalidateRect(window_, nullptr, TRUE);
}

void ErrorWindow::placeBar() {
  RECT client{};
  GetClientRect(window_, &client);
  const int margin = scale_.fromTwips(edge);
  const int bar = scale_.fromTwips(barHeight);
  const int height = scale_.pixels(buttonHeight);
  bar_->place(margin, client.bottom - bar + (bar - height) / 2, height);
}

void ErrorWindow::paint() {
  PAINTSTRUCT painting{};
  const HDC device = BeginPaint(window_, &painting);
  const int margin = scale_.fromTwips(edge);
  const int side = scale_.pixels(pictureSide);
  const RECT band{margin, margin, 0, scale_.fromTwips(bandHeight)};
  for (const OptionItem& item : *title_) {
    const int top = band.top + (band.bottom - band.top - side) / 2;
    drawPicture(device, item.imageKey, {band.left, top, band.left + side, top + side});
  }
  EndPaint(window_, &painting);
}

std::optional<LRESULT> ErrorWindow::on(UINT message, WPARAM word, LPARAM data) {
  switch (message) {
    case WM_SIZE:
      if (bar_ == nullptr) return std::nullopt;
      layOut();
      if (shown_) events_->resized();
      return 0;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(data)->ptMinTrackSize = {scale_.pixels(240), scale_.pixels(160)};
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(word) != WA_INACTIVE && shown_) events_->activated();
      return std::nullopt;
    case WM_NEXTDLGCTL:
      moveFocus(window_, word, data);
      return 0;
    case WM_PAINT:
      paint();
      return 0;
    case WM_DRAWITEM:
      bar_->draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(data));
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(word) == IDCANCEL) {  // Escape
        SendMessageW(window_, WM_CLOSE, 0, 0);
      } else if (HIWORD(word) == BN_CLICKED) {
        const int number = LOWORD(word) == IDOK ? GetDlgCtrlID(GetFocus()) : LOWORD(word);
        if (const std::string* key = bar_->keyOf(number)) press(*key);
      }
      return 0;
    case WM_CLOSE: {
      const bool shown = shown_;  // NB: one that is not may be gone behind the call.
      events_->closed();
      if (shown) end();
      return 0;
    }
    default:
      return std::nullopt;
  }
}

void ErrorWindow::press(const std::string& key) {
  const std::string pressed = key;
  events_->clicked(pressed);
}

}  // namespace

std::unique_ptr<platform::ErrorWindow> createErrorWindow() {
  return std::make_unique<ErrorWindow>();
}

}  // namespace mervane::windows
