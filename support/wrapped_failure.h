#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "mervane/failure.h"

namespace mervane {

/// A failure that has taken the place of another one, whose text it keeps for hosts that tell it beside the report.
/// Whoever handles failures sees the new one alone.
class WrappedFailure final : public Failure {
 public:
  WrappedFailure(std::int32_t number, std::string description, std::string source, const Failure& inner)
      : Failure(number, std::move(description), std::move(source)), cause_(causeOf(inner)) {}

  /// The text of whoever found the fault: the innermost one where failures were wrapped again and again.
  [[nodiscard]] static const std::string& causeOf(const Failure& failure) {
    const auto* wrapped = dynamic_cast<const WrappedFailure*>(&failure);
    return wrapped != nullptr ? wrapped->cause_ : failure.description();
  }

 private:
  std::string cause_;
};

}  // namespace mervane
