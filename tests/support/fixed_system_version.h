#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/system_version.h"

namespace mervane::tests {

/// Answers the same whenever it is asked; at first it is of the NT family and takes either record size.
class FixedSystemVersion : public platform::SystemVersion {
 public:
  std::optional<std::int32_t> platformId(std::int32_t recordSize) override {
    asked.push_back(recordSize);
    return recordSize == extendedRecord ? extended : basic;
  }

  std::optional<std::int32_t> extended = ntFamily;  ///< the answer for the extended record
  std::optional<std::int32_t> basic = ntFamily;     ///< the answer for any other size
  std::vector<std::int32_t> asked;                  ///< record sizes, in order
};

}  // namespace mervane::tests
