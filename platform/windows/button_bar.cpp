#include "platform/windows/button_bar.h"

#include <algorithm>

#include "platform/com/text.h"
#include "platform/windows/pictures.h"

namespace mervane::windows {
namespace {

constexpr int pictureSide = 16;
constexpr int gapBetween = 3;

}  // namespace

void ButtonBar::fill(const platform::OptionItems& items, const std::vector<std::string>& marked, HFONT font) {
  for (const Button& button : buttons_) DestroyWindow(button.control);
  buttons_.clear();
  float end = 0.0F;
  auto nextMarked = marked.begin();
  for (const platform::OptionItem& item : items) {
    const std::wstring caption = com::toWide(*nextMarked++);
    const float begin = end;
    end += item.Width;
    if (item.Caption.empty()) continue;
    Button button{};
    button.key = item.Key;
    button.picture = item.imageKey;
    button.begin = begin;
    button.width = item.Width;
    const auto id = static_cast<INT_PTR>(firstId_) + static_cast<INT_PTR>(buttons_.size());
    button.control = CreateWindowExW(0, L"BUTTON", caption.c_str(), WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW,
                                     0, 0, 0, 0, parent_, reinterpret_cast<HMENU>(id), thisModule(), nullptr);
    SendMessageW(button.control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    buttons_.push_back(std::move(button));
  }
}

void ButtonBar::place(int left, int top, int height) {
  for (const Button& button : buttons_) {
    const int begin = scale_.fromTwips(button.begin);
    const int end = scale_.fromTwips(button.begin + button.width);
    SetWindowPos(button.control, nullptr, left + begin, top, std::max(end - begin - scale_.pixels(gapBetween), 0),
                 height, SWP_NOZORDER | SWP_NOACTIVATE);
    InvalidateRect(button.control, nullptr, TRUE);
  }
}

const std::string* ButtonBar::keyOf(int id) const {
  const int index = id - firstId_;
  if (index < 0 || index >= static_cast<int>(buttons_.size())) return nullptr;
  return &buttons_[static_cast<std::size_t>(index)].key;
}

void ButtonBar::draw(const DRAWITEMSTRUCT& request) const {
  const int index = static_cast<int>(request.CtlID) - firstId_;
  if (index < 0 || index >= static_cast<int>(buttons_.size())) return;
  const Button& button = buttons_[static_cast<std::size_t>(index)];
  RECT area = request.rcItem;
  const bool pressed = (request.itemState & ODS_SELECTED) != 0;
  DrawFrameControl(request.hDC, &area, DFC_BUTTON, DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0U));
  InflateRect(&area, -scale_.pixels(2), -scale_.pixels(3));
  if (pressed) OffsetRect(&area, 1, 1);

  const int side = scale_.pixels(pictureSide);
  RECT square{area.left + scale_.pixels(1), area.top + (area.bottom - area.top - side) / 2, 0, 0};
  square.right = square.left + side;
  square.bottom = square.top + side;
  drawPicture(request.hDC, button.picture, square);

  RECT text = area;
  text.left = square.right + scale_.pixels(3);
  wchar_t caption[128] = {};
  GetWindowTextW(button.control, caption, 128);
  const HGDIOBJ before =
      SelectObject(request.hDC, reinterpret_cast<HFONT>(SendMessageW(button.control, WM_GETFONT, 0, 0)));
  SetBkMode(request.hDC, TRANSPARENT);
  SetTextColor(request.hDC, GetSysColor(COLOR_BTNTEXT));
  const bool hidden = (request.itemState & ODS_NOACCEL) != 0;
  DrawTextW(request.hDC, caption, -1, &text, DT_LEFT | DT_VCENTER | DT_SINGLELINE | (hidden ? DT_HIDEPREFIX : 0U));
  SelectObject(request.hDC, before);
  if ((request.itemState & ODS_FOCUS) != 0 && (request.itemState & ODS_NOFOCUSRECT) == 0) {
    DrawFocusRect(request.hDC, &area);
  }
}

}  // namespace mervane::windows
