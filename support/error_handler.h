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

  const std::string& SupportMail() const noexcept;
  void SupportMail(const std::string& value);

  /// Checks and assigns one after the other, so a refused argument leaves those before it in force.
  void Init(std::int32_t actions, const std::string& errorLogFile, bool callStackEnabled, bool tracingEnabled,
            std::int32_t tracingFlags, const std::string& tracingLogFile);

  void CallStackEnabled(bool value);
  bool CallStackEnabled() const;
  void ErrorDescription(const std::string& value);
  const std::string& ErrorDescription() const;
  void ErrorHandlerActions(std::int32_t value);  ///< 1 to 15, otherwise raises eErr_InvalidActions
  std::int32_t ErrorHandlerActions() const;
  void ErrorLine(std::int32_t value);
  std::int32_t ErrorLine() const;
  void ErrorLogFile(const std::string& value);  ///< not empty, otherwise raises eErr_InvalidFileName
  const std::string& ErrorLogFile() const;
  void ErrorNumber(std::int32_t value);
  std::int32_t ErrorNumber() const;
  void Tag(const std::string& value);
  const std::string& Tag() const;
  void TracingEnabled(bool value);
  bool TracingEnabled() const;
  void TracingFlags(std::int32_t value);  ///< 1 to 3, otherwise raises eErr_InvalidTracingFlags
  std::int32_t TracingFlags() const;
  void TracingLogFile(const std::string& value);  ///< not empty, otherwise raises eErr_InvalidFileName
  const std::string& TracingLogFile() const;

  /// Does nothing while CallStackEnabled is false or the stack holds more than 32,767 entries.
  void CallStackClear();
  /// Does nothing on an empty stack.
  void CallStackPop();
  void CallStackPush(const std::string& procedure, const std::string& data);
  /// Deletes log files; once a deletion has begun, its failures are passed over.
  void Clear(bool clearLogFile, bool clearTracingLogFile);
  /// Reports the failure through the selected channels and returns ehrAbort, ehrRetry or ehrIgnore.
  /// @param procedure its key; empty takes the top of the stack.
  std::int32_t HandleError(const std::string& procedure, const Failure& failure);

 private:
  std::int32_t ShowErrorForm(const std::string& message);
  std::string GetCallStackText(std::int16_t indent, bool showData) const;

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
  std::string supportMail_;
  bool mIsNT_ = false;
  std::vector<std::string> mProcedures_;
  std::vector<std::string> mProcedureData_;
};

}  // namespace mervane
