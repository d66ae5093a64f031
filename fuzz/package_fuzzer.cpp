#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/made_package.h"
#include "fuzz/require.h"
#include "hosts/workbook/workbook_host.h"
#include "mervane/convert.h"
#include "mervane/failure.h"
#include "spreadsheet/application.h"

namespace mervane::fuzz {
namespace {

using workbook::CellAddress;
using workbook::CellArea;
using workbook::WorkbookHost;

/// The files of this process, in memory where the machine has a folder for that.
const std::filesystem::path& folder() {
  static const std::filesystem::path path = [] {
    const std::filesystem::path memory = "/dev/shm";
    const auto parent = std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
    auto own = parent / ("mervane-fuzz-" + std::to_string(::getpid()));
    std::filesystem::create_directories(own);
    std::atexit([] {
      std::error_code ignored;
      std::filesystem::remove_all(folder(), ignored);
    });
    return own;
  }();
  return path;
}

/// The first byte says what the others are: a whole file, the content of one part of a sound workbook, or rows for its
/// sheet.
std::string packageOf(std::string_view input) {
  if (input.empty()) return {};
  const auto kind = static_cast<std::size_t>(static_cast<unsigned char>(input.front()));
  const std::string_view content = input.substr(1);
  Parts parts = soundParts();
  const std::size_t choice = kind % (parts.size() + 3);
  if (choice == 0) return std::string(content);
  if (choice <= parts.size()) {
    parts[choice - 1].second = content;
    return zipOf(parts);
  }
  for (auto& [name, text] : parts) {
    if (name != "xl/worksheets/sheet1.xml") continue;
    const std::size_t begin = choice == parts.size() + 1 ? text.find("<row") : text.find("</sheetData>") + 12;
    const std::size_t end = choice == parts.size() + 1 ? text.find("</sheetData>") : text.find("</worksheet>");
    text.replace(begin, end - begin, content);
  }
  return zipOf(parts);
}

/// The corner of an area that is looked at.
CellArea seen(CellArea area) {
  constexpr std::int32_t most = 24;
  area.lastRow = std::min(area.lastRow, area.firstRow + most - 1);
  area.lastColumn = std::min(area.lastColumn, area.firstColumn + most - 1);
  return area;
}

/// Everything that can be read of a workbook without changing it.
std::vector<Variant> readAll(WorkbookHost& host) {
  std::vector<Variant> values;
  for (const WorkbookHost::SheetInfo& sheet : host.sheets()) {
    values.emplace_back(sheet.name);
    static_cast<void>(host.numericBlock(sheet.name));
    if (!sheet.used) continue;
    const CellArea area = seen(*sheet.used);
    for (std::int32_t row = area.firstRow; row <= area.lastRow; ++row) {
      for (std::int32_t column = area.firstColumn; column <= area.lastColumn; ++column) {
        const CellAddress at{row, column};
        values.emplace_back(host.cellText(sheet.name, at));
        static_cast<void>(host.cellFormula(sheet.name, at));
        try {
          values.push_back(host.cellValue(sheet.name, at));
        } catch (const Failure&) {
          values.emplace_back(Null());  // a formula whose value the file does not have
        }
      }
    }
  }
  return values;
}

/// A statement that the workbook may refuse, but only with a text.
template <class Statement>
void mayRefuse(Statement&& statement) {
  try {
    statement();
  } catch (const Failure& failure) {
    MERVANE_REQUIRE(!failure.description().empty());
  }
}

/// What a run does to a sheet.
void change(WorkbookHost& host) {
  const sheet::Application excel(host.application());
  mayRefuse([&] {
    sheet::forEach<sheet::ChartObject>(excel.ActiveSheet().ChartObjects(), [](const sheet::ChartObject& one) {
      bool goes = true;
      mayRefuse([&] { goes = one.Chart().ChartTitle().Text() == "Clusters weights"; });
      if (goes) mayRefuse([&] { one.Delete(); });
    });
  });
  mayRefuse([&] {
    sheet::forEach<sheet::Shape>(excel.ActiveSheet().Shapes(), [](const sheet::Shape& one) {
      mayRefuse([&] { one.Left(100.0); });
      mayRefuse([&] { one.Width(350.0); });
    });
  });
  const sheet::Range rows = excel.ActiveSheet().Range("A2:C5");
  mayRefuse([&] { rows.Sort(rows.Columns(1), sheet::ascending); });
  mayRefuse([&] { rows.Item(1, 2).Value(Variant(2.5)); });
  mayRefuse([&] { rows.Item(2, 2).Value(Variant("=NA()")); });
  mayRefuse([&] { rows.Item(3, 2).Value(Variant("a text")); });
  mayRefuse([&] { rows.Item(4, 3).Value(Variant()); });
  mayRefuse([&] { rows.Item(1, 1).NumberFormat("0.00%"); });
  mayRefuse([&] { rows.Font().Bold(true); });
  mayRefuse([&] { rows.Interior().ColorIndex(36); });
  mayRefuse([&] { rows.Borders(sheet::insideHorizontal).Weight(sheet::weightHairline); });
  mayRefuse([&] { rows.AutoFilter(); });
  mayRefuse([&] { rows.Columns().EntireColumn().AutoFit(); });
  mayRefuse([&] { rows.Select(); });
  mayRefuse([&] {
    excel.Charts().Add();
    excel.ActiveChart().Location(sheet::locationAsObject, excel.ActiveSheet().Name());
    excel.ActiveChart().SetSourceData(rows, sheet::plotByRows);
  });
  static_cast<void>(host.written());
}

std::string words(const std::vector<Variant>& values, std::size_t i) {
  if (i >= values.size()) return "missing";
  std::string kind = " of kind " + std::to_string(static_cast<int>(values[i].kind()));
  try {
    return toText(values[i], englishLocale()) + kind;
  } catch (const Failure&) {
    return "something" + kind;
  }
}

void expectSameBehindSaving(WorkbookHost& host) {
  const auto file = folder() / "saved.xlsx";
  bool isSaved = false;
  mayRefuse([&] {
    host.save(file);
    isSaved = true;
  });
  if (!isSaved) return;
  // What this host saves it opens, and finds everything again. Saving makes texts of a table's header cells, for they
  // are the names of its columns, so the host is asked behind it.
  const std::vector<Variant> before = readAll(host);
  const auto again = WorkbookHost::open(file);
  const std::vector<Variant> after = readAll(*again);
  for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
    if (i < before.size() && i < after.size() && before[i] == after[i]) continue;
    std::fprintf(stderr, "value %zu was %s and is %s\n", i, words(before, i).c_str(), words(after, i).c_str());
    break;
  }
  MERVANE_REQUIRE(after == before);
}

void take(std::string_view input) {
  const auto file = folder() / "input.xlsx";
  {
    const std::string bytes = packageOf(input);
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  std::unique_ptr<WorkbookHost> host;
  mayRefuse([&] { host = WorkbookHost::open(file); });
  if (host == nullptr) return;
  bool isReadable = false;
  mayRefuse([&] {
    static_cast<void>(readAll(*host));
    isReadable = true;
  });
  if (!isReadable) return;
  expectSameBehindSaving(*host);
  mayRefuse([&] { change(*host); });
  expectSameBehindSaving(*host);
}

}  // namespace
}  // namespace mervane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  mervane::fuzz::take({reinterpret_cast<const char*>(data), size});
  return 0;
}
