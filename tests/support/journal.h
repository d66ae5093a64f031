#pragma once

#include <string>
#include <utility>
#include <vector>

namespace mervane::tests {

/// What the doubles of one machine were asked, in order: "textFiles.append Error Log.txt", "messageBox.show".
class Journal {
 public:
  void add(std::string entry) { entries_.push_back(std::move(entry)); }
  [[nodiscard]] const std::vector<std::string>& entries() const noexcept { return entries_; }
  void clear() noexcept { entries_.clear(); }

 private:
  std::vector<std::string> entries_;
};

}  // namespace mervane::tests
