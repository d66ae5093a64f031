#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "mervane/convert.h"
#include "mervane/runtime_errors.h"
#include "spreadsheet/object.h"
#include "tests/support/named.h"

namespace mervane::tests {

/// An object of the in-memory host put together from parts, plain properties and handlers; anything else of it is
/// not supported.
class FakeObject : public sheet::Object, public Named {
 public:
  using Handler = std::function<Variant(sheet::Access, std::span<const Variant>)>;

  FakeObject() = default;
  /// @param properties those that can be read and written.
  explicit FakeObject(std::initializer_list<sheet::member::Id> properties) {
    for (const sheet::member::Id id : properties) values[id] = Variant();
  }

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
    if (const auto handler = handlers.find(member); handler != handlers.end()) {
      return handler->second(access, arguments);
    }
    if (const auto part = parts.find(member); part != parts.end()) return Variant(sheet::ObjectRef(part->second));
    const auto value = values.find(member);
    if (value == values.end() || access == sheet::Access::call) raise(runtime::memberNotSupported);
    if (access == sheet::Access::put) value->second = arguments.back();
    return value->second;
  }
  [[nodiscard]] std::string name() const override { return label; }

  /// A property by the way to it, such as {ChartArea, Interior, ColorIndex}.
  [[nodiscard]] Variant at(std::initializer_list<sheet::member::Id> way) const {
    const FakeObject* object = this;
    for (const sheet::member::Id id : way) {
      if (const auto part = object->parts.find(id); part != object->parts.end()) {
        object = part->second.get();
      } else {
        return object->values.at(id);
      }
    }
    raise(runtime::memberNotSupported);
  }

  std::string label;
  std::map<sheet::member::Id, std::shared_ptr<FakeObject>> parts;
  std::map<sheet::member::Id, Variant> values;
  std::map<sheet::member::Id, Handler> handlers;
};

/// Goes through the objects that a collection held when the enumeration began.
class FakeEnumerator final : public sheet::Object {
 public:
  explicit FakeEnumerator(std::vector<sheet::ObjectRef> elements) : elements_(std::move(elements)) {}
  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant>) override {
    if (access != sheet::Access::call || member != sheet::member::Next) raise(runtime::memberNotSupported);
    return next_ < elements_.size() ? Variant(elements_[next_++]) : Variant();
  }

 private:
  std::vector<sheet::ObjectRef> elements_;
  std::size_t next_ = 0;
};

[[nodiscard]] inline std::int32_t number(const Variant& value) {
  return toInt32(value, englishLocale());
}
[[nodiscard]] inline Variant asValue(sheet::ObjectRef object) {
  return Variant(std::move(object));
}

}  // namespace mervane::tests
