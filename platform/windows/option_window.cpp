#include "platform/windows/option_window.h"

#include <windows.h>
// The window procedure's helpers need the platform's header first.
#include <windowsx.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "platform/com/text.h"
#include "platform/mnemonics.h"
#include "platform/windows/button_bar.h"
#include "platform/windows/option_list.h"
#include "platform/windows/window_tools.h"

namespace mervane::windows {
namespace {

using platform::OptionItem;
using platform::OptionItems;
using platform::OptionKind;
using platform::OptionWindowEvents;
using platform::UnloadMode;
using platform::WindowMeasure;

constexpr wchar_t windowClass[] = L"MervaneOptionWindow";
constexpr wchar_t listClass[] = L"MervaneOptionList";
constexpr int firstButton = 100;
// The first two groups with their items, without scrolling, and the longest choice in its field.
constexpr int firstClientWidth = 376;
constexpr int firstClientHeight = 420;
constexpr int barHeight = 36;
constexpr int buttonHeight = 24;
constexpr int listMargin = 4;
/// Posted to itself: the field in the second parameter gets the keyboard back.
constexpr UINT returnToField = WM_APP;

/// The window and its list are two windows with one object behind them.
class OptionWindow final : public platform::OptionWindow {
 public:
  explicit OptionWindow(const Scale& scale) : scale_(scale) {}
  ~OptionWindow() override {
    if (window_ != nullptr) DestroyWindow(window_);
  }

  void load(const std::string& caption, const OptionItems& options, const OptionItems& buttons,
            OptionWindowEvents& events) override;
  void itemsChanged() override;
  void show() override;
  void hide() override { end(); }
  [[nodiscard]] float measure(WindowMeasure which) const override;
  void setMeasure(WindowMeasure which, float twips) override;
  [[nodiscard]] float listWidth() const override;

 private:
  static LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM word, LPARAM data);
  static LRESULT CALLBACK listProcedure(HWND window, UINT message, WPARAM word, LPARAM data);
  std::optional<LRESULT> onWindow(UINT message, WPARAM word, LPARAM data);
  std::optional<LRESULT> onList(UINT message, WPARAM word, LPARAM data);

  void layOut();
  void layOutList();
  void scrollTo(int position);
  void scrollBy(WORD request);
  void bringIntoSight(HWND control);
  void command(int id, int notification);
  void listCommand(int id, int notification);
  void pressButton(const std::string& key);
  void end() { ModalShowing::end(window_, ended_); }
  void requestClose(UnloadMode mode);
  bool finishEditor();
  bool finishEditor(HWND field, const OptionItem& item);
  void leaveEditor(HWND field, const OptionItem& item);
  void returnTo(HWND field);
  void revertOrClose();
  void updateFocusCues() { SendMessageW(window_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_INITIALIZE, 0), 0); }

  Scale scale_;
  HWND window_ = nullptr;
  HWND listWindow_ = nullptr;
  OptionWindowEvents* events_ = nullptr;
  const OptionItems* buttonItems_ = nullptr;
  std::unique_ptr<Font> bold_;
  std::unique_ptr<OptionList> list_;
  std::unique_ptr<ButtonBar> bar_;
  int scrolled_ = 0;
  bool ended_ = false;
  bool showing_ = false;
  bool laidOut_ = false;
  bool finishing_ = false;
  bool measuring_ = false;  ///< the size comes from `setMeasure`
  bool returning_ = false;  ///< a field whose entry was refused is about to get the keyboard back
};

LRESULT CALLBACK OptionWindow::windowProcedure(HWND window, UINT message, WPARAM word, LPARAM data) {
  auto* self = static_cast<OptionWindow*>(objectOf(window, message, data));
  if (self != nullptr && self->window_ == window) {
    if (const std::optional<LRESULT> answer = self->onWindow(message, word, data)) return *answer;
  }
  return DefWindowProcW(window, message, word, data);
}

