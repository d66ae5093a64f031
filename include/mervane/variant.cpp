#include "mervane/variant.h"

namespace mervane {

const AnyArray& Variant::array() const {
  const auto* held = getIf<std::shared_ptr<const AnyArray>>();
  if (held == nullptr || *held == nullptr) raise(runtime::typeMismatch);
  return **held;
}

const std::shared_ptr<sheet::Object>& Variant::object() const {
  const auto* held = getIf<std::shared_ptr<sheet::Object>>();
  if (held == nullptr) raise(runtime::typeMismatch);
  return *held;
}

std::int32_t AnyArray::dimensions() const {
  return std::visit([](const auto& array) { return array.dimensions(); }, storage_);
}

std::int32_t AnyArray::lowerBound(std::int32_t dimension) const {
  return std::visit([&](const auto& array) { return array.lowerBound(dimension); }, storage_);
}

std::int32_t AnyArray::upperBound(std::int32_t dimension) const {
  return std::visit([&](const auto& array) { return array.upperBound(dimension); }, storage_);
}

const std::vector<Bounds>& AnyArray::bounds() const {
  return std::visit([](const auto& array) -> const std::vector<Bounds>& { return array.bounds(); }, storage_);
}

namespace {
template <class T>
Variant asVariant(const T& element) {
  return Variant(element);
}
Variant asVariant(std::uint8_t element) {
  return static_cast<std::int16_t>(element);
}
}  // namespace

Variant AnyArray::at(std::int32_t index) const {
  return std::visit([&](const auto& array) { return asVariant(array.at(index)); }, storage_);
}

Variant AnyArray::at(std::int32_t row, std::int32_t column) const {
  return std::visit([&](const auto& array) { return asVariant(array.at(row, column)); }, storage_);
}

}  // namespace mervane
