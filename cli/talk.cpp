#include "cli/talk.h"

#include "cli/problem.h"
#include "cli/terminal.h"

namespace mervane::cli {
namespace {

constexpr std::string_view red = "\x1b[1;31m";
constexpr std::string_view yellow = "\x1b[1;33m";
constexpr std::string_view plain = "\x1b[0m";
constexpr std::string_view toLineBegin = "\r\x1b[K";

void put(std::FILE* stream, std::string_view text) {
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), stream));
}

}  // namespace

Talk::Talk(std::FILE* stream)
    : stream_(stream), isTerminal_(terminal::isTerminal(stream)), hasColour_(terminal::wantsColour(stream)) {}

void Talk::say(std::string_view kind, std::string_view colour, std::string_view text) {
  clearStatus();
  std::string line = "mervane: ";
  if (!kind.empty()) {
    if (hasColour_) line.append(colour);
    line.append(kind).append(":");
    if (hasColour_) line.append(plain);
    line += ' ';
  }
  put(stream_, line.append(text).append("\n"));
  static_cast<void>(std::fflush(stream_));
}

void Talk::error(const Problem& problem) {
  say("error", red, problem.message());
  if (!problem.advice().empty()) text("         " + problem.advice() + "\n");
}

void Talk::warning(std::string_view text) {
  if (level_ != Level::quiet) say("warning", yellow, text);
}

void Talk::note(std::string_view text) {
  if (level_ != Level::quiet) say({}, {}, text);
}

void Talk::detail(std::string_view text) {
  if (level_ == Level::verbose) say({}, {}, text);
}

void Talk::text(std::string_view text) {
  clearStatus();
  put(stream_, text);
  static_cast<void>(std::fflush(stream_));
}

void Talk::status(std::string_view line) {
  if (!isTerminal_) return;
  put(stream_, std::string(toLineBegin).append(line));
  static_cast<void>(std::fflush(stream_));
  hasStatus_ = true;
}

void Talk::clearStatus() {
  if (!hasStatus_) return;
  put(stream_, toLineBegin);
  static_cast<void>(std::fflush(stream_));
  hasStatus_ = false;
}

}  // namespace mervane::cli
