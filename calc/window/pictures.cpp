#include "calc/window/pictures.h"

#include <com/sun/star/awt/XStyleSettingsSupplier.hpp>

#include "calc/border.h"

namespace mervane::addin {

namespace {

/// By the weights that the eye gives to red, green and blue.
bool isDark(sal_Int32 colour) {
  const sal_Int32 red = (colour >> 16) & 0xFF;
  const sal_Int32 green = (colour >> 8) & 0xFF;
  const sal_Int32 blue = colour & 0xFF;
  return 299 * red + 587 * green + 114 * blue < 128 * 1000;
}

}  // namespace

rtl::OUString picturesFor(const Office& office, const uno::Reference<awt::XWindowPeer>& window) {
  if (office.pictures.isEmpty()) return office.pictures;
  bool dark = false;
  atBorder([&] {
    const uno::Reference<awt::XStyleSettingsSupplier> supplier(window, uno::UNO_QUERY_THROW);
    dark = isDark(supplier->getStyleSettings()->getDialogColor());
  });
  return dark ? office.pictures + "/dark" : office.pictures;
}

}  // namespace mervane::addin
