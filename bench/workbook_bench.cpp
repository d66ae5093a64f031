// The workbook host step by step on one file, beside the floor of each step: what inflating and scanning for numbers,
// and printing numbers and deflating, take alone. Clusters are dealt out, not trained; see training_bench for that.
//
//   build/bench/bench/mervane_workbook_bench BOOK.xlsx CLUSTERS [OUT.xlsx]
//
// The sheet "Data" holds a header in row 1 and numbers below; bench/workbook_bench.py makes such files.

#include <sys/resource.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hosts/workbook/deflater.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/workbook_host.h"
#include "mervane/failure.h"
#include "output/output_formatting.h"
#include "spreadsheet/application.h"
#include "support/globals.h"
#include "tools/m_tools.h"

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

long peakMebibytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

/// Unpacks the sheet piece by piece and parses what stands between value tags, and nothing else.
double readFloor(const std::string& path, std::vector<double>& numbers) {
  const auto begin = Clock::now();
  const auto package = mervane::workbook::Package::open(path);
  std::string rest;
  package->stream("xl/worksheets/sheet1.xml", [&](std::string_view piece) {
    rest.append(piece);
    const char* at = rest.data();
    const char* end = at + rest.size();
    const char* done = at;
    while ((at = static_cast<const char*>(std::memchr(at, '<', static_cast<std::size_t>(end - at)))) != nullptr) {
      if (end - at < 64) break;
      done = at;
      if (at[1] == 'v' && at[2] == '>') {
        double value = 0.0;
        at = std::from_chars(at + 3, end, value).ptr;
        numbers.push_back(value);
      } else {
        ++at;
      }
    }
    rest.erase(0, static_cast<std::size_t>(done - rest.data()));
  });
  return secondsSince(begin);
}

double writeFloor(const std::vector<double>& numbers) {
  const auto begin = Clock::now();
  mervane::workbook::Deflater deflater(1);
  std::string buffer;
  for (const double number : numbers) {
    char text[32];
    buffer += "<c><v>";
    buffer.append(text, std::to_chars(text, text + sizeof text, number).ptr);
    buffer += "</v></c>";
    if (buffer.size() > 200000) {
      deflater.append(buffer);
      buffer.clear();
    }
  }
  deflater.append(buffer);
  static_cast<void>(deflater.finish());
  return secondsSince(begin);
}

int run(const std::string& path, std::int32_t clusters, const std::string& out) {
  auto services = std::make_shared<mervane::platform::Services>();
  services->locale = mervane::englishLocale();
  mervane::globals::platform(std::move(services));

  std::vector<double> numbers;
  const double floorRead = readFloor(path, numbers);
  const double floorWrite = writeFloor(numbers);
  numbers = {};

  auto begin = Clock::now();
  const auto host = mervane::workbook::WorkbookHost::open(path);
  const auto block = host->numericBlock("Data");
  const double read = secondsSince(begin);
  if (!block) {
    std::fputs("the sheet Data holds no block of numbers\n", stderr);
    return 2;
  }
  const std::string input = "Data!" + mervane::workbook::a1(*block);
  const mervane::sheet::Application application(host->application());

  begin = Clock::now();
  static_cast<void>(mervane::mTools::Range2ArraySingle(application.Range(input).asVariant()));
  const double transfer = secondsSince(begin);

  mervane::Array<std::int32_t> result({{1, block->rows()}});
  for (std::int32_t i = 1; i <= block->rows(); ++i) result.at(i) = i % clusters + 1;
  begin = Clock::now();
  mervane::COutputFormatting output;
  output.ExcelApplication(application);
  output.Clusters(clusters);
  output.result(mervane::Variant(std::move(result)));
  output.OutputCells("Data!" + mervane::workbook::columnLetters(block->lastColumn + 2) +
                     std::to_string(block->firstRow));
  output.TotalRange(input);
  output.InputRange(input);
  output.CalculateWeightedAverages(true);
  output.SetAutofilter(true);
  output.SortData(true);
  output.PrintData();
  const double print = secondsSince(begin);

  begin = Clock::now();
  host->save(out);
  const double save = secondsSince(begin);

  std::printf("%-34s %8.3f s\n", "floor: inflate and parse", floorRead);
  std::printf("%-34s %8.3f s\n", "floor: print and deflate", floorWrite);
  std::printf("%-34s %8.3f s  %.2f floors\n", "open and read", read, read / floorRead);
  std::printf("%-34s %8.3f s\n", "cells into the array", transfer);
  std::printf("%-34s %8.3f s\n", "all outputs", print);
  std::printf("%-34s %8.3f s  %.2f floors\n", "save", save, save / floorWrite);
  const double whole = read + transfer + print + save;
  std::printf("%-34s %8.3f s  %.2f floors\n", "all of it", whole, whole / (floorRead + floorWrite));
  std::printf("%-34s %8ld MiB\n", "peak memory", peakMebibytes());
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3) {
    std::fputs("usage: mervane_workbook_bench BOOK.xlsx CLUSTERS [OUT.xlsx]\n", stderr);
    return 2;
  }
  try {
    return run(arguments[1], std::atoi(arguments[2]), count > 3 ? arguments[3] : "workbook-bench-out.xlsx");
  } catch (const mervane::Failure& failure) {
    std::fprintf(stderr, "%s: %s\n", failure.source().c_str(), failure.what());
    return 1;
  }
}
