#pragma once

#include <memory>
#include <span>

#include "mervane/variant.h"
#include "spreadsheet/member.h"

namespace mervane::sheet {

/// How a member is used.
enum class Access {
  get,   ///< read a property, with index arguments where it has some
  put,   ///< assign a property; the value is the last argument, after the index arguments
  call,  ///< call a method; a method without a result answers the empty value
};

/// One object of a spreadsheet application. A host implements this one virtual call and nothing else.
///
/// Arguments left out are passed as Missing, or not at all where they stand at the end. Objects come back inside a
/// Variant. A collection answers a get of NewEnum with an enumerator object; that one answers a call of Next with the
/// next element, and with the empty value after the last. What a host cannot do raises a Failure; it never
/// pretends. A member that the object does not have raises memberNotSupported.
class Object {
 public:
  virtual ~Object() = default;
  virtual Variant invoke(Access access, member::Id member, std::span<const Variant> arguments) = 0;
};

using ObjectRef = std::shared_ptr<Object>;

}  // namespace mervane::sheet
