#include "hosts/calc/calc_book.h"

#include <com/sun/star/table/XCell.hpp>

#include "hosts/book/file_bytes.h"
#include "hosts/book/numeric_blocks.h"
#include "hosts/calc/objects/application_object.h"
#include "hosts/calc/sheet_facts.h"
#include "hosts/charts/series_text.h"
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

bool isNumber(const Variant& value) {
  return value.getIf<double>() != nullptr;
}

}  // namespace

CalcBook::CalcBook(const std::filesystem::path& path)
    : document_(office_.open(copied(path, office_.folder()))),
      session_(inOffice("open the document", [&] { return std::make_shared<Session>(office_.context(), document_); })),
      application_(makeApplication(session_)) {}

CalcBook::~CalcBook() {
  session_->close();
  Office::close(document_);
}

void CalcBook::save(const std::filesystem::path& target, const hosts::UnfinishedFile& unfinished) {
  session_->flush();
  // The office writes into its own folder first, so that the target is replaced by a whole file or not at all.
  const std::filesystem::path stored = office_.folder() / ("stored" + target.extension().string());
  Office::store(document_, stored);
  hosts::replaceFile(target, hosts::readFile(stored, largestFile), unfinished);
  std::filesystem::remove(stored);
}

std::int32_t CalcBook::position(std::string_view sheet) const {
  const std::optional<std::int32_t> found = session_->sheetNamed(sheet);
  if (!found) raise(runtime::subscriptOutOfRange);
  return *found;
}

std::optional<CellArea> CalcBook::usedArea(std::string_view sheet) {
  const std::int32_t owner = position(sheet);
  return inOffice("tell what a sheet holds", [&] { return session_->facts().used(owner); });
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

std::vector<std::string> CalcBook::sheetNames() const {
  std::vector<std::string> names;
  for (std::int32_t sheet = 0; sheet < session_->sheetCount(); ++sheet) names.push_back(session_->sheetName(sheet));
  return names;
}

std::string CalcBook::activeSheetName() const {
  return session_->sheetName(session_->activeSheet());
}

std::optional<CalcBook::Place> CalcBook::find(std::string_view reference) const {
  try {
    const SheetArea area = session_->resolve(reference, session_->activeSheet());
    return Place{session_->sheetName(area.sheet), area.area};
  } catch (const Failure&) {
    return std::nullopt;
  }
}

std::string CalcBook::cellText(std::string_view sheet, CellAddress at) {
  return mervane::charts::cellText(*session_, position(sheet), at);
}

std::optional<std::string> CalcBook::cellFormula(std::string_view sheet, CellAddress at) {
  const std::int32_t owner = position(sheet);
  return inOffice("tell a formula", [&]() -> std::optional<std::string> {
    for (const CellArea& area : session_->facts().formulas(owner)) {
      if (!area.contains(at)) continue;
      return fromOffice(session_->sheetAt(owner)->getCellByPosition(at.column - 1, at.row - 1)->getFormula());
    }
    return std::nullopt;
  });
}

Variant CalcBook::cellValue(std::string_view sheet, CellAddress at) {
  return session_->value(position(sheet), at);
}

std::vector<CellAddress> CalcBook::commentedCells(std::string_view, const CellArea&) {
  return {};
}

std::optional<CellArea> CalcBook::numericBlock(std::string_view sheet) {
  const std::int32_t owner = position(sheet);
  const auto used = usedArea(sheet);
  if (!used) return std::nullopt;
  hosts::NumericBlocks blocks;
  for (std::int32_t row = used->firstRow; row <= used->lastRow; ++row) {
    for (std::int32_t column = used->firstColumn; column <= used->lastColumn; ++column) {
      if (!isNumber(session_->value(owner, {row, column}))) continue;
      std::int32_t last = column;
      while (last < used->lastColumn && isNumber(session_->value(owner, {row, last + 1}))) ++last;
      blocks.addRun(row, column, last);
      column = last;
    }
  }
  return blocks.largest();
}

std::vector<CalcBook::WrittenBlock> CalcBook::written() {
  refuse("What would be written is only known of workbooks.");
}

}  // namespace mervane::calc
