// How fast training is: the public class against a minimal kernel, and that against plain loops.
//
// For each case three programs make the same presentations of the same samples, in one process:
//   Run      the public class with the built-in engine behind its port, from Run() to the filled results;
//   kernel   the winner search and the update alone, on samples that are scaled already;
//   plain    the same as plain loops.
// Before anything is timed, all three have to give the same bits. Ratios of the least processor time of several
// repetitions are printed in the end, each with its goal. The exit status is 1 where bits differ.

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "bench/plain_loops.h"
#include "bench/training_kernel.h"
#include "engine/choose_kernel.h"
#include "engine/create_network_engine.h"
#include "engine/learning_rule.h"
#include "mervane/classifier3.h"

namespace {

using namespace mervane;

struct Case {
  const char* name;
  std::int32_t rows, columns, clusters, epochs;
  double plainGoal;  ///< kernel / plain at most.
};

constexpr double runGoal = 1.3;  ///< Run / kernel at most.
constexpr std::array cases{Case{"150x4, 3 clusters, 100 epochs", 150, 4, 3, 100, 0.85},
                           Case{"10000x10, 10 clusters, 100 epochs", 10000, 10, 10, 100, 0.80},
                           Case{"65535x16, 16 clusters, 100 epochs", 65535, 16, 16, 100, 0.55},
                           Case{"5000x256, 64 clusters, 20 epochs", 5000, 256, 64, 20, 0.30}};

/// Rows around as many centres as there are clusters, from a generator of our own.
std::vector<double> samplesOf(const Case& which) {
  std::uint64_t state = 20240229;
  const auto uniform = [&state] {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state >> 11) / 9007199254740992.0;
  };
  const auto columns = static_cast<std::size_t>(which.columns);
  std::vector<double> centres(static_cast<std::size_t>(which.clusters) * columns);
  for (double& value : centres) value = 10.0 * uniform();
  std::vector<double> values;
  values.reserve(static_cast<std::size_t>(which.rows) * columns);
  for (std::int32_t row = 0; row < which.rows; ++row) {
    const auto centre = static_cast<std::size_t>(uniform() * which.clusters) * columns;
    for (std::size_t j = 0; j < columns; ++j) values.push_back(centres[centre + j] + 4.0 * (uniform() - 0.5));
  }
  return values;
}

engine::LearningRule train(const Case& which, std::span<const double> samples, const engine::Kernel& kernel) {
  return bench::trainAlone({which.epochs, which.rows}, which.columns, which.clusters, samples, kernel);
}

std::shared_ptr<Classifier3> classifierOf(const Case& which, const std::vector<double>& values) {
  auto classifier = Classifier3::create({createNetworkEngine});
  classifier->Inputs(Variant(Array<double>({Bounds{1, which.rows}, Bounds{1, which.columns}}, values)));
  classifier->Clusters(which.clusters);
  classifier->EpochCount(which.epochs);
  return classifier;
}

/// True where the three programs end with the same bits.
bool sameBits(const Case& which) {
  const std::vector<double> values = samplesOf(which);
  const std::vector<double> samples = bench::scaledColumns(values, static_cast<std::size_t>(which.columns));
  const engine::LearningRule plain = train(which, samples, plainLoops);
  for (const engine::Kernel* kernel : engine::availableKernels()) {
    const engine::LearningRule other = train(which, samples, *kernel);
    if (!std::equal(plain.weights().begin(), plain.weights().end(), other.weights().begin())) {
      std::cerr << which.name << ": the weights of " << kernel->name << " differ from those of plain loops\n";
      return false;
    }
  }
  std::vector<std::int32_t> winners(static_cast<std::size_t>(which.rows));
  plain.search(samples, winners);
  const auto classifier = classifierOf(which, values);
  classifier->Run();
  const Array<std::int32_t> outputs = classifier->Outputs();
  classifier->UnloadfrmMain();
  const bool same = std::equal(winners.begin(), winners.end(), outputs.elements().begin(),
                               [](std::int32_t winner, std::int32_t output) { return winner + 1 == output; });
  if (!same) std::cerr << which.name << ": the clusters of Run differ from those of plain loops\n";
  return same;
}

void countPresentations(benchmark::State& state, const Case& which) {
  state.SetItemsProcessed(state.iterations() * which.rows * which.epochs);
}

void runBench(benchmark::State& state, const Case& which) {
  const auto classifier = classifierOf(which, samplesOf(which));
  for (auto _ : state) classifier->Run();
  classifier->UnloadfrmMain();
  countPresentations(state, which);
}

