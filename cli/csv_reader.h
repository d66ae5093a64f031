#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "cli/byte_source.h"
#include "cli/csv_dialect.h"

namespace mervane::cli {

/// One field as it stands in the file.
struct Field {
  std::string_view raw;   ///< with its quotes, if it has any
  bool isQuoted = false;  ///< it begins and ends with the dialect's quote
  std::int64_t line = 0;  ///< the line of the file on which it begins, from 1
};

/// One record: a line, or several where a quoted field holds line ends.
struct Record {
  std::string_view raw;         ///< all fields and delimiters as they stand
  std::string_view terminator;  ///< "\n", "\r\n", "\r", or empty at the end of the file
  std::vector<Field> fields;    ///< at least one
  std::int64_t line = 0;

  /// An empty line. It holds no row; it is kept and written back.
  [[nodiscard]] bool isBlank() const noexcept { return raw.empty(); }
};

/// The text cannot be cut into records.
class CsvError : public std::exception {
 public:
  enum class Kind { textAfterQuote, quoteNotClosed, zeroByte };

  CsvError(Kind kind, std::int64_t line, std::size_t field, std::string text)
      : kind_(kind), line_(line), field_(field), text_(std::move(text)) {}
  [[nodiscard]] Kind kind() const noexcept { return kind_; }
  /// The line on which the offending field begins.
  [[nodiscard]] std::int64_t line() const noexcept { return line_; }
  /// Position of the field in its record, from 1.
  [[nodiscard]] std::size_t field() const noexcept { return field_; }
  /// The field's text, as far as it was read.
  [[nodiscard]] const std::string& text() const noexcept { return text_; }
  [[nodiscard]] const char* what() const noexcept override { return "malformed delimited text"; }

 private:
  Kind kind_;
  std::int64_t line_;
  std::size_t field_;
  std::string text_;
};

/// Cuts delimited text into records while it reads it. It holds one record and one block of the source at a time.
///
/// A field that begins with the quote ends with the next quote that is not doubled, and may hold delimiters and line
/// ends; a quote inside any other field is ordinary text. A line ends with LF, CRLF or CR. A byte order mark at the
/// beginning belongs to no field.
class CsvReader {
 public:
  static constexpr std::size_t usualBlock = 65536;

  /// The source outlives the reader.
  CsvReader(ByteSource& source, const Dialect& dialect, std::size_t block = usualBlock);

  /// Reads the next record; its views hold until the next call. False at the end. Raises a CsvError.
  [[nodiscard]] bool next(Record& record);
  /// Whether the text began with a UTF-8 byte order mark; known after the first call of `next`.
  [[nodiscard]] bool hadByteOrderMark() const noexcept { return hadMark_; }

 private:
  struct Span {
    std::size_t begin;  ///< from the record's first byte
    std::size_t end;
    bool isQuoted;
    std::int64_t line;
  };

  static constexpr int endOfText = -1;

  bool fill();
  int peek();
  void skipMark();
  void readField();
  void readQuoted(std::int64_t line);
  void readPlain();
  void countLine(int current);
  void readTerminator();
  [[noreturn]] void fail(CsvError::Kind kind, std::size_t fieldBegin, std::int64_t line) const;
  [[nodiscard]] std::string_view view(std::size_t begin, std::size_t end) const;

  ByteSource& source_;
  Dialect dialect_;
  std::size_t block_;
  std::string buffer_;
  std::size_t recordBegin_ = 0;
  std::size_t position_ = 0;
  std::int64_t line_ = 1;
  bool afterReturn_ = false;
  bool atEnd_ = false;
  bool started_ = false;
  bool hadMark_ = false;
  std::vector<Span> spans_;
};

/// The text that a field stands for: without its quotes, doubled quotes made single.
/// @param scratch room for a text that has to be put together; the result may point into it.
[[nodiscard]] std::string_view fieldText(const Field& field, std::string& scratch);

}  // namespace mervane::cli
