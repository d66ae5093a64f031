#include "cli/output_formats.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "cli/text_display.h"

namespace mervane::cli {

std::optional<Format> formatOfName(const std::string& path) {
  constexpr std::array<std::pair<std::string_view, Format>, 7> endings{{{".csv", Format::csv},
                                                                        {".tsv", Format::tsv},
                                                                        {".tab", Format::tsv},
                                                                        {".json", Format::json},
                                                                        {".ndjson", Format::ndjson},
                                                                        {".jsonl", Format::ndjson},
                                                                        {".txt", Format::table}}};
  std::string lower = path;
  std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
  for (const auto& [ending, format] : endings) {
    if (lower.ends_with(ending)) return format;
  }
  return std::nullopt;
}

std::string resultColumnName(const std::string& wished, const TableShape& shape) {
  const auto isTaken = [&](const std::string& name) {
    return std::ranges::find(shape.names, name) != shape.names.end();
  };
  if (!isTaken(wished)) return wished;
  for (int number = 2;; ++number) {
    std::string name = wished + "_" + decimal(number);
    if (!isTaken(name)) return name;
  }
}

char delimiterFor(Format format, const Dialect& dialect, std::optional<char> choice) {
  if (choice) return *choice;
  if (format == Format::tsv) return '\t';
  return dialect.delimiter == '\t' ? ',' : dialect.delimiter;
}

}  // namespace mervane::cli
