#include "calc/window/option_rows.h"

#include <algorithm>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/ImagePosition.hpp>
#include <com/sun/star/awt/XButton.hpp>
#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/awt/XListBox.hpp>
#include <com/sun/star/awt/XRadioButton.hpp>
#include <com/sun/star/awt/XStyleSettingsSupplier.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/style/VerticalAlignment.hpp>

#include "calc/texts.h"
#include "calc/window/option_tips.h"
#include "mervane/convert.h"
#include "support/globals.h"

namespace mervane::addin {

namespace {

using platform::OptionItem;
using platform::OptionKind;

constexpr int indentWidth = 14;
constexpr int margin = 5;
constexpr int gapAfterCaption = 8;
constexpr int browseWidth = 26;
constexpr int smallestFieldWidth = 120;
constexpr sal_Int16 alignLeft = 0;

bool isEdit(OptionKind kind) {
  return kind == OptionKind::edit || kind == OptionKind::editWithBrowse;
}
bool hasCaption(OptionKind kind) {
  return isEdit(kind) || kind == OptionKind::dropDown;
}
bool isButton(OptionKind kind) {
  return kind == OptionKind::groupHeader || kind == OptionKind::command;
}

const char* modelOf(OptionKind kind) {
  switch (kind) {
    case OptionKind::groupHeader:
    case OptionKind::command:
      return "UnoControlButtonModel";
    case OptionKind::check:
      return "UnoControlCheckBoxModel";
    case OptionKind::radio:
      return "UnoControlRadioButtonModel";
    case OptionKind::edit:
    case OptionKind::editWithBrowse:
      return "UnoControlEditModel";
    case OptionKind::dropDown:
      return "UnoControlListBoxModel";
    case OptionKind::staticLabel:
      return "UnoControlFixedTextModel";
    case OptionKind::spacer:
    case OptionKind::choice:
      break;
  }
  return nullptr;
}

Properties propertiesOf(const Control& control) {
  return Properties(control->getModel(), uno::UNO_QUERY_THROW);
}

}  // namespace

std::string OptionRows::bareCaption(const OptionItem& item) {
  const std::string& caption = item.Caption;
  return caption.ends_with(':') ? caption.substr(0, caption.size() - 1) : caption;
}

const OptionItem* OptionRows::firstField() const {
  bool open = true;
  for (const Row& row : rows_) {
    if (row.item->kind == OptionKind::groupHeader) open = row.item->Expanded;
    if (open && isEdit(row.item->kind)) return row.item;
  }
  return nullptr;
}

int OptionRows::rowHeight() const {
  int height = 0;
  for (const Row& row : rows_) height = std::max(height, row.height);
  return height;
}

int OptionRows::smallestWidth() const {
  return shell_.across(2 * margin + indentWidth + gapAfterCaption + smallestFieldWidth) + captionColumn_;
}

std::string OptionRows::shownText(const OptionItem& item) {
  return item.Value.isEmpty() ? std::string() : toText(item.Value, globals::locale());
}

// --- Making -------------------------------------------------------------------------------------------------------

void OptionRows::add(const Properties& list, const std::vector<std::string>& captions) {
  std::size_t position = 0;
  for (const OptionItem& item : items_) {
    Row row;
    row.item = &item;
    row.name = item.Key;
    row.marked = captions[position++];
    addRow(list, row);
    rows_.push_back(std::move(row));
  }
}

void OptionRows::addRow(const Properties& list, Row& row) {
  const OptionItem& item = *row.item;
  const char* kind = modelOf(item.kind);
  if (kind == nullptr) return;
  const auto addControl = [&](const char* model, const std::string& name) {
    const Properties properties = shell_.add(list, model, name);
    set(properties, "TabIndex", uno::Any(tabIndex_++));
    return properties;
  };
  if (hasCaption(item.kind)) {
    // A field takes its name for assistive tools from the caption before it.
    const Properties caption = addControl("UnoControlFixedTextModel", row.name + ".caption");
    set(caption, "Label", uno::Any(toOffice(row.marked)));
    setIfKnown(caption, "VerticalAlign", uno::Any(star::style::VerticalAlignment_MIDDLE));
  }
  const Properties field = addControl(kind, row.name);
  if (const std::string help = optionTip(item.Key); !help.empty()) set(field, "HelpText", uno::Any(toOffice(help)));
  if (item.bold) set(field, "FontWeight", uno::Any(awt::FontWeight::BOLD));
  if (isButton(item.kind)) {
    set(field, "Align", uno::Any(alignLeft));
    set(field, "ImagePosition", uno::Any(awt::ImagePosition::LeftCenter));
    // Assistive tools tell by the button's being down that a group is open.
    if (item.kind == OptionKind::groupHeader) setIfKnown(field, "Toggle", uno::Any(true));
  }
  if (item.kind == OptionKind::dropDown) {
    set(field, "Dropdown", uno::Any(true));
    uno::Sequence<rtl::OUString> choices(static_cast<sal_Int32>(item.SubItems.size()));
    sal_Int32 next = 0;
    for (const OptionItem& choice : item.SubItems) choices[next++] = toOffice(choice.Caption);
    set(field, "StringItemList", uno::Any(choices));
    set(field, "LineCount", uno::Any(static_cast<sal_Int16>(choices.getLength())));
  } else if (!isEdit(item.kind)) {
    set(field, "Label", uno::Any(toOffice(row.marked)));
    setIfKnown(field, "VerticalAlign", uno::Any(star::style::VerticalAlignment_MIDDLE));
  }
  if (item.kind == OptionKind::editWithBrowse) {
    const Properties browse = addControl("UnoControlButtonModel", row.name + ".browse");
    if (pictures_.isEmpty()) set(browse, "Label", uno::Any(rtl::OUString("...")));
    setIfKnown(browse, "ImageURL", uno::Any(pictures_.isEmpty() ? rtl::OUString() : pictures_ + "/pick.svg"));
    set(browse, "ImagePosition", uno::Any(awt::ImagePosition::Centered));
    set(browse, "HelpText", uno::Any(toOffice(said(text::pickOnTheSheet, {bareCaption(item)}))));
  }
}

void OptionRows::connect(const Control& list, Actions actions) {
  for (Row& row : rows_) {
    if (modelOf(row.item->kind) == nullptr) continue;
    row.field = DialogShell::controlIn(list, row.name);
    row.height = DialogShell::preferredSize(row.field).Height;
    row.height = std::max(row.height, shell_.down(row.item->height - 2));
    if (hasCaption(row.item->kind)) {
      row.caption = DialogShell::controlIn(list, row.name + ".caption");
      row.captionWidth = DialogShell::preferredSize(row.caption).Width;
      captionColumn_ = std::max(captionColumn_, row.captionWidth);
    }
    if (row.item->kind == OptionKind::editWithBrowse) row.browse = DialogShell::controlIn(list, row.name + ".browse");
    listen(row, actions);
  }
  refresh();
}

void OptionRows::listen(Row& row, const Actions& actions) {
  const OptionItem* const item = row.item;
  Row* const self = &row;  // The rows do not move any more.
  const auto click = [this, item, actions] {
    if (!refreshing_) actions.clicked(*item);
  };
  ControlEvents events;
  events.entered = [item, actions] { actions.entered(*item); };
  events.left = [item, actions] { actions.left(*item); };
  switch (item->kind) {
    case OptionKind::groupHeader:
    case OptionKind::command:
      events.pressed = click;
      break;
    case OptionKind::check:
      // The toolkit may report one click twice, and reports what we do to it as well; what already shows its item has
      // not been clicked.
      events.switched = [item, self, click](bool) {
        const uno::Reference<awt::XCheckBox> field(self->field, uno::UNO_QUERY_THROW);
        if ((field->getState() != 0) != item->Checked) click();
      };
      break;
    case OptionKind::radio:
      // It reports the one that loses its mark too.
      events.switched = [item, click](bool selected) {
        if (selected && !item->Checked) click();
      };
      break;
    case OptionKind::edit:
    case OptionKind::editWithBrowse:
      events.typed = [this, self] {
        if (!refreshing_) self->modified = true;
      };
      break;
    case OptionKind::dropDown:
      events.switched = [this, item, self, actions](bool) {
        const uno::Reference<awt::XListBox> field(self->field, uno::UNO_QUERY_THROW);
        if (refreshing_ || fromOffice(field->getSelectedItem()) == shownText(*item)) return;
        actions.chosen(*item, field->getSelectedItemPos());
      };
      break;
    case OptionKind::staticLabel:
      events.touched = click;
      break;
    case OptionKind::spacer:
    case OptionKind::choice:
      return;
  }
  row.listeners.push_back(ControlListener::attach(row.field, events));
  if (row.caption.is()) {
    ControlEvents touches;
    touches.touched = [this, item, click] {
      focus(*item);
      click();
    };
    row.listeners.push_back(ControlListener::attach(row.caption, touches));
  }
  if (row.browse.is()) {
    ControlEvents presses;
    presses.pressed = [item, actions] { actions.browsed(*item); };
    presses.entered = events.entered;
    row.listeners.push_back(ControlListener::attach(row.browse, presses));
  }
}

void OptionRows::detach() {
  for (Row& row : rows_) {
    for (const auto& listener : row.listeners) listener->detach();
    row.listeners.clear();
  }
}

// --- Showing ------------------------------------------------------------------------------------------------------

void OptionRows::refresh() {
  refreshing_ = true;
  for (Row& row : rows_) {
    if (row.field.is()) showItem(row);
  }
  refreshing_ = false;
}

void OptionRows::showItem(Row& row) {
  const OptionItem& item = *row.item;
  switch (item.kind) {
    case OptionKind::edit:
    case OptionKind::editWithBrowse: {
      const uno::Reference<awt::XTextComponent> field(row.field, uno::UNO_QUERY_THROW);
      const rtl::OUString text = toOffice(shownText(item));
      if (!row.modified && field->getText() != text) field->setText(text);
      break;
    }
    case OptionKind::check: {
      const uno::Reference<awt::XCheckBox> field(row.field, uno::UNO_QUERY_THROW);
      const sal_Int16 state = item.Checked ? 1 : 0;
      if (field->getState() != state) field->setState(state);
      break;
    }
    case OptionKind::radio: {
      const uno::Reference<awt::XRadioButton> field(row.field, uno::UNO_QUERY_THROW);
      if ((field->getState() != 0) != item.Checked) field->setState(item.Checked);
      break;
    }
    case OptionKind::dropDown: {
      const uno::Reference<awt::XListBox> field(row.field, uno::UNO_QUERY_THROW);
      const rtl::OUString caption = toOffice(shownText(item));
      if (field->getSelectedItem() != caption) {
        field->selectItemPos(field->getSelectedItemPos(), false);
        field->selectItem(caption, true);
      }
      break;
    }
    case OptionKind::groupHeader:
      showHeader(row);
      break;
    case OptionKind::staticLabel: {
      const Properties field = propertiesOf(row.field);
      set(field, "Label", uno::Any(toOffice(item.Caption)));
      const uno::Reference<awt::XStyleSettingsSupplier> supplier(row.field, uno::UNO_QUERY);
      if (item.textColour == platform::colourGreyText && supplier.is()) {
        set(field, "TextColor", uno::Any(supplier->getStyleSettings()->getDisableColor()));
      }
      break;
    }
    case OptionKind::command:
      if (!pictures_.isEmpty()) {
        setIfKnown(propertiesOf(row.field), "ImageURL",
                   uno::Any(pictures_ + "/" + toOffice(item.imageKey).toAsciiLowerCase() + ".svg"));
      }
      break;
    case OptionKind::spacer:
    case OptionKind::choice:
      break;
  }
}

void OptionRows::showHeader(Row& row) {
  const bool open = row.item->Expanded;
  const Properties field = propertiesOf(row.field);
  const rtl::OUString help = toOffice(said(open ? text::groupIsOpen : text::groupIsClosed));
  setIfKnown(field, "State", uno::Any(static_cast<sal_Int16>(open ? 1 : 0)));
  rtl::OUString now;
  field->getPropertyValue("HelpText") >>= now;
  if (now == help) return;
  set(field, "HelpText", uno::Any(help));
  if (pictures_.isEmpty()) {
    // Without pictures the caption itself shows the state.
    set(field, "Label", uno::Any(toOffice((open ? "\xE2\x96\xBE " : "\xE2\x96\xB8 ") + row.marked)));
  } else {
    setIfKnown(field, "ImageURL",
               uno::Any(pictures_ + (open ? rtl::OUString("/open.svg") : rtl::OUString("/closed.svg"))));
  }
}

int OptionRows::place(int width, int scrolled) {
  const int edge = shell_.across(margin);
  const int fieldColumn = edge + shell_.across(indentWidth) + captionColumn_ + shell_.across(gapAfterCaption);
  const int gap = std::max(shell_.down(2), 1);
  int y = shell_.down(2);
  bool open = true;
  for (Row& row : rows_) {
    const OptionItem& item = *row.item;
    if (item.kind == OptionKind::groupHeader) open = true;
    const bool seen = open;
    const int height = row.field.is() ? row.height : gap;
    row.top = y;
    const int left = item.kind == OptionKind::groupHeader ? edge : edge + shell_.across(indentWidth) * item.indent;
    const int right = width - edge;
    const bool inFieldColumn = hasCaption(item.kind) || (!item.automaticWidth && item.kind == OptionKind::check);
    const int start = inFieldColumn ? fieldColumn : left;
    const int browse = row.browse.is() ? shell_.across(browseWidth) : 0;
    const int top = y - scrolled;
    if (seen) {
      addin::place(row.caption, left, top, fieldColumn - left - shell_.across(2), height);
      const int natural =
          item.kind == OptionKind::command ? DialogShell::preferredSize(row.field).Width : right - start;
      if (row.field.is()) addin::place(row.field, start, top, std::min(natural, right - start) - browse, height);
      addin::place(row.browse, right - browse, top, browse, height);
    }
    show(row.caption, seen);
    show(row.field, seen);
    show(row.browse, seen);
    if (seen) y += height;
    if (seen && item.kind == OptionKind::groupHeader) y += gap;
    row.bottom = y;
    if (item.kind == OptionKind::groupHeader) open = item.Expanded;
  }
  return y + shell_.down(2);
}

// --- Fields -------------------------------------------------------------------------------------------------------

OptionRows::Row* OptionRows::rowOf(const OptionItem& item) {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.item == &item; });
  return found == rows_.end() ? nullptr : &*found;
}

