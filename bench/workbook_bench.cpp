// The workbook host step by step on one file, beside the floor of each step: what inflating and scanning for numbers,
// the presentations of a training, and printing numbers and deflating take alone.
//
//   mervane_workbook_bench steps BOOK.xlsx CLUSTERS EPOCHS OUT.xlsx   the whole road of a clustering, all outputs on
//   mervane_workbook_bench rows BOOK.xlsx OUT.xlsx                    reading and writing alone
//
// The sheet "Data" holds a header in row 1 and numbers below; bench/workbook_bench.py makes such files. Each time is
// processor time, the least of several repetitions, so that neighbours on the machine count as little as possible.
// One line a figure: its name, a tab, and seconds or a number.

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bench/training_kernel.h"
#include "engine/choose_kernel.h"
#include "engine/create_network_engine.h"
#include "hosts/workbook/deflater.h"
#include "hosts/workbook/package.h"
#include "hosts/workbook/workbook_host.h"
#include "mervane/classifier3.h"
#include "mervane/failure.h"
#include "output/output_formatting.h"
#include "spreadsheet/application.h"
#include "support/globals.h"
#include "tools/m_tools.h"

namespace {

using namespace mervane;
using sheet::CellArea;
using workbook::WorkbookHost;

constexpr int repetitions = 3;
const char* const sheetName = "Data";

double processorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// The least time of each step, in the order of their first run.
class Times {
 public:
  void measure(const std::string& step, const std::function<void()>& body) {
    const double begin = processorSeconds();
    body();
    const double seconds = processorSeconds() - begin;
    const auto [place, isNew] = least_.try_emplace(step, seconds);
    if (isNew) order_.push_back(step);
    place->second = std::min(place->second, seconds);
  }
  void print() const {
    for (const std::string& step : order_) std::printf("%s\t%.4f\n", step.c_str(), least_.at(step));
  }

 private:
  std::map<std::string, double> least_;
  std::vector<std::string> order_;
};

/// Unpacks the sheet piece by piece and parses what stands between value tags, and nothing else.
std::vector<double> parsedNumbers(const std::string& path) {
  std::vector<double> numbers;
  const auto package = workbook::Package::open(path);
  const auto next = package->pull("xl/worksheets/sheet1.xml");
  std::vector<char> window(256 * 1024);
  std::size_t kept = 0;
  while (const std::size_t count = next(window.data() + kept, window.size() - kept)) {
    const char* at = window.data();
    const char* end = at + kept + count;
    // A value that the piece may cut through is left for the next one.
    constexpr std::ptrdiff_t longestValue = 64;
    while ((at = static_cast<const char*>(std::memchr(at, '<', static_cast<std::size_t>(end - at)))) != nullptr) {
      if (end - at < longestValue) break;
      if (at[1] == 'v' && at[2] == '>') {
        double value = 0.0;
        at = std::from_chars(at + 3, end, value).ptr;
        numbers.push_back(value);
      } else {
        ++at;
      }
    }
    kept = at == nullptr ? 0 : static_cast<std::size_t>(end - at);
    if (kept > 0) std::memmove(window.data(), at, kept);
  }
  return numbers;
}

void printAndDeflate(const std::vector<double>& numbers) {
  workbook::Deflater deflater(1);
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
}

CellArea requiredBlock(WorkbookHost& host) {
  const auto block = host.numericBlock(sheetName);
  if (!block) throw Failure(1, "the sheet Data holds no block of numbers");
  return *block;
}

/// The road of a clustering, each step handed what the one before it made.
class Road {
 public:
  Road(Times& times, std::string path, std::int32_t clusters, std::int32_t epochs)
      : times_(times), path_(std::move(path)), clusters_(clusters), epochs_(epochs) {}

  void floors() {
    std::vector<double> numbers;
    times_.measure("floor: inflate and parse", [&] { numbers = parsedNumbers(path_); });
    const CellArea block = requiredBlock(*WorkbookHost::open(path_));
    if (numbers.size() != static_cast<std::size_t>(block.cells())) throw Failure(1, "the floor missed numbers");
    const std::vector<double> samples = bench::scaledColumns(numbers, static_cast<std::size_t>(block.columns()));
    times_.measure("floor: training kernel", [&] {
      static_cast<void>(bench::trainAlone({epochs_, block.rows()}, block.columns(), clusters_, samples,
                                          engine::chooseKernel(clusters_, block.columns())));
    });
    times_.measure("floor: print and deflate", [&] { printAndDeflate(numbers); });
  }

