#include "spreadsheet/cell_address.h"

#include <algorithm>
#include <utility>

namespace mervane::sheet {

namespace {

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
constexpr std::int32_t letterValue(char c) {
  return (c >= 'a' ? c - 'a' : c - 'A') + 1;
}

/// A cursor over a reference text; each step takes what it can and says whether it took anything.
class Cursor {
 public:
  explicit Cursor(std::string_view text) : text_(text) {}

  bool take(char wanted) {
    if (text_.empty() || text_.front() != wanted) return false;
    text_.remove_prefix(1);
    return true;
  }

  bool takeColumn(std::int32_t& column) {
    const std::string_view before = text_;
    take('$');
    std::int32_t value = 0;
    int letters = 0;
    while (!text_.empty() && isLetter(text_.front()) && letters < 4) {
      value = value * 26 + letterValue(text_.front());
      text_.remove_prefix(1);
      ++letters;
    }
    if (letters == 0 || letters > 3 || value > lastSheetColumn) return back(before);
    column = value;
    return true;
  }

  bool takeRow(std::int32_t& row) {
    const std::string_view before = text_;
    take('$');
    std::int32_t value = 0;
    int digits = 0;
    while (!text_.empty() && isDigit(text_.front()) && digits < 8) {
      value = value * 10 + (text_.front() - '0');
      text_.remove_prefix(1);
      ++digits;
    }
    if (digits == 0 || digits > 7 || value < 1 || value > lastSheetRow) return back(before);
    row = value;
    return true;
  }

  [[nodiscard]] bool atEnd() const { return text_.empty(); }

 private:
  bool back(std::string_view before) {
    text_ = before;
    return false;
  }

  std::string_view text_;
};

CellArea ordered(CellArea area) {
  if (area.firstRow > area.lastRow) std::swap(area.firstRow, area.lastRow);
  if (area.firstColumn > area.lastColumn) std::swap(area.firstColumn, area.lastColumn);
  return area;
}

/// A sheet name that a reference may hold without apostrophes.
bool isPlainWord(std::string_view name) {
  if (name.empty() || isDigit(name.front()) || name.front() == '.') return false;
  const auto isWord = [](char c) {
    return isDigit(c) || isLetter(c) || c == '_' || c == '.' || static_cast<unsigned char>(c) >= 0x80;
  };
  if (!std::all_of(name.begin(), name.end(), isWord)) return false;
  if (parseCell(name)) return false;
  // R1C1 forms and the two booleans would be taken for something else.
  std::string upper(name);
  for (char& c : upper) c = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
  if (upper == "TRUE" || upper == "FALSE") return false;
  std::size_t at = 0;
  const auto skipDigits = [&] {
    while (at < upper.size() && isDigit(upper[at])) ++at;
  };
  if (upper[at] == 'R') {
    ++at;
    skipDigits();
  }
  if (at < upper.size() && upper[at] == 'C') {
    ++at;
    skipDigits();
  }
  return at != upper.size();
}

}  // namespace

bool isOnSheet(std::int64_t row, std::int64_t column) noexcept {
  return row >= 1 && row <= lastSheetRow && column >= 1 && column <= lastSheetColumn;
}

bool isOnSheet(const CellArea& area) noexcept {
  return isOnSheet(area.firstRow, area.firstColumn) && isOnSheet(area.lastRow, area.lastColumn) &&
         area.firstRow <= area.lastRow && area.firstColumn <= area.lastColumn;
}

std::string columnLetters(std::int32_t column) {
  std::string letters;
  for (; column > 0; column = (column - 1) / 26)
    letters.insert(letters.begin(), static_cast<char>('A' + (column - 1) % 26));
  return letters;
}

std::string a1(CellAddress cell) {
  return columnLetters(cell.column) + std::to_string(cell.row);
}

std::string a1(const CellArea& area) {
  std::string first = a1(CellAddress{area.firstRow, area.firstColumn});
  if (area.cells() == 1) return first;
  return first + ":" + a1(CellAddress{area.lastRow, area.lastColumn});
}

std::string absoluteA1(const CellArea& area) {
  const auto cell = [](std::int32_t row, std::int32_t column) {
    return "$" + columnLetters(column) + "$" + std::to_string(row);
  };
  std::string first = cell(area.firstRow, area.firstColumn);
  if (area.cells() == 1) return first;
  return first + ":" + cell(area.lastRow, area.lastColumn);
}

std::string absoluteA1(std::string_view sheetName, const CellArea& area) {
  return quotedSheetName(sheetName) + "!" + absoluteA1(area);
}

std::string quotedSheetName(std::string_view name) {
  if (isPlainWord(name)) return std::string(name);
  std::string quoted = "'";
  for (const char c : name) {
    if (c == '\'') quoted += '\'';
    quoted += c;
  }
  return quoted + "'";
}

std::optional<CellAddress> parseCell(std::string_view text) noexcept {
  Cursor cursor(text);
  CellAddress cell;
  if (!cursor.takeColumn(cell.column) || !cursor.takeRow(cell.row) || !cursor.atEnd()) return std::nullopt;
  return cell;
}

std::optional<CellArea> parseArea(std::string_view text) noexcept {
  Cursor cursor(text);
  CellArea area;
  if (cursor.takeColumn(area.firstColumn)) {
    if (cursor.takeRow(area.firstRow)) {
      area.lastRow = area.firstRow;
      area.lastColumn = area.firstColumn;
      if (cursor.atEnd()) return area;
      if (!cursor.take(':') || !cursor.takeColumn(area.lastColumn) || !cursor.takeRow(area.lastRow))
        return std::nullopt;
    } else {
      if (!cursor.take(':') || !cursor.takeColumn(area.lastColumn)) return std::nullopt;
      area.firstRow = 1;
      area.lastRow = lastSheetRow;
    }
  } else {
    if (!cursor.takeRow(area.firstRow) || !cursor.take(':') || !cursor.takeRow(area.lastRow)) return std::nullopt;
    area.firstColumn = 1;
    area.lastColumn = lastSheetColumn;
  }
  if (!cursor.atEnd()) return std::nullopt;
  return ordered(area);
}

std::optional<ReferenceText> parseReference(std::string_view text) {
  ReferenceText reference;
  if (const std::size_t mark = text.rfind('!'); mark != std::string_view::npos) {
    std::string_view name = text.substr(0, mark);
    text.remove_prefix(mark + 1);
    reference.hasSheet = true;
    if (name.size() >= 2 && name.front() == '\'' && name.back() == '\'') {
      name = name.substr(1, name.size() - 2);
      for (std::size_t i = 0; i < name.size(); ++i) {
        reference.sheet += name[i];
        if (name[i] == '\'' && i + 1 < name.size() && name[i + 1] == '\'') ++i;
      }
    } else {
      reference.sheet = name;
    }
    if (reference.sheet.empty()) return std::nullopt;
  }
  const std::optional<CellArea> area = parseArea(text);
  if (!area) return std::nullopt;
  reference.area = *area;
  return reference;
}

}  // namespace mervane::sheet
