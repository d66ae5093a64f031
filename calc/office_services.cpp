#include "calc/office_services.h"

#include <dlfcn.h>

#include <com/sun/star/awt/MessageBoxResults.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <optional>

#include "calc/border.h"
#include "calc/window/error_window.h"
#include "calc/window/message.h"
#include "calc/window/option_window.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "platform/posix/environment.h"
#include "platform/posix/services.h"

namespace mervane::addin {

namespace {

class OfficeMessageBox final : public platform::MessageBox {
 public:
  explicit OfficeMessageBox(OfficeDesk desk) : desk_(std::move(desk)) {}

  Answer show(const std::string& text, Buttons buttons) override {
    try {
      if (buttons == Buttons::ok) {
        showMessage(desk_.office, desk_.parent, awt::MessageBoxType_WARNINGBOX, text);
        return Answer::ok;
      }
      switch (showMessage(desk_.office, desk_.parent, awt::MessageBoxType_ERRORBOX, text,
                          awt::MessageBoxButtons::BUTTONS_ABORT_IGNORE_RETRY)) {
        case awt::MessageBoxResults::RETRY:
          return Answer::retry;
        case awt::MessageBoxResults::IGNORE:
          return Answer::ignore;
        default:
          return Answer::abort;  // The office does not tell a closed box from this button.
      }
    } catch (const uno::Exception& refusal) {
      throw Failure(runtime::applicationDefined.number, fromOffice(refusal.Message));
    }
  }

 private:
  OfficeDesk desk_;
};

class OfficeScreen final : public platform::Screen {
 public:
  explicit OfficeScreen(std::function<void()> runBegins) : runBegins_(std::move(runBegins)) {}

  void pointer(std::int32_t shape) override {
    if (shape == pointerHourglass && runBegins_) runBegins_();
  }

  /// The office has no beep among its interfaces. Where it draws by GTK, that toolkit is in the process already.
  void beep() override {
    using Display = void* (*)();
    using Beep = void (*)(void*);
    const auto display = reinterpret_cast<Display>(dlsym(RTLD_DEFAULT, "gdk_display_get_default"));
    const auto ring = reinterpret_cast<Beep>(dlsym(RTLD_DEFAULT, "gdk_display_beep"));
    if (display == nullptr || ring == nullptr) return;
    if (void* const screen = display()) ring(screen);
  }

 private:
  std::function<void()> runBegins_;
};

/// One of the office's settings of language; empty where it has none.
std::string localeSetting(const Office& office, const char* node, const char* name) {
  std::string found;
  atBorder([&] {
    const auto provider =
        office.create<star::lang::XMultiServiceFactory>("com.sun.star.configuration.ConfigurationProvider");
    star::beans::PropertyValue path;
    path.Name = "nodepath";
    path.Value <<= rtl::OUString::createFromAscii(node);
    uno::Sequence<uno::Any> arguments(1);
    arguments[0] <<= path;
    const uno::Reference<star::container::XNameAccess> settings(
        provider->createInstanceWithArguments("com.sun.star.configuration.ConfigurationAccess", arguments),
        uno::UNO_QUERY_THROW);
    rtl::OUString locale;
    settings->getByName(rtl::OUString::createFromAscii(name)) >>= locale;
    found = fromOffice(locale);
  });
  return found;
}

/// The office's own regional settings, such as "de-DE"; empty where it follows the machine's.
std::string officeLocale(const Office& office) {
  return localeSetting(office, "/org.openoffice.Setup/L10N", "ooSetupSystemLocale");
}

posix::Environment environmentOf(const Office& office) {
  std::string locale = officeLocale(office);
  for (char& character : locale) {
    if (character == '-') character = '_';
  }
  return [locale, process = posix::processEnvironment()](const char* name) -> std::optional<std::string> {
    const std::string asked(name);
    if (!locale.empty() && asked == "LC_ALL") return locale + ".UTF-8";
    return process(name);
  };
}

}  // namespace

std::string interfaceLocale(const Office& office) {
  const std::string chosen = localeSetting(office, "/org.openoffice.Office.Linguistic/General", "UILocale");
  return chosen.empty() ? localeSetting(office, "/org.openoffice.Setup/L10N", "ooLocale") : chosen;
}

std::shared_ptr<platform::Services> officeServices(const OfficeDesk& desk) {
  auto services = std::make_shared<platform::Services>(posix::makePosixServices(environmentOf(desk.office)));
  services->messageBox = std::make_shared<OfficeMessageBox>(desk);
  services->screen = std::make_shared<OfficeScreen>(desk.runBegins);
  services->createOptionWindow = [desk] {
    return createOptionWindow(desk.office, desk.parent, desk.closer, desk.gate);
  };
  services->createErrorWindow = [desk] { return createErrorWindow(desk.office, desk.parent, desk.closer); };
  return services;
}

}  // namespace mervane::addin
