#include "cli/error_answers.h"

#include "cli/talk.h"
#include "cli/terminal.h"
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

}  // namespace

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
  talk_.text(forTerminal(report));
  ErrorPolicy::Answer answer = policy_.answer;
  if (answer == ErrorPolicy::Answer::ask) answer = asked();
  if (answer == ErrorPolicy::Answer::ignore) {
    ++ignored_;
    talk_.note("the failure is ignored");
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
  return "ABORT";
}

}  // namespace mervane::cli
