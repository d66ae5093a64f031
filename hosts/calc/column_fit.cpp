#include "hosts/calc/column_fit.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/FillDirection.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/sheet/XCellSeries.hpp>
#include <com/sun/star/sheet/XConditionalFormats.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <cstdint>
#include <set>
#include <utility>

#include "hosts/calc/auto_filter.h"
#include "hosts/calc/number_formats.h"
#include "hosts/calc/sheet_facts.h"

namespace mervane::calc {

namespace {

using Properties = uno::Reference<css::beans::XPropertySet>;

constexpr std::int32_t fewRows = 2048;  ///< The office is fast enough up to here.
constexpr std::size_t mostGroups = 64;
constexpr std::size_t mostOthers = 256;
constexpr std::size_t mostAlike = 32;

/// A plain number as the General format shows it, with 15 digits at most.
class Digits {
 public:
  /// Nothing for a number that is shown otherwise.
  static std::optional<Digits> of(double value) {
    constexpr double large = 1e9;
    constexpr double small = 1e-3;
    const double size = std::fabs(value);
    if (size >= large || (size < small && size != 0.0)) return std::nullopt;
    std::array<char, 32> text{};
    char* end = writeFewDecimals(size, text);
    if (end == nullptr) end = writeAllDecimals(size, text);
    while (*(end - 1) == '0') --end;
    const bool isWhole = *(end - 1) == '.';
    if (isWhole) --end;
    Digits digits;
    digits.kind = (value < 0.0 ? 2U : 0U) + (isWhole ? 0U : 1U);
    digits.length = static_cast<std::size_t>(end - text.begin());
    // A pair of ones is set narrower than other digits in many fonts.
    digits.ones = static_cast<std::size_t>(std::count(text.data(), end, '1'));
    return digits;
  }

  std::size_t kind = 0;    ///< whether it has a sign and a point
  std::size_t length = 0;  ///< without the sign
  std::size_t ones = 0;

 private:
  /// OPTIMIZATION: most data have four decimals at most, and a whole number is written in a fraction of the time. The
  /// number closest to a decimal of so few digits is shown as that decimal, so both ways give the same text.
  /// @return null where there are more decimals
  static char* writeFewDecimals(double size, std::array<char, 32>& text) {
    constexpr int decimals = 4;
    constexpr std::uint64_t scale = 10'000;
    const auto scaled = static_cast<std::uint64_t>(size * static_cast<double>(scale) + 0.5);
    if (static_cast<double>(scaled) / static_cast<double>(scale) != size) return nullptr;
    char* end = std::to_chars(text.data(), text.data() + text.size(), scaled / scale).ptr;
    *end++ = '.';
    std::uint64_t rest = scaled % scale;
    for (int i = decimals; i-- > 0; rest /= 10) end[i] = static_cast<char>('0' + rest % 10);
    return end + decimals;
  }
  static char* writeAllDecimals(double size, std::array<char, 32>& text) {
    constexpr int mostDigits = 15;
    const int whole = static_cast<int>(std::floor(std::log10(size))) + 1;
    return std::to_chars(text.data(), text.data() + text.size(), size, std::chars_format::fixed, mostDigits - whole)
        .ptr;
  }
};

/// The longest numbers of one kind; of many equally long ones, those with the fewest ones.
class Longest {
 public:
  void add(double value, const Digits& digits) {
    if (digits.length < length_) return;
    if (digits.length > length_) found_.clear();
    length_ = digits.length;
    if (found_.size() < mostAlike) {
      found_.emplace_back(digits.ones, value);
      std::push_heap(found_.begin(), found_.end());
    } else if (digits.ones < found_.front().first) {
      std::pop_heap(found_.begin(), found_.end());
      found_.back() = {digits.ones, value};
      std::push_heap(found_.begin(), found_.end());
    }
  }
  void appendTo(std::vector<uno::Any>& values) const {
    for (const auto& one : found_) values.emplace_back(one.second);
  }

