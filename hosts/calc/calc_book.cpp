#include "hosts/calc/calc_book.h"

#include "hosts/book/file_bytes.h"
#include "hosts/calc/objects/application_object.h"
#include "mervane/runtime_errors.h"

namespace mervane::calc {

namespace {

constexpr std::uint64_t largestFile = std::uint64_t{1} << 32;

/// NB: the office is given a copy, so that a file that the user has open in another office is no trouble, and no
/// lock is left beside it.
std::filesystem::path copied(const std::filesystem::path& path, const std::filesystem::path& folder) {
  std::filesystem::path copy = folder / path.filename();
  std::error_code error;
  if (!std::filesystem::exists(path, error))
    throw Failure(runtime::fileNotFound.number, "There is no file \"" + hosts::shown(path) + "\".");
  std::filesystem::copy_file(path, copy, error);
  if (error) {
    throw Failure(runtime::pathFileAccess.number,
                  "The file \"" + hosts::shown(path) + "\" cannot be read: " + error.message() + ".");
  }
  return copy;
}

}  // namespace

CalcBook::CalcBook(const std::filesystem::path& path)
    : document_(office_.open(copied(path, office_.folder()))),
      session_(inOffice("open the document", [&] { return std::make_shared<Session>(office_.context(), document_); })),
      cells_(session_),
      application_(makeApplication(session_)),
      facts_(session_) {}

CalcBook::~CalcBook() {
  session_->close();
  Office::close(document_);
}

void CalcBook::save(const std::filesystem::path& target, const hosts::SaveWatch& watch) {
  session_->flush();
  // The office writes into its own folder first, so that the target is replaced by a whole file or not at all.
  const std::filesystem::path stored = office_.folder() / ("stored" + target.extension().string());
  Office::store(document_, stored);
  hosts::replaceFile(target, hosts::readFile(stored, largestFile), watch);
  std::filesystem::remove(stored);
}

void CalcBook::activate(std::string_view sheet) {
  const std::optional<std::int32_t> position = session_->sheetNamed(sheet);
  if (!position) raise(runtime::subscriptOutOfRange);
  session_->activateSheet(*position);
}

std::vector<CalcBook::SheetInfo> CalcBook::sheets() {
  std::vector<SheetInfo> all;
  const std::int32_t active = session_->activeSheet();
  for (std::int32_t sheet = 0; sheet < session_->sheetCount(); ++sheet) {
    SheetInfo info{session_->sheetName(sheet), sheet == active, {}, {}};
    info.used = usedArea(info.name);
    if (info.used) {
      for (std::int32_t column = info.used->firstColumn; column <= info.used->lastColumn; ++column) {
        info.headers.push_back(cellText(info.name, {info.used->firstRow, column}));
      }
    }
    all.push_back(std::move(info));
  }
  return all;
}

std::vector<CalcBook::WrittenBlock> CalcBook::written() {
  refuse("What would be written is only known of workbooks.");
}

}  // namespace mervane::calc
