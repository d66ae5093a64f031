#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>

/// What the program asks of the terminal that it may be attached to.
namespace mervane::cli::terminal {

[[nodiscard]] bool isTerminal(std::FILE* stream);
/// Cells of one line, 80 where nobody can tell.
[[nodiscard]] std::size_t width(std::FILE* stream);
/// Whether colour is welcome on that stream: a terminal that is not dumb, and NO_COLOR not set.
[[nodiscard]] bool wantsColour(std::FILE* stream);
/// Bytes pass unchanged, where the machine would change line ends otherwise.
void useBinary(std::FILE* stream);

/// Asks on standard error and reads a line from standard input. Nothing where one of them is no terminal, or at the
/// end of the input.
[[nodiscard]] std::optional<std::string> askLine(const std::string& question);

}  // namespace mervane::cli::terminal
