#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mervane::cli {

/// How the text of a data file divides into fields.
struct Dialect {
  char delimiter = ',';
  /// None: quotes are ordinary text.
  std::optional<char> quote = '"';
};

/// Finds the delimiter of a data file out of its beginning: comma, semicolon, tab or bar.
///
/// It is taken only where nothing else is as good: every complete record of the sample falls into the same number of
/// fields, two or more, and of several such delimiters one gives the greatest share of columns of numbers. Where none
/// divides the records evenly, the only one that occurs at all is taken, so that the uneven record can be named. A
/// text without any of them has one column, and the answer is the comma.
/// @param sample the first bytes of the file, without a byte order mark.
/// @param isWhole whether that is all of it; otherwise its last record is left out.
/// @return none where several answers are possible.
[[nodiscard]] std::optional<char> detectDelimiter(std::string_view sample, bool isWhole, std::optional<char> quote);

/// "comma", "tab" and so on, for messages; the character in quotes for others.
[[nodiscard]] std::string delimiterName(char delimiter);

}  // namespace mervane::cli
