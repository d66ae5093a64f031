#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mervane/failure.h"

namespace mervane {

/// Channels that deliver a failure report; any sum from 1 to 15.
inline constexpr std::int32_t ehaMessageBox = 1;
inline constexpr std::int32_t ehaLogFile = 2;
inline constexpr std::int32_t ehaEventLog = 4;
inline constexpr std::int32_t ehaErrorForm = 8;

/// Channels of the tracing log; any sum from 1 to 3.
inline constexpr std::int32_t tfDebugOutput = 1;
inline constexpr std::int32_t tfLogFile = 2;

/// What the failing procedure is to do.
inline constexpr std::int32_t ehrAbort = 0;
inline constexpr std::int32_t ehrRetry = 1;
inline constexpr std::int32_t ehrIgnore = 2;

/// The one service through which the system reports failures. It keeps the stack of running procedures and
/// answers a failing one: abort, retry or ignore. One instance lives per thread; see `globals.h`.
///
/// Argument errors are raised unchanged; anything unforeseen inside a member becomes eErr_ErrorHandlerFailure.
class CErrorHandler {
 public:
  CErrorHandler();

  [[nodiscard]] const std::string& SupportMail() const noexcept { return supportMail_; }
  void SupportMail(const std::string& value) { supportMail_ = value; }

  /// Checks and assigns one after the other, so a refused argument leaves those before it in force.
  void Init(std::int32_t actions, const std::string& errorLogFile, bool callStackEnabled, bool tracingEnabled,
            std::int32_t tracingFlags, const std::string& tracingLogFile);

  void CallStackEnabled(bool value) { callStackEnabled_ = value; }
  [[nodiscard]] bool CallStackEnabled() const noexcept { return callStackEnabled_; }
  void ErrorDescription(const std::string& value) { errorDescription_ = value; }
  [[nodiscard]] const std::string& ErrorDescription() const noexcept { return errorDescription_; }
  void ErrorHandlerActions(std::int32_t value);  ///< 1 to 15, otherwise raises eErr_InvalidActions
  [[nodiscard]] std::int32_t ErrorHandlerActions() const noexcept { return errorHandlerActions_; }
  void ErrorLine(std::int32_t value) { errorLine_ = value; }
  [[nodiscard]] std::int32_t ErrorLine() const noexcept { return errorLine_; }
  void ErrorLogFile(const std::string& value);  ///< not empty, otherwise raises eErr_InvalidFileName
  [[nodiscard]] const std::string& ErrorLogFile() const noexcept { return errorLogFile_; }
  /// What the failure handled last was about, for hosts that tell it beside the report: the text of whoever found the
  /// fault, a spreadsheet for instance, also where the failure was wrapped since.
  [[nodiscard]] const std::string& FailureCause() const noexcept { return failureCause_; }
  void ErrorNumber(std::int32_t value) { errorNumber_ = value; }
  [[nodiscard]] std::int32_t ErrorNumber() const noexcept { return errorNumber_; }
  void Tag(const std::string& value) { tag_ = value; }
  [[nodiscard]] const std::string& Tag() const noexcept { return tag_; }
  void TracingEnabled(bool value) { tracingEnabled_ = value; }
  [[nodiscard]] bool TracingEnabled() const noexcept { return tracingEnabled_; }
  void TracingFlags(std::int32_t value);  ///< 1 to 3, otherwise raises eErr_InvalidTracingFlags
  [[nodiscard]] std::int32_t TracingFlags() const noexcept { return tracingFlags_; }
  void TracingLogFile(const std::string& value);  ///< not empty, otherwise raises eErr_InvalidFileName
  [[nodiscard]] const std::string& TracingLogFile() const noexcept { return tracingLogFile_; }

  /// Does nothing while CallStackEnabled is false or the stack holds more than 32,767 entries.
  void CallStackClear();
  /// Does nothing on an empty stack.
  void CallStackPop();
  void CallStackPush(const std::string& procedure, const std::string& data);
  /// Deletes log files; once a deletion has begun, its failures are passed over.
  void Clear(bool clearLogFile, bool clearTracingLogFile);
  /// Reports the failure through the selected channels and returns ehrAbort, ehrRetry or ehrIgnore. The stack is not
  /// changed. A channel that fails raises eErr_ErrorHandlerFailure, and the channels behind it are left out.
  /// @param procedure its key; empty takes the top of the stack.
  std::int32_t HandleError(const std::string& procedure, const Failure& failure);

 private:
  std::int32_t ShowErrorForm(const std::string& message);
  [[nodiscard]] std::string GetCallStackText(std::int16_t indent, bool showData) const;

  bool callStackEnabled_ = false;
  bool tracingEnabled_ = false;
  std::int32_t errorHandlerActions_ = ehaMessageBox;
  std::int32_t tracingFlags_ = 0;
  std::int32_t errorNumber_ = 0;
  std::int32_t errorLine_ = 0;
  std::string errorLogFile_ = "Error Log.txt";
  std::string tracingLogFile_ = "Tracing Log.txt";
  std::string tag_;
  std::string errorDescription_;
  std::string failureCause_;
  std::string supportMail_;
  bool mIsNT_ = false;
  std::vector<std::string> mProcedures_;
  std::vector<std::string> mProcedureData_;
};

}  // namespace mervane
