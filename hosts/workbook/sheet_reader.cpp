#include "hosts/workbook/sheet_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "hosts/workbook/cell_error.h"
#include "hosts/workbook/cell_store.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/refuse.h"
#include "hosts/workbook/sheet_frame.h"
#include "hosts/workbook/small_xml.h"
#include "hosts/workbook/text_table.h"
#include "hosts/workbook/xml_scanner.h"

namespace mervane::workbook {

namespace {

using Token = XmlScanner::Token;

constexpr std::uint64_t mostCells = 64'000'000;

void appendRaw(std::string& to, std::string_view name, std::string_view rawValue) {
  // The value is kept as written, so it goes between quotes that it does not hold.
  const char quote = rawValue.find('"') == std::string_view::npos ? '"' : '\'';
  to += ' ';
  to += name;
  to += '=';
  to += quote;
  to += rawValue;
  to += quote;
}

template <class Number>
bool parsed(std::string_view text, Number& value) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc{} && end == text.data() + text.size();
}

class SheetReader {
 public:
  SheetReader(const Package& package, const std::string& part, std::size_t styleCount, TextTable& texts,
              CellStore& cells, SheetFrame& frame)
      : part_(part),
        styleCount_(styleCount),
        texts_(texts),
        cells_(cells),
        frame_(frame),
        scanner_(package.pull(part), part) {}

  void read() {
    scanner_.beginCapture();
    if (scanner_.next() != Token::startTag || localName(scanner_.name()) != "worksheet") {
      scanner_.malformed("its root element is no worksheet");
    }
    const std::string_view rootName = scanner_.name();
    frame_.prefix = rootName.substr(0, rootName.size() - std::string_view("worksheet").size());
    frame_.head = scanner_.takeCapture(true);
    cName_ = frame_.prefix + "c";
    vName_ = frame_.prefix + "v";
    scanner_.beginCapture();
    for (Token token = scanner_.next(); token != Token::end; token = scanner_.next()) {
      if (token == Token::endTag) {
        frame_.tail = scanner_.takeCapture(true);
        if (scanner_.next() != Token::end) scanner_.malformed("something stands behind its root element");
        break;
      }
      if (token == Token::startTag) readChild();
    }
    if (frame_.find("sheetData") == nullptr) frame_.set("sheetData", "");
  }

 private:
  void readChild() {
    const bool isCells = scanner_.name() == frame_.prefix + "sheetData";
    std::string name(localName(scanner_.name()));
    if (!isCells) {
      scanner_.skipElement();
      frame_.children.push_back({std::move(name), scanner_.takeCapture(true)});
    } else {
      if (frame_.find("sheetData") != nullptr) scanner_.malformed("it has two tables of cells");
      frame_.children.push_back({std::move(name), scanner_.takeCapture(false)});
      readRows();
    }
    scanner_.beginCapture();
  }

  void readRows() {
    const std::size_t outside = scanner_.depth() - 1;
    for (;;) {
      const Token token = scanner_.next();
      if (token == Token::endTag && scanner_.depth() == outside) return;
      if (token != Token::startTag) continue;
      if (localName(scanner_.name()) == "row") {
        readRow();
      } else {
        scanner_.skipElement();
      }
    }
  }

  void readRow() {
    const std::size_t outside = scanner_.depth() - 1;
    RowFormat format;
    std::int32_t number = row_ + 1;
    readRowAttributes(format, number);
    if (number <= row_) placeFailure("the rows are not in ascending order");
    row_ = number;
    cells_.makeRow(number).format = cells_.addRowFormat(std::move(format));
    rowCells_.clear();
    for (;;) {
      const Token token = scanner_.next();
      if (token == Token::endTag && scanner_.depth() == outside) break;
      if (token != Token::startTag) continue;
      if (scanner_.name() == cName_) {
        readCell();
      } else {
        cells_.rowExtras[number] += rawElement();
      }
    }
    count_ += rowCells_.size();
    if (count_ > mostCells) scanner_.malformed("it holds more cells than can be kept");
    cells_.fillRow(number, rowCells_);
  }

  void readRowAttributes(RowFormat& format, std::int32_t& number) {
    std::string_view rest = scanner_.attributes();
    std::string_view name;
    std::string_view value;
    bool customFormat = false;
    while (scanner_.nextAttribute(rest, name, value)) {
      if (name == "r") {
        if (!parsed(value, number) || number < 1 || number > lastSheetRow) {
          refuse("The part \"" + part_ + "\" of the workbook has a row \"" + std::string(value.substr(0, 40)) +
                 "\"; a sheet has the rows 1 to " + std::to_string(lastSheetRow) + ".");
        }
        continue;
      }
      if (name == "spans") continue;  // NB: a hint only, and wrong as soon as cells are added.
      if (value.empty()) continue;    // What has no value says nothing, and the spreadsheet takes it for damage.
      if (name == "ht") {
        double height = 0.0;
        if (parsed(value, height) && height >= 0.0 && height <= 1000.0) format.height = height;
      } else if (name == "hidden") {
        format.hidden = value == "1" || value == "true";
      } else if (name == "s") {
        format.style = style(value);
      } else if (name == "customFormat") {
        customFormat = value == "1" || value == "true";
      }
      appendRaw(format.attributes, name, value);
    }
    format.hasStyle = customFormat;
  }

