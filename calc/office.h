#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <rtl/ref.hxx>
#include <rtl/ustring.hxx>
#include <string>

namespace com::sun::star::awt {}

namespace mervane::addin {

namespace star = com::sun::star;
namespace uno = com::sun::star::uno;
namespace awt = com::sun::star::awt;

[[nodiscard]] rtl::OUString toOffice(const std::string& text);
[[nodiscard]] std::string fromOffice(const rtl::OUString& text);

/// The office that the add-in runs in.
struct Office {
  uno::Reference<uno::XComponentContext> context;
  /// Folders of the add-in's pictures and of its help as URLs without a final slash; empty for none.
  rtl::OUString pictures;
  rtl::OUString help;

  /// A new object of a service; the office's exception where there is none.
  template <class Interface>
  [[nodiscard]] uno::Reference<Interface> create(const char* service) const {
    return uno::Reference<Interface>(
        context->getServiceManager()->createInstanceWithContext(rtl::OUString::createFromAscii(service), context),
        uno::UNO_QUERY_THROW);
  }
};

/// Sets a property where the object has it; an older or newer office may lack one that only adds comfort.
void setIfKnown(const uno::Reference<star::beans::XPropertySet>& object, const char* name, const uno::Any& value);
void set(const uno::Reference<star::beans::XPropertySet>& object, const char* name, const uno::Any& value);

}  // namespace mervane::addin
