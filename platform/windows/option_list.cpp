#include "platform/windows/option_list.h"

#include <algorithm>

#include "mervane/convert.h"
#include "platform/com/text.h"
#include "platform/windows/pictures.h"
#include "platform/windows/regional_settings.h"

namespace mervane::windows {
namespace {

using platform::OptionItem;
using platform::OptionKind;

constexpr int firstControl = 1000;
constexpr int indentWidth = 16;
constexpr int captionColumn = 140;  // 2100 twips: what the widths of the fields leave
constexpr int browseWidth = 24;
constexpr int margin = 6;
constexpr int pictureSide = 16;

bool isButtonState(OptionKind kind) {
  return kind == OptionKind::check || kind == OptionKind::radio;
}

/// Design pixels.
int heightOf(const OptionItem& item) {
  // Fields need room for their frame at any font size.
  constexpr int frame = 4;
  return item.height + (item.kind == OptionKind::spacer ? 0 : frame / 2);
}

}  // namespace

OptionList::OptionList(HWND parent, const Scale& scale, const platform::OptionItems& items,
                       const std::vector<std::string>& marked)
    : parent_(parent),
      scale_(scale),
      items_(items),
      plain_(scale, false, RUSSIAN_CHARSET),
      bold_(scale, true, RUSSIAN_CHARSET) {
  auto nextMarked = marked.begin();
  for (const OptionItem& item : items_) addRow(item, *nextMarked++);
  refresh();
}

HWND OptionList::addControl(const wchar_t* className, const std::string& text, DWORD style, DWORD extendedStyle,
                            bool bold) {
  const auto id = static_cast<INT_PTR>(firstControl) + static_cast<INT_PTR>(controls_.size());
  const HWND control = CreateWindowExW(extendedStyle, className, com::toWide(text).c_str(), WS_CHILD | style, 0, 0, 0,
                                       0, parent_, reinterpret_cast<HMENU>(id), thisModule(), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(bold ? bold_.get() : plain_.get()), FALSE);
  return control;
}

void OptionList::addRow(const OptionItem& item, const std::string& marked) {
  Row row{&item, item.Caption};
  const auto keep = [&](HWND control, Part part) {
    controls_.push_back({control, &item, part});
    return control;
  };
  // The arrows move within a run of radio items, of which the platform lets Tab stop at the checked one alone.
  const bool radio = item.kind == OptionKind::radio;
  const DWORD stop = WS_TABSTOP | (radio && lastWasRadio_ ? 0U : WS_GROUP);
  if (item.kind != OptionKind::spacer) lastWasRadio_ = radio;
  switch (item.kind) {
    case OptionKind::spacer:
    case OptionKind::choice:
      break;
    case OptionKind::groupHeader:
    case OptionKind::command:
      row.field = keep(addControl(L"BUTTON", marked, stop | BS_OWNERDRAW, 0, item.bold), Part::main);
      break;
    case OptionKind::check:
      row.field = keep(addControl(L"BUTTON", marked, stop | BS_CHECKBOX, 0, item.bold), Part::main);
      break;
    case OptionKind::radio:
      row.field = keep(addControl(L"BUTTON", marked, stop | BS_RADIOBUTTON, 0, item.bold), Part::main);
      break;
    case OptionKind::staticLabel:
      row.field = keep(addControl(L"STATIC", item.Caption, SS_NOTIFY | SS_NOPREFIX, 0, item.bold), Part::main);
      break;
    case OptionKind::edit:
    case OptionKind::editWithBrowse:
    case OptionKind::dropDown:
      // A field takes its name for screen readers, and its mnemonic, from the caption that stands before it.
      row.caption = keep(addControl(L"STATIC", marked, SS_NOTIFY, 0, item.bold), Part::main);
      if (item.kind == OptionKind::dropDown) {
        row.field = keep(addControl(L"COMBOBOX", "", stop | CBS_DROPDOWNLIST | WS_VSCROLL, 0, false), Part::main);
        for (const OptionItem& choice : item.SubItems) {
          SendMessageW(row.field, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(com::toWide(choice.Caption).c_str()));
        }
      } else {
        row.field = keep(addControl(L"EDIT", "", stop | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, false), Part::main);
      }
      if (item.kind == OptionKind::editWithBrowse) {
        // It shows three dots, which tell nothing when they are read out.
        const std::string name = "Browse for " + item.Caption.substr(0, item.Caption.find(':'));
        row.browse = keep(addControl(L"BUTTON", name, stop | BS_OWNERDRAW, 0, false), Part::browse);
      }
      break;
  }
  rows_.push_back(row);
}

std::string OptionList::shownText(const OptionItem& item) {
  // A number shows as the platform turns one into text.
  return item.Value.isEmpty() ? std::string() : toText(item.Value, userLocale());
}

void OptionList::refresh() {
  for (Row& row : rows_) {
    const OptionItem& item = *row.item;
    if (row.field == nullptr) continue;
    if (isButtonState(item.kind)) {
      SendMessageW(row.field, BM_SETCHECK, item.Checked ? BST_CHECKED : BST_UNCHECKED, 0);
    } else if (item.kind == OptionKind::edit || item.kind == OptionKind::editWithBrowse) {
      if (SendMessageW(row.field, EM_GETMODIFY, 0, 0) == 0) setText(row.field, shownText(item));
    } else if (item.kind == OptionKind::dropDown) {
      const std::wstring caption = com::toWide(shownText(item));
      const auto found = SendMessageW(row.field, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                      reinterpret_cast<LPARAM>(caption.c_str()));
      SendMessageW(row.field, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
    } else {
      if (row.shown != item.Caption) setText(row.field, item.Caption);
      row.shown = item.Caption;
      InvalidateRect(row.field, nullptr, TRUE);
    }
  }
}

int OptionList::place(int width, int scrolled) {
  // Rows add up in the design's own pixels, so that no rounding adds up with them.
  constexpr int gap = 2;
  int below = gap;
  bool open = true;
  const HDWP moving = BeginDeferWindowPos(static_cast<int>(controls_.size()));
  HDWP positions = moving;
  const auto put = [&](HWND control, int x, int top, int w, int h, bool seen) {
    if (control == nullptr || positions == nullptr) return;
    positions = DeferWindowPos(positions, control, nullptr, x, top - scrolled, std::max(w, 0), h,
                               SWP_NOZORDER | SWP_NOACTIVATE | (seen ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  };
  const int edge = scale_.pixels(margin);
  for (Row& row : rows_) {
    const OptionItem& item = *row.item;
    if (item.kind == OptionKind::groupHeader) open = true;
    const int y = scale_.pixels(below);
    if (open) below += heightOf(item);
    row.top = y;
    row.height = scale_.pixels(below) - y;
    const int left = edge + scale_.pixels(indentWidth * item.indent);
    const int right = width - edge;
    const bool hasCaption = row.caption != nullptr;
    const int fieldLeft = hasCaption || (!item.automaticWidth && isButtonState(item.kind))
                              ? edge + scale_.pixels(captionColumn)
                              : (item.kind == OptionKind::groupHeader ? edge : left);
    const int browse = row.browse != nullptr ? scale_.pixels(browseWidth) : 0;
    // A drop-down's height counts its open list.
    const int fieldHeight = item.kind == OptionKind::dropDown ? scale_.pixels(160) : row.height;
    put(row.caption, left, y + scale_.pixels(4), fieldLeft - left - scale_.pixels(4), row.height - scale_.pixels(4),
        open);
    put(row.field, fieldLeft, y, right - fieldLeft - browse, fieldHeight, open);
    put(row.browse, right - browse, y, browse, row.height, open);
    if (item.kind == OptionKind::groupHeader) open = item.Expanded;
  }
  if (positions != nullptr) EndDeferWindowPos(positions);
  return scale_.pixels(below + gap);
}

OptionList::Control OptionList::controlOf(int id) const {
  const int index = id - firstControl;
  if (index < 0 || index >= static_cast<int>(controls_.size())) return {};
  return controls_[static_cast<std::size_t>(index)];
}

HWND OptionList::fieldOf(const std::string& key) const {
  for (const Row& row : rows_) {
    if (row.item->Key == key && !key.empty()) return row.field;
  }
  return nullptr;
}

HWND OptionList::firstEditor() const {
  for (const Row& row : rows_) {
    const bool typed = row.item->kind == OptionKind::edit || row.item->kind == OptionKind::editWithBrowse;
    if (typed && row.height > 0) return row.field;
  }
  return nullptr;
}

RECT OptionList::rowOf(HWND control) const {
  for (const Row& row : rows_) {
    if (control == row.caption || control == row.field || control == row.browse) {
      return {0, row.top, 0, row.top + row.height};
    }
  }
  return {};
}

void OptionList::draw(const DRAWITEMSTRUCT& request) const {
  const Control control = controlOf(static_cast<int>(request.CtlID));
  const OptionItem* item = control.item;
  if (item == nullptr) return;
  if (control.part == Part::browse) return drawBrowse(request);
  const bool header = item->kind == OptionKind::groupHeader;
  RECT area = request.rcItem;
  FillRect(request.hDC, &area, GetSysColorBrush(header ? COLOR_BTNFACE : COLOR_WINDOW));
  SetBkMode(request.hDC, TRANSPARENT);
  SetTextColor(request.hDC, GetSysColor(item->textColour));
  const HGDIOBJ before = SelectObject(request.hDC, bold_.get());
  const int side = scale_.pixels(pictureSide);
  RECT picture{area.left + scale_.pixels(2), area.top + (area.bottom - area.top - side) / 2, 0, 0};
  picture.right = picture.left + side;
  picture.bottom = picture.top + side;
  if (header) {
    // A triangle that points to the right while the group is closed and down while it is open.
    const int x = picture.left + side / 2;
    const int y = picture.top + side / 2;
    const int reach = scale_.pixels(3);
    const POINT closed[] = {{x - reach, y - 2 * reach + 1}, {x + reach, y}, {x - reach, y + 2 * reach - 1}};
    const POINT opened[] = {{x - 2 * reach + 1, y - reach}, {x + 2 * reach - 1, y - reach}, {x, y + reach}};
    SelectObject(request.hDC, GetSysColorBrush(COLOR_BTNTEXT));
    Polygon(request.hDC, item->Expanded ? opened : closed, 3);
  } else {
    drawPicture(request.hDC, item->imageKey, picture);
  }
  RECT text = area;
  text.left = picture.right + scale_.pixels(4);
  wchar_t caption[128] = {};
  GetWindowTextW(request.hwndItem, caption, 128);
  const bool hidden = (request.itemState & ODS_NOACCEL) != 0;
  DrawTextW(request.hDC, caption, -1, &text, DT_LEFT | DT_VCENTER | DT_SINGLELINE | (hidden ? DT_HIDEPREFIX : 0U));
  SelectObject(request.hDC, before);
  if ((request.itemState & ODS_FOCUS) != 0 && (request.itemState & ODS_NOFOCUSRECT) == 0) {
    InflateRect(&area, -1, -1);
    DrawFocusRect(request.hDC, &area);
  }
}

void OptionList::drawBrowse(const DRAWITEMSTRUCT& request) const {
  RECT area = request.rcItem;
  const bool pressed = (request.itemState & ODS_SELECTED) != 0;
  DrawFrameControl(request.hDC, &area, DFC_BUTTON, DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0U));
  RECT text = area;
  if (pressed) OffsetRect(&text, 1, 1);
  const HGDIOBJ before = SelectObject(request.hDC, plain_.get());
  SetBkMode(request.hDC, TRANSPARENT);
  SetTextColor(request.hDC, GetSysColor(COLOR_BTNTEXT));
  DrawTextW(request.hDC, L"...", -1, &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
  SelectObject(request.hDC, before);
  if ((request.itemState & ODS_FOCUS) != 0 && (request.itemState & ODS_NOFOCUSRECT) == 0) {
    InflateRect(&area, -scale_.pixels(3), -scale_.pixels(3));
    DrawFocusRect(request.hDC, &area);
  }
}

}  // namespace mervane::windows
