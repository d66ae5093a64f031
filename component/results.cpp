#include <optional>
#include <utility>
#include <vector>

#include "component/network_engine/network_engine.h"
#include "component/procedure_keys.h"
#include "component/wrapping_arithmetic.h"
#include "mervane/classifier3.h"
#include "support/procedures.h"

namespace mervane {

namespace key = component::key;

void Classifier3::StoreResults() {
  traced(key::StoreResults, [&](Steps& step) {
    // What a failing statement would have read keeps its last value when the statement is ignored.
    std::int64_t first = 0;
    std::int64_t last = -1;
    std::int32_t columns = 0;
    std::int32_t winner = 0;
    std::vector<double> sample;
    std::optional<Failure> refusal;

    step([&] {
      first = inputArray().lowerBound(1);
      last = inputArray().upperBound(1);
    });
    for (std::int64_t at = first; at <= last; ++at) {
      step([&] { at += classifyInBlocks(at, last, winner, refusal); });
      if (at > last) break;

      const auto row = static_cast<std::int32_t>(at);
      // 1.
      step([&] { columns = GetColumnsCount(); });
      // 2.
      step([&] { sample = GetSampleVector(row, columns); });
      // 3. NB: the factor goes nowhere outside convex mode.
      step([&] {
        if (const auto refused = std::exchange(refusal, std::nullopt)) throw Failure(*refused);
        SetNetworkInputs(sample, 1.0);
      });
      // 4.
      sample = {};
      // 5.
      step([&] { network().Propagate(); });
      // 6.
      step([&] { winner = network().GetWinner(); });
      // 7.
      step([&] { OutputData_.at(row) = wrapping32::add(winner, 1); });
    }
  });
}

}  // namespace mervane
