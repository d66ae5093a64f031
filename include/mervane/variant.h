#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "mervane/array.h"

namespace mervane {

namespace sheet {
class Object;
}
class AnyArray;

/// A point in time as automation counts it: days since 1899-12-30, the fraction being the time of day.
struct Date {
  double serial = 0.0;
  friend bool operator==(const Date&, const Date&) = default;
};

/// A worksheet error as a value, by its code: 2000 #NULL!, 2007 #DIV/0!, 2015 #VALUE!, 2023 #REF!,
/// 2029 #NAME?, 2036 #NUM!, 2042 #N/A.
struct ErrorValue {
  std::int32_t code = 0;
  friend bool operator==(const ErrorValue&, const ErrorValue&) = default;
};

/// "No valid data", which an application answers for a property that is mixed over a range.
struct Null {
  friend bool operator==(const Null&, const Null&) = default;
};

/// An optional argument that the caller left out.
struct Missing {
  friend bool operator==(const Missing&, const Missing&) = default;
};

/// A value that carries its type, as automation passes it. Text is UTF-8.
///
/// The type is closed: it is built from its own alternatives only, it has no arithmetic, and it converts to
/// nothing by itself. Conversions, comparison and arithmetic are the free functions of `convert.h`. Arrays
/// and objects are held by shared reference; an array is never changed through a Variant, so copies are cheap.
class Variant {
 public:
  enum class Kind {
    empty,
    null,
    boolean,
    int16,
    int32,
    single,
    real,
    date,
    text,
    error,
    array,
    object,
    missing,
  };
  using Storage = std::variant<std::monostate, Null, bool, std::int16_t, std::int32_t, float, double, Date, std::string,
                               ErrorValue, std::shared_ptr<const AnyArray>, std::shared_ptr<sheet::Object>, Missing>;

  Variant() = default;
  Variant(Null value) : storage_(value) {}                           // NOLINT(google-explicit-constructor)
  Variant(bool value) : storage_(value) {}                           // NOLINT(google-explicit-constructor)
  Variant(std::int16_t value) : storage_(value) {}                   // NOLINT(google-explicit-constructor)
  Variant(std::int32_t value) : storage_(value) {}                   // NOLINT(google-explicit-constructor)
  Variant(float value) : storage_(value) {}                          // NOLINT(google-explicit-constructor)
  Variant(double value) : storage_(value) {}                         // NOLINT(google-explicit-constructor)
  Variant(Date value) : storage_(value) {}                           // NOLINT(google-explicit-constructor)
  Variant(std::string value) : storage_(std::move(value)) {}         // NOLINT(google-explicit-constructor)
  Variant(std::string_view value) : storage_(std::string(value)) {}  // NOLINT(google-explicit-constructor)
  Variant(const char* value) : storage_(std::string(value)) {}       // NOLINT(google-explicit-constructor)
  Variant(ErrorValue value) : storage_(value) {}                     // NOLINT(google-explicit-constructor)
  Variant(Missing value) : storage_(value) {}                        // NOLINT(google-explicit-constructor)
  // NOLINTNEXTLINE(google-explicit-constructor)
  Variant(std::shared_ptr<sheet::Object> object) : storage_(std::move(object)) {}
  template <class T>
  Variant(Array<T> array);  // NOLINT(google-explicit-constructor)
  explicit Variant(std::shared_ptr<const AnyArray> array) : storage_(std::move(array)) {}
  Variant(const void*) = delete;

  [[nodiscard]] Kind kind() const noexcept { return static_cast<Kind>(storage_.index()); }
  [[nodiscard]] bool isEmpty() const noexcept { return kind() == Kind::empty; }
  [[nodiscard]] bool isArray() const noexcept { return kind() == Kind::array; }
  [[nodiscard]] bool isObject() const noexcept { return kind() == Kind::object; }
  [[nodiscard]] bool isText() const noexcept { return kind() == Kind::text; }

  /// The alternative itself, or null where the kind is another one.
  template <class T>
  [[nodiscard]] const T* getIf() const noexcept {
    return std::get_if<T>(&storage_);
  }
  /// The array; raises typeMismatch where the value is none.
  [[nodiscard]] const AnyArray& array() const;
  /// The object, which may be empty; raises typeMismatch where the value is none.
  [[nodiscard]] const std::shared_ptr<sheet::Object>& object() const;
  [[nodiscard]] const Storage& storage() const noexcept { return storage_; }

  /// Same kind and same content; arrays and objects are equal when they are the same one.
  /// This is identity for tests and containers; the automation comparison is in `convert.h`.
  friend bool operator==(const Variant& a, const Variant& b) { return a.storage_ == b.storage_; }

 private:
  Storage storage_;
};

/// An array of one of the element types that automation clients pass in practice.
class AnyArray {
 public:
  using Storage = std::variant<Array<double>, Array<float>, Array<std::int32_t>, Array<std::int16_t>,
                               Array<std::uint8_t>, Array<std::string>, Array<Variant>>;

  template <class T>
  explicit AnyArray(Array<T> array) : storage_(std::move(array)) {}

  [[nodiscard]] const Storage& storage() const noexcept { return storage_; }
  template <class T>
  [[nodiscard]] const Array<T>* getIf() const noexcept {
    return std::get_if<Array<T>>(&storage_);
  }

  [[nodiscard]] std::int32_t dimensions() const;
  /// @param dimension from 1; raises subscriptOutOfRange otherwise.
  [[nodiscard]] std::int32_t lowerBound(std::int32_t dimension) const;
  [[nodiscard]] std::int32_t upperBound(std::int32_t dimension) const;
  [[nodiscard]] const std::vector<Bounds>& bounds() const;
  /// One element as a Variant of its own type; raises subscriptOutOfRange.
  [[nodiscard]] Variant at(std::int32_t index) const;
  [[nodiscard]] Variant at(std::int32_t row, std::int32_t column) const;

 private:
  Storage storage_;
};

template <class T>
Variant::Variant(Array<T> array) : storage_(std::make_shared<const AnyArray>(std::move(array))) {}

}  // namespace mervane
