#include "cli/dry_run.h"

#include <algorithm>
#include <string>
#include <vector>

#include "cli/json_text.h"
#include "cli/output_file.h"
#include "cli/text_display.h"

namespace mervane::cli {
namespace {

using hosts::OpenBook;

std::string placeOf(const OpenBook::WrittenBlock& block) {
  return sheet::quotedSheetName(block.sheet) + "!" + sheet::a1(block.area);
}

std::string overwrittenText(const OpenBook::WrittenBlock& block) {
  if (block.overwrittenCount == 0) return "all empty now";
  std::string text = counted(block.overwrittenCount, "holds", "hold") + " something now: ";
  constexpr std::size_t shown = 5;
  for (std::size_t i = 0; i < std::min(shown, block.overwritten.size()); ++i) {
    const auto& one = block.overwritten[i];
    text += (i == 0 ? "" : ", ") + sheet::a1(one.at) + " " + cli::quoted(one.text);
  }
  return block.overwrittenCount > static_cast<std::int64_t>(shown) ? text + ", ..." : text;
}

void writeText(const std::vector<OpenBook::WrittenBlock>& blocks, const std::vector<std::string>& notes,
               const std::vector<guard::Harm>& harms, OutputFile& out) {
  out.write("Nothing is saved. A run would write to these cells:\n");
  std::size_t width = 0;
  for (const auto& block : blocks) width = std::max(width, displayWidth(printable(placeOf(block))));
  for (const auto& block : blocks) {
    const std::string place = printable(placeOf(block));
    out.write("  " + place + std::string(width - displayWidth(place), ' ') + "  " +
              counted(block.area.cells(), "cell", "cells") + ", " + overwrittenText(block) + "\n");
  }
  if (blocks.empty()) out.write("  none\n");
  if (!notes.empty()) out.write("It would also do this:\n");
  for (const std::string& note : notes) out.write("  " + printable(note) + "\n");
  if (!harms.empty()) out.write("It would remove or overwrite what is there, which takes --overwrite:\n");
  for (const guard::Harm& harm : harms) out.write("  " + printable(harm.text) + "\n");
}

std::string listed(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "" : ",") + item;
  return "[" + text + "]";
}

std::string jsonOf(const OpenBook::WrittenBlock& block) {
  std::vector<std::string> before;
  for (const auto& one : block.overwritten) {
    before.push_back("{\"cell\":" + jsonString(sheet::a1(one.at)) + ",\"text\":" + jsonString(one.text) + "}");
  }
  return "{\"sheet\":" + jsonString(block.sheet) + ",\"range\":" + jsonString(sheet::a1(block.area)) +
         ",\"cells\":" + decimal(block.area.cells()) + ",\"overwritten\":" + decimal(block.overwrittenCount) +
         ",\"before\":" + listed(before) + "}";
}

std::string jsonOf(const guard::Harm& harm) {
  return "{\"sheet\":" + jsonString(harm.sheet) + ",\"range\":" + jsonString(sheet::a1(harm.area)) +
         ",\"cells\":" + decimal(harm.count) + ",\"text\":" + jsonString(harm.text) + "}";
}

}  // namespace

void writeDryRun(OpenBook& book, const std::vector<guard::Harm>& harms, bool json, OutputFile& out) {
  const std::vector<OpenBook::WrittenBlock> blocks = book.written();
  if (!json) return writeText(blocks, book.notes(), harms, out);
  std::vector<std::string> written;
  for (const auto& block : blocks) written.push_back(jsonOf(block));
  std::vector<std::string> notes;
  for (const std::string& note : book.notes()) notes.push_back(jsonString(note));
  std::vector<std::string> lost;
  for (const guard::Harm& harm : harms) lost.push_back(jsonOf(harm));
  out.write("{\"blocks\":" + listed(written) + ",\"notes\":" + listed(notes) + ",\"harms\":" + listed(lost) + "}\n");
}

}  // namespace mervane::cli