 private:
  std::size_t length_ = 0;
  std::vector<std::pair<std::size_t, double>> found_;
};

/// Cells of one column that look alike, and the values among which the widest is.
struct Group {
  css::table::CellRangeAddress first;
  std::vector<uno::Any> values;
};

/// A sheet of our own, as long as this lives.
class Bench {
 public:
  explicit Bench(Session& session) : sheets_(sheetsOf(session)) {
    const uno::Reference<css::container::XIndexAccess> places(sheets_, uno::UNO_QUERY_THROW);
    position_ = static_cast<sal_Int16>(places->getCount());
    do {
      name_ += "fit";
    } while (sheets_->hasByName(name_));
    sheets_->insertNewByName(name_, position_);
    sheet_.set(places->getByIndex(position_), uno::UNO_QUERY_THROW);
  }
  ~Bench() {
    try {
      sheets_->removeByName(name_);
    } catch (const uno::Exception&) {  // the office is going
    }
  }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  /// @return the width that the groups need; nothing where the digits of a font are not equally wide
  std::optional<sal_Int32> width(const std::vector<Group>& groups) {
    sal_Int32 row = 0;
    sal_Int32 widest = 0;
    for (const Group& group : groups) {
      const auto count = static_cast<sal_Int32>(group.values.size());
      const css::table::CellAddress to{position_, 0, row};
      uno::Reference<css::sheet::XCellRangeMovement>(sheet_, uno::UNO_QUERY_THROW)->copyRange(to, group.first);
      if (!hasEqualDigits(row)) return std::nullopt;
      const auto cells = sheet_->getCellRangeByPosition(0, row, 0, row + count - 1);
      const uno::Reference<css::sheet::XCellSeries> series(cells, uno::UNO_QUERY_THROW);
      if (count > 1) series->fillAuto(css::sheet::FillDirection_TO_BOTTOM, 1);
      uno::Sequence<uno::Sequence<uno::Any>> rows(count);
      for (sal_Int32 i = 0; i < count; ++i) {
        rows.getArray()[i] = uno::Sequence<uno::Any>(&group.values[static_cast<std::size_t>(i)], 1);
      }
      uno::Reference<css::sheet::XCellRangeData>(cells, uno::UNO_QUERY_THROW)->setDataArray(rows);
      widest = std::max(widest, fitted());
      uno::Reference<css::sheet::XCellRangeData>(cells, uno::UNO_QUERY_THROW)->setDataArray(blanks(count));
      row += count;
    }
    return widest;
  }

 private:
  static uno::Reference<css::sheet::XSpreadsheets> sheetsOf(const Session& session) {
    const uno::Reference<css::sheet::XSpreadsheetDocument> document(session.model(), uno::UNO_QUERY_THROW);
    return uno::Reference<css::sheet::XSpreadsheets>(document->getSheets(), uno::UNO_SET_THROW);
  }
  static uno::Sequence<uno::Sequence<uno::Any>> blanks(sal_Int32 count) {
    const uno::Any blank((rtl::OUString()));
    uno::Sequence<uno::Sequence<uno::Any>> rows(count);
    for (sal_Int32 i = 0; i < count; ++i) rows.getArray()[i] = uno::Sequence<uno::Any>(&blank, 1);
    return rows;
  }
  sal_Int32 fitted() {
    const uno::Reference<css::table::XColumnRowRange> range(sheet_, uno::UNO_QUERY_THROW);
    const Properties column(range->getColumns()->getByIndex(0), uno::UNO_QUERY_THROW);
    column->setPropertyValue("OptimalWidth", uno::Any(true));
    sal_Int32 width = 0;
    column->getPropertyValue("Width") >>= width;
    return width;
  }
  /// Only then are the longest numbers the widest. Ones may be narrower.
  bool hasEqualDigits(sal_Int32 row) {
    const auto cell = sheet_->getCellByPosition(0, row);
    const Properties properties(cell, uno::UNO_QUERY_THROW);
    std::string font;
    for (const char* name : {"CharFontName", "CharHeight", "CharWeight", "CharPosture"}) {
      const uno::Any value = properties->getPropertyValue(rtl::OUString::createFromAscii(name));
      rtl::OUString text;
      double number = 0.0;
      if (value >>= text) font += fromOffice(text);
      if (value >>= number) font += std::to_string(number);
      font += '/';
    }
    const auto known = equalDigits_.find(font);
    if (known != equalDigits_.end()) return known->second;
    constexpr int repeated = 16;
    const uno::Reference<css::text::XTextRange> shown(cell, uno::UNO_QUERY_THROW);
    const auto widthOf = [&](char digit) {
      shown->setString(toOffice(std::string(repeated, digit)));
      return fitted();
    };
    const sal_Int32 zeros = widthOf('0');
    bool equal = widthOf('1') <= zeros;
    for (char digit = '2'; digit <= '9' && equal; ++digit) equal = widthOf(digit) == zeros;
    return equalDigits_[font] = equal;
  }

