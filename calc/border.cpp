#include "calc/border.h"

#include <com/sun/star/uno/Exception.hpp>
#include <exception>
#include <string>

#include "calc/office.h"
#include "platform/posix/system_log.h"

namespace mervane::addin {

namespace {

void note(const std::string& trouble) noexcept {
  try {
    posix::SystemLog().write("Mervane in Calc: " + trouble, platform::EventLog::errorType);
  } catch (...) {
    // There is nobody left to tell.
    return;
  }
}

}  // namespace

void atBorder(const std::function<void()>& work) noexcept {
  try {
    work();
  } catch (const uno::Exception& refusal) {
    note(fromOffice(refusal.Message));
  } catch (const std::exception& trouble) {
    note(trouble.what());
  } catch (...) {
    note("an unknown exception");
  }
}

}  // namespace mervane::addin
