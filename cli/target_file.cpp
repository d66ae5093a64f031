#include "cli/target_file.h"

#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include "cli/byte_source.h"
#include "cli/output_file.h"
#include "cli/paths.h"
#include "cli/problem.h"
#include "cli/text_display.h"
#include "hosts/book/office_lock.h"

namespace mervane::cli {

TargetFile::TargetFile(std::string path, bool force) : path_(std::move(path)), force_(force) {
  if (!isFile()) return;
  requireUnlocked();
  stamp_ = hosts::FileStamp::of(toPath(path_));
}

void TargetFile::requireUnlocked() const {
  if (force_) return;
  const auto lock = hosts::officeLockOf(toPath(path_));
  if (!lock) return;
  const std::string who = lock->who.empty() ? std::string("somebody") : printable(lock->who);
  throw Problem(ExitStatus::fileTrouble,
                "cannot write " + printable(path_) + ": " + who + " has it open in an office, as the file " +
                    printable(toText(lock->file.filename())) + " beside it says",
                "Close it there, or name another file with -o. Where no office runs any more, give --force.");
}

void TargetFile::requireUntouched() const {
  if (!isFile()) return;
  requireUnlocked();
  if (hosts::FileStamp::of(toPath(path_)) == stamp_) return;
  throw Problem(ExitStatus::fileTrouble,
                "cannot write " + printable(path_) + ": another program has written it since this run began",
                "Nothing is written. Run again, on the file as it is now.");
}

std::string SafetyCopy::freeName(const std::string& path, const std::string& suffix) {
  std::string name = path + suffix;
  std::error_code error;
  for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(toPath(name), error)); ++number) {
    name = path + suffix + "." + decimal(number);
  }
  return name;
}

SafetyCopy::SafetyCopy(const std::string& path, const std::string& suffix) : path_(freeName(path, suffix)) {
  const auto source = openSource(path);
  const auto target = openNew(path_, path);
  std::array<char, 65536> block{};
  for (std::size_t count = source->read(block); count > 0; count = source->read(block)) {
    target->write({block.data(), count});
  }
  target->commit();
}

SafetyCopy::~SafetyCopy() {
  std::error_code ignored;
  if (!isKept_) std::filesystem::remove(toPath(path_), ignored);
}

}  // namespace mervane::cli
