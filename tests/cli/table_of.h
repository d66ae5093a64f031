#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/data_table.h"
#include "cli/problem.h"

namespace mervane::cli {

/// The table that a text holds.
inline DataTable tableOf(std::string_view text, const DialectChoice& choice = {}) {
  MemorySource source(text);
  return readTable(source, "data.csv", choice);
}

/// What a statement refuses to do, as "status: message / advice"; "nothing" where it does not refuse.
template <class Statement>
std::string refusal(Statement statement) {
  try {
    statement();
  } catch (const Problem& problem) {
    const char status = static_cast<char>('0' + static_cast<int>(problem.status()));
    return std::string(1, status) + ": " + problem.message() + " / " + problem.advice();
  }
  return "nothing";
}

}  // namespace mervane::cli
