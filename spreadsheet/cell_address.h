#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mervane::sheet {

/// The limits of a worksheet; rows and columns are counted from 1.
inline constexpr std::int32_t lastSheetRow = 1048576;
inline constexpr std::int32_t lastSheetColumn = 16384;

struct CellAddress {
  std::int32_t row = 1;
  std::int32_t column = 1;
  friend auto operator<=>(const CellAddress&, const CellAddress&) = default;
};

/// A rectangle of cells of one sheet; both corners are inside it.
struct CellArea {
  std::int32_t firstRow = 1;
  std::int32_t firstColumn = 1;
  std::int32_t lastRow = 1;
  std::int32_t lastColumn = 1;

  [[nodiscard]] std::int32_t rows() const noexcept { return lastRow - firstRow + 1; }
  [[nodiscard]] std::int32_t columns() const noexcept { return lastColumn - firstColumn + 1; }
  [[nodiscard]] std::int64_t cells() const noexcept { return std::int64_t{rows()} * columns(); }
  [[nodiscard]] bool contains(CellAddress cell) const noexcept {
    return cell.row >= firstRow && cell.row <= lastRow && cell.column >= firstColumn && cell.column <= lastColumn;
  }
  [[nodiscard]] bool contains(const CellArea& other) const noexcept {
    return other.firstRow >= firstRow && other.lastRow <= lastRow && other.firstColumn >= firstColumn &&
           other.lastColumn <= lastColumn;
  }
  [[nodiscard]] bool meets(const CellArea& other) const noexcept {
    return other.firstRow <= lastRow && other.lastRow >= firstRow && other.firstColumn <= lastColumn &&
           other.lastColumn >= firstColumn;
  }
  friend bool operator==(const CellArea&, const CellArea&) = default;
};

/// A rectangle together with its sheet, a zero-based position among the worksheets of the workbook.
struct SheetArea {
  std::int32_t sheet = 0;
  CellArea area;
  friend bool operator==(const SheetArea&, const SheetArea&) = default;
};

/// A reference as it is written, such as "'My Sheet'!$A$1:B7".
struct ReferenceText {
  std::string sheet;  ///< unquoted; empty where the text names none
  bool hasSheet = false;
  CellArea area;
};

[[nodiscard]] bool isOnSheet(std::int64_t row, std::int64_t column) noexcept;
[[nodiscard]] bool isOnSheet(const CellArea& area) noexcept;

/// 1 is "A", 27 is "AA".
[[nodiscard]] std::string columnLetters(std::int32_t column);
/// "B7".
[[nodiscard]] std::string a1(CellAddress cell);
/// "B7" for one cell, "B7:C9" for more.
[[nodiscard]] std::string a1(const CellArea& area);
/// "$B$7" or "$B$7:$C$9", as chart and name references are written.
[[nodiscard]] std::string absoluteA1(const CellArea& area);
/// "Sheet1!$B$7:$C$9", the sheet quoted where it must be.
[[nodiscard]] std::string absoluteA1(std::string_view sheetName, const CellArea& area);
/// The name as a reference writes it: in apostrophes, inner ones doubled, where it is not a plain word.
[[nodiscard]] std::string quotedSheetName(std::string_view name);

/// "B7" or "$B$7", in either case; nothing for any other text and for a cell off the sheet.
[[nodiscard]] std::optional<CellAddress> parseCell(std::string_view text) noexcept;
/// One cell, two cells with a colon, whole columns "A:C" or whole rows "2:5".
[[nodiscard]] std::optional<CellArea> parseArea(std::string_view text) noexcept;
/// The same with a sheet part in front, quoted or not.
[[nodiscard]] std::optional<ReferenceText> parseReference(std::string_view text);

}  // namespace mervane::sheet