  std::uint32_t style(std::string_view value) {
    std::uint32_t number = 0;
    if (value.empty()) return number;  // NB: some writers say it of cells that have no format of their own.
    if (!parsed(value, number) || number >= std::max<std::size_t>(styleCount_, 1)) {
      placeFailure("the cell format \"" + std::string(value.substr(0, 40)) + "\" does not exist");
    }
    return number;
  }

  void readCell() {
    Cell cell;
    std::int32_t column = (rowCells_.empty() ? 0 : rowCells_.back().column) + 1;
    std::string_view type = "n";
    CellExtras extras;
    std::string_view rest = scanner_.attributes();
    std::string_view name;
    std::string_view value;
    while (scanner_.nextAttribute(rest, name, value)) {
      if (name == "r") {
        const std::optional<CellAddress> at = parseCell(value);
        if (!at || at->row != row_) {
          placeFailure("a cell says that it is \"" + std::string(value.substr(0, 40)) + "\"");
        }
        column = at->column;
      } else if (name == "s") {
        cell.style = style(value);
      } else if (name == "t") {
        type = value;
      } else {
        appendRaw(extras.attributes, name, value);
      }
    }
    if (column > lastSheetColumn) placeFailure("a cell lies behind the last column");
    column_ = column;
    type_ = type == "n" || type.empty() ? Type::number : typeOf(type);
    readCellContent(cell, extras);
    if (!extras.attributes.empty() || !extras.elements.empty()) {
      cell.hasExtras = true;
      cells_.extras[CellStore::keyOf({row_, column})] = std::move(extras);
    }
    place({column, cell});
  }

  void place(const ColumnCell& cell) {
    if (rowCells_.empty() || rowCells_.back().column < cell.column) {
      rowCells_.push_back(cell);
      return;
    }
    const auto where = std::lower_bound(rowCells_.begin(), rowCells_.end(), cell.column,
                                        [](const ColumnCell& one, std::int32_t wanted) { return one.column < wanted; });
    if (where->column == cell.column) placeFailure("the cell stands there twice");
    rowCells_.insert(where, cell);
  }

  enum class Type { number, shared, text, inlined, boolean, error, date };

  Type typeOf(std::string_view type) {
    if (type == "s") return Type::shared;
    if (type == "str") return Type::text;
    if (type == "inlineStr") return Type::inlined;
    if (type == "b") return Type::boolean;
    if (type == "e") return Type::error;
    if (type == "d") return Type::date;
    placeFailure("the cell type \"" + std::string(type.substr(0, 40)) + "\" does not exist");
  }

  void readCellContent(Cell& cell, CellExtras& extras) {
    const std::size_t outside = scanner_.depth() - 1;
    std::optional<Formula> formula;
    bool hasValue = false;
    for (;;) {
      const Token token = scanner_.next();
      if (token == Token::endTag && scanner_.depth() == outside) break;
      if (token != Token::startTag) continue;
      if (scanner_.name() == vName_) {
        hasValue = readValue(cell) || hasValue;
        continue;
      }
      const std::string_view local = localName(scanner_.name());
      if (local == "f") {
        formula = readFormula();
      } else if (local == "is" && type_ == Type::inlined) {
        readInline(cell);
        hasValue = true;
      } else {
        extras.elements += rawElement();
      }
    }
    if (formula) {
      formula->cachedKind = cell.kind;
      formula->index = cell.index;
      // A text may be kept as an empty element or, by some writers, as none at all.
      if (!hasValue && type_ == Type::text) {
        formula->cachedKind = CellKind::text;
        formula->index = texts_.add("");
      }
      cell.kind = CellKind::formula;
      cell.index = cells_.formulas.size();
      cells_.formulas.push_back(std::move(*formula));
    }
  }

  /// The element whose start tag was the last token, as the file writes it.
  std::string rawElement() {
    const std::string tag(scanner_.name());
    std::string raw = "<" + tag + std::string(scanner_.attributes()) + ">";
    scanner_.beginCapture();
    scanner_.skipElement();
    const std::string inside = scanner_.takeCapture(true);
    raw += inside;
    if (inside.empty()) raw += "</" + tag + ">";
    return raw;
  }

