#include "hosts/workbook/sheet.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

#include "hosts/workbook/auto_fit.h"
#include "hosts/workbook/cell_error.h"
#include "hosts/workbook/formula_grammar.h"
#include "hosts/workbook/formula_text.h"
#include "hosts/workbook/number_format.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/sheet_reader.h"
#include "hosts/workbook/small_xml.h"
#include "mervane/convert.h"
#include "mervane/locale.h"

namespace mervane::workbook {

namespace {

constexpr std::size_t longestText = 32767;
constexpr std::size_t longestFormula = 8192;
constexpr std::string_view plainDate = "m/d/yyyy";
constexpr double days1904 = 1462.0;
constexpr std::int32_t errorDivision = 2007;
constexpr std::int32_t errorNumber = 2036;
constexpr std::int64_t mostRestyled = 20'000'000;

/// Length as the application counts it, in UTF-16 units.
std::size_t units(std::string_view text) {
  std::size_t count = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80) count += byte >= 0xF0 ? 2 : 1;
  }
  return count;
}

}  // namespace

Sheet::Sheet(BookShared& shared, std::string name, std::string part, std::int32_t tabPosition)
    : shared_(shared),
      name_(std::move(name)),
      part_(std::move(part)),
      tabPosition_(tabPosition),
      geometry_(cells_, columns_, frame_, shared.digitPixels) {}

Sheet::~Sheet() = default;

FitCache& Sheet::fitCache() {
  if (fitCache_ == nullptr) fitCache_ = std::make_unique<FitCache>();
  return *fitCache_;
}

std::string Sheet::place(CellAddress at) const {
  return quotedSheetName(name_) + "!" + a1(at);
}

void Sheet::load() {
  readSheet(*shared_.package, part_, shared_.styles.fileCount(), shared_.texts, cells_, frame_);
  columns_.load(frame_, shared_.styles.fileCount(), part_);
  loaded_ = true;
  readSurroundings();
}

void Sheet::readSurroundings() {
  pugi::xml_document document;
  if (frame_.load("sheetProtection", document)) isProtected_ = isTrue(document.document_element().attribute("sheet"));
  document.reset();
  if (frame_.load("mergeCells", document)) {
    for (const pugi::xml_node& node : document.document_element()) {
      const std::optional<CellArea> area = parseArea(node.attribute("ref").value());
      if (area && area->cells() > 1) merged_.push_back(*area);
    }
    std::sort(merged_.begin(), merged_.end(),
              [](const CellArea& a, const CellArea& b) { return a.firstRow < b.firstRow; });
    for (const CellArea& area : merged_) tallestMerge_ = std::max(tallestMerge_, area.rows());
  }
  for (const Formula& formula : cells_.formulas) {
    if (formula.area && formula.area->cells() > 1) arrays_.push_back(*formula.area);
  }
  if (frame_.find("tableParts") == nullptr) return;
  for (const Relation& relation : shared_.package->relations(part_)) {
    if (relation.kind != "table" || !shared_.package->has(relation.target)) continue;
    document.reset();
    loadXml(document, shared_.package->read(relation.target), relation.target);
    const pugi::xml_node root = document.document_element();
    if (const std::optional<CellArea> area = parseArea(root.attribute("ref").value())) {
      tables_.push_back({relation.target, *area, wholeNumber(root.attribute("headerRowCount"), 1) > 0, false});
    }
  }
}

Variant Sheet::valueOf(CellKind kind, double number, std::uint64_t index, bool asDate) const {
  switch (kind) {
    case CellKind::number:
      if (asDate) return Date{shared_.from1904 ? number + days1904 : number};
      return number;
    case CellKind::boolean:
      return index != 0;
    case CellKind::error:
      return ErrorValue{static_cast<std::int32_t>(index)};
    case CellKind::text:
      return Variant(shared_.texts.text(static_cast<std::uint32_t>(index)));
    case CellKind::isoDate: {
      const std::string_view text = shared_.texts.text(static_cast<std::uint32_t>(index));
      const double serial = isoDateSerial(text, false);
      if (std::isnan(serial)) return Variant(text);
      return Date{serial};
    }
    case CellKind::empty:
    case CellKind::formula:
      break;
  }
  return {};
}