LRESULT CALLBACK OptionWindow::listProcedure(HWND window, UINT message, WPARAM word, LPARAM data) {
  auto* self = static_cast<OptionWindow*>(objectOf(window, message, data));
  if (self != nullptr && self->listWindow_ == window) {
    if (const std::optional<LRESULT> answer = self->onList(message, word, data)) return *answer;
  }
  return DefWindowProcW(window, message, word, data);
}

void OptionWindow::load(const std::string& caption, const OptionItems& options, const OptionItems& buttons,
                        OptionWindowEvents& events) {
  events_ = &events;
  buttonItems_ = &buttons;
  registerWindowClass(windowClass, &windowProcedure, GetSysColorBrush(COLOR_BTNFACE));
  registerWindowClass(listClass, &listProcedure, GetSysColorBrush(COLOR_WINDOW));
  RECT frame{0, 0, scale_.pixels(firstClientWidth), scale_.pixels(firstClientHeight)};
  AdjustWindowRectEx(&frame, WS_OVERLAPPEDWINDOW, FALSE, WS_EX_CONTROLPARENT);
  constexpr DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME;
  window_ = CreateWindowExW(WS_EX_CONTROLPARENT, windowClass, com::toWide(caption).c_str(), style, CW_USEDEFAULT,
                            CW_USEDEFAULT, frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr,
                            thisModule(), this);
  listWindow_ = CreateWindowExW(WS_EX_CONTROLPARENT | WS_EX_CLIENTEDGE, listClass, L"",
                                WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_CLIPCHILDREN, 0, 0, 0, 0, window_, nullptr,
                                thisModule(), this);
  if (window_ == nullptr || listWindow_ == nullptr) raise(runtime::outOfMemory);
  platform::MarkedCaptions captions = platform::markedCaptions(buttons, options, '&');
  list_ = std::make_unique<OptionList>(listWindow_, scale_, options, std::move(captions.options));
  bold_ = std::make_unique<Font>(scale_, true, RUSSIAN_CHARSET);
  bar_ = std::make_unique<ButtonBar>(window_, scale_, firstButton);
  bar_->fill(buttons, captions.buttons, bold_->get());
  layOut();
}

void OptionWindow::itemsChanged() {
  list_->refresh();
  layOutList();
}

void OptionWindow::show() {
  ended_ = false;
  returning_ = false;
  // Also behind an exception the window is no longer shown: a later request must not end what may be gone.
  const struct Shown {
    explicit Shown(bool& flag) : showing(flag) { showing = true; }
    ~Shown() { showing = false; }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
    bool& showing;
  } shown(showing_);
  if (!laidOut_) {
    laidOut_ = true;
    events_->resized();
  }
  ModalShowing showing(window_);
  updateFocusCues();
  const HWND first = list_->firstEditor();
  SetFocus(first != nullptr ? first : GetNextDlgTabItem(window_, nullptr, FALSE));
  showing.run(ended_);
}

float OptionWindow::measure(WindowMeasure which) const {
  RECT place{};
  GetWindowRect(window_, &place);
  switch (which) {
    case WindowMeasure::left:
      return scale_.twips(place.left);
    case WindowMeasure::top:
      return scale_.twips(place.top);
    case WindowMeasure::width:
      return scale_.twips(place.right - place.left);
    case WindowMeasure::height:
      return scale_.twips(place.bottom - place.top);
  }
  return 0.0F;
}