const OptionRows::Row* OptionRows::rowOf(const OptionItem& item) const {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.item == &item; });
  return found == rows_.end() ? nullptr : &*found;
}

bool OptionRows::isModified(const OptionItem& item) const {
  const Row* row = rowOf(item);
  return row != nullptr && isEdit(item.kind) && row->modified;
}

std::string OptionRows::typedText(const OptionItem& item) const {
  const Row* row = rowOf(item);
  if (row == nullptr || !isEdit(item.kind)) return {};
  const uno::Reference<awt::XTextComponent> field(row->field, uno::UNO_QUERY_THROW);
  return fromOffice(field->getText());
}

void OptionRows::revert(const OptionItem& item) {
  Row* row = rowOf(item);
  if (row == nullptr || !isEdit(item.kind)) return;
  row->modified = false;
  const uno::Reference<awt::XTextComponent> field(row->field, uno::UNO_QUERY_THROW);
  refreshing_ = true;
  field->setText(toOffice(shownText(item)));
  refreshing_ = false;
  field->setSelection(awt::Selection(0, field->getText().getLength()));
}

void OptionRows::focus(const OptionItem& item) {
  const Row* row = rowOf(item);
  if (row == nullptr || !row->field.is()) return;
  const uno::Reference<awt::XWindow> window(row->field, uno::UNO_QUERY_THROW);
  window->setFocus();
}

OptionRows::Extent OptionRows::extentOf(const OptionItem& item) const {
  Extent extent;
  bool inside = false;
  for (const Row& row : rows_) {
    if (row.item == &item) {
      extent = {row.top, row.bottom};
      inside = item.kind == OptionKind::groupHeader;
    } else if (inside && row.item->kind == OptionKind::groupHeader) {
      break;
    } else if (inside) {
      extent.bottom = row.bottom;
    }
  }
  return extent;
}

}  // namespace mervane::addin
