#pragma once

#include <optional>
#include <string>

#include "cli/cluster_run.h"
#include "cli/problem.h"
#include "cli/workbook_options.h"
#include "guard/plan.h"
#include "mervane/locale.h"

namespace mervane::platform {
class HeadlessOptionWindow;
}

namespace mervane::cli {

class Talk;

/// What the flags put into the items of the options dialog.
struct DialogEntries {
  std::string inputs;   ///< empty: what the item holds
  std::string outputs;  ///< the same
  NetworkOptions network;
  OutputSwitches output;
};

/// What the dialog holds.
struct HeldEntries {
  std::string inputs;
  std::string outputs;
  guard::Plan plan;  ///< without its places
};
[[nodiscard]] HeldEntries heldBy(const platform::HeadlessOptionWindow& window, const Locale& locale);

/// Does with the shown window what a person would: types, chooses and clicks. The start weights are left out, because
/// the dialog's item for them has no effect on a run.
/// @return the Problem with the first entry that the dialog refuses, if any
[[nodiscard]] std::optional<Problem> enter(const DialogEntries& entries, platform::HeadlessOptionWindow& window,
                                           const Locale& locale, Talk& talk);

}  // namespace mervane::cli