void trainBench(benchmark::State& state, const Case& which, const engine::Kernel& kernel) {
  const std::vector<double> samples = bench::scaledColumns(samplesOf(which), static_cast<std::size_t>(which.columns));
  for (auto _ : state) benchmark::DoNotOptimize(train(which, samples, kernel).weights().data());
  countPresentations(state, which);
}

/// Prints as usual and keeps the least time of each benchmark.
class LeastTimes : public benchmark::ConsoleReporter {
 public:
  LeastTimes() : ConsoleReporter(OO_None) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const double time = run.cpu_accumulated_time / static_cast<double>(run.iterations);
      const auto [place, added] = least_.emplace(run.run_name.function_name, time);
      if (!added) place->second = std::min(place->second, time);
    }
  }

  /// Seconds; 0 where the benchmark did not run.
  [[nodiscard]] double least(const std::string& name) const {
    const auto found = least_.find(name);
    return found == least_.end() ? 0.0 : found->second;
  }

 private:
  std::map<std::string, double> least_;
};

std::string nameOf(const char* program, const Case& which) {
  return std::string(program) + "/" + which.name;
}

const char* verdict(double ratio, double goal) {
  return ratio <= goal ? "met" : "NOT met";
}

void printRatios(const LeastTimes& times) {
  std::printf("\n| case | Run ns | kernel ns | plain ns | Run / kernel | goal | kernel / plain | goal |\n");
  std::printf("|---|---|---|---|---|---|---|---|\n");
  for (const Case& which : cases) {
    const double presentations = static_cast<double>(which.rows) * which.epochs;
    const double run = times.least(nameOf("Run", which));
    const double kernel = times.least(nameOf("kernel", which));
    const double plain = times.least(nameOf("plain", which));
    if (run == 0.0 || kernel == 0.0 || plain == 0.0) continue;
    std::printf("| %s | %.1f | %.1f | %.1f | %.2f | %.2f %s | %.2f | %.2f %s |\n", which.name,
                1e9 * run / presentations, 1e9 * kernel / presentations, 1e9 * plain / presentations, run / kernel,
                runGoal, verdict(run / kernel, runGoal), kernel / plain, which.plainGoal,
                verdict(kernel / plain, which.plainGoal));
  }
}

double peakMebibytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

/// Peak memory of one run on the largest array, measured before anything else needs memory.
void printMemory() {
  const Case& which = cases[2];
  const double before = peakMebibytes();
  {
    auto classifier = Classifier3::create({createNetworkEngine});
    Array<double> inputs({{1, which.rows}, {1, which.columns}});
    const double array = static_cast<double>(inputs.elements().size() * sizeof(double)) / 1048576.0;
    for (std::size_t i = 0; i < inputs.elements().size(); ++i)
      inputs.elements()[i] = static_cast<double>(i * 7919 % 104729);
    classifier->Inputs(Variant(std::move(inputs)));
    classifier->Clusters(which.clusters);
    classifier->EpochCount(2);
    classifier->Run();
    classifier->UnloadfrmMain();
    const double used = peakMebibytes() - before;
    std::printf("Peak memory for 65535x16: %.1f MiB, %.2f times the array's %.1f MiB; goal: under 3, %s\n\n", used,
                used / array, array, verdict(used / array, 3.0));
  }
}

}  // namespace

int main(int argc, char** argv) {
  // The programs take turns, so that a neighbour on the machine slows all of them down alike. Arguments come after.
  std::vector<char*> arguments{argv[0]};
  std::array<std::string, 2> defaults{"--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=5"};
  for (std::string& one : defaults) arguments.push_back(one.data());
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  auto count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  printMemory();
  for (const Case& which : cases) {
    if (!sameBits(which)) return 1;
    const engine::Kernel& kernel = engine::chooseKernel(which.clusters, which.columns);
    std::printf("%s: same bits by every kernel; %s is used\n", which.name, kernel.name);
    const auto add = [&which](const char* program, auto body) {
      benchmark::RegisterBenchmark(nameOf(program, which).c_str(), body)->Unit(benchmark::kMillisecond)->MinTime(0.2);
    };
    add("Run", [&which](benchmark::State& state) { runBench(state, which); });
    add("kernel", [&which, &kernel](benchmark::State& state) { trainBench(state, which, kernel); });
    add("plain", [&which](benchmark::State& state) { trainBench(state, which, plainLoops); });
  }
  LeastTimes times;
  benchmark::RunSpecifiedBenchmarks(&times);
  printRatios(times);
}
