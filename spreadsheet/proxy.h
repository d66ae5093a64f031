#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

#include "mervane/convert.h"
#include "mervane/locale.h"
#include "mervane/runtime_errors.h"
#include "spreadsheet/object.h"

namespace mervane::sheet {

/// A counted, checked reference to one object of the host; the base of the typed classes of this folder.
///
/// An empty reference raises objectNotSet at every use. Copies refer to the same object. A call is one
/// Object::invoke; the chain `range.Rows().Count()` is two.
class Proxy {
 public:
  Proxy() = default;
  explicit Proxy(ObjectRef object) : object_(std::move(object)) {}

  [[nodiscard]] explicit operator bool() const noexcept { return object_ != nullptr; }
  [[nodiscard]] const ObjectRef& object() const noexcept { return object_; }
  /// The reference as an argument or as a value; an empty one stays an empty object.
  [[nodiscard]] Variant asVariant() const { return Variant(object_); }

 protected:
  /// Reads a property as T: Variant, double, std::int32_t, bool, std::string or a typed class. A typed class
  /// comes back empty where the host answers no object.
  template <class T, class... Arguments>
  [[nodiscard]] T get(member::Id member, const Arguments&... arguments) const {
    return as<T>(invoke(Access::get, member, arguments...));
  }
  /// The value stands last, after the index arguments.
  template <class... Arguments>
  void put(member::Id member, const Arguments&... arguments) const {
    static_cast<void>(invoke(Access::put, member, arguments...));
  }
  template <class T, class... Arguments>
  T call(member::Id member, const Arguments&... arguments) const {
    if constexpr (std::is_void_v<T>) {
      static_cast<void>(invoke(Access::call, member, arguments...));
    } else {
      return as<T>(invoke(Access::call, member, arguments...));
    }
  }

 private:
  template <class... Arguments>
  Variant invoke(Access access, member::Id member, const Arguments&... arguments) const {
    if (object_ == nullptr) raise(runtime::objectNotSet);
    if constexpr (sizeof...(Arguments) == 0) {
      return object_->invoke(access, member, {});
    } else {
      const std::array<Variant, sizeof...(Arguments)> values{asArgument(arguments)...};
      return object_->invoke(access, member, values);
    }
  }

  static const Variant& asArgument(const Variant& value) { return value; }
  static Variant asArgument(const Proxy& reference) { return reference.asVariant(); }
  template <class T>
  requires(!std::is_base_of_v<Proxy, T> && !std::is_same_v<T, Variant>) static Variant asArgument(const T& value) {
    return Variant(value);
  }

  template <class T>
  static T as(Variant result) {
    if constexpr (std::is_same_v<T, Variant>) {
      return result;
    } else if constexpr (std::is_base_of_v<Proxy, T>) {
      return result.isEmpty() ? T() : T(result.object());
    } else {
      if (const T* exact = result.getIf<T>()) return *exact;
      return converted(result, static_cast<T*>(nullptr));
    }
  }

  // A property's value is never written in the user's own notation.
  static double converted(const Variant& value, const double*) { return toDouble(value, englishLocale()); }
  static std::int32_t converted(const Variant& value, const std::int32_t*) { return toInt32(value, englishLocale()); }
  static bool converted(const Variant& value, const bool*) { return toBoolean(value, englishLocale()); }
  static std::string converted(const Variant& value, const std::string*) { return toText(value, englishLocale()); }

  ObjectRef object_;
};

/// Goes through a collection element by element; an element that the body deletes is no hindrance.
template <class Element>
class Enumerator : public Proxy {
 public:
  /// An enumerator without a collection is at its end.
  Enumerator() = default;
  explicit Enumerator(const Proxy& collection) : Proxy(enumeratorOf(collection)) {}

  /// The next element; an empty reference after the last one.
  [[nodiscard]] Element next() const { return object() == nullptr ? Element() : call<Element>(member::Next); }

 private:
  struct Source : Proxy {
    explicit Source(const Proxy& collection) : Proxy(collection) {}
    [[nodiscard]] ObjectRef enumerator() const { return get<Proxy>(member::NewEnum).object(); }
  };
  static ObjectRef enumeratorOf(const Proxy& collection) { return Source(collection).enumerator(); }
};

/// Calls the body with every element of the collection, as Element. A body that returns a boolean ends the
/// loop with false.
template <class Element, class Body>
void forEach(const Proxy& collection, Body&& body) {
  const Enumerator<Element> elements(collection);
  while (const Element element = elements.next()) {
    if constexpr (std::is_same_v<decltype(body(element)), bool>) {
      if (!body(element)) return;
    } else {
      body(element);
    }
  }
}

}  // namespace mervane::sheet
