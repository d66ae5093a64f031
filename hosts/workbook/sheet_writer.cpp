#include "hosts/workbook/sheet_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/workbook/cell_error.h"
#include "hosts/workbook/deflater.h"
#include "hosts/workbook/number_text.h"
#include "hosts/workbook/sheet.h"
#include "hosts/workbook/small_xml.h"

namespace mervane::workbook {

namespace {

constexpr std::size_t bufferSize = std::size_t{256} * 1024;
/// Above this many cells speed counts more than the last tenths of size.
constexpr std::size_t manyCells = 100'000;

class SheetWriter {
 public:
  SheetWriter(Sheet& sheet, int level)
      : sheet_(sheet),
        cells_(sheet.cells()),
        prefix_(sheet.frame().prefix),
        deflater_(level),
        numberBegin_("<" + prefix_ + "c r=\""),
        numberValue_("\"><" + prefix_ + "v>"),
        numberEnd_("</" + prefix_ + "v></" + prefix_ + "c>") {
    buffer_.reserve(bufferSize + 65536);
    keepsPlainEmpty_ = std::any_of(sheet.columns().spans().begin(), sheet.columns().spans().end(),
                                   [](const Columns::Span& span) { return span.style != 0; });
  }

  DeflatedContent print() {
    const SheetFrame& frame = sheet_.frame();
    buffer_ += frame.head;
    const bool hasColumns = frame.find("cols") != nullptr;
    for (const SheetFrame::Child& child : frame.children) {
      if (child.name == "sheetData") {
        if (!hasColumns && sheet_.columns().changed()) buffer_ += printedColumns();
        buffer_ += child.raw;
        rows();
      } else if (child.name == "cols" && sheet_.columns().changed()) {
        buffer_ += printedColumns();
      } else if (child.name == "dimension") {
        buffer_ += dimension(child);
      } else {
        buffer_ += child.raw;
      }
      flush();
    }
    buffer_ += frame.tail;
    deflater_.append(buffer_);
    return deflater_.finish();
  }

 private:
  void flush() {
    if (buffer_.size() < bufferSize) return;
    deflater_.append(buffer_);
    buffer_.clear();
  }

  std::string printedColumns() { return sheet_.columns().print(prefix_); }

  std::string dimension(const SheetFrame::Child& child) {
    const CellArea area = cells_.usedArea(true).value_or(CellArea{});
    pugi::xml_document document;
    loadXml(document, child.raw, sheet_.part());
    document.document_element().attribute("ref") = a1(area).c_str();
    return child.raw.substr(0, child.raw.find('<')) + printFragment(document.document_element());
  }

  void open(std::string_view name) {
    buffer_ += '<';
    buffer_ += prefix_;
    buffer_ += name;
  }
  void close(std::string_view name) {
    buffer_ += "</";
    buffer_ += prefix_;
    buffer_ += name;
    buffer_ += '>';
  }

  void rows() {
    open("sheetData");
    buffer_ += '>';
    cells_.forEachRowWithCells([&](std::int32_t number, const Row& row, std::span<const CellStore::PlacedCell> cells) {
      writeRow(number, row, cells);
      flush();
    });
    close("sheetData");
  }

  void writeRow(std::int32_t number, const Row& row, std::span<const CellStore::PlacedCell> cells) {
    const RowFormat& format = cells_.rowFormat(row.format);
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    const std::string_view rowDigits(digits.data(), static_cast<std::size_t>(end - digits.data()));
    open("row");
    buffer_ += " r=\"";
    buffer_ += rowDigits;
    buffer_ += '"';
    buffer_ += format.attributes;
    buffer_ += '>';
    for (const auto& [column, cell] : cells) writeCell({number, column}, rowDigits, *cell, format.hasStyle);
    if (!cells_.rowExtras.empty()) {
      const auto extras = cells_.rowExtras.find(number);
      if (extras != cells_.rowExtras.end()) buffer_ += extras->second;
    }
    close("row");
  }

  void writeCell(CellAddress at, std::string_view rowDigits, const Cell& cell, bool rowHasStyle) {
    if (cell.kind == CellKind::empty && cell.style == 0 && !cell.hasExtras && !rowHasStyle && !keepsPlainEmpty_) return;
    if (cell.kind == CellKind::number && !cell.hasExtras) {
      writeNumber(at, rowDigits, cell);
      return;
    }
    open("c");
    buffer_ += " r=\"";
    buffer_ += letters(at.column);
    buffer_ += rowDigits;
    buffer_ += '"';
    if (cell.style != 0) {
      buffer_ += " s=\"";
      appendWhole(sheet_.shared().styles.fileNumber(cell.style));
      buffer_ += '"';
    }
    const CellExtras* extras = nullptr;
    if (cell.hasExtras) {
      const auto found = cells_.extras.find(CellStore::keyOf(at));
      if (found != cells_.extras.end()) extras = &found->second;
    }
    if (extras != nullptr) buffer_ += extras->attributes;
    const Formula* formula = cell.kind == CellKind::formula ? &cells_.formulaOf(cell) : nullptr;
    const CellKind kind = formula != nullptr ? formula->cachedKind : cell.kind;
    const std::uint64_t index = formula != nullptr ? formula->index : cell.index;
    if (kind == CellKind::empty && formula == nullptr && extras == nullptr) {
      buffer_ += "/>";
      return;
    }
    writeType(kind, index, formula != nullptr);
    buffer_ += '>';
    if (formula != nullptr) writeFormula(*formula);
    writeValue(kind, index, formula != nullptr ? formula->number : cell.number, formula != nullptr);
    if (extras != nullptr) buffer_ += extras->elements;
    close("c");
  }