void OptionWindow::setMeasure(WindowMeasure which, float twips) {
  RECT place{};
  GetWindowRect(window_, &place);
  int width = place.right - place.left;
  int height = place.bottom - place.top;
  const int value = scale_.fromTwips(twips);
  switch (which) {
    case WindowMeasure::left:
      place.left = value;
      break;
    case WindowMeasure::top:
      place.top = value;
      break;
    case WindowMeasure::width:
      width = value;
      break;
    case WindowMeasure::height:
      height = value;
      break;
  }
  measuring_ = true;
  SetWindowPos(window_, nullptr, place.left, place.top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
  measuring_ = false;
}

float OptionWindow::listWidth() const {
  RECT place{};
  GetWindowRect(listWindow_, &place);
  return scale_.twips(place.right - place.left);
}

void OptionWindow::layOut() {
  RECT client{};
  GetClientRect(window_, &client);
  const int margin = scale_.pixels(listMargin);
  const int bar = scale_.pixels(barHeight);
  SetWindowPos(listWindow_, nullptr, margin, margin, std::max(client.right - 2L * margin, 0L),
               std::max(client.bottom - bar - margin, 0L), SWP_NOZORDER | SWP_NOACTIVATE);
  bar_->place(margin, client.bottom - bar + (bar - scale_.pixels(buttonHeight)) / 2, scale_.pixels(buttonHeight));
  layOutList();
}

void OptionWindow::layOutList() {
  RECT client{};
  GetClientRect(listWindow_, &client);
  const int height = list_->place(client.right, scrolled_);
  SCROLLINFO range{};
  range.cbSize = sizeof range;
  range.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  range.nMax = std::max(height - 1, 0);
  range.nPage = static_cast<UINT>(std::max(client.bottom, 0L));
  range.nPos = scrolled_;
  SetScrollInfo(listWindow_, SB_VERT, &range, TRUE);
  // The bar takes its width from the rows where it comes up, and gives it back where it goes.
  RECT left{};
  GetClientRect(listWindow_, &left);
  if (left.right != client.right) list_->place(left.right, scrolled_);
  const int last = std::max(height - static_cast<int>(client.bottom), 0);
  if (scrolled_ > last) scrollTo(last);
}

void OptionWindow::scrollTo(int position) {
  SCROLLINFO range{};
  range.cbSize = sizeof range;
  range.fMask = SIF_RANGE | SIF_PAGE;
  GetScrollInfo(listWindow_, SB_VERT, &range);
  const int last = std::max(range.nMax - static_cast<int>(range.nPage) + 1, 0);
  position = std::clamp(position, 0, last);
  if (position == scrolled_) return;
  scrolled_ = position;
  layOutList();
  InvalidateRect(listWindow_, nullptr, TRUE);
}

void OptionWindow::scrollBy(WORD request) {
  SCROLLINFO range{};
  range.cbSize = sizeof range;
  range.fMask = SIF_ALL;
  GetScrollInfo(listWindow_, SB_VERT, &range);
  const int line = scale_.pixels(21);
  const int page = std::max(static_cast<int>(range.nPage) - line, line);
  switch (request) {
    case SB_LINEUP:
      return scrollTo(scrolled_ - line);
    case SB_LINEDOWN:
      return scrollTo(scrolled_ + line);
    case SB_PAGEUP:
      return scrollTo(scrolled_ - page);
    case SB_PAGEDOWN:
      return scrollTo(scrolled_ + page);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return scrollTo(range.nTrackPos);
    case SB_TOP:
      return scrollTo(0);
    case SB_BOTTOM:
      return scrollTo(range.nMax);
    default:
      return;
  }
}

void OptionWindow::bringIntoSight(HWND control) {
  const RECT row = list_->rowOf(control);
  RECT client{};
  GetClientRect(listWindow_, &client);
  if (row.top < scrolled_) scrollTo(row.top);
  if (row.bottom > scrolled_ + client.bottom) scrollTo(static_cast<int>(row.bottom - client.bottom));
}

std::optional<LRESULT> OptionWindow::onWindow(UINT message, WPARAM word, LPARAM data) {
  switch (message) {
    case WM_SIZE:
      if (list_ == nullptr) return std::nullopt;
      layOut();
      if (laidOut_) events_->resized();
      return 0;
    case WM_GETMINMAXINFO:
      // Both the list and the bar stay in sight of a user who makes the window smaller. NB: what is set from outside,
      // such as a stored size, is applied as it stands.
      reinterpret_cast<MINMAXINFO*>(data)->ptMinTrackSize =
          measuring_ ? POINT{0, 0} : POINT{scale_.pixels(260), scale_.pixels(150)};
      return 0;
    case WM_COMMAND:
      command(LOWORD(word), HIWORD(word));
      return 0;
    case WM_DRAWITEM:
      bar_->draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(data));
      return TRUE;
    case WM_MOUSEWHEEL:
      scrollTo(scrolled_ - MulDiv(GET_WHEEL_DELTA_WPARAM(word), scale_.pixels(63), WHEEL_DELTA));
      return 0;
    case WM_NEXTDLGCTL:
      moveFocus(window_, word, data);
      return 0;
    case DM_GETDEFID:
      return MAKELRESULT(IDOK, DC_HASDEFID);
    case WM_CLOSE:
      finishEditor();
      requestClose(UnloadMode::userRequest);
      return 0;
    case WM_QUERYENDSESSION:
      return TRUE;
    case WM_ENDSESSION:
      if (word != FALSE) requestClose(UnloadMode::sessionEnd);
      return 0;
    case returnToField:
      returnTo(reinterpret_cast<HWND>(data));
      return 0;
    default:
      return std::nullopt;
  }
}

