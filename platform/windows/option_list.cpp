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

}  // namespace

OptionList::OptionList(HWND parent, const Scale& scale, const platform::OptionItems& items)
    : parent_(parent), scale_(scale), items_(items), plain_(scale, false), bold_(scale, true) {
  for (const OptionItem& item : items_) addRow(item);
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

void OptionList::addRow(const OptionItem& item) {
  Row row{&item};
  const auto keep = [&](HWND control, Part part) {
    controls_.push_back({control, &item, part});
    return control;
  };
  constexpr DWORD stop = WS_TABSTOP;
  switch (item.kind) {
    case OptionKind::spacer:
    case OptionKind::choice:
      break;
    case OptionKind::groupHeader:
    case OptionKind::command:
      row.field = keep(addControl(L"BUTTON", item.Caption, stop | BS_OWNERDRAW, 0, item.bold), Part::main);
      break;
    case OptionKind::check:
      row.field = keep(addControl(L"BUTTON", item.Caption, stop | BS_CHECKBOX, 0, item.bold), Part::main);
      break;
    case OptionKind::radio:
      row.field = keep(addControl(L"BUTTON", item.Caption, stop | BS_RADIOBUTTON, 0, item.bold), Part::main);
      break;
    case OptionKind::staticLabel:
      row.field = keep(addControl(L"STATIC", item.Caption, SS_NOTIFY | SS_NOPREFIX, 0, item.bold), Part::main);
      break;
    case OptionKind::edit:
    case OptionKind::editWithBrowse:
    case OptionKind::dropDown:
      // A field takes its name for screen readers from the caption that stands before it.
      row.caption = keep(addControl(L"STATIC", item.Caption, SS_NOTIFY | SS_NOPREFIX, 0, item.bold), Part::main);
      if (item.kind == OptionKind::dropDown) {
        row.field = keep(addControl(L"COMBOBOX", "", stop | CBS_DROPDOWNLIST | WS_VSCROLL, 0, false), Part::main);
        for (const OptionItem& choice : item.SubItems) {
          SendMessageW(row.field, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(com::toWide(choice.Caption).c_str()));
        }
      } else {
        row.field = keep(addControl(L"EDIT", "", stop | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, false), Part::main);
      }
      if (item.kind == OptionKind::editWithBrowse) {
        row.browse = keep(addControl(L"BUTTON", "...", stop | BS_PUSHBUTTON, 0, false), Part::browse);
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
      setText(row.field, item.Caption);
      InvalidateRect(row.field, nullptr, TRUE);
    }
  }
}

int OptionList::heightOf(const OptionItem& item) const {
  // Fields need room for their frame at any font size.
  constexpr int frame = 4;
  return scale_.pixels(item.height + (item.kind == OptionKind::spacer ? 0 : frame / 2));
}

int OptionList::place(int width, int scrolled) {
  int y = scale_.pixels(2);
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
    row.top = y;
    row.height = open ? heightOf(item) : 0;
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
    y += row.height;
    if (item.kind == OptionKind::groupHeader) open = item.Expanded;
  }
  if (positions != nullptr) EndDeferWindowPos(positions);
  return y + scale_.pixels(2);
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

RECT OptionList::rowOf(HWND control) const {
  for (const Row& row : rows_) {
    if (control == row.caption || control == row.field || control == row.browse) {
      return {0, row.top, 0, row.top + row.height};
    }
  }
  return {};
}

void OptionList::draw(const DRAWITEMSTRUCT& request) const {
  const OptionItem* item = controlOf(static_cast<int>(request.CtlID)).item;
  if (item == nullptr) return;
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
  DrawTextW(request.hDC, com::toWide(item->Caption).c_str(), -1, &text,
            DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  SelectObject(request.hDC, before);
  if ((request.itemState & ODS_FOCUS) != 0 && (request.itemState & ODS_NOFOCUSRECT) == 0) {
    InflateRect(&area, -1, -1);
    DrawFocusRect(request.hDC, &area);
  }
}

}  // namespace mervane::windows
