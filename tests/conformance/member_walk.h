#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "spreadsheet/application.h"

namespace mervane::tests {

/// What a host was asked, by the rows of the table of members.
struct MemberRecord {
  std::set<std::size_t> answered;  ///< positions in the table
  std::set<std::size_t> refused;
  /// Calls that the table does not have, and answers of another kind than it promises, in words.
  std::vector<std::string> deviations;
};

/// Follows every call on a host through the table of members: each object is known by its class, and each of its
/// answers must be of the kind that the table promises.
class MemberWalk {
 public:
  MemberWalk(const sheet::ObjectRef& application, std::shared_ptr<MemberRecord> record);

  [[nodiscard]] const sheet::ObjectRef& object() const noexcept { return object_; }
  [[nodiscard]] sheet::Application application() const { return sheet::Application(object_); }
  /// The host's own object behind one that came through the walk, for a look that the table does not provide for.
  [[nodiscard]] static sheet::ObjectRef hostsOwn(const sheet::Proxy& object);

 private:
  class Followed;
  sheet::ObjectRef object_;
};

}  // namespace mervane::tests