  /// A number and its format. OPTIMIZATION: nearly all cells of a large sheet are such, so their tags are put together
  /// once.
  void writeNumber(CellAddress at, std::string_view rowDigits, const Cell& cell) {
    buffer_ += numberBegin_;
    buffer_ += letters(at.column);
    buffer_ += rowDigits;
    if (cell.style != 0) {
      buffer_ += "\" s=\"";
      appendWhole(sheet_.shared().styles.fileNumber(cell.style));
    }
    buffer_ += numberValue_;
    appendReal(cell.number);
    buffer_ += numberEnd_;
  }

  [[nodiscard]] bool isShared(std::uint64_t index) const { return index < sheet_.shared().texts.sharedCount(); }

  void writeType(CellKind kind, std::uint64_t index, bool isCached) {
    switch (kind) {
      case CellKind::empty:
      case CellKind::number:
      case CellKind::formula:
        break;
      case CellKind::boolean:
        buffer_ += " t=\"b\"";
        break;
      case CellKind::error:
        buffer_ += " t=\"e\"";
        break;
      case CellKind::isoDate:
        buffer_ += " t=\"d\"";
        break;
      case CellKind::text:
        buffer_ += isCached ? " t=\"str\"" : isShared(index) ? " t=\"s\"" : " t=\"inlineStr\"";
        break;
    }
  }

  void writeFormula(const Formula& formula) {
    open("f");
    buffer_ += formula.attributes;
    if (formula.text.empty()) {
      buffer_ += "/>";
      return;
    }
    buffer_ += '>';
    buffer_ += escapedCellText(formula.text);
    close("f");
  }

  void writeValue(CellKind kind, std::uint64_t index, double number, bool isCached) {
    if (kind == CellKind::empty || kind == CellKind::formula) return;
    const TextTable& texts = sheet_.shared().texts;
    if (kind == CellKind::text && !isCached && !isShared(index)) {
      writeInline(static_cast<std::uint32_t>(index));
      return;
    }
    open("v");
    if (kind == CellKind::text && isCached) spacePreserved(texts.text(static_cast<std::uint32_t>(index)));
    buffer_ += '>';
    switch (kind) {
      case CellKind::number:
        appendReal(number);
        break;
      case CellKind::boolean:
        buffer_ += index != 0 ? '1' : '0';
        break;
      case CellKind::error:
        buffer_ += errorText(static_cast<std::int32_t>(index));
        break;
      case CellKind::isoDate:
        appendEscaped(buffer_, texts.text(static_cast<std::uint32_t>(index)));
        break;
      case CellKind::text:
        if (isCached) {
          buffer_ += escapedCellText(texts.text(static_cast<std::uint32_t>(index)));
        } else {
          appendWhole(index);
        }
        break;
      case CellKind::empty:
      case CellKind::formula:
        break;
    }
    close("v");
  }

  void spacePreserved(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    if (!text.empty() && (isBlank(text.front()) || isBlank(text.back()) || text.find('\n') != std::string_view::npos)) {
      buffer_ += " xml:space=\"preserve\"";
    }
  }

  void writeInline(std::uint32_t number) {
    const TextTable& texts = sheet_.shared().texts;
    if (const std::string_view rich = texts.richElement(number); !rich.empty()) {
      buffer_ += rich;
      return;
    }
    open("is");
    buffer_ += '>';
    open("t");
    spacePreserved(texts.text(number));
    buffer_ += '>';
    buffer_ += escapedCellText(texts.text(number));
    close("t");
    close("is");
  }

  void appendWhole(std::uint64_t value) {
    std::array<char, 24> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    buffer_.append(text.data(), static_cast<std::size_t>(end - text.data()));
  }

  /// The shortest form that reads back as the same number.
  void appendReal(double value) {
    std::array<char, longestNumberText> text{};
    buffer_.append(text.data(), printNumber(text.data(), value));
  }

  const std::string& letters(std::int32_t column) {
    const auto at = static_cast<std::size_t>(column);
    if (at >= letters_.size()) letters_.resize(at + 1);
    if (letters_[at].empty()) letters_[at] = columnLetters(column);
    return letters_[at];
  }

  Sheet& sheet_;
  const CellStore& cells_;
  std::string prefix_;
  Deflater deflater_;
  std::string numberBegin_;
  std::string numberValue_;
  std::string numberEnd_;
  std::string buffer_;
  std::vector<std::string> letters_;
  bool keepsPlainEmpty_ = false;
};

}  // namespace

DeflatedContent printSheet(Sheet& sheet) {
  return SheetWriter(sheet, sheet.cells().cellCount() > manyCells ? 1 : 6).print();
}

}  // namespace mervane::workbook
