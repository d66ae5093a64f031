#include "cli/progress.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "cli/talk.h"
#include "cli/terminal.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

constexpr auto interval = std::chrono::milliseconds(100);

/// A whole number of at most three digits with a unit: 950, 12 k, 3 M.
std::string rateText(double perSecond) {
  constexpr double thousand = 1000.0;
  std::string_view unit;
  for (const std::string_view larger : {" k", " M", " G"}) {
    if (perSecond < thousand) break;
    perSecond /= thousand;
    unit = larger;
  }
  return decimal(static_cast<long long>(perSecond)) + std::string(unit);
}

std::string timeText(double seconds) {
  constexpr long long minute = 60;
  constexpr long long hour = 3600;
  const auto whole = static_cast<long long>(seconds + 0.999);  // Never less than it will be.
  if (whole < minute) return decimal(whole) + " s";
  if (whole < hour) return decimal(whole / minute) + " min " + decimal(whole % minute) + " s";
  return decimal(whole / hour) + " h " + decimal(whole % hour / minute) + " min";
}

}  // namespace

std::string progressLine(const ProgressState& state, std::size_t width) {
  std::string tail = " epoch " + decimal(state.epoch) + "/" + decimal(state.epochs);
  if (state.epoch > 0 && state.seconds > 0.0) {
    const double epochSeconds = state.seconds / state.epoch;
    const double passesLeft = static_cast<double>(state.epochs) - state.epoch + 1;
    tail += ", " + rateText(static_cast<double>(state.rows) / epochSeconds) + " rows/s, " +
            timeText(epochSeconds * passesLeft) + " left";
  }
  constexpr std::size_t longestBar = 30;
  constexpr std::size_t shortestBar = 5;
  const std::size_t brackets = 2;
  if (tail.size() + brackets + shortestBar >= width)
    return cutToWidth(tail.substr(1), width - std::min<std::size_t>(width, 1));
  const std::size_t length = std::min(longestBar, width - 1 - tail.size() - brackets);
  const double share = state.epochs > 0 ? static_cast<double>(state.epoch) / state.epochs : 1.0;
  const auto filled = std::min(length, static_cast<std::size_t>(share * static_cast<double>(length)));
  return "[" + std::string(filled, '#') + std::string(length - filled, '.') + "]" + tail;
}

Progress::Progress(Talk& talk, bool wanted, std::int64_t rows, std::int32_t epochs)
    : talk_(talk),
      isShown_(wanted && talk.hasStatusLine() && talk.level() != Talk::Level::quiet),
      state_{.epochs = epochs, .rows = rows},
      begin_(Clock::now()) {}

void Progress::begin() {
  begin_ = Clock::now();
  if (isShown_) talk_.status(progressLine(state_, terminal::width(stderr)));
}

void Progress::epochDone(std::int32_t epoch) {
  if (!isShown_) return;
  const Clock::time_point now = Clock::now();
  if (shown_ && now - *shown_ < interval) return;
  shown_ = now;
  state_.epoch = epoch;
  state_.seconds = std::chrono::duration<double>(now - begin_).count();
  talk_.status(progressLine(state_, terminal::width(stderr)));
}

void Progress::end() {
  if (isShown_) talk_.clearStatus();
}

}  // namespace mervane::cli
