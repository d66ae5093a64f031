#include "calc/window/help.h"

#include <unistd.h>

#include <com/sun/star/system/SystemShellExecuteFlags.hpp>
#include <com/sun/star/system/XSystemShellExecute.hpp>
#include <cstdlib>
#include <sstream>
#include <string>

#include "calc/border.h"
#include "calc/texts.h"
#include "calc/window/message.h"

namespace mervane::addin {

namespace {

/// The office does not tell that the program by which the desktop opens a page is missing.
bool hasOpener() {
  const char* const path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access((folder + "/xdg-open").c_str(), X_OK) == 0) return true;
  }
  return false;
}

}  // namespace

void openHelp(const Office& office, const uno::Reference<awt::XWindowPeer>& parent) {
  const char* const language = spokenLanguage() == Language::german ? "/de/" : "/en/";
  const rtl::OUString page = office.help + rtl::OUString::createFromAscii(language) + "clusterize.html";
  try {
    if (!hasOpener()) throw uno::Exception();
    const auto shell = office.create<star::system::XSystemShellExecute>("com.sun.star.system.SystemShellExecute");
    shell->execute(page, {}, star::system::SystemShellExecuteFlags::URIS_ONLY);
  } catch (const uno::Exception&) {
    atBorder([&] {
      showMessage(office, parent, awt::MessageBoxType_INFOBOX, said(text::helpIsNotShown, {fromOffice(page)}));
    });
  }
}

}  // namespace mervane::addin