  /// The text inside the element whose start tag was the last token; a view where it is in one piece.
  std::string_view elementText() {
    const std::size_t outside = scanner_.depth() - 1;
    buffer_.clear();
    for (;;) {
      const Token token = scanner_.next();
      if (token == Token::text) {
        scanner_.appendText(buffer_);
      } else if (token == Token::endTag && scanner_.depth() == outside) {
        return buffer_;
      }
    }
  }

  bool readValue(Cell& cell) {
    // OPTIMIZATION: a number is parsed where it stands in the window.
    if (type_ == Type::number) {
      Token token = scanner_.next();
      if (token == Token::endTag) return false;
      if (token == Token::text && parsed(scanner_.rawText(), cell.number)) {
        const bool closed = scanner_.next() == Token::endTag;
        if (closed && std::isfinite(cell.number)) {
          cell.kind = CellKind::number;
          return true;
        }
      }
      placeFailure("the value is no number");
    }
    const std::string_view text = elementText();
    // Some writers leave the element empty where the cell holds nothing.
    if (text.empty() && type_ != Type::text && type_ != Type::inlined) return false;
    switch (type_) {
      case Type::number:
        break;
      case Type::shared: {
        std::uint32_t number = 0;
        if (!parsed(text, number) || number >= texts_.sharedCount()) placeFailure("the text does not exist");
        cell.kind = CellKind::text;
        cell.index = number;
        break;
      }
      case Type::text:
      case Type::inlined:
        cell.kind = CellKind::text;
        cell.index = texts_.add(unescapedCellText(text));
        break;
      case Type::boolean:
        cell.kind = CellKind::boolean;
        cell.index = text == "1" || text == "true" ? 1 : 0;
        break;
      case Type::error: {
        const std::optional<std::int32_t> code = errorCode(text);
        if (!code) placeFailure("the error \"" + std::string(text.substr(0, 40)) + "\" does not exist");
        cell.kind = CellKind::error;
        cell.index = static_cast<std::uint64_t>(*code);
        break;
      }
      case Type::date:
        cell.kind = CellKind::isoDate;
        cell.index = texts_.add(text);
        break;
    }
    return true;
  }

  void readInline(Cell& cell) {
    const std::size_t outside = scanner_.depth() - 1;
    std::string raw = "<" + std::string(scanner_.name()) + std::string(scanner_.attributes()) + ">";
    scanner_.beginCapture();
    std::string text;
    bool isRich = false;
    bool inText = false;
    std::size_t phonetic = 0;
    for (;;) {
      const Token token = scanner_.next();
      if (token == Token::text) {
        if (inText && phonetic == 0) scanner_.appendText(text);
        continue;
      }
      if (token == Token::endTag && scanner_.depth() == outside) break;
      const std::string_view name = localName(scanner_.name());
      const bool begins = token == Token::startTag;
      if (name == "t") inText = begins;
      if (name == "r") isRich = true;
      if (name == "rPh") {
        isRich = true;
        if (begins && phonetic == 0) phonetic = scanner_.depth();
        if (!begins && scanner_.depth() + 1 == phonetic) phonetic = 0;
      }
    }
    raw += scanner_.takeCapture(true);
    text = unescapedCellText(text);
    cell.kind = CellKind::text;
    cell.index = isRich ? texts_.addRich(text, std::move(raw)) : texts_.add(text);
  }

  Formula readFormula() {
    Formula formula;
    std::string_view rest = scanner_.attributes();
    std::string_view name;
    std::string_view value;
    bool isShared = false;
    while (scanner_.nextAttribute(rest, name, value)) {
      appendRaw(formula.attributes, name, value);
      if (name == "t") isShared = value == "shared";
      if (name == "ref") formula.area = parseArea(value);
      if (name == "si" && (!parsed(value, formula.sharedGroup) || formula.sharedGroup < 0)) {
        placeFailure("the shared formula has no number");
      }
    }
    if (!isShared) formula.sharedGroup = -1;
    if (isShared) formula.area.reset();
    formula.text = unescapedCellText(elementText());
    return formula;
  }

  [[noreturn]] void placeFailure(const std::string& what) const {
    const std::string where = column_ > 0 && row_ > 0 ? a1(CellAddress{row_, column_}) : "row " + std::to_string(row_);
    refuseDamaged(part_, where, what);
  }

  const std::string& part_;
  std::size_t styleCount_;
  TextTable& texts_;
  CellStore& cells_;
  SheetFrame& frame_;
  XmlScanner scanner_;
  std::string cName_;
  std::string vName_;
  std::int32_t row_ = 0;
  std::int32_t column_ = 0;
  Type type_ = Type::number;
  std::uint64_t count_ = 0;
  std::vector<ColumnCell> rowCells_;
  std::string buffer_;
};

}  // namespace

void readSheet(const Package& package, const std::string& part, std::size_t styleCount, TextTable& texts,
               CellStore& cells, SheetFrame& frame) {
  SheetReader(package, part, styleCount, texts, cells, frame).read();
}

}  // namespace mervane::workbook
