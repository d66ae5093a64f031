#include "hosts/charts/call.h"

#include <utility>

#include "hosts/objects/arguments.h"
#include "mervane/convert.h"
#include "mervane/runtime_errors.h"

namespace mervane::charts {
namespace {

class Enumerator : public sheet::Object {
 public:
  explicit Enumerator(std::vector<sheet::ObjectRef> elements) : elements_(std::move(elements)) {}

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant>) override {
    if (member != sheet::member::Next || access == sheet::Access::put) refuseMember();
    if (next_ == elements_.size()) return {};
    return elements_[next_++];
  }

 private:
  std::vector<sheet::ObjectRef> elements_;
  std::size_t next_ = 0;
};

}  // namespace

void refuseMember() {
  raise(runtime::memberNotSupported);
}

bool Call::has(std::size_t index) const noexcept {
  return hosts::isGiven(arguments_, index);
}

const Variant& Call::at(std::size_t index) const {
  return hosts::given(arguments_, index);
}

std::int32_t Call::integer(std::size_t index) const {
  return hosts::wholeArgument(arguments_, index);
}

const Variant& Call::value() const {
  if (arguments_.empty()) raise(runtime::argumentNotOptional);
  return at(arguments_.size() - 1);
}

Variant Call::property(bool& slot) const {
  if (!isPut()) return slot;
  slot = assigned<bool>();
  return {};
}

Variant Call::property(std::int32_t& slot) const {
  if (!isPut()) return slot;
  slot = assigned<std::int32_t>();
  return {};
}

Variant Call::readOnly(Variant result) const {
  if (isPut()) refuse("This property can only be read.");
  return result;
}

template <>
bool Call::assigned<bool>() const {
  return toBoolean(value(), englishLocale());
}

template <>
std::int32_t Call::assigned<std::int32_t>() const {
  return toInt32(value(), englishLocale());
}

template <>
double Call::assigned<double>() const {
  return toDouble(value(), englishLocale());
}

template <>
std::string Call::assigned<std::string>() const {
  return toText(value(), englishLocale());
}

sheet::ObjectRef enumeratorOf(std::vector<sheet::ObjectRef> elements) {
  return std::make_shared<Enumerator>(std::move(elements));
}

}  // namespace mervane::charts
