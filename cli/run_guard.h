#pragma once

#include <string>
#include <vector>

#include "cli/cluster_options.h"
#include "cli/dialog_entries.h"
#include "guard/harms.h"
#include "guard/plan.h"
#include "hosts/book/open_book.h"

namespace mervane::cli {

class Talk;

/// What stands before a run on a workbook: missing references are proposed, the sheet of the inputs becomes the active
/// one, and what the run would remove, overwrite or fail at is refused or asked about.
class RunGuard {
 public:
  RunGuard(const ClusterOptions& options, hosts::OpenBook& book, Talk& talk)
      : options_(options), book_(book), talk_(talk) {}

  /// @param held what the dialog holds when all entries are made
  /// @return what is to be entered beyond that
  /// Raises a Problem: usage where a reference is missing and not proposed, the proposal was declined or the rows make
  /// no such number of clusters, dataRefused for harms that are forbidden or that nobody consented to. References and
  /// cells that the component itself will refuse are left to it.
  DialogEntries look(const HeldEntries& held);

  /// What the run goes on to remove or overwrite all the same.
  [[nodiscard]] const std::vector<guard::Harm>& harms() const { return harms_; }

 private:
  [[nodiscard]] std::string proposedInputsText() const;
  /// Completes the plan by a proposal, and says in flags what that is.
  std::string propose(guard::Plan& plan) const;
  void agree(const std::string& proposal, bool inputs, bool outputs) const;
  static void requireFittingClusterCount(const guard::Plan& plan);
  void consent(const guard::Plan& plan);
  [[noreturn]] void refuse(const guard::Plan& plan) const;

  const ClusterOptions& options_;
  hosts::OpenBook& book_;
  Talk& talk_;
  std::vector<guard::Harm> harms_;
};

}  // namespace mervane::cli