std::optional<LRESULT> OptionWindow::onList(UINT message, WPARAM word, LPARAM data) {
  // Controls speak up while the list of them is still being made.
  if (list_ == nullptr) return std::nullopt;
  switch (message) {
    case WM_COMMAND:
      listCommand(LOWORD(word), HIWORD(word));
      return 0;
    case WM_DRAWITEM:
      list_->draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(data));
      return TRUE;
    case WM_VSCROLL:
      scrollBy(LOWORD(word));
      return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      const HDC device = reinterpret_cast<HDC>(word);
      const OptionItem* item = list_->controlOf(GetDlgCtrlID(reinterpret_cast<HWND>(data))).item;
      SetBkMode(device, TRANSPARENT);
      SetTextColor(device, GetSysColor(item != nullptr ? item->textColour : COLOR_BTNTEXT));
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    }
    default:
      return std::nullopt;
  }
}

/// NB: a window that is not shown may be gone behind the request; one that is shown lives until its `show` returns.
void OptionWindow::requestClose(UnloadMode mode) {
  const bool shown = showing_;
  if (events_->closeRequested(mode) && shown) end();
}

void OptionWindow::command(int id, int notification) {
  if (id == IDOK) {  // Enter: what has the focus is clicked, and in a field the first button of the bar
    const HWND focus = GetFocus();
    const OptionList::Control control = list_->controlOf(GetDlgCtrlID(focus));
    const bool isButton = control.item != nullptr && (SendMessageW(focus, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) != 0;
    if (isButton) return listCommand(GetDlgCtrlID(focus), BN_CLICKED);
    if (const std::string* key = GetParent(focus) == window_ ? bar_->keyOf(GetDlgCtrlID(focus)) : nullptr) {
      return pressButton(*key);
    }
    if (buttonItems_->Count() > 0) pressButton(buttonItems_->Item(1).Key);
    return;
  }
  if (id == IDCANCEL) return revertOrClose();
  if (notification != BN_CLICKED) return;
  if (const std::string* key = bar_->keyOf(id)) pressButton(*key);
}

void OptionWindow::pressButton(const std::string& key) {
  // A refused entry is not passed over: the user sees the earlier value again before anything is done with it.
  if (!finishEditor()) return;
  const std::string pressed = key;
  events_->buttonClicked(pressed);
}

void OptionWindow::revertOrClose() {
  const HWND focus = GetFocus();
  const OptionList::Control control = list_->controlOf(GetDlgCtrlID(focus));
  if (control.item != nullptr && SendMessageW(focus, EM_GETMODIFY, 0, 0) != 0) {
    SendMessageW(focus, EM_SETMODIFY, FALSE, 0);
    setText(focus, OptionList::shownText(*control.item));
    SendMessageW(focus, EM_SETSEL, 0, -1);
    return;
  }
  for (const OptionItem& button : *buttonItems_) {
    if (button.Key == "CLOSE") return pressButton(button.Key);
  }
}

void OptionWindow::listCommand(int id, int notification) {
  const OptionList::Control control = list_->controlOf(id);
  if (control.item == nullptr) return;
  const OptionItem& item = *control.item;
  if (notification == EN_SETFOCUS || notification == BN_SETFOCUS || notification == CBN_SETFOCUS) {
    bringIntoSight(control.window);
  }
  switch (item.kind) {
    case OptionKind::edit:
    case OptionKind::editWithBrowse:
      if (control.part == OptionList::Part::browse) {
        if (notification == BN_CLICKED && finishEditor()) events_->browsed(item.Key);
      } else if (notification == EN_KILLFOCUS && control.window == list_->fieldOf(item.Key)) {
        leaveEditor(control.window, item);
      } else if (notification == STN_CLICKED && control.window != list_->fieldOf(item.Key)) {
        SetFocus(list_->fieldOf(item.Key));
        events_->clicked(item.Key);
      }
      return;
    case OptionKind::dropDown:
      if (notification == CBN_SELCHANGE) {
        const auto chosen = SendMessageW(control.window, CB_GETCURSEL, 0, 0);
        if (chosen >= 0 && chosen < static_cast<LRESULT>(item.SubItems.size())) {
          events_->chosen(item.Key, item.SubItems[static_cast<std::size_t>(chosen)].Caption);
        }
      }
      return;
    default:
      if (notification == BN_CLICKED && finishEditor()) events_->clicked(item.Key);
      return;
  }
}

/// False where an entry is refused; what the user wanted to do besides is then not done.
bool OptionWindow::finishEditor() {
  if (returning_) return false;
  const HWND focus = GetFocus();
  const OptionList::Control control = list_->controlOf(GetDlgCtrlID(focus));
  if (control.item == nullptr || control.window != focus) return true;
  return finishEditor(focus, *control.item);
}

bool OptionWindow::finishEditor(HWND field, const OptionItem& item) {
  if (item.kind != OptionKind::edit && item.kind != OptionKind::editWithBrowse) return true;
  if (finishing_ || SendMessageW(field, EM_GETMODIFY, 0, 0) == 0) return true;
  finishing_ = true;
  const std::string key = item.Key;
  const bool accepted = events_->edited(key, textOf(field));
  SendMessageW(field, EM_SETMODIFY, FALSE, 0);
  setText(field, OptionList::shownText(item));
  if (!accepted) SendMessageW(field, EM_SETSEL, 0, -1);
  finishing_ = false;
  return accepted;
}

/// The keyboard leaves a field, for a click on something else or the next tab stop. A refused entry ends as with Enter:
/// what was clicked does nothing, and the field has the keyboard again.
void OptionWindow::leaveEditor(HWND field, const OptionItem& item) {
  if (finishEditor(field, item)) return;
  returning_ = true;
  // The platform forbids to move the keyboard while it is being moved.
  PostMessageW(window_, returnToField, 0, reinterpret_cast<LPARAM>(field));
}

void OptionWindow::returnTo(HWND field) {
  returning_ = false;
  // Not from another window, which the user may have gone to.
  if (IsChild(window_, GetFocus()) == FALSE) return;
  // A button that is held down would be pressed when it is let go.
  if (IsChild(window_, GetCapture()) != FALSE) ReleaseCapture();
  SetFocus(field);
}

}  // namespace

std::unique_ptr<platform::OptionWindow> createOptionWindow() {
  return std::make_unique<OptionWindow>(Scale());
}

std::unique_ptr<platform::OptionWindow> createOptionWindowFor(int pixelsPerInch) {
  return std::make_unique<OptionWindow>(Scale(pixelsPerInch));
}

}  // namespace mervane::windows
