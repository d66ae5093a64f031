#include "calc/remembered_ranges.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <map>
#include <utility>

namespace mervane::addin {

namespace {

/// By what the office calls a document that is open, which no other one is ever called.
std::map<rtl::OUString, Ranges>& rangesOfDocuments() {
  static auto* const ranges = new std::map<rtl::OUString, Ranges>;  // Not destroyed: the office goes first.
  return *ranges;
}

rtl::OUString nameOf(const uno::Reference<star::frame::XModel>& document) {
  const uno::Reference<star::beans::XPropertySet> properties(document, uno::UNO_QUERY_THROW);
  rtl::OUString name;
  properties->getPropertyValue("RuntimeUID") >>= name;
  return name;
}

}  // namespace

void rememberRanges(const uno::Reference<star::frame::XModel>& document, Ranges ranges) {
  rangesOfDocuments()[nameOf(document)] = std::move(ranges);
}

std::optional<Ranges> rememberedRanges(const uno::Reference<star::frame::XModel>& document) {
  const auto found = rangesOfDocuments().find(nameOf(document));
  if (found == rangesOfDocuments().end()) return std::nullopt;
  return found->second;
}

}  // namespace mervane::addin
