#include "calc/window/error_window.h"

#include <algorithm>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/XTextComponent.hpp>
#include <com/sun/star/style/VerticalAlignment.hpp>
#include <string>

#include "calc/border.h"
#include "calc/texts.h"
#include "calc/window/button_bar.h"
#include "calc/window/dialog_closer.h"
#include "calc/window/pictures.h"
#include "calc/window/window_listener.h"
#include "platform/mnemonics.h"

namespace mervane::addin {
namespace {

using platform::ErrorWindowEvents;
using platform::OptionItem;
using platform::OptionItems;

// The design: 340 by 197 pixels of client area, a band of 38 with margins of 4.
constexpr int clientWidth = 340;
constexpr int clientHeight = 220;
constexpr int bandHeight = 38;
constexpr int edge = 5;
constexpr int pictureSide = 32;

class ErrorWindow final : public platform::ErrorWindow {
 public:
  ErrorWindow(const Office& office, const uno::Reference<awt::XWindowPeer>& parent,
              std::shared_ptr<DialogCloser> closer)
      : office_(office), parent_(parent), closer_(std::move(closer)) {}
  ~ErrorWindow() override;

  void load(const std::string& caption, const OptionItems& title, const OptionItems& buttons,
            ErrorWindowEvents& events) override;
  void itemsChanged() override;
  void setMessage(const std::string& text) override;
  void show() override;
  void hide() override;
  [[nodiscard]] float barWidth() const override;

 private:
  void build(const std::string& caption);
  void layOut();
  [[nodiscard]] int clientWidthNow() const { return shell_->window()->getPosSize().Width; }

  Office office_;
  uno::Reference<awt::XWindowPeer> parent_;
  std::shared_ptr<DialogCloser> closer_;
  const OptionItems* title_ = nullptr;
  const OptionItems* buttons_ = nullptr;
  ErrorWindowEvents* events_ = nullptr;
  std::unique_ptr<DialogShell> shell_;
  std::unique_ptr<ButtonBar> bar_;
  Control picture_;
  Control band_;
  Control report_;
  rtl::Reference<WindowListener> listener_;
  bool ended_ = false;
  bool shown_ = false;
  int activations_ = 0;
};

ErrorWindow::~ErrorWindow() {
  atBorder([&] {
    if (listener_.is()) listener_->detach();
    if (bar_) bar_->detach();
  });
}

void ErrorWindow::load(const std::string& caption, const OptionItems& title, const OptionItems& buttons,
                       ErrorWindowEvents& events) {
  title_ = &title;
  buttons_ = &buttons;
  events_ = &events;
  build(caption);
  listener_ = new WindowListener({.resized =
                                      [this] {
                                        layOut();
                                        if (shown_) events_->resized();
                                      },
                                  .activated =
                                      [this] {
                                        // The first one is told by `show`, in its place.
                                        if (shown_ && activations_++ > 0) events_->activated();
                                      },
                                  .key = {}});
  const int wanted = bar_->width() + 2 * shell_->across(edge);
  shell_->resize(std::max(shell_->across(clientWidth), wanted), shell_->down(clientHeight));
  shell_->centre();
  layOut();
  shell_->window()->addWindowListener(listener_.get());
  shell_->topWindow()->addTopWindowListener(listener_.get());
}

void ErrorWindow::build(const std::string& caption) {
  shell_ = std::make_unique<DialogShell>(office_, caption);
  const Properties picture = shell_->add("UnoControlImageControlModel", "picture");
  set(picture, "Border", uno::Any(static_cast<sal_Int16>(0)));
  setIfKnown(picture, "Tabstop", uno::Any(false));
  const rtl::OUString pictures = picturesFor(office_, parent_);
  if (!pictures.isEmpty()) setIfKnown(picture, "ImageURL", uno::Any(pictures + "/icon.svg"));
  const Properties band = shell_->add("UnoControlFixedTextModel", "band");
  set(band, "FontWeight", uno::Any(awt::FontWeight::BOLD));
  setIfKnown(band, "VerticalAlign", uno::Any(star::style::VerticalAlignment_MIDDLE));
  set(band, "MultiLine", uno::Any(true));
  const Properties report = shell_->add("UnoControlEditModel", "report");
  set(report, "MultiLine", uno::Any(true));
  set(report, "ReadOnly", uno::Any(true));
  set(report, "VScroll", uno::Any(true));
  set(report, "HelpText", uno::Any(toOffice(said(text::failureReport))));
  set(report, "TabIndex", uno::Any(static_cast<sal_Int16>(20)));
  bar_ = std::make_unique<ButtonBar>(*shell_, *buttons_, pictures);
  bar_->add(platform::markedCaptions(*buttons_, {}, '~').buttons, 1);
  shell_->open(parent_);
  picture_ = shell_->control("picture");
  band_ = shell_->control("band");
  report_ = shell_->control("report");
  bar_->connect([this](const std::string& key) { events_->clicked(key); }, {});
}

void ErrorWindow::layOut() {
  const awt::Rectangle client = shell_->window()->getPosSize();
  const int margin = shell_->across(edge);
  const int side = shell_->across(pictureSide);
  const int band = std::max(shell_->down(bandHeight), side);
  const int bar = bar_->height() + 2 * margin;
  place(picture_, margin, margin + (band - side) / 2, side, side);
  place(band_, 2 * margin + side, margin, client.Width - side - 3 * margin, band);
  place(report_, margin, band + 2 * margin, client.Width - 2 * margin, client.Height - band - 2 * margin - bar);
  bar_->place(std::max((static_cast<int>(client.Width) - bar_->width()) / 2, margin), client.Height - bar + margin);
}

void ErrorWindow::itemsChanged() {
  for (const OptionItem& item : *title_) {
    set(Properties(band_->getModel(), uno::UNO_QUERY_THROW), "Label", uno::Any(toOffice(item.Caption)));
  }
  layOut();
}

void ErrorWindow::setMessage(const std::string& text) {
  const uno::Reference<awt::XTextComponent> report(report_, uno::UNO_QUERY_THROW);
  report->setText(toOffice(text));
}

void ErrorWindow::show() {
  ended_ = false;
  activations_ = 0;
  shown_ = true;
  events_->activated();
  events_->resized();
  if (!closer_ || !closer_->isClosed()) {
    const KnownShowing known(closer_.get(), *shell_);
    shell_->execute();
  }
  shown_ = false;
  if (!ended_) events_->closed();
  ended_ = true;
}

void ErrorWindow::hide() {
  ended_ = true;
  if (shown_) shell_->end();
}

float ErrorWindow::barWidth() const {
  return shell_->twips(clientWidthNow() - 2 * shell_->across(edge));
}

}  // namespace

std::unique_ptr<platform::ErrorWindow> createErrorWindow(const Office& office,
                                                         const uno::Reference<awt::XWindowPeer>& parent,
                                                         std::shared_ptr<DialogCloser> closer) {
  return std::make_unique<ErrorWindow>(office, parent, std::move(closer));
}

}  // namespace mervane::addin