  uno::Reference<css::sheet::XSpreadsheets> sheets_;
  uno::Reference<css::sheet::XSpreadsheet> sheet_;
  rtl::OUString name_ = "mervane";
  sal_Int16 position_ = 0;
  std::map<std::string, bool> equalDigits_;
};

/// The values of some cells among which the widest is; false where there are too many.
bool choose(Session& session, const uno::Reference<css::sheet::XSheetCellRanges>& cells,
            std::vector<uno::Any>& values) {
  sal_Int32 key = 0;
  Properties(cells, uno::UNO_QUERY_THROW)->getPropertyValue("NumberFormat") >>= key;
  const bool isGeneral = session.numberFormats().codeOf(key) == "General";
  std::array<Longest, 4> longest;
  std::set<std::string> texts;
  for (const auto& area : cells->getRangeAddresses()) {
    for (sal_Int32 row = area.StartRow + 1; row <= area.EndRow + 1; ++row) {
      const Variant value = session.value(area.Sheet, {row, area.StartColumn + 1});
      if (value.isEmpty()) continue;
      const double* number = value.getIf<double>();
      if (number == nullptr) {
        const std::string* text = value.getIf<std::string>();
        if (text == nullptr) return false;  // Truth values, dates and errors are few where there are any.
        if (texts.insert(*text).second) values.emplace_back(toOffice(*text));
      } else if (const auto digits = isGeneral ? Digits::of(*number) : std::nullopt) {
        longest[digits->kind].add(*number, *digits);
      } else {
        values.emplace_back(*number);
      }
      if (values.size() > mostOthers) return false;
    }
  }
  for (const Longest& one : longest) one.appendTo(values);
  return true;
}

/// Nothing where the office has to look at the whole column.
std::optional<std::vector<Group>> groupsOf(Session& session, std::int32_t sheet, std::int32_t column) {
  SheetFacts& facts = session.facts();
  const CellAddress end = facts.end(sheet);
  if (end.row < fewRows || column > end.column) return std::nullopt;
  const CellArea area{1, column, end.row, column};
  // An arrow takes room in its cell.
  if (hasFilterArrows(session, {sheet, area})) return std::nullopt;
  for (const CellArea& formulas : facts.formulas(sheet)) {
    if (formulas.meets(area)) return std::nullopt;
  }
  const auto range = session.rangeOf({sheet, area});
  const uno::Reference<css::table::XColumnRowRange> columns(range, uno::UNO_QUERY_THROW);
  const Properties whole(columns->getColumns()->getByIndex(0), uno::UNO_QUERY_THROW);
  bool isVisible = false;
  if (!(whole->getPropertyValue("IsVisible") >>= isVisible) || !isVisible) return std::nullopt;
  const uno::Reference<css::sheet::XUniqueCellFormatRangesSupplier> supplier(range, uno::UNO_QUERY_THROW);
  const auto looks = supplier->getUniqueCellFormatRanges();
  if (static_cast<std::size_t>(looks->getCount()) > mostGroups) return std::nullopt;
  std::vector<Group> groups;
  for (sal_Int32 i = 0; i < looks->getCount(); ++i) {
    const uno::Reference<css::sheet::XSheetCellRanges> cells(looks->getByIndex(i), uno::UNO_QUERY_THROW);
    Group group;
    group.first = cells->getRangeAddresses()[0];
    group.first.EndRow = group.first.StartRow;
    if (!choose(session, cells, group.values)) return std::nullopt;
    if (!group.values.empty()) groups.push_back(std::move(group));
  }
  if (groups.empty()) return std::nullopt;
  return groups;
}

bool isPlain(Session& session, std::int32_t sheet) {
  if (session.facts().end(sheet).row < fewRows || session.facts().hasMerged(sheet)) return false;
  const Properties properties(session.sheetAt(sheet), uno::UNO_QUERY_THROW);
  uno::Reference<css::sheet::XConditionalFormats> conditional;
  properties->getPropertyValue("ConditionalFormats") >>= conditional;
  return !conditional.is() || conditional->getLength() == 0;
}

Properties columnsOf(const Session& session, const SheetArea& area) {
  const uno::Reference<css::table::XColumnRowRange> range(session.rangeOf(area), uno::UNO_QUERY_THROW);
  return Properties(range->getColumns(), uno::UNO_QUERY_THROW);
}

}  // namespace

void fitColumns(Session& session, const SheetArea& columns) {
  const auto byOffice = [&](std::int32_t first, std::int32_t last) {
    const SheetArea area{columns.sheet, {columns.area.firstRow, first, columns.area.lastRow, last}};
    columnsOf(session, area)->setPropertyValue("OptimalWidth", uno::Any(true));
  };
  const std::int32_t first = columns.area.firstColumn;
  const std::int32_t last = columns.area.lastColumn;
  if (!isPlain(session, columns.sheet)) return byOffice(first, last);
  std::optional<Bench> bench;
  for (std::int32_t column = first; column <= last; ++column) {
    std::optional<sal_Int32> width;
    if (const auto groups = groupsOf(session, columns.sheet, column)) {
      try {
        if (!bench) bench.emplace(session);
        width = bench->width(*groups);
      } catch (const uno::Exception&) {  // a document that takes no further sheet
        width.reset();
      }
    }
    if (!width) {
      byOffice(column, column);
      continue;
    }
    const SheetArea area{columns.sheet, {columns.area.firstRow, column, columns.area.lastRow, column}};
    columnsOf(session, area)->setPropertyValue("Width", uno::Any(*width));
  }
}

}  // namespace mervane::calc
