#include "cli/error_answers.h"

#include <string_view>
#include <utility>

#include "cli/interruption.h"
#include "cli/talk.h"
#include "cli/terminal.h"
#include "cli/text_display.h"
#include "support/error_handler.h"
#include "support/globals.h"

namespace mervane::cli {

namespace {

/// The report's lines end in CR LF; a terminal's in LF. Other control characters, tabs but for, are not passed on.
std::string forTerminal(const std::string& report) {
  std::string text;
  for (const char c : report) {
    if (c == '\r') continue;
    const bool isControl = static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t';
    text += isControl ? '?' : c;
  }
  if (!text.ends_with('\n')) text += '\n';
  return text;
}

/// The procedure that failed, as the report names it: "TrainNetwork" for "MervaneClass3.Classifier3.TrainNetwork".
std::string_view failedProcedure(std::string_view report) {
  constexpr std::string_view before = "\tin ";
  const std::size_t line = report.rfind(before, report.rfind("The call stack is:"));
  if (line == std::string_view::npos) return {};
  std::string_view name = report.substr(line + before.size());
  name = name.substr(0, name.find(" at line "));
  return name.substr(name.rfind('.') + 1);
}

/// What is left out where one of its statements is ignored, in a user's words.
std::string leftOut(const std::string& report) {
  constexpr std::pair<std::string_view, const char*> parts[] = {
      {"CreateNetwork", "setting the network up"},
      {"TrainNetwork", "the training"},
      {"StoreResults", "reading the clusters of the rows"},
      {"StoreResultsToExcel", "writing the results"},
      {"PrintData", "writing the results"},
      {"SortInputRange", "sorting the rows"},
      {"TotalRange", "finding the range of the rows"},
      {"AddPortraitChart", "drawing the chart of the profiles"},
      {"AddWeightsChart", "drawing the chart of the weights"},
      {"ModifyChartObject", "styling a chart"},
      {"AdjustChartsLocation", "placing the charts"},
      {"Form_Load", "reading the remembered options"},
      {"GetBooleanSetting", "reading a remembered option"},
  };
  const std::string_view procedure = failedProcedure(report);
  for (const auto& [name, part] : parts) {
    if (name == procedure) return std::string("one step of ") + part;
  }
  return "one step of " + (procedure.empty() ? std::string("the run") : std::string(procedure));
}

}  // namespace

Problem failedRun(const std::string& cause) {
  return {ExitStatus::engineFailure, "the run failed; nothing is written",
          cause.empty() ? "The report above says what failed. --on-error tells how to go on after a failure."
                        : printable(cause)};
}

class ReportPrinter final : public platform::ErrorWindow {
 public:
  explicit ReportPrinter(ErrorAnswers& answers) : answers_(answers) {}

  void load(const std::string&, const platform::OptionItems&, const platform::OptionItems&,
            platform::ErrorWindowEvents& events) override {
    events_ = &events;
  }
  void itemsChanged() override {}
  void setMessage(const std::string& text) override { message_ = text; }
  void show() override {
    events_->activated();
    events_->resized();
    events_->clicked(answers_.answer(message_));
  }
  void hide() override {}
  [[nodiscard]] float barWidth() const override {
    constexpr float designWidth = 4980.0F;
    return designWidth;
  }

 private:
  ErrorAnswers& answers_;
  platform::ErrorWindowEvents* events_ = nullptr;
  std::string message_;
};

std::unique_ptr<platform::ErrorWindow> ErrorAnswers::createWindow() {
  return std::make_unique<ReportPrinter>(*this);
}

ErrorPolicy::Answer ErrorAnswers::asked() {
  const interruption::Question question;
  while (const auto line = terminal::askLine("[A]bort, [R]etry, [I]gnore? ")) {
    switch (line->empty() ? '\0' : line->front()) {
      case 'a':
      case 'A':
        return ErrorPolicy::Answer::abort;
      case 'r':
      case 'R':
        return ErrorPolicy::Answer::retry;
      case 'i':
      case 'I':
        return ErrorPolicy::Answer::ignore;
      default:
        break;
    }
  }
  return ErrorPolicy::Answer::abort;
}

const char* ErrorAnswers::answer(const std::string& report) {
  if (runHasEnded_) return "ABORT";
  talk_.text(forTerminal(report));
  ErrorPolicy::Answer answer = policy_.answer;
  if (answer == ErrorPolicy::Answer::ask) answer = asked();
  if (answer == ErrorPolicy::Answer::ignore) {
    ++ignored_;
    talk_.note("ignored; " + leftOut(report) + " is left out");
    return "IGNORE";
  }
  const bool mayRetry = policy_.answer == ErrorPolicy::Answer::ask || retried_ < policy_.retries;
  if (answer == ErrorPolicy::Answer::retry && mayRetry) {
    ++retried_;
    talk_.note("trying again");
    return "RETRY";
  }
  if (aborted_ == 0) causeOfAbort_ = globals::errorHandler().FailureCause();
  ++aborted_;
  if (!abortEndsRun_) return "ABORT";
  runHasEnded_ = true;
  throw failedRun(causeOfAbort_);
}

}  // namespace mervane::cli
