"""Writes a file with all its mutants in it. Each is guarded by its number, and one number at a time is switched on by the
environment, so that a program is built once and run once for each mutant."""

import re

from mutation.points import Region

MOST = 1 << 20

HEADER = """#pragma once
#pragma GCC system_header
#include <cstdio>
#include <cstdlib>
#include <type_traits>
/// Switches one mutant on, by its number in MUTANT, and writes the numbers of all that were come by into MUTANTS_REACHED.
namespace mutants {
inline constexpr int most = 1 << 20;
struct Reached {
  unsigned char flags[most];
  ~Reached() {
    const char* const path = std::getenv("MUTANTS_REACHED");
    if (path == nullptr) return;
    if (std::FILE* const file = std::fopen(path, "w")) {
      for (int i = 0; i < most; ++i) {
        if (flags[i] != 0) std::fprintf(file, "%d\\n", i);
      }
      std::fclose(file);
    }
  }
};
inline Reached reached;
inline const int active = std::getenv("MUTANT") == nullptr ? 0 : std::atoi(std::getenv("MUTANT"));
[[gnu::always_inline]] constexpr bool on(int number) {
  if (std::is_constant_evaluated()) return false;
  reached.flags[number] = 1;
  return number == active;
}
}  // namespace mutants
"""

MARK = re.compile(r"/\*([<>])(\d+)\*/")


def written(source: str, regions: list[Region], header: bool) -> str:
    """The file with its mutants; characters are bytes."""
    before = {id(one.next): one.swap for one in regions if one.swap}
    ordered = sorted(regions, key=lambda one: (one.start, -one.end, not one.statement))
    position = 0

    def inside(start: int, end: int) -> str:
        nonlocal position
        out = []
        while position < len(ordered) and ordered[position].start < end:
            region = ordered[position]
            assert start <= region.start and region.end <= end, (region, start, end)
            position += 1
            out.append(source[start : region.start])
            out.append(guarded(region))
            start = region.end
        out.append(source[start:end])
        return "".join(out)

    def guarded(region: Region) -> str:
        text = inside(region.start, region.end)
        if not region.statement:
            if region.condition:
                text = f"static_cast<bool>({text})"
            for one in region.mutants:
                text = f"(mutants::on({one.number}) ? /*<{one.number}*/{one.text}/*>{one.number}*/ : {text})"
            return text
        silent = [one.number for one in region.mutants if one.text is None]
        moved = region.swap if region.swap in region.mutants else None
        earlier = before.get(id(region))
        if earlier and any(earlier in one.mutants for one in regions):
            silent.append(earlier.number)
        if silent:
            text = f"if ({' && '.join(f'!mutants::on({number})' for number in silent)}) {{ {text} }}"
            for number in silent:
                text = f"/*<{number}*/{text}/*>{number}*/"
        if moved:
            text = f"if (mutants::on({moved.number})) {{ /*<{moved.number}*/{moved.text}/*>{moved.number}*/ }} {text}"
        return "{ " + text + " }"

    body = inside(0, len(source))
    return ("#pragma GCC system_header\n" if header else "") + '#include "mutants.h"\n' + body


def at(written_text: str, line: int, column: int) -> int | None:
    """The innermost mutant at a place of a written file."""
    lines = written_text.split("\n")
    offset = sum(len(one) + 1 for one in lines[: line - 1]) + column - 1
    open_ones: list[int] = []
    for mark in MARK.finditer(written_text, 0):
        if mark.start() > offset:
            break
        if mark[1] == "<":
            open_ones.append(int(mark[2]))
        else:
            open_ones.pop()
    return open_ones[-1] if open_ones else None
