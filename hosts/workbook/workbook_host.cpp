#include "hosts/workbook/workbook_host.h"

#include <algorithm>
#include <utility>

#include "hosts/workbook/book.h"
#include "hosts/workbook/book_facts.h"
#include "hosts/workbook/cell_attachments.h"
#include "hosts/workbook/numeric_block.h"
#include "hosts/workbook/objects/application_object.h"
#include "hosts/workbook/sorting_facts.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"

namespace mervane::workbook {

struct WorkbookHost::Data {
  explicit Data(std::unique_ptr<Package> package) : book(std::move(package)), application(makeApplication(book)) {}
  Book book;
  sheet::ObjectRef application;

  Sheet& named(std::string_view sheet) {
    const std::optional<std::int32_t> position = book.sheetNamed(sheet);
    if (!position) raise(runtime::subscriptOutOfRange);
    return book.sheet(*position);
  }
};

std::unique_ptr<WorkbookHost> WorkbookHost::open(const std::filesystem::path& path) {
  return std::unique_ptr<WorkbookHost>(new WorkbookHost(std::make_unique<Data>(Package::open(path))));
}

WorkbookHost::WorkbookHost(std::unique_ptr<Data> data) : data_(std::move(data)) {}
WorkbookHost::~WorkbookHost() = default;

sheet::ObjectRef WorkbookHost::application() {
  return data_->application;
}

void WorkbookHost::activate(std::string_view sheet) {
  data_->book.activateSheet(data_->book.positionOf(data_->named(sheet)));
}

guard::SheetFacts WorkbookHost::sheetFacts(std::string_view sheet) {
  return workbook::sheetFacts(data_->book, data_->named(sheet));
}

guard::SortingFacts WorkbookHost::sortingFacts(std::string_view sheet, const CellArea& rows) {
  return workbook::sortingFacts(data_->book, data_->named(sheet), rows);
}

guard::AreaFacts WorkbookHost::areaFacts(std::string_view sheet, const CellArea& area) {
  return workbook::areaFacts(data_->named(sheet), area);
}

void WorkbookHost::save(const std::filesystem::path& target, const SaveWatch& watch) {
  data_->book.save(target, watch);
}

std::vector<WorkbookHost::SheetInfo> WorkbookHost::sheets() {
  std::vector<SheetInfo> result;
  for (std::int32_t position = 0; position < data_->book.sheetCount(); ++position) {
    Sheet& sheet = data_->book.sheet(position);
    SheetInfo info;
    info.name = sheet.name();
    info.isActive = position == data_->book.activeSheet();
    info.used = sheet.cells().usedArea(false);
    if (info.used) {
      for (std::int32_t column = info.used->firstColumn; column <= info.used->lastColumn; ++column) {
        info.headers.push_back(sheet.shownText({info.used->firstRow, column}));
      }
    }
    result.push_back(std::move(info));
  }
  return result;
}

std::vector<std::string> WorkbookHost::sheetNames() const {
  std::vector<std::string> names;
  for (std::int32_t position = 0; position < data_->book.sheetCount(); ++position) {
    names.push_back(data_->book.sheetName(position));
  }
  return names;
}

std::string WorkbookHost::activeSheetName() const {
  return data_->book.sheetName(data_->book.activeSheet());
}

std::optional<CellArea> WorkbookHost::usedArea(std::string_view sheet) {
  return data_->named(sheet).cells().usedArea(false);
}

std::optional<WorkbookHost::Place> WorkbookHost::find(std::string_view reference) const {
  try {
    const SheetArea area = data_->book.resolve(reference, data_->book.activeSheet());
    return Place{data_->book.sheetName(area.sheet), area.area};
  } catch (const Failure&) {
    return std::nullopt;
  }
}

std::string WorkbookHost::cellText(std::string_view sheet, CellAddress at) {
  return data_->named(sheet).shownText(at);
}

std::optional<std::string> WorkbookHost::cellFormula(std::string_view sheet, CellAddress at) {
  return data_->named(sheet).formula(at);
}

Variant WorkbookHost::cellValue(std::string_view sheet, CellAddress at) {
  return data_->named(sheet).value(at);
}

Variant WorkbookHost::cellValueOrEmpty(std::string_view sheet, CellAddress at) {
  return data_->named(sheet).valueOrEmpty(at);
}

std::vector<CellAddress> WorkbookHost::commentedCells(std::string_view sheet, const CellArea& area) {
  return cellsWithComments(data_->named(sheet), area);
}

std::optional<CellArea> WorkbookHost::numericBlock(std::string_view sheet) {
  return workbook::numericBlock(data_->named(sheet));
}

std::vector<WorkbookHost::WrittenBlock> WorkbookHost::written() {
  std::vector<WrittenBlock> blocks;
  for (std::int32_t position = 0; position < data_->book.sheetCount(); ++position) {
    Sheet& sheet = data_->book.sheet(position);
    std::vector<WrittenBlock> own;
    for (const auto& [column, runs] : sheet.log().runs()) {
      // Within a run, what shows the same as before is left out.
      std::vector<WrittenBlock> pieces;
      for (const WriteLog::Run& run : runs) {
        bool isOpen = false;
        for (std::int32_t row = run.first; row <= run.last; ++row) {
          const CellAddress at{row, column};
          const std::string* before = sheet.log().original(at);
          if (sheet.shownText(at) == (before == nullptr ? std::string() : *before)) {
            isOpen = false;
            continue;
          }
          if (!isOpen) pieces.push_back({sheet.name(), {row, column, row, column}, {}, 0});
          isOpen = true;
          WrittenBlock& piece = pieces.back();
          piece.area.lastRow = row;
          if (before == nullptr) continue;
          ++piece.overwrittenCount;
          if (piece.overwritten.size() < mostOverwritten) piece.overwritten.push_back({at, *before});
        }
      }
      for (WrittenBlock& piece : pieces) {
        const auto left = std::find_if(own.begin(), own.end(), [&, column = column](const WrittenBlock& one) {
          return one.area.lastColumn + 1 == column && one.area.firstRow == piece.area.firstRow &&
                 one.area.lastRow == piece.area.lastRow;
        });
        if (left == own.end()) {
          own.push_back(std::move(piece));
          continue;
        }
        left->area.lastColumn = column;
        left->overwrittenCount += piece.overwrittenCount;
        for (auto& one : piece.overwritten) {
          if (left->overwritten.size() < mostOverwritten) left->overwritten.push_back(std::move(one));
        }
      }
    }
    blocks.insert(blocks.end(), std::make_move_iterator(own.begin()), std::make_move_iterator(own.end()));
  }
  return blocks;
}

std::vector<std::string> WorkbookHost::cannotBeKept() const {
  constexpr std::string_view signature = "/digital-signature/origin";
  std::vector<std::string> losses;
  for (const Relation& relation : data_->book.package().relations("")) {
    if (!relation.type.ends_with(signature)) continue;
    losses.emplace_back(
        "the workbook is signed, and the signature does not hold once something is changed; sign the result anew");
    break;
  }
  return losses;
}

const std::vector<std::string>& WorkbookHost::notes() const {
  return data_->book.shared().notes;
}

}  // namespace mervane::workbook
