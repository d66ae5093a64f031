#include "support/error_handler.h"

#include <charconv>
#include <limits>

#include "mervane/convert.h"
#include "mervane/service_errors.h"
#include "platform/services.h"
#include "support/frm_error_message.h"
#include "support/globals.h"
#include "support/procedures.h"
#include "support/wrapped_failure.h"

namespace mervane {

namespace {

constexpr const char* className = "CErrorHandler";
constexpr const char* lineEnd = "\r\n";
constexpr std::int32_t listingIndent = 20;
/// The walkers of the stack count in 16 bits; beyond this they see a negative count.
constexpr std::size_t longestWalk = std::numeric_limits<std::int16_t>::max();

/// A member of the error handler: its argument checks reach the caller, all else is "component failure".
template <class Body>
decltype(auto) guarded(Body&& body) {
  return service(className, eErr_ErrorHandlerFailure, std::forward<Body>(body));
}

void checkActions(ServiceTrap& trap, std::int32_t actions) {
  constexpr std::int32_t all = ehaMessageBox | ehaLogFile | ehaEventLog | ehaErrorForm;
  if (actions < 1 || actions > all) trap.refuse(eErr_InvalidActions, "Invalid error handler actions");
}

void checkTracingFlags(ServiceTrap& trap, std::int32_t flags) {
  constexpr std::int32_t all = tfDebugOutput | tfLogFile;
  if (flags < 1 || flags > all) trap.refuse(eErr_InvalidTracingFlags, "Invalid tracing flags");
}

void checkFileName(ServiceTrap& trap, const std::string& name) {
  if (name.empty()) trap.refuse(eErr_InvalidFileName, "Invalid file name");
}

/// Decimal digits without any separator, whatever the locale.
std::string decimal(std::int32_t number) {
  char digits[12];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  return {digits, end};
}

/// Date, " - ", time: the head of a report and of a tracing line.
std::string timeStamp() {
  const platform::Services& services = globals::platform();
  if (!services.clock) raise(runtime::objectNotSet);
  const Date now = services.clock->now();
  return formatDate(now, services.locale) + " - " + formatTime(now, services.locale);
}

void appendToFile(const std::string& path, const std::string& text) {
  const auto& files = globals::platform().textFiles;
  if (!files) raise(runtime::objectNotSet);
  files->append(path, text);
}

void deleteFile(const std::string& path) {
  const auto& files = globals::platform().textFiles;
  if (!files) raise(runtime::objectNotSet);
  files->remove(path);
}

/// Each line is a file opened, written and closed by itself.
void trace(const std::string& file, const char* marker, const std::string& procedure) {
  appendToFile(file, timeStamp() + marker + procedure + lineEnd);
}

std::int32_t askByMessageBox(const std::string& report) {
  const auto& box = globals::platform().messageBox;
  if (!box) raise(runtime::objectNotSet);
  switch (box->show(report, platform::MessageBox::Buttons::abortRetryIgnore)) {
    case platform::MessageBox::Answer::abort:
      return ehrAbort;
    case platform::MessageBox::Answer::retry:
      return ehrRetry;
    case platform::MessageBox::Answer::ignore:
    case platform::MessageBox::Answer::ok:
      break;
  }
  return ehrIgnore;
}

/// Whether the machine is of the NT family. Older systems know only the basic record.
bool machineIsNT() {
  using platform::SystemVersion;
  bool isNT = false;
  attempt([&] {
    const auto& version = globals::platform().systemVersion;
    if (!version) return;
    auto id = version->platformId(SystemVersion::extendedRecord);
    if (!id) id = version->platformId(SystemVersion::basicRecord);
    isNT = id == SystemVersion::ntFamily;
  });
  return isNT;
}

}  // namespace

CErrorHandler::CErrorHandler() : mIsNT_(machineIsNT()) {}

void CErrorHandler::Init(std::int32_t actions, const std::string& errorLogFile, bool callStackEnabled,
                         bool tracingEnabled, std::int32_t tracingFlags, const std::string& tracingLogFile) {
  guarded([&](ServiceTrap& trap) {
    // 1.
    checkActions(trap, actions);
    errorHandlerActions_ = actions;
    // 2.
    checkFileName(trap, errorLogFile);
    errorLogFile_ = errorLogFile;
    // 3.
    callStackEnabled_ = callStackEnabled;
    tracingEnabled_ = tracingEnabled;
    // 4.
    checkTracingFlags(trap, tracingFlags);
    tracingFlags_ = tracingFlags;
    // 5.
    checkFileName(trap, tracingLogFile);
    tracingLogFile_ = tracingLogFile;
  });
}

void CErrorHandler::ErrorHandlerActions(std::int32_t value) {
  guarded([&](ServiceTrap& trap) {
    checkActions(trap, value);
    errorHandlerActions_ = value;
  });
}

void CErrorHandler::ErrorLogFile(const std::string& value) {
  guarded([&](ServiceTrap& trap) {
    checkFileName(trap, value);
    errorLogFile_ = value;
  });
}

void CErrorHandler::TracingFlags(std::int32_t value) {
  guarded([&](ServiceTrap& trap) {
    checkTracingFlags(trap, value);
    tracingFlags_ = value;
  });
}

void CErrorHandler::TracingLogFile(const std::string& value) {
  guarded([&](ServiceTrap& trap) {
    checkFileName(trap, value);
    tracingLogFile_ = value;
  });
}

void CErrorHandler::CallStackPush(const std::string& procedure, const std::string& data) {
  guarded([&](ServiceTrap&) {
    // 1. NB: also with CallStackEnabled false, and before the line that may fail.
    mProcedures_.push_back(procedure);
    mProcedureData_.push_back(data);
    // 2. Debugger output is selected by a flag and written by nobody.
    if (tracingEnabled_ && (tracingFlags_ & tfLogFile) != 0) {
      trace(tracingLogFile_, " --- Entered routine: ", procedure);
    }
  });
}

void CErrorHandler::CallStackPop() {
  guarded([&](ServiceTrap&) {
    // 1.
    if (mProcedures_.empty()) return;
    // 2. NB: a line that cannot be written leaves the entry in place.
    if (tracingEnabled_ && (tracingFlags_ & tfLogFile) != 0) {
      trace(tracingLogFile_, " --- Exited routine: ", mProcedures_.back());
    }
    // 3.
    mProcedures_.pop_back();
    mProcedureData_.pop_back();
  });
}

void CErrorHandler::CallStackClear() {
  guarded([&](ServiceTrap&) {
    // NB: CallStackEnabled governs this and the name of a failing procedure, and nothing else.
    if (!callStackEnabled_ || mProcedures_.size() > longestWalk) return;
    mProcedures_.clear();
    mProcedureData_.clear();
  });
}

void CErrorHandler::Clear(bool clearLogFile, bool clearTracingLogFile) {
  guarded([&](ServiceTrap&) {
    if (clearLogFile && !errorLogFile_.empty()) attempt([&] { deleteFile(errorLogFile_); });
    if (clearTracingLogFile && !tracingLogFile_.empty()) attempt([&] { deleteFile(tracingLogFile_); });
  });
}

std::int32_t CErrorHandler::HandleError(const std::string& procedure, const Failure& failure) {
  // 1. Outside the trap. No procedure numbers its lines.
  errorDescription_ = failure.description();
  errorNumber_ = failure.number();
  errorLine_ = 0;
  failureCause_ = WrappedFailure::causeOf(failure);

  return guarded([&](ServiceTrap&) {
    // 2.
    std::int32_t result = ehrAbort;

    // 3.
    std::string name = "Unknown";
    if (!procedure.empty()) {
      name = procedure;
    } else if (callStackEnabled_ && !mProcedures_.empty()) {
      name = mProcedures_.back();
    }

    // 4. The report is composed whichever channels are selected. A channel that fails ends the delivery.
    const std::string report = timeStamp() + lineEnd + "\tError: " + decimal(errorNumber_) + ", (" + errorDescription_ +
                               ")" + lineEnd + "\tin " + name + " at line " + decimal(errorLine_) + lineEnd + lineEnd +
                               "The call stack is:" + lineEnd + GetCallStackText(listingIndent, true);
    if ((errorHandlerActions_ & ehaLogFile) != 0) appendToFile(errorLogFile_, report + lineEnd);
    if ((errorHandlerActions_ & ehaEventLog) != 0 && mIsNT_) {
      const auto& log = globals::platform().eventLog;
      if (!log) raise(runtime::objectNotSet);
      log->write(report, platform::EventLog::errorType);
    }
    if ((errorHandlerActions_ & ehaMessageBox) != 0) result = askByMessageBox(report);
    if ((errorHandlerActions_ & ehaErrorForm) != 0) result = ShowErrorForm(report);

    // 5.
    return result;
  });
}

std::int32_t CErrorHandler::ShowErrorForm(const std::string& message) {
  return guarded([&](ServiceTrap&) {
    frmErrorMessage& form = globals::errorMessageForm();
    form.Load();
    form.ErrorMessage(message);
    form.SupportMail(supportMail_);
    form.Show();
    const std::string answer = form.Tag();
    form.Unload();

    if (answer == "ABORT") return ehrAbort;
    if (answer == "RETRY") return ehrRetry;
    return ehrIgnore;
  });
}

std::string CErrorHandler::GetCallStackText(std::int16_t indent, bool showData) const {
  return guarded([&](ServiceTrap&) {
    std::string text;
    if (mProcedures_.size() > longestWalk) return text;
    for (std::size_t entry = mProcedures_.size(); entry-- > 0;) {
      if (!text.empty()) text += lineEnd;
      text.append(static_cast<std::size_t>(indent), ' ');
      text += mProcedures_[entry];
      if (showData) text += "(" + mProcedureData_[entry] + ")";
    }
    return text;
  });
}

}  // namespace mervane
