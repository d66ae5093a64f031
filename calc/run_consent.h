#pragma once

#include <functional>
#include <optional>
#include <string>

#include "calc/run_guard.h"

namespace mervane::addin {

/// Who answers for a run.
struct Answering {
  /// Nobody is there to be asked.
  bool silent = false;
  /// A silent run may remove and overwrite what stands on the sheets.
  bool overwrites = false;
  /// Says what is refused.
  std::function<void(const std::string& refusal)> tell;
  /// Asks whether to go on all the same; not asked of a silent run.
  std::function<bool(const std::string& question)> ask;
};

/// Whether a run may be.
/// @param objections nothing where the document could not be looked at; what a run would harm is unknown then
[[nodiscard]] bool isAgreed(const std::optional<Objections>& objections, const Answering& answering);

}  // namespace mervane::addin