Variant Sheet::value(CellAddress at) {
  loaded();
  const Cell* cell = std::as_const(cells_).find(at);
  if (cell == nullptr) return {};
  if (cell->kind == CellKind::number && !isDate(*cell)) return cell->number;
  if (cell->kind != CellKind::formula) return valueOf(cell->kind, cell->number, cell->index, isDate(*cell));
  return cachedValue(at, *cell);
}

Variant Sheet::cachedValue(CellAddress at, const Cell& cell) const {
  const Formula& formula = cells_.formulaOf(cell);
  if (formula.cachedKind == CellKind::empty) {
    refuse("The cell " + place(at) +
           " holds a formula without a computed value. Open the workbook in the spreadsheet, let it calculate and save "
           "it.");
  }
  return valueOf(formula.cachedKind, formula.number, formula.index, isDate(cell));
}

Variant Sheet::valueOrEmpty(CellAddress at) {
  loaded();
  const Cell* cell = std::as_const(cells_).find(at);
  if (cell == nullptr) return {};
  if (cell->kind != CellKind::formula) return valueOf(cell->kind, cell->number, cell->index, isDate(*cell));
  const Formula& formula = cells_.formulaOf(*cell);
  return valueOf(formula.cachedKind, formula.number, formula.index, isDate(*cell));
}

std::optional<std::string> Sheet::formula(CellAddress at) {
  loaded();
  const Cell* cell = std::as_const(cells_).find(at);
  if (cell == nullptr || cell->kind != CellKind::formula) return std::nullopt;
  if (cells_.formulaOf(*cell).sharedGroup >= 0) separateFormulas();
  return "=" + cells_.formulaOf(*cell).text;
}

std::string Sheet::shownText(CellAddress at) {
  const Variant value = valueOrEmpty(at);
  if (value.isEmpty()) return formula(at).value_or("");
  if (const double* number = value.getIf<double>())
    return shownNumber(*number, shared_.styles.numberFormat(styleOf(at)));
  if (const Date* date = value.getIf<Date>()) return formatDate(*date, englishLocale());
  if (const ErrorValue* error = value.getIf<ErrorValue>()) return std::string(errorText(error->code));
  if (const bool* truth = value.getIf<bool>()) return *truth ? "TRUE" : "FALSE";
  if (const std::string* text = value.getIf<std::string>()) return *text;
  return {};
}

std::uint32_t Sheet::styleOf(CellAddress at) {
  loaded();
  if (const Cell* cell = std::as_const(cells_).find(at)) return cell->style;
  if (const Row* row = cells_.rowAt(at.row)) {
    const RowFormat& format = cells_.rowFormat(row->format);
    if (format.hasStyle) return format.style;
  }
  const Columns::Span* span = columns_.find(at.column);
  return span == nullptr ? 0 : span->style;
}

Cell& Sheet::makeCell(CellAddress at) {
  loaded();
  if (Cell* found = cells_.find(at)) return *found;
  const std::uint32_t style = styleOf(at);
  Cell& cell = cells_.make(at);
  cell.style = style;
  return cell;
}

bool Sheet::allows(const char* permission) {
  loaded();
  if (!isProtected_) return true;
  pugi::xml_document document;
  if (!frame_.load("sheetProtection", document)) return true;
  const bool isForbiddenUnsaid =
      std::string_view(permission) != "objects" && std::string_view(permission) != "scenarios";
  return !isTrue(document.document_element().attribute(permission), isForbiddenUnsaid);
}

void Sheet::requirePermission(const char* permission, const std::string& action) {
  if (allows(permission)) return;
  refuse("The sheet " + quotedSheetName(name_) + " is protected and does not allow " + action +
         ". Take its protection off in the spreadsheet first.");
}

void Sheet::requireFormatting(const CellArea& area) {
  requirePermission("formatCells", "changes of formats");
  if (area.cells() > mostRestyled) refuse("The area " + a1(area) + " is too large to be given a format cell by cell.");
}

