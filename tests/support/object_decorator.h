#pragma once

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "spreadsheet/object.h"
#include "tests/support/named.h"

namespace mervane::tests {

/// An object of a host in another object's place. What comes back from the host is decorated in the same way, and
/// what goes in as an argument is stripped first, so that a host never meets a decorator.
class ObjectDecorator : public sheet::Object, public Named {
 public:
  explicit ObjectDecorator(sheet::ObjectRef inner) : inner_(std::move(inner)) {}
  [[nodiscard]] const sheet::ObjectRef& inner() const noexcept { return inner_; }
  /// The name of the object inside.
  [[nodiscard]] std::string name() const override {
    const auto* named = dynamic_cast<const Named*>(inner_.get());
    return named == nullptr ? std::string() : named->name();
  }

 protected:
  Variant forward(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) {
    std::vector<Variant> stripped;
    for (const Variant& argument : arguments) stripped.push_back(strip(argument));
    return inner_->invoke(access, member, stripped);
  }
  static Variant strip(const Variant& value) {
    if (!value.isObject()) return value;
    const auto decorator = std::dynamic_pointer_cast<ObjectDecorator>(value.object());
    return decorator ? Variant(decorator->inner()) : value;
  }

 private:
  sheet::ObjectRef inner_;
};

}  // namespace mervane::tests
