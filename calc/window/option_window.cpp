#include "calc/window/option_window.h"

#include <algorithm>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/ScrollBarOrientation.hpp>
#include <com/sun/star/awt/XScrollBar.hpp>
#include <string>
#include <utility>

#include "calc/border.h"
#include "calc/texts.h"
#include "calc/window/button_bar.h"
#include "calc/window/desk_lock.h"
#include "calc/window/dialog_closer.h"
#include "calc/window/help.h"
#include "calc/window/message.h"
#include "calc/window/option_rows.h"
#include "calc/window/option_tips.h"
#include "calc/window/pictures.h"
#include "calc/window/window_listener.h"
#include "platform/mnemonics.h"

namespace mervane::addin {
namespace {

using platform::OptionItem;
using platform::OptionItems;
using platform::OptionKind;
using platform::OptionWindowEvents;
using platform::UnloadMode;
using platform::WindowMeasure;

constexpr int firstClientWidth = 343;
constexpr int listMargin = 5;
constexpr int scrollBarWidth = 12;
constexpr int lineHeight = 21;
constexpr int smallestHeight = 160;
constexpr int noteLine = 13;
constexpr int fewestRows = 3;
constexpr sal_Int16 lastTabIndex = 100;
/// A first window is not made higher than this, however large the font; the list scrolls.
constexpr int highestFirstClient = 640;

class OptionWindow final : public platform::OptionWindow {
 public:
  OptionWindow(const Office& office, const uno::Reference<awt::XWindowPeer>& parent,
               std::shared_ptr<DialogCloser> closer, EntryGate gate)
      : office_(office), parent_(parent), closer_(std::move(closer)), gate_(std::move(gate)) {}
  ~OptionWindow() override;

  void load(const std::string& caption, const OptionItems& options, const OptionItems& buttons,
            OptionWindowEvents& events) override;
  void itemsChanged() override;
  void show() override;
  void hide() override;
  [[nodiscard]] float measure(WindowMeasure which) const override;
  void setMeasure(WindowMeasure which, float twips) override;
  [[nodiscard]] float listWidth() const override;

 private:
  void build(const std::string& caption);
  void layOut();
  void layOutList();
  void windowResized();
  void scrollTo(int position);
  void bringIntoSight(const OptionItem& item);
  [[nodiscard]] bool keyPressed(int key);
  [[nodiscard]] int noteHeight() const;
  [[nodiscard]] awt::Size smallestClient() const;
  void keepSmallestSize();
  void takeFirstFocus();
  void tellNote(const std::string& sentence);

  void entered(const OptionItem& item);
  void clicked(const OptionItem& item);
  void left(const OptionItem& item);
  bool finishEditor();
  bool finishEditor(const OptionItem& item);
  void pressButton(const std::string& key);
  [[nodiscard]] bool isRefused();
  void runOnce();
  void askToClose();
  [[nodiscard]] int lastPosition() const { return std::max(contentHeight_ - static_cast<int>(area_.Height), 0); }

