// Clusters twelve measured plants by the length and width of a petal, and follows the training on its way.

#include <mervane/library.h>

#include <cstdint>
#include <cstdio>

namespace {

constexpr double petals[][2] = {{1.4, 0.2}, {4.7, 1.4}, {5.9, 2.1}, {1.3, 0.2}, {4.5, 1.5}, {6.0, 2.5},
                                {1.5, 0.3}, {4.0, 1.3}, {5.6, 1.8}, {1.7, 0.4}, {4.6, 1.5}, {6.6, 2.1}};
constexpr std::int32_t rows = 12;
constexpr std::int32_t columns = 2;

// Any bounds will do; the numbers that come back have those of the rows.
mervane::Array<double> measurements() {
  mervane::Array<double> array({{1, rows}, {1, columns}});
  for (std::int32_t row = 1; row <= rows; ++row) {
    for (std::int32_t column = 1; column <= columns; ++column) array.at(row, column) = petals[row - 1][column - 1];
  }
  return array;
}

void tellEveryTwentieth(std::int32_t& epoch, double& rate, std::int32_t& radius) {
  if (epoch % 20 == 0) std::printf("epoch %d: rate %.3f, radius %d\n", epoch, rate, radius);
}

}  // namespace

int main() {
  bool failed = false;
  mervane::readFailures([&](const std::string& report) {
    std::fprintf(stderr, "%s\n", report.c_str());
    failed = true;
    return mervane::FailureAnswer::abort;
  });

  const auto classifier = mervane::createClassifier();
  classifier->Clusters(3);
  classifier->EpochCount(100);
  classifier->addNextEpochSink(tellEveryTwentieth);
  classifier->Inputs(measurements());
  classifier->Run();
  if (failed) return 1;

  const mervane::Array<std::int32_t> clusters = classifier->Outputs();
  for (std::int32_t row = clusters.lowerBound(1); row <= clusters.upperBound(1); ++row) {
    std::printf("row %d (%.1f, %.1f): cluster %d\n", row, petals[row - 1][0], petals[row - 1][1], clusters.at(row));
  }
  return 0;
}