  void steps(const std::string& out) {
    std::unique_ptr<WorkbookHost> host;
    times_.measure("open and read", [&] {
      host = WorkbookHost::open(path_);
      static_cast<void>(host->cellText(sheetName, {1, 1}));
    });
    const CellArea block = requiredBlock(*host);
    std::string input = std::string(sheetName) + "!" + sheet::a1(block);
    const sheet::Application application(host->application());
    times_.measure("look at each cell", [&] {
      if (!mTools::AllCellsNumeric(application, input)) throw Failure(1, "a cell holds no number");
      if (mTools::RepeatedInputs(application, input)) throw Failure(1, "the first column holds one number only");
    });
    Variant values;
    times_.measure("cells into an array",
                   [&] { values = mTools::Range2ArraySingle(application.Range(input).asVariant()); });
    Array<std::int32_t> result;
    times_.measure("train", [&] { result = trained(values); });
    times_.measure("all outputs", [&] { print(application, block, input, std::move(result)); });
    times_.measure("print and pack the file", [&] { host->save(out); });
  }

 private:
  Array<std::int32_t> trained(const Variant& values) const {
    const auto classifier = Classifier3::create({createNetworkEngine});
    classifier->Inputs(values);
    classifier->Clusters(clusters_);
    classifier->EpochCount(epochs_);
    classifier->Run();
    Array<std::int32_t> result = classifier->Outputs();
    classifier->UnloadfrmMain();
    return result;
  }

  void print(const sheet::Application& application, const CellArea& block, const std::string& input,
             Array<std::int32_t> result) const {
    COutputFormatting output;
    output.ExcelApplication(application);
    output.Clusters(clusters_);
    output.result(Variant(std::move(result)));
    output.OutputCells(std::string(sheetName) + "!" + sheet::columnLetters(block.lastColumn + 2) +
                       std::to_string(block.firstRow));
    output.TotalRange(input);
    output.InputRange(input);
    output.CalculateWeightedAverages(true);
    output.SetAutofilter(true);
    output.SortData(true);
    output.PrintData();
  }

  Times& times_;
  std::string path_;
  std::int32_t clusters_;
  std::int32_t epochs_;
};

/// Reads the book, changes one cell so that the sheet is printed anew, and writes it.
void readAndWrite(Times& times, const std::string& path, const std::string& out) {
  std::unique_ptr<WorkbookHost> host;
  times.measure("open and read", [&] {
    host = WorkbookHost::open(path);
    static_cast<void>(host->cellText(sheetName, {1, 1}));
  });
  const sheet::Application application(host->application());
  application.Range(std::string(sheetName) + "!A1").Value(Variant("changed"));
  times.measure("print and pack the file", [&] { host->save(out); });
}

int run(const std::vector<std::string>& arguments) {
  auto services = std::make_shared<platform::Services>();
  services->locale = englishLocale();
  globals::platform(std::move(services));
  Times times;
  if (arguments.size() == 5 && arguments[0] == "steps") {
    Road road(times, arguments[1], std::atoi(arguments[2].c_str()), std::atoi(arguments[3].c_str()));
    for (int i = 0; i < repetitions; ++i) {
      road.floors();
      road.steps(arguments[4]);
    }
  } else if (arguments.size() == 3 && arguments[0] == "rows") {
    for (int i = 0; i < repetitions; ++i) readAndWrite(times, arguments[1], arguments[2]);
  } else {
    std::fputs(
        "usage: mervane_workbook_bench steps BOOK.xlsx CLUSTERS EPOCHS OUT.xlsx\n"
        "       mervane_workbook_bench rows BOOK.xlsx OUT.xlsx\n",
        stderr);
    return 2;
  }
  times.print();
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    return run({arguments + 1, arguments + count});
  } catch (const Failure& failure) {
    std::fprintf(stderr, "%s: %s\n", failure.source().c_str(), failure.what());
    return 1;
  }
}
