#include "calc/window/dialog_shell.h"

#include <algorithm>
#include <cmath>
#include <com/sun/star/awt/DeviceInfo.hpp>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/awt/XDevice.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XLayoutConstrains.hpp>
#include <com/sun/star/awt/XUnitConversion.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/util/MeasureUnit.hpp>

namespace mervane::addin {

namespace {

// The font that the designs are drawn for: 1.5 by 1.625 pixels to its unit.
constexpr double designUnitAcross = 1.5;
constexpr double designUnitDown = 1.625;
constexpr double twipsPerInch = 1440.0;
constexpr double inchesPerMetre = 1.0 / 0.0254;

}  // namespace

DialogShell::DialogShell(const Office& office, const std::string& title) {
  const auto model = office.create<awt::XControlModel>("com.sun.star.awt.UnoControlDialogModel");
  factory_.set(model, uno::UNO_QUERY_THROW);
  names_.set(model, uno::UNO_QUERY_THROW);
  const Properties properties(model, uno::UNO_QUERY_THROW);
  set(properties, "Title", uno::Any(toOffice(title)));
  set(properties, "Moveable", uno::Any(true));
  set(properties, "Closeable", uno::Any(true));
  setIfKnown(properties, "Sizeable", uno::Any(true));
  toolkit_ = office.create<awt::XToolkit>("com.sun.star.awt.Toolkit");
  dialog_ = office.create<awt::XControl>("com.sun.star.awt.UnoControlDialog");
  dialog_->setModel(model);
  window_.set(dialog_, uno::UNO_QUERY_THROW);
}

DialogShell::~DialogShell() {
  try {
    const uno::Reference<star::lang::XComponent> component(dialog_, uno::UNO_QUERY_THROW);
    component->dispose();
  } catch (const uno::Exception&) {
    return;  // The office has closed it already.
  }
}

Properties DialogShell::add(const Properties& container, const char* kind, const std::string& name) {
  return add(uno::Reference<star::container::XNameContainer>(container, uno::UNO_QUERY_THROW), kind, name);
}

Properties DialogShell::add(const uno::Reference<star::container::XNameContainer>& container, const char* kind,
                            const std::string& name) {
  const rtl::OUString service = rtl::OUString("com.sun.star.awt.") + rtl::OUString::createFromAscii(kind);
  const Properties model(factory_->createInstance(service), uno::UNO_QUERY_THROW);
  set(model, "Name", uno::Any(toOffice(name)));
  container->insertByName(toOffice(name), uno::Any(model));
  return model;
}

void DialogShell::open(const uno::Reference<awt::XWindowPeer>& parent) {
  parent_.set(parent, uno::UNO_QUERY);
  window_->setVisible(false);
  dialog_->createPeer(toolkit_, parent);
  const uno::Reference<awt::XDevice> device(dialog_->getPeer(), uno::UNO_QUERY_THROW);
  const double pixels = device->getInfo().PixelPerMeterX / inchesPerMetre;
  if (pixels > 1.0) pixelsPerInch_ = std::round(pixels);
  const uno::Reference<awt::XUnitConversion> units(dialog_->getPeer(), uno::UNO_QUERY_THROW);
  hundredUnits_ = units->convertSizeToPixel(awt::Size(100, 100), star::util::MeasureUnit::APPFONT);
}

Control DialogShell::control(const std::string& name) const {
  return controlIn(dialog_, name);
}

Control DialogShell::controlIn(const Control& container, const std::string& name) {
  const uno::Reference<awt::XControlContainer> controls(container, uno::UNO_QUERY_THROW);
  return Control(controls->getControl(toOffice(name)), uno::UNO_SET_THROW);
}

uno::Reference<awt::XTopWindow> DialogShell::topWindow() const {
  return uno::Reference<awt::XTopWindow>(dialog_, uno::UNO_QUERY_THROW);
}

bool DialogShell::hasKeyboard() const {
  const uno::Reference<awt::XExtendedToolkit> toolkit(toolkit_, uno::UNO_QUERY);
  if (!toolkit.is()) return true;
  return uno::Reference<uno::XInterface>(toolkit->getActiveTopWindow(), uno::UNO_QUERY) ==
         uno::Reference<uno::XInterface>(dialog_->getPeer(), uno::UNO_QUERY);
}

int DialogShell::across(int designPixels) const {
  return static_cast<int>(std::lround(designPixels / designUnitAcross * hundredUnits_.Width / 100.0));
}

int DialogShell::down(int designPixels) const {
  return static_cast<int>(std::lround(designPixels / designUnitDown * hundredUnits_.Height / 100.0));
}

float DialogShell::twips(int pixels) const {
  return static_cast<float>(pixels * twipsPerInch / pixelsPerInch_);
}

int DialogShell::fromTwips(float twips) const {
  const double pixels = static_cast<double>(twips) * pixelsPerInch_ / twipsPerInch;
  constexpr double limit = 32000.0;
  if (!(pixels > -limit)) return static_cast<int>(-limit);
  return static_cast<int>(std::floor(std::min(pixels, limit) + 0.5));
}

awt::Size DialogShell::preferredSize(const Control& control) {
  const uno::Reference<awt::XLayoutConstrains> constraints(control->getPeer(), uno::UNO_QUERY);
  if (!constraints.is()) return {0, 0};
  const awt::Size preferred = constraints->getPreferredSize();
  const awt::Size least = constraints->getMinimumSize();
  return {std::max(preferred.Width, least.Width), std::max(preferred.Height, least.Height)};
}

awt::Rectangle DialogShell::place() const {
  awt::Rectangle now = window_->getPosSize();
  if (askedX_) now.X = *askedX_;
  if (askedY_) now.Y = *askedY_;
  return now;
}

void DialogShell::moveAcross(int x) {
  if (!executing_) askedX_ = x;
  window_->setPosSize(x, 0, 0, 0, awt::PosSize::X);
}

void DialogShell::moveDown(int y) {
  if (!executing_) askedY_ = y;
  window_->setPosSize(0, y, 0, 0, awt::PosSize::Y);
}

void DialogShell::resize(int width, int height) {
  window_->setPosSize(0, 0, width, height, awt::PosSize::SIZE);
}

void DialogShell::centre() {
  if (!parent_.is()) return;
  const awt::Rectangle around = parent_->getPosSize();
  const awt::Rectangle own = window_->getPosSize();
  moveAcross(std::max((around.Width - own.Width) / 2, 0));
  moveDown(std::max((around.Height - own.Height) / 3, 0));
}

void DialogShell::execute() {
  struct Executing {
    DialogShell& shell;
    explicit Executing(DialogShell& one) : shell(one) {
      shell.executing_ = true;
      shell.askedX_.reset();
      shell.askedY_.reset();
    }
    ~Executing() { shell.executing_ = false; }
  };
  const uno::Reference<awt::XDialog> dialog(dialog_, uno::UNO_QUERY_THROW);
  const Executing executing(*this);
  dialog->execute();
}

void DialogShell::end() {
  const uno::Reference<awt::XDialog> dialog(dialog_, uno::UNO_QUERY_THROW);
  dialog->endExecute();
}

void place(const Control& control, int x, int y, int width, int height) {
  if (!control.is()) return;
  const uno::Reference<awt::XWindow> window(control, uno::UNO_QUERY_THROW);
  const awt::Rectangle now = window->getPosSize();
  const int wide = std::max(width, 0);
  const int high = std::max(height, 0);
  if (now.X == x && now.Y == y && now.Width == wide && now.Height == high) return;
  window->setPosSize(x, y, wide, high, awt::PosSize::POSSIZE);
}

void show(const Control& control, bool seen) {
  if (!control.is()) return;
  const uno::Reference<awt::XWindow> window(control, uno::UNO_QUERY_THROW);
  window->setVisible(seen);
}

}  // namespace mervane::addin
