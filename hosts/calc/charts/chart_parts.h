#pragma once

#include <com/sun/star/lang/XMultiComponentFactory.hpp>

#include "hosts/calc/session.h"

namespace mervane::calc {

/// A new part of a chart, asked for one of its interfaces.
template <class Interface>
[[nodiscard]] uno::Reference<Interface> makeChartPart(const Session& session, const char* service) {
  return uno::Reference<Interface>(session.context()->getServiceManager()->createInstanceWithContext(
                                       rtl::OUString::createFromAscii(service), session.context()),
                                   uno::UNO_QUERY_THROW);
}

}  // namespace mervane::calc
