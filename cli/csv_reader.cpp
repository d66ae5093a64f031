#include "cli/csv_reader.h"

#include <algorithm>

namespace mervane::cli {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

}  // namespace

CsvReader::CsvReader(ByteSource& source, const Dialect& dialect, std::size_t block)
    : source_(source), dialect_(dialect), block_(block) {}

bool CsvReader::next(Record& record) {
  if (!started_) skipMark();
  recordBegin_ = position_;
  spans_.clear();
  if (peek() == endOfText) return false;

  record.line = line_;
  readField();
  while (peek() == static_cast<unsigned char>(dialect_.delimiter)) {
    ++position_;
    readField();
  }
  const std::size_t contentEnd = position_ - recordBegin_;
  readTerminator();

  // Only now does the buffer stand still.
  record.raw = view(0, contentEnd);
  record.terminator = view(contentEnd, position_ - recordBegin_);
  record.fields.clear();
  for (const Span& span : spans_) record.fields.push_back({view(span.begin, span.end), span.isQuoted, span.line});
  return true;
}

void CsvReader::skipMark() {
  started_ = true;
  while (buffer_.size() < byteOrderMark.size() && fill()) {
  }
  hadMark_ = buffer_.starts_with(byteOrderMark);
  if (hadMark_) position_ = byteOrderMark.size();
}

bool CsvReader::fill() {
  if (atEnd_) return false;
  buffer_.erase(0, recordBegin_);
  position_ -= recordBegin_;
  recordBegin_ = 0;
  const std::size_t held = buffer_.size();
  buffer_.resize(held + block_);
  const std::size_t got = source_.read(std::span(buffer_).subspan(held));
  buffer_.resize(held + got);
  atEnd_ = got == 0;
  return !atEnd_;
}

int CsvReader::peek() {
  if (position_ == buffer_.size() && !fill()) return endOfText;
  return static_cast<unsigned char>(buffer_[position_]);
}

void CsvReader::readField() {
  const std::int64_t line = line_;
  if (dialect_.quote && peek() == static_cast<unsigned char>(*dialect_.quote)) {
    readQuoted(line);
    return;
  }
  const std::size_t begin = position_ - recordBegin_;
  spans_.push_back({begin, begin, false, line});
  readPlain();
  spans_.back().end = position_ - recordBegin_;
}

void CsvReader::readQuoted(std::int64_t line) {
  const int quote = static_cast<unsigned char>(*dialect_.quote);
  const std::size_t begin = position_ - recordBegin_;
  spans_.push_back({begin, begin, true, line});
  ++position_;
  afterReturn_ = false;
  for (;;) {
    const int current = peek();
    if (current == endOfText) fail(CsvError::Kind::quoteNotClosed, begin, line);
    if (current == 0) fail(CsvError::Kind::zeroByte, begin, line);
    ++position_;
    if (current == quote) {
      if (peek() != quote) break;
      ++position_;
      afterReturn_ = false;
      continue;
    }
    countLine(current);
  }
  const int behind = peek();
  if (behind != endOfText && behind != '\n' && behind != '\r' &&
      behind != static_cast<unsigned char>(dialect_.delimiter)) {
    while (peek() != endOfText && peek() != '\n' && peek() != '\r') ++position_;
    fail(CsvError::Kind::textAfterQuote, begin, line);
  }
  spans_.back().end = position_ - recordBegin_;
}

void CsvReader::readPlain() {
  for (;;) {
    // OPTIMIZATION: what lies in the buffer is scanned without a test for its end at each byte.
    const auto stop =
        std::find_if(buffer_.begin() + static_cast<std::ptrdiff_t>(position_), buffer_.end(),
                     [this](char c) { return c == dialect_.delimiter || c == '\n' || c == '\r' || c == '\0'; });
    position_ = static_cast<std::size_t>(stop - buffer_.begin());
    if (stop != buffer_.end()) break;
    if (!fill()) return;
  }
  if (buffer_[position_] == '\0') fail(CsvError::Kind::zeroByte, spans_.back().begin, spans_.back().line);
}

/// Counts the line ends inside a quoted field; the two bytes of CRLF are one.
void CsvReader::countLine(int current) {
  if (current == '\r' || (current == '\n' && !afterReturn_)) ++line_;
  afterReturn_ = current == '\r';
}

void CsvReader::readTerminator() {
  const int current = peek();
  if (current == endOfText) return;
  ++position_;
  if (current == '\r' && peek() == '\n') ++position_;
  ++line_;
}

void CsvReader::fail(CsvError::Kind kind, std::size_t fieldBegin, std::int64_t line) const {
  constexpr std::size_t shown = 200;
  const std::size_t end = std::min(position_ - recordBegin_, fieldBegin + shown);
  throw CsvError(kind, line, spans_.size(), std::string(view(fieldBegin, end)));
}

std::string_view CsvReader::view(std::size_t begin, std::size_t end) const {
  return std::string_view(buffer_).substr(recordBegin_ + begin, end - begin);
}

std::string_view fieldText(const Field& field, std::string& scratch) {
  if (!field.isQuoted) return field.raw;
  const char quote = field.raw.front();
  const std::string_view inner = field.raw.substr(1, field.raw.size() - 2);
  if (inner.find(quote) == std::string_view::npos) return inner;
  scratch.clear();
  for (std::size_t i = 0; i < inner.size(); ++i) {
    scratch += inner[i];
    if (inner[i] == quote) ++i;
  }
  return scratch;
}

}  // namespace mervane::cli