void Sheet::requireWritable(CellAddress at) {
  if (isProtected_ && shared_.styles.isLocked(styleOf(at))) {
    refuse("The cell " + place(at) +
           " is on a protected sheet. Take the sheet's protection off in the spreadsheet first.");
  }
  if (!merged_.empty()) {
    auto area = std::lower_bound(merged_.begin(), merged_.end(), at.row - tallestMerge_ + 1,
                                 [](const CellArea& one, std::int32_t row) { return one.firstRow < row; });
    for (; area != merged_.end() && area->firstRow <= at.row; ++area) {
      if (area->contains(at) && (area->firstRow != at.row || area->firstColumn != at.column)) {
        refuse("The cell " + place(at) + " is covered by the merged cells " + a1(*area) +
               ". Take the merge apart in the spreadsheet or choose other cells.");
      }
    }
  }
  for (const CellArea& area : arrays_) {
    if (area.contains(at)) {
      refuse("The cell " + place(at) + " is part of the array formula in " + a1(area) +
             ", which cannot be changed in part.");
    }
  }
}

void Sheet::forgetOld(CellAddress at, Cell& cell) {
  if (fitCache_ != nullptr) fitCache_->willChange(*this, at);
  if (!log_.wasWritten(at) && cell.kind != CellKind::empty) {
    const bool isText = cell.kind == CellKind::text;
    log_.keepOriginal(at, shownText(at), isText ? std::optional(static_cast<std::uint32_t>(cell.index)) : std::nullopt);
  }
  if (cell.kind == CellKind::formula) {
    if (cells_.formulaOf(cell).sharedGroup >= 0) separateFormulas();
    shared_.formulasChanged = true;
  }
  if (cell.hasExtras) {
    cells_.extras.erase(CellStore::keyOf(at));
    cell.hasExtras = false;
  }
  for (TableArea& table : tables_) {
    if (table.hasHeader && at.row == table.area.firstRow && table.area.contains(at)) table.headerWritten = true;
  }
}

void Sheet::putNumber(Cell& cell, double number) {
  if (std::isfinite(number)) {
    cell.kind = CellKind::number;
    cell.number = number == 0.0 ? 0.0 : number;  // a negative zero is a zero on a sheet
    return;
  }
  cell.kind = CellKind::error;
  cell.index = static_cast<std::uint64_t>(std::isnan(number) ? errorNumber : errorDivision);
}

void Sheet::putText(CellAddress at, Cell& cell, const std::string& text) {
  if (text.size() > 1 && text.front() == '=' && !shared_.styles.hasTextMark(cell.style)) {
    Formula formula;
    formula.text = text.substr(1);
    if (const std::optional<Variant> value = constantFormula(formula.text)) {
      Cell cached;
      if (const double* number = value->getIf<double>()) putNumber(cached, *number);
      if (const std::string* constant = value->getIf<std::string>()) putText(at, cached, *constant);
      if (const bool* truth = value->getIf<bool>()) {
        cached.kind = CellKind::boolean;
        cached.index = *truth ? 1 : 0;
      }
      if (const ErrorValue* error = value->getIf<ErrorValue>()) {
        cached.kind = CellKind::error;
        cached.index = static_cast<std::uint64_t>(error->code);
      }
      formula.cachedKind = cached.kind;
      formula.index = cached.index;
    }
    cell.kind = CellKind::formula;
    cell.index = cells_.formulas.size();
    cells_.formulas.push_back(std::move(formula));
    shared_.formulasChanged = true;
    return;
  }
  cell.kind = CellKind::text;
  // A text that comes back to its cell keeps the formats of its letters.
  const std::optional<std::uint32_t> old = log_.originalText(at);
  cell.index = old && shared_.texts.text(*old) == text ? *old : shared_.texts.add(text);
}

