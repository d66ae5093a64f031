#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "bench/plain_loops.h"
#include "bench/schedule.h"
#include "engine/choose_kernel.h"
#include "engine/kernels.h"
#include "engine/learning_rule.h"
#include "tests/engine/presentations.h"

namespace mervane {
namespace {

using engine::Kernel;
using engine::LearningRule;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

LearningRule trained(std::int32_t units, std::int32_t inputs, bool convex, const Kernel& kernel) {
  constexpr std::int32_t rows = 90;
  constexpr std::int32_t epochs = 24;
  const std::vector<double> values = presentations::samples(rows, inputs);
  LearningRule rule(units, inputs, 1.0 / std::sqrt(static_cast<double>(inputs)), kernel);
  const bench::Schedule schedule{epochs, rows};
  for (std::int32_t epoch = 1; epoch <= epochs; ++epoch) {
    rule.setRate(schedule.rate(epoch));
    rule.setRadius(schedule.radius(epoch));
    std::vector<double> factors;
    for (std::int32_t row = 0; convex && row < rows && schedule.convexFactor(epoch, 0) < 1.0; ++row)
      factors.push_back(std::min(schedule.convexFactor(epoch, row), 1.0));
    rule.learn(values, rows, factors);
  }
  rule.finish();
  return rule;
}

bool sameBits(std::span<const double> a, std::span<const double> b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size_bytes()) == 0;
}

TEST(Kernels, AllGiveTheBitsOfPlainLoopsForEveryShape) {
  for (const bool convex : {false, true}) {
    for (const std::int32_t units : {1, 2, 3, 4, 5, 7, 8, 9, 11, 13, 16, 17, 24, 31, 32, 33, 40, 64, 67}) {
      for (const std::int32_t inputs : {1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 16, 17, 33}) {
        const LearningRule plain = trained(units, inputs, convex, plainLoops);
        for (const Kernel* kernel : engine::availableKernels()) {
          const LearningRule other = trained(units, inputs, convex, *kernel);
          ASSERT_TRUE(sameBits(plain.weights(), other.weights()))
              << kernel->name << ", " << units << " units, " << inputs << " inputs, convex " << convex;
        }
      }
    }
  }
}

TEST(Kernels, AllFindTheWinnersOfPlainLoops) {
  const std::vector<double> values = presentations::samples(200, 5, 99);
  for (const std::int32_t units : {1, 3, 6, 10, 19, 50}) {
    const LearningRule plain = trained(units, 5, true, plainLoops);
    std::vector<std::int32_t> expected(200);
    plain.search(values, expected);
    for (const Kernel* kernel : engine::availableKernels()) {
      std::vector<std::int32_t> found(200);
      trained(units, 5, true, *kernel).search(values, found);
      EXPECT_EQ(found, expected) << kernel->name << ", " << units << " units";
    }
  }
}

TEST(Kernels, TheLowestOfEquallyNearUnitsWinsWhereverItStands) {
  for (const Kernel* kernel : engine::availableKernels()) {
    for (const std::int32_t units : {2, 5, 8, 9, 23, 40}) {
      for (std::int32_t first = 0; first < units; ++first) {
        LearningRule rule(units, 1, 5.0, *kernel);
        for (std::int32_t unit = first; unit < units; ++unit) rule.setWeight(unit, 0, unit % 2 == 0 ? 1.0 : -1.0);
        rule.startLearning();
        std::vector<std::int32_t> winner(1);
        rule.search(std::vector{0.0}, winner);
        EXPECT_EQ(winner[0], first) << kernel->name << ", " << units << " units";
      }
    }
  }
}

TEST(Kernels, AValueThatCannotBeUsedIsFoundAtEveryPlace) {
  for (const Kernel* kernel : engine::availableKernels()) {
    for (std::size_t length = 1; length <= 70; ++length) {
      std::vector<double> values(length, -0.5);
      EXPECT_TRUE(kernel->usable(values.data(), length)) << kernel->name;
      for (std::size_t place = 0; place < length; ++place) {
        for (const double bad : {infinity, -infinity, notANumber, 0x1p240, -0x1p240, 1e300}) {
          values[place] = bad;
          EXPECT_FALSE(kernel->usable(values.data(), length)) << kernel->name << ", " << bad << " at " << place;
        }
        for (const double good : {std::nextafter(0x1p240, 0.0), -1e72, 0.0, 5e-324}) {
          values[place] = good;
          EXPECT_TRUE(kernel->usable(values.data(), length)) << kernel->name << ", " << good << " at " << place;
        }
        values[place] = -0.5;
      }
    }
    EXPECT_TRUE(kernel->usable(nullptr, 0));
  }
}

TEST(Kernels, FactorsAreTakenFromZeroToOne) {
  for (const Kernel* kernel : engine::availableKernels()) {
    for (std::size_t length = 1; length <= 20; ++length) {
      for (std::size_t place = 0; place < length; ++place) {
        std::vector<double> given(length, 2.0);
        std::vector<double> taken(length);
        const auto kinds = [&](double factor) {
          given[place] = factor;
          return kernel->takeFactors(given.data(), length, taken.data());
        };
        EXPECT_FALSE(kinds(1.0).contracting || kinds(infinity).contracting) << kernel->name;
        EXPECT_EQ(taken, std::vector<double>(length, 1.0)) << kernel->name;
        EXPECT_TRUE(kinds(0.25).contracting) << kernel->name;
        EXPECT_EQ(taken[place], 0.25) << kernel->name;
        EXPECT_TRUE(kinds(-3.0).contracting) << kernel->name;
        EXPECT_EQ(taken[place], 0.0) << kernel->name;
        EXPECT_FALSE(kinds(0.5).notNumbers) << kernel->name;
        EXPECT_TRUE(kinds(notANumber).notNumbers) << kernel->name;
      }
    }
  }
}

TEST(Kernels, ThePortableOneIsAlwaysThere) {
  EXPECT_EQ(engine::availableKernels().front(), &engine::portableKernel);
}

}  // namespace
}  // namespace mervane
