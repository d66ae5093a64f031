#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <utility>

#include "mervane/failure.h"

namespace mervane::tests {

/// The failure that the statement raises; none where it raises none.
template <class Statement>
[[nodiscard]] std::optional<Failure> failureOf(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
  } catch (const Failure& failure) {
    return failure;
  }
  return std::nullopt;
}

/// An optional failure with this number, description and source.
MATCHER_P3(IsFailure, number, description, source, "") {
  if (!arg) {
    *result_listener << "nothing was raised";
    return false;
  }
  *result_listener << "number " << arg->number() << ", \"" << arg->description() << "\", source \"" << arg->source()
                   << "\"";
  return arg->number() == number && arg->description() == description && arg->source() == source;
}

}  // namespace mervane::tests