void Sheet::setValue(CellAddress at, const Variant& value) {
  loaded();
  if (!isOnSheet(at.row, at.column)) raise(runtime::applicationDefined);
  if (isProtected_ || !merged_.empty() || !arrays_.empty()) requireWritable(at);
  if (const std::string* text = value.getIf<std::string>()) {
    const bool isFormula = text->starts_with('=');
    if (units(*text) > (isFormula ? longestFormula : longestText)) {
      refuse("The text for " + place(at) + " is longer than a cell can hold.");
    }
    // A file with a formula that is none would be taken for damaged.
    if (isFormula && text->size() > 1 && !isFormulaText(std::string_view(*text).substr(1)) &&
        !shared_.styles.hasTextMark(styleOf(at))) {
      refuse("The text \"" + *text + "\" for " + place(at) + " begins with an equals sign and is no formula.");
    }
    std::string printable = *text;
    std::replace_if(
        printable.begin(), printable.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    if (!isXmlText(printable)) refuse("The text for " + place(at) + " holds characters that a cell cannot hold.");
  } else if (value.isArray() || value.isObject()) {
    raise(runtime::typeMismatch);
  }
  Cell& cell = makeCell(at);
  forgetOld(at, cell);
  cell.isPlainNumber = false;
  const auto number = [&](double one) {
    putNumber(cell, one);
    cell.isPlainNumber = value.kind() != Variant::Kind::date;
  };
  switch (value.kind()) {
    case Variant::Kind::empty:
    case Variant::Kind::null:
    case Variant::Kind::missing:
    case Variant::Kind::array:
    case Variant::Kind::object:
      cell.kind = CellKind::empty;
      cell.index = 0;
      break;
    case Variant::Kind::boolean:
      cell.kind = CellKind::boolean;
      cell.index = *value.getIf<bool>() ? 1 : 0;
      break;
    case Variant::Kind::int16:
      number(*value.getIf<std::int16_t>());
      break;
    case Variant::Kind::int32:
      number(*value.getIf<std::int32_t>());
      break;
    case Variant::Kind::single:
      number(static_cast<double>(*value.getIf<float>()));
      break;
    case Variant::Kind::real:
      number(*value.getIf<double>());
      break;
    case Variant::Kind::date:
      number(value.getIf<Date>()->serial - (shared_.from1904 ? days1904 : 0.0));
      if (!shared_.styles.isDate(cell.style)) cell.style = shared_.styles.withNumberFormat(cell.style, plainDate);
      break;
    case Variant::Kind::text:
      putText(at, cell, *value.getIf<std::string>());
      break;
    case Variant::Kind::error:
      cell.kind = CellKind::error;
      cell.index = static_cast<std::uint64_t>(value.getIf<ErrorValue>()->code);
      break;
  }
  changed_ = true;
  shared_.valuesChanged = true;
}

void Sheet::separateFormulas() {
  loaded();
  if (isSeparated_) return;
  isSeparated_ = true;
  struct Master {
    CellAddress at;
    std::string text;
  };
  std::unordered_map<std::int32_t, Master> masters;
  const auto eachShared = [&](auto&& body) {
    cells_.forEachRowWithCells([&](std::int32_t row, const Row&, std::span<const CellStore::PlacedCell> cells) {
      for (const auto& [column, cell] : cells) {
        if (cell->kind != CellKind::formula) continue;
        Formula& formula = cells_.formulaOf(*cell);
        if (formula.sharedGroup >= 0) body(CellAddress{row, column}, formula);
      }
    });
  };
  eachShared([&](CellAddress at, const Formula& formula) {
    if (!formula.text.empty()) masters.try_emplace(formula.sharedGroup, Master{at, formula.text});
  });
  eachShared([&](CellAddress at, Formula& formula) {
    const auto master = masters.find(formula.sharedGroup);
    if (formula.text.empty() && master != masters.end()) {
      formula.text =
          movedFormula(master->second.text, at.row - master->second.at.row, at.column - master->second.at.column);
    }
    if (formula.text.empty()) return;  // NB: a member of a group without a first one stays as it is.
    formula.sharedGroup = -1;
    formula.attributes.clear();
  });
}

}  // namespace mervane::workbook
