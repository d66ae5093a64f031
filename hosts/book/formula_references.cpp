#include "hosts/book/formula_references.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

#include "spreadsheet/cell_address.h"
#include "spreadsheet/name_characters.h"

namespace mervane::hosts {

namespace {

using Corner = sheet::MarkedCell;
using Form = FormulaReference::Form;

constexpr std::size_t mostLetters = 3;  ///< of a column

/// Reads a formula from left to right, one thing at a time.
class Scanner {
 public:
  explicit Scanner(std::string_view formula) : text_(formula) {}

  std::vector<FormulaReference> references() {
    while (at_ < text_.size()) step();
    return std::move(found_);
  }

 private:
  [[nodiscard]] char charAt(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }

  void step() {
    if (charAt(at_) == '"') {
      at_ = behindQuote(at_);
      return;
    }
    std::string_view sheet;
    if (const std::size_t length = sheetLength(at_); length > 0) {
      sheet = text_.substr(at_, length);
      at_ += length + 1;
    }
    if (!takeReference(sheet) && sheet.empty()) skipOne();
  }

  /// The end of a text or of a quoted name. A doubled mark begins another one at once, which comes to the same.
  [[nodiscard]] std::size_t behindQuote(std::size_t at) const {
    const std::size_t close = text_.find(text_[at], at + 1);
    return close == std::string_view::npos ? text_.size() : close + 1;
  }

  /// The end of a column of a table or of the number of another workbook. Brackets nest there, and an apostrophe marks
  /// those that do not count.
  [[nodiscard]] std::size_t behindBrackets(std::size_t at) const {
    std::size_t depth = 0;
    for (; at < text_.size(); ++at) {
      if (text_[at] == '\'') {
        ++at;
      } else if (text_[at] == '[') {
        ++depth;
      } else if (text_[at] == ']' && --depth == 0) {
        return at + 1;
      }
    }
    return text_.size();
  }

  [[nodiscard]] std::size_t behindName(std::size_t at) const {
    while (at < text_.size() && sheet::isNamePart(text_[at])) ++at;
    return at;
  }

  /// Length of the sheets in front of an exclamation mark; 0 where none begin here.
  [[nodiscard]] std::size_t sheetLength(std::size_t begin) const {
    std::size_t at = begin;
    if (charAt(at) == '#') {
      // The sheet is lost, the cell is not.
      constexpr std::string_view lost = "#REF";
      if (text_.substr(at, lost.size()) == lost) at += lost.size();
    } else if (charAt(at) == '\'') {
      do {
        at = behindQuote(at);
      } while (charAt(at) == '\'');
    } else {
      if (charAt(at) == '[') at = behindBrackets(at);
      const std::size_t name = at;
      at = behindName(at);
      // Sheets whose names look like cells stand in quotes, so a cell in front of a colon begins a pair.
      if (at > name && charAt(at) == ':' && behindName(at + 1) > at + 1 &&
          !sheet::parseCell(text_.substr(name, at - name))) {
        at = behindName(at + 1);
      }
    }
    return charAt(at) == '!' ? at - begin : 0;
  }

  [[nodiscard]] bool standsAlone(std::string_view behind) const {
    return behind.empty() ||
           (!sheet::isNamePart(behind.front()) && std::string_view("(![$").find(behind.front()) == std::string::npos);
  }

  bool takeReference(std::string_view sheet) {
    FormulaReference one;
    one.begin = at_;
    one.sheet = sheet;
    std::string_view rest = text_.substr(at_);
    if (!takeCells(rest, one) && !takePair(rest, one, Form::columns, takeColumn) &&
        !takePair(rest, one, Form::rows, takeRow)) {
      return false;
    }
    one.length = text_.size() - at_ - rest.size();
    at_ += one.length;
    found_.push_back(one);
    return true;
  }

  bool takeCells(std::string_view& text, FormulaReference& one) const {
    std::string_view rest = text;
    if (!sheet::takeMarkedCell(rest, one.first) || !standsAlone(rest)) return false;
    one.form = Form::cells;
    one.second = one.first;
    text = rest;
    Corner second;
    if (!rest.starts_with(':')) return true;
    rest.remove_prefix(1);
    if (!sheet::takeMarkedCell(rest, second) || !standsAlone(rest)) return true;
    one.isPair = true;
    one.second = second;
    text = rest;
    return true;
  }

  template <class TakeCorner>
  bool takePair(std::string_view& text, FormulaReference& one, Form form, TakeCorner takeCorner) const {
    std::string_view rest = text;
    Corner first;
    Corner second;
    if (!takeCorner(rest, first) || !rest.starts_with(':')) return false;
    rest.remove_prefix(1);
    if (!takeCorner(rest, second) || !standsAlone(rest)) return false;
    one.form = form;
    one.isPair = true;
    one.first = first;
    one.second = second;
    text = rest;
    return true;
  }

  static bool takeColumn(std::string_view& text, Corner& corner) {
    const bool isFixed = text.starts_with('$');
    if (isFixed) text.remove_prefix(1);
    std::size_t length = 0;
    while (length < text.size() && sheet::isLetter(text[length])) ++length;
    if (length == 0 || length > mostLetters) return false;
    const std::optional<sheet::CellAddress> at = sheet::parseCell(std::string(text.substr(0, length)) + "1");
    if (!at) return false;
    corner = {isFixed, false, at->column, 1};
    text.remove_prefix(length);
    return true;
  }

  static bool takeRow(std::string_view& text, Corner& corner) {
    const bool isFixed = text.starts_with('$');
    if (isFixed) text.remove_prefix(1);
    std::int32_t row = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), row);
    if (error != std::errc{} || row < 1 || row > sheet::lastSheetRow) return false;
    corner = {false, isFixed, 1, row};
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
  }

  /// Skips what is no reference: a name or number whole, brackets, an error value, else one character.
  void skipOne() {
    const char c = charAt(at_);
    if (c == '[') {
      at_ = behindBrackets(at_);
    } else if (c == '\'') {
      at_ = behindQuote(at_);
    } else if (sheet::isNamePart(c) || c == '$') {
      while (sheet::isNamePart(charAt(at_)) || charAt(at_) == '$') ++at_;
    } else if (c == '#') {
      ++at_;
      while (sheet::isNamePart(charAt(at_)) || charAt(at_) == '/' || charAt(at_) == '!') ++at_;
    } else {
      ++at_;
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::vector<FormulaReference> found_;
};

}  // namespace

std::int32_t FormulaReference::topRow() const noexcept {
  return form == Form::columns ? 1 : std::min(first.row, second.row);
}
std::int32_t FormulaReference::bottomRow() const noexcept {
  return form == Form::columns ? sheet::lastSheetRow : std::max(first.row, second.row);
}
std::int32_t FormulaReference::leftColumn() const noexcept {
  return form == Form::rows ? 1 : std::min(first.column, second.column);
}
std::int32_t FormulaReference::rightColumn() const noexcept {
  return form == Form::rows ? sheet::lastSheetColumn : std::max(first.column, second.column);
}

std::vector<FormulaReference> referencesIn(std::string_view formula) {
  return Scanner(formula).references();
}

}  // namespace mervane::hosts