  Office office_;
  uno::Reference<awt::XWindowPeer> parent_;
  std::shared_ptr<DialogCloser> closer_;
  EntryGate gate_;
  const OptionItems* options_ = nullptr;
  const OptionItems* buttonItems_ = nullptr;
  OptionWindowEvents* events_ = nullptr;
  std::unique_ptr<DialogShell> shell_;
  std::unique_ptr<OptionRows> rows_;
  std::unique_ptr<ButtonBar> bar_;
  Control list_;
  Control scrollBar_;
  /// Says what the field with the keyboard takes, or why an entry was not taken.
  Control note_;
  Control help_;
  int noteLine_ = 0;
  rtl::OUString pictures_;
  rtl::Reference<ControlListener> scrollListener_;
  rtl::Reference<ControlListener> helpListener_;
  rtl::Reference<WindowListener> windowListener_;
  const OptionItem* focused_ = nullptr;
  /// The edit field that had the keyboard last.
  const OptionItem* lastField_ = nullptr;
  bool keepsNote_ = false;
  bool hasFirstFocus_ = false;
  /// The list with its scroll bar, in pixels of the dialog.
  awt::Rectangle area_{};
  int contentHeight_ = 0;
  int scrolled_ = 0;
  bool shown_ = false;
  bool ended_ = false;
  bool laidOut_ = false;
  bool finishing_ = false;
  /// Escape closes by the button of that name, the close box by itself; both end the office's dialog alike.
  bool escaped_ = false;
};

OptionWindow::~OptionWindow() {
  atBorder([&] {
    if (windowListener_.is()) windowListener_->detach();
    if (scrollListener_.is()) scrollListener_->detach();
    if (helpListener_.is()) helpListener_->detach();
    if (rows_) rows_->detach();
    if (bar_) bar_->detach();
  });
}

// --- Making -------------------------------------------------------------------------------------------------------

void OptionWindow::load(const std::string& caption, const OptionItems& options, const OptionItems& buttons,
                        OptionWindowEvents& events) {
  options_ = &options;
  buttonItems_ = &buttons;
  events_ = &events;
  build(caption);
  windowListener_ = new WindowListener({.resized = [this] { windowResized(); },
                                        .activated = [this] { takeFirstFocus(); },
                                        .key = [this](int key) { return keyPressed(key); }});
  // Wide enough for the design, high enough for the groups that are open in it.
  shell_->resize(shell_->across(firstClientWidth), shell_->down(smallestHeight));
  layOut();
  const int around = shell_->down(smallestHeight) - area_.Height;
  shell_->resize(shell_->across(firstClientWidth), std::min(contentHeight_ + around, shell_->down(highestFirstClient)));
  shell_->centre();
  layOut();
  shell_->window()->addWindowListener(windowListener_.get());
  shell_->topWindow()->addTopWindowListener(windowListener_.get());
}

void OptionWindow::build(const std::string& caption) {
  const platform::MarkedCaptions captions = platform::markedCaptions(*buttonItems_, *options_, '~', {said(text::help)});
  pictures_ = picturesFor(office_, parent_);
  shell_ = std::make_unique<DialogShell>(office_, caption);
  const Properties list = shell_->add("UnoFrameModel", "list");
  set(list, "TabIndex", uno::Any(static_cast<sal_Int16>(0)));
  const Properties scroll = shell_->add("UnoControlScrollBarModel", "scroll");
  set(scroll, "Orientation", uno::Any(awt::ScrollBarOrientation::VERTICAL));
  set(scroll, "TabIndex", uno::Any(static_cast<sal_Int16>(1)));
  setIfKnown(scroll, "Tabstop", uno::Any(false));
  setIfKnown(scroll, "LiveScroll", uno::Any(true));
  rows_ = std::make_unique<OptionRows>(*shell_, *options_, pictures_);
  rows_->add(list, captions.options);
  bar_ = std::make_unique<ButtonBar>(*shell_, *buttonItems_, pictures_);
  bar_->add(captions.buttons, 2);
  const Properties note = shell_->add("UnoControlFixedTextModel", "note");
  set(note, "MultiLine", uno::Any(true));
  set(note, "Label", uno::Any(rtl::OUString("X")));  // For its height.
  const Properties help = shell_->add("UnoControlButtonModel", "help");
  set(help, "Label", uno::Any(toOffice(captions.ownButtons.front())));
  set(help, "HelpText", uno::Any(toOffice(said(text::helpTip))));
  set(help, "TabIndex", uno::Any(lastTabIndex));

  shell_->open(parent_);
  list_ = shell_->control("list");
  scrollBar_ = shell_->control("scroll");
  note_ = shell_->control("note");
  noteLine_ = std::max(DialogShell::preferredSize(note_).Height, shell_->down(noteLine));
  tellNote({});
  help_ = shell_->control("help");
  rows_->connect(list_, {.clicked = [this](const OptionItem& item) { clicked(item); },
                         .browsed =
                             [this](const OptionItem& item) {
                               if (finishEditor()) events_->browsed(item.Key);
                             },
                         .chosen =
                             [this](const OptionItem& item, int choice) {
                               if (choice < 0 || choice >= static_cast<int>(item.SubItems.size())) return;
                               events_->chosen(item.Key, item.SubItems[static_cast<std::size_t>(choice)].Caption);
                             },
                         .entered = [this](const OptionItem& item) { entered(item); },
                         .left = [this](const OptionItem& item) { left(item); }});
  bar_->connect([this](const std::string& key) { pressButton(key); }, [this] { focused_ = nullptr; });
  ControlEvents helping;
  helping.pressed = [this] { openHelp(office_, shell_->peer()); };
  helpListener_ = ControlListener::attach(help_, helping);
  ControlEvents scrolling;
  scrolling.moved = [this](int value) { scrollTo(value); };
  scrollListener_ = ControlListener::attach(scrollBar_, scrolling);
}

// --- Place and size -----------------------------------------------------------------------------------------------

void OptionWindow::layOut() {
  const awt::Rectangle client = shell_->window()->getPosSize();
  const int margin = shell_->across(listMargin);
  const int bar = bar_->height() + 2 * margin;
  const int inside = std::max(static_cast<int>(client.Width) - 2 * margin, 0);
  const int note = noteHeight();
  area_ = {margin, margin, inside, std::max(static_cast<int>(client.Height) - bar - note - margin, 0)};
  place(note_, margin, client.Height - bar - note + margin, inside, note - margin);
  bar_->place(margin, client.Height - bar + margin);
  const int helpWidth = DialogShell::preferredSize(help_).Width + shell_->across(8);
  place(help_, client.Width - margin - helpWidth, client.Height - bar + margin, helpWidth, bar_->height());
  layOutList();
}

void OptionWindow::layOutList() {
  // Whether the scroll bar is needed is known when the rows are placed; it takes its room from them.
  contentHeight_ = rows_->place(area_.Width, scrolled_);
  const bool scrolls = contentHeight_ > area_.Height;
  const int barWidth = scrolls ? shell_->across(scrollBarWidth) : 0;
  if (scrolls) rows_->place(area_.Width - barWidth, scrolled_);
  place(list_, area_.X, area_.Y, area_.Width - barWidth, area_.Height);
  place(scrollBar_, area_.X + area_.Width - barWidth, area_.Y, barWidth, area_.Height);
  addin::show(scrollBar_, scrolls);
  const uno::Reference<awt::XScrollBar> bar(scrollBar_, uno::UNO_QUERY_THROW);
  const int line = shell_->down(lineHeight);
  bar->setVisibleSize(area_.Height);
  bar->setMaximum(std::max(contentHeight_, static_cast<int>(area_.Height)));
  bar->setBlockIncrement(std::max(static_cast<int>(area_.Height) - line, 1));
  bar->setLineIncrement(line);
  if (bar->getValue() != scrolled_) bar->setValue(scrolled_);
  if (scrolled_ > lastPosition()) scrollTo(lastPosition());
}

void OptionWindow::scrollTo(int position) {
  position = std::clamp(position, 0, lastPosition());
  if (position == scrolled_) return;
  scrolled_ = position;
  layOutList();
}

void OptionWindow::bringIntoSight(const OptionItem& item) {
  const OptionRows::Extent row = rows_->extentOf(item);
  // Of a group that is higher than the list, the header stays in sight.
  if (row.bottom > scrolled_ + area_.Height) scrollTo(std::min(row.bottom - static_cast<int>(area_.Height), row.top));
  if (row.top < scrolled_) scrollTo(row.top);
}

/// Two lines of text.
int OptionWindow::noteHeight() const {
  return 2 * noteLine_ + shell_->across(listMargin);
}

/// The smallest window in which no field and no button vanishes, and some rows are seen.
awt::Size OptionWindow::smallestClient() const {
  const int margin = shell_->across(listMargin);
  const int bar = bar_->width() + DialogShell::preferredSize(help_).Width + shell_->across(3 * listMargin + 8);
  const int list = rows_->smallestWidth() + shell_->across(scrollBarWidth);
  return {std::max(bar, list) + 2 * margin,
          bar_->height() + 3 * margin + noteHeight() + fewestRows * rows_->rowHeight()};
}

void OptionWindow::keepSmallestSize() {
  const awt::Rectangle now = shell_->window()->getPosSize();
  const awt::Size least = smallestClient();
  if (now.Width >= least.Width && now.Height >= least.Height) return;
  shell_->resize(std::max(now.Width, least.Width), std::max(now.Height, least.Height));
}

void OptionWindow::windowResized() {
  if (shown_) keepSmallestSize();
  layOut();
  if (laidOut_) events_->resized();
}

float OptionWindow::measure(WindowMeasure which) const {
  const awt::Rectangle place = shell_->place();
  switch (which) {
    case WindowMeasure::left:
      return shell_->twips(place.X);
    case WindowMeasure::top:
      return shell_->twips(place.Y);
    case WindowMeasure::width:
      return shell_->twips(place.Width);
    case WindowMeasure::height:
      return shell_->twips(place.Height);
  }
  return 0.0F;
}

void OptionWindow::setMeasure(WindowMeasure which, float twips) {
  const int value = shell_->fromTwips(twips);
  const awt::Rectangle now = shell_->place();
  switch (which) {
    case WindowMeasure::left:
      return shell_->moveAcross(value);
    case WindowMeasure::top:
      return shell_->moveDown(value);
    case WindowMeasure::width:
      return shell_->resize(value, now.Height);
    case WindowMeasure::height:
      return shell_->resize(now.Width, value);
  }
}

float OptionWindow::listWidth() const {
  return shell_->twips(area_.Width);
}

// --- Showing ------------------------------------------------------------------------------------------------------

void OptionWindow::itemsChanged() {
  rows_->refresh();
  layOutList();
}

void OptionWindow::show() {
  ended_ = false;
  hasFirstFocus_ = false;
  keepSmallestSize();
  layOut();
  if (!laidOut_) {
    laidOut_ = true;
    events_->resized();
  }
  const KeyWatch keys(office_, windowListener_);
  shown_ = true;
  while (!ended_) {
    escaped_ = false;
    runOnce();
    if (ended_) break;
    if (closer_ && closer_->isClosed()) {
      // The document is gone and the window with it.
      if (events_->closeRequested(UnloadMode::userRequest)) break;
    }
    finishEditor();
    askToClose();
  }
  shown_ = false;
}

void OptionWindow::runOnce() {
  if (closer_ && closer_->isClosed()) return;
  const KnownShowing known(closer_.get(), *shell_);
  const DeskLock others(office_, parent_);
  shell_->execute();
}

void OptionWindow::hide() {
  ended_ = true;
  if (shown_) shell_->end();
}

/// The office's dialog has been closed by the user; it comes back where that is not granted.
void OptionWindow::askToClose() {
  if (!escaped_) {
    if (events_->closeRequested(UnloadMode::userRequest)) ended_ = true;
    return;
  }
  for (const OptionItem& button : *buttonItems_) {
    if (button.Key == "CLOSE") return pressButton(button.Key);
  }
}

bool OptionWindow::keyPressed(int key) {
  // The keys of the whole office come by; a message before the dialog has its own.
  if (!shown_ || finishing_ || !shell_->hasKeyboard()) return false;
  const int page = std::max(static_cast<int>(area_.Height) - shell_->down(lineHeight), 1);
  const bool inDropDown = focused_ != nullptr && focused_->kind == OptionKind::dropDown;
  switch (key) {
    case awt::Key::F1:
      openHelp(office_, shell_->peer());
      return true;
    case awt::Key::ESCAPE:
      if (focused_ != nullptr && rows_->isModified(*focused_)) {
        rows_->revert(*focused_);
        return true;
      }
      escaped_ = true;  // The toolkit closes an open drop-down field by it, or else the dialog.
      if (focused_ == nullptr || focused_->kind != OptionKind::groupHeader) return false;
      // A button that a click has put down takes the key for itself and does nothing with it.
      shell_->end();
      return true;
    case awt::Key::PAGEUP:
    case awt::Key::PAGEDOWN:
      if (inDropDown) return false;
      scrollTo(scrolled_ + (key == awt::Key::PAGEUP ? -page : page));
      return true;
    default:
      escaped_ = false;
      return false;
  }
}

// --- What the user does -------------------------------------------------------------------------------------------

void OptionWindow::clicked(const OptionItem& item) {
  if (!finishEditor()) return;
  events_->clicked(item.Key);
  if (item.kind == OptionKind::groupHeader) bringIntoSight(item);
}

/// When the dialog comes up the keyboard is where the user was last, or in the first field; the toolkit would begin
/// with the header of the first group.
void OptionWindow::takeFirstFocus() {
  if (!shown_ || hasFirstFocus_) return;
  hasFirstFocus_ = true;
  const OptionItem* const field = lastField_ != nullptr ? lastField_ : rows_->firstField();
  if (field != nullptr) rows_->focus(*field);
}

void OptionWindow::entered(const OptionItem& item) {
  focused_ = &item;
  if (item.kind == OptionKind::edit || item.kind == OptionKind::editWithBrowse) lastField_ = &item;
  bringIntoSight(item);
  // What has just been refused is left to be read, though the keyboard has gone on to the next field.
  if (!std::exchange(keepsNote_, false)) tellNote(optionTip(item.Key));
}

void OptionWindow::tellNote(const std::string& sentence) {
  set(Properties(note_->getModel(), uno::UNO_QUERY_THROW), "Label", uno::Any(toOffice(sentence)));
}

void OptionWindow::left(const OptionItem& item) {
  finishEditor(item);
}

bool OptionWindow::finishEditor() {
  return focused_ == nullptr || finishEditor(*focused_);
}

bool OptionWindow::finishEditor(const OptionItem& item) {
  if (finishing_ || !rows_->isModified(item)) return true;
  finishing_ = true;
  std::string typed = rows_->typedText(item);
  if (gate_.readReference && item.kind == OptionKind::editWithBrowse) typed = gate_.readReference(typed);
  const bool accepted = events_->edited(item.Key, typed);
  if (!accepted) tellNote(said(text::refusedEntry, {OptionRows::bareCaption(item), typed, optionTip(item.Key)}));
  keepsNote_ = !accepted;
  rows_->revert(item);
  finishing_ = false;
  return accepted;
}

bool OptionWindow::isRefused() {
  const auto refusal = gate_.refusalOf ? gate_.refusalOf(*options_) : std::nullopt;
  if (!refusal) return false;
  showMessage(office_, shell_->peer(), awt::MessageBoxType_WARNINGBOX, refusal->sentence);
  rows_->focus(options_->Item(refusal->key));
  return true;
}

void OptionWindow::pressButton(const std::string& key) {
  // A refused entry is not passed over: the user sees the earlier value again before anything is done with it.
  if (!finishEditor()) return;
  if (key == "CLASSIFY" && isRefused()) return;
  events_->buttonClicked(key);
}

}  // namespace

std::unique_ptr<platform::OptionWindow> createOptionWindow(const Office& office,
                                                           const uno::Reference<awt::XWindowPeer>& parent,
                                                           std::shared_ptr<DialogCloser> closer, EntryGate gate) {
  return std::make_unique<OptionWindow>(office, parent, std::move(closer), std::move(gate));
}

}  // namespace mervane::addin
