#include "calc/office.h"

#include <com/sun/star/beans/UnknownPropertyException.hpp>

namespace mervane::addin {

rtl::OUString toOffice(const std::string& text) {
  return rtl::OUString::fromUtf8(rtl::OString(text.data(), static_cast<sal_Int32>(text.size())));
}

std::string fromOffice(const rtl::OUString& text) {
  const rtl::OString bytes = text.toUtf8();
  return {bytes.getStr(), static_cast<std::size_t>(bytes.getLength())};
}

void set(const uno::Reference<star::beans::XPropertySet>& object, const char* name, const uno::Any& value) {
  object->setPropertyValue(rtl::OUString::createFromAscii(name), value);
}

void setIfKnown(const uno::Reference<star::beans::XPropertySet>& object, const char* name, const uno::Any& value) {
  try {
    set(object, name, value);
  } catch (const star::beans::UnknownPropertyException&) {
    return;
  }
}

}  // namespace mervane::addin
