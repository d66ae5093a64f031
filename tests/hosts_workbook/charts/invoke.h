#pragma once

#include <initializer_list>
#include <span>
#include <vector>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "spreadsheet/proxy.h"

/// Members by their name, for those that the typed classes do not have.
namespace mervane::tests {

inline Variant invoke(const sheet::Proxy& object, sheet::Access access, sheet::member::Id member,
                      std::initializer_list<Variant> arguments) {
  return object.object()->invoke(access, member, std::vector<Variant>(arguments));
}

inline Variant get(const sheet::Proxy& object, sheet::member::Id member,
                   std::initializer_list<Variant> arguments = {}) {
  return invoke(object, sheet::Access::get, member, arguments);
}

inline void put(const sheet::Proxy& object, sheet::member::Id member, const Variant& value) {
  invoke(object, sheet::Access::put, member, {value});
}

/// The number of the failure that the statement raises; 0 where it raises none.
template <class Statement>
std::int32_t numberRaisedBy(Statement&& statement) {
  try {
    statement();
  } catch (const Failure& failure) {
    return failure.number();
  }
  return 0;
}

inline constexpr std::int32_t refused = runtime::applicationDefined.number;
inline constexpr std::int32_t unknownMember = runtime::memberNotSupported.number;

}  // namespace mervane::tests
