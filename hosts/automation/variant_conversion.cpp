#include "hosts/automation/variant_conversion.h"

#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>

#include "hosts/automation/automation_object.h"
#include "hosts/automation/safe_array.h"
#include "platform/com/failure_conversion.h"
#include "platform/com/text.h"

namespace mervane::automation {
namespace {

// Errors of worksheets travel as codes of the control facility.
constexpr std::uint32_t controlFacility = 0x800A0000U;

Variant fromErrorCode(SCODE code) {
  if (code == DISP_E_PARAMNOTFOUND) return Missing{};
  const auto bits = static_cast<std::uint32_t>(code);
  if ((bits & 0xFFFF0000U) == controlFacility) return ErrorValue{static_cast<std::int32_t>(bits & 0xFFFFU)};
  return ErrorValue{static_cast<std::int32_t>(code)};
}

SCODE toErrorCode(const ErrorValue& value) {
  if (value.code < 0) return value.code;
  return static_cast<SCODE>(controlFacility | (static_cast<std::uint32_t>(value.code) & 0xFFFFU));
}

Variant fromWideInteger(const VARIANT& value) {
  OwnedVariant converted;
  const HRESULT result = VariantChangeTypeEx(converted.get(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, VT_R8);
  if (FAILED(result)) throw com::failureOf(result, nullptr, IID_NULL);
  const double number = converted.value().dblVal;
  const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&
                    number <= std::numeric_limits<std::int32_t>::max() && (value.vt & VT_TYPEMASK) != VT_CY &&
                    (value.vt & VT_TYPEMASK) != VT_DECIMAL;
  if (fits) return static_cast<std::int32_t>(number);
  return number;
}

Variant fromObject(IUnknown* object) {
  if (object == nullptr) return Variant(std::shared_ptr<sheet::Object>());
  Microsoft::WRL::ComPtr<IDispatch> dispatch;
  const HRESULT result = object->QueryInterface(IID_PPV_ARGS(&dispatch));
  if (FAILED(result)) raise(runtime::typeMismatch);
  return Variant(std::shared_ptr<sheet::Object>(std::make_shared<AutomationObject>(dispatch.Get())));
}

/// Visits all positions of a grid; `visit` gets the position in row-major and in column-major order.
template <class Visit>
void forEachPosition(const std::vector<Bounds>& bounds, Visit&& visit) {
  std::vector<std::size_t> extent;
  std::size_t count = bounds.empty() ? 0 : 1;
  for (const Bounds& one : bounds) {
    extent.push_back(static_cast<std::size_t>(one.count()));
    count *= extent.back();
  }
  std::vector<std::size_t> index(extent.size(), 0);
  for (std::size_t rowMajor = 0; rowMajor < count; ++rowMajor) {
    std::size_t columnMajor = 0;
    for (std::size_t d = extent.size(); d-- > 0;) columnMajor = columnMajor * extent[d] + index[d];
    visit(rowMajor, columnMajor);
    for (std::size_t d = extent.size(); d-- > 0;) {
      if (++index[d] < extent[d]) break;
      index[d] = 0;
    }
  }
}

/// The arrays that the value at hand lies in. One that lies in itself, or in very many, has no end worth waiting for.
struct Nesting {
  const SAFEARRAY* array;
  const Nesting* outer;
};
constexpr int deepestNesting = 16;
constexpr int longestChain = 8;

void requireEnd(const Nesting* nesting) {
  int depth = 0;
  for (const Nesting* outer = nesting->outer; outer != nullptr; outer = outer->outer) {
    if (outer->array == nesting->array || ++depth == deepestNesting) raise(runtime::typeMismatch);
  }
}

Variant converted(const VARIANT& value, const Nesting* nesting);

template <class Source, class Element, class Convert>
Variant copied(const SafeArrayView& array, Convert&& convert) {
  Array<Element> result(array.bounds());
  const auto* source = array.as<Source>();
  forEachPosition(array.bounds(), [&](std::size_t rowMajor, std::size_t columnMajor) {
    result.elements()[rowMajor] = convert(source[columnMajor]);
  });
  return Variant(std::move(result));
}

template <class T>
Variant copiedAsIs(const SafeArrayView& array) {
  return copied<T, T>(array, [](T element) { return element; });
}

/// Elements of a type without a counterpart go through the platform's own conversion, one by one.
template <class Source>
Variant copiedThroughVariant(const SafeArrayView& array, VARTYPE type) {
  return copied<Source, Variant>(array, [type](const Source& element) {
    VARIANT value{};
    value.vt = type;
    static_assert(sizeof(Source) <= sizeof(value.llVal));
    std::memcpy(&value.llVal, &element, sizeof(Source));
    return fromAutomation(value);
  });
}

template <class T>
struct ElementType;
template <>
struct ElementType<double> : std::integral_constant<VARTYPE, VT_R8> {};
template <>
struct ElementType<float> : std::integral_constant<VARTYPE, VT_R4> {};
template <>
struct ElementType<std::int32_t> : std::integral_constant<VARTYPE, VT_I4> {};
template <>
struct ElementType<std::int16_t> : std::integral_constant<VARTYPE, VT_I2> {};
template <>
struct ElementType<std::uint8_t> : std::integral_constant<VARTYPE, VT_UI1> {};
template <>
struct ElementType<std::string> : std::integral_constant<VARTYPE, VT_BSTR> {};
template <>
struct ElementType<Variant> : std::integral_constant<VARTYPE, VT_VARIANT> {};

struct DestroyArray {
  void operator()(SAFEARRAY* array) const noexcept { SafeArrayDestroy(array); }
};
using OwnedArray = std::unique_ptr<SAFEARRAY, DestroyArray>;

OwnedArray newSafeArray(VARTYPE type, const std::vector<Bounds>& bounds) {
  std::vector<SAFEARRAYBOUND> described;
  for (const Bounds& one : bounds) described.push_back({static_cast<ULONG>(one.count()), one.lower});
  OwnedArray array(SafeArrayCreate(type, static_cast<UINT>(described.size()), described.data()));
  if (array == nullptr) raise(runtime::outOfMemory);
  return array;
}

template <class T>
SAFEARRAY* newSafeArray(const Array<T>& source) {
  if (source.dimensions() == 0) return nullptr;
  OwnedArray array = newSafeArray(ElementType<T>::value, source.bounds());
  // The array is new and stays where it is: nobody else could move it, so it needs no lock.
  forEachPosition(source.bounds(), [&](std::size_t rowMajor, std::size_t columnMajor) {
    if constexpr (std::is_same_v<T, std::string>) {
      static_cast<BSTR*>(array->pvData)[columnMajor] = com::newBstr(source.elements()[rowMajor]);
    } else if constexpr (std::is_same_v<T, Variant>) {
      toAutomation(source.elements()[rowMajor], static_cast<VARIANT*>(array->pvData)[columnMajor]);
    } else {
      static_cast<T*>(array->pvData)[columnMajor] = source.elements()[rowMajor];
    }
  });
  return array.release();
}

/// Writes one alternative of a Variant into a cleared record.
struct Writer {
  VARIANT& result;

  void operator()(std::monostate) const { result.vt = VT_EMPTY; }
  void operator()(Null) const { result.vt = VT_NULL; }
  void operator()(bool value) const {
    result.vt = VT_BOOL;
    result.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  }
  void operator()(std::int16_t value) const {
    result.vt = VT_I2;
    result.iVal = value;
  }
  void operator()(std::int32_t value) const {
    result.vt = VT_I4;
    result.lVal = value;
  }
  void operator()(float value) const {
    result.vt = VT_R4;
    result.fltVal = value;
  }
  void operator()(double value) const {
    result.vt = VT_R8;
    result.dblVal = value;
  }
  void operator()(Date value) const {
    result.vt = VT_DATE;
    result.date = value.serial;
  }
  void operator()(const std::string& value) const {
    result.bstrVal = com::newBstr(value);
    result.vt = VT_BSTR;
  }
  void operator()(ErrorValue value) const {
    result.vt = VT_ERROR;
    result.scode = toErrorCode(value);
  }
  void operator()(Missing) const {
    result.vt = VT_ERROR;
    result.scode = DISP_E_PARAMNOTFOUND;
  }
  void operator()(const std::shared_ptr<const AnyArray>& value) const {
    SAFEARRAY* array = toSafeArray(*value);
    std::visit([&]<class T>(const Array<T>&) { result.vt = static_cast<VARTYPE>(VT_ARRAY | ElementType<T>::value); },
               value->storage());
    result.parray = array;
  }
  void operator()(const std::shared_ptr<sheet::Object>& value) const {
    IDispatch* dispatch = nullptr;
    if (value != nullptr) {
      const auto* foreign = dynamic_cast<const AutomationObject*>(value.get());
      if (foreign == nullptr) raise(runtime::typeMismatch);
      dispatch = foreign->dispatch();
      if (dispatch != nullptr) dispatch->AddRef();
    }
    result.vt = VT_DISPATCH;
    result.pdispVal = dispatch;
  }
};

Variant convertedArray(SAFEARRAY* array, VARTYPE elementType, const Nesting* outer) {
  if (array == nullptr) return Variant(Array<Variant>());
  const Nesting nesting{array, outer};
  requireEnd(&nesting);
  const SafeArrayView view(array, elementType);
  switch (view.type()) {
    case VT_R8:
      return copiedAsIs<double>(view);
    case VT_R4:
      return copiedAsIs<float>(view);
    case VT_I4:
    case VT_INT:
      return copied<LONG, std::int32_t>(view, [](LONG element) { return static_cast<std::int32_t>(element); });
    case VT_I2:
      return copiedAsIs<std::int16_t>(view);
    case VT_UI1:
      return copiedAsIs<std::uint8_t>(view);
    case VT_BSTR:
      return copied<BSTR, std::string>(view, [](BSTR element) { return com::fromBstr(element); });
    case VT_VARIANT:
      return copied<VARIANT, Variant>(view, [&](const VARIANT& element) { return converted(element, &nesting); });
    case VT_BOOL:
      return copied<VARIANT_BOOL, Variant>(view,
                                           [](VARIANT_BOOL element) { return Variant(element != VARIANT_FALSE); });
    case VT_DATE:
      return copied<DATE, Variant>(view, [](DATE element) { return Variant(Date{element}); });
    case VT_ERROR:
      return copied<SCODE, Variant>(view, [](SCODE element) { return fromErrorCode(element); });
    case VT_CY:
      return copiedThroughVariant<CY>(view, VT_CY);
    case VT_I1:
      return copiedThroughVariant<CHAR>(view, VT_I1);
    case VT_UI2:
      return copiedThroughVariant<USHORT>(view, VT_UI2);
    case VT_UI4:
    case VT_UINT:
      return copiedThroughVariant<ULONG>(view, VT_UI4);
    case VT_I8:
      return copiedThroughVariant<LONGLONG>(view, VT_I8);
    case VT_UI8:
      return copiedThroughVariant<ULONGLONG>(view, VT_UI8);
    case VT_DECIMAL:
      return copied<DECIMAL, Variant>(view, [](const DECIMAL& element) {
        double number = 0.0;
        if (FAILED(VarR8FromDec(const_cast<DECIMAL*>(&element), &number))) raise(runtime::overflow);
        return Variant(number);
      });
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return copied<IUnknown*, Variant>(view, [](IUnknown* element) { return fromObject(element); });
    default:
      raise(runtime::typeMismatch);
  }
}

/// A value that is no reference.
Variant convertedPlain(const VARIANT& value, const Nesting* nesting) {
  if ((value.vt & VT_ARRAY) != 0) {
    return convertedArray(value.parray, static_cast<VARTYPE>(value.vt & VT_TYPEMASK), nesting);
  }
  switch (value.vt) {
    case VT_EMPTY:
      return {};
    case VT_NULL:
      return Null{};
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE;
    case VT_I1:
      return static_cast<std::int16_t>(value.cVal);
    case VT_UI1:
      return static_cast<std::int16_t>(value.bVal);
    case VT_I2:
      return static_cast<std::int16_t>(value.iVal);
    case VT_I4:
    case VT_INT:
      return static_cast<std::int32_t>(value.lVal);
    case VT_UI2:
    case VT_UI4:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
    case VT_CY:
    case VT_DECIMAL:
      return fromWideInteger(value);
    case VT_R4:
      return value.fltVal;
    case VT_R8:
      return value.dblVal;
    case VT_DATE:
      return Date{value.date};
    case VT_BSTR:
      return com::fromBstr(value.bstrVal);
    case VT_ERROR:
      return fromErrorCode(value.scode);
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return fromObject(value.punkVal);
    default:
      raise(runtime::typeMismatch);
  }
}

Variant converted(const VARIANT& value, const Nesting* nesting) {
  const std::optional<VARIANT> seen = seenThrough(value);
  if (!seen) raise(runtime::typeMismatch);
  return convertedPlain(*seen, nesting);
}

}  // namespace

std::optional<VARIANT> seenThrough(const VARIANT& value) noexcept {
  VARIANT seen = value;
  for (int step = 0; (seen.vt & VT_BYREF) != 0; ++step) {
    // Clients pass on what was passed to them by reference, but not for ever; some values refer to themselves.
    if (step == longestChain || seen.byref == nullptr) return std::nullopt;
    const VARIANT reference = seen;
    const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
    seen = {};
    if (type == VT_VARIANT) {
      seen = *reference.pvarVal;
    } else if (type == VT_DECIMAL) {
      seen.decVal = *reference.pdecVal;
      seen.vt = VT_DECIMAL;  // It shares its place with the decimal's unused part.
    } else if ((type & VT_ARRAY) != 0) {
      seen.vt = type;
      seen.parray = *reference.pparray;
    } else {
      if (sizeOfType(type) == 0) return std::nullopt;
      seen.vt = type;
      std::memcpy(&seen.llVal, reference.byref, sizeOfType(type));
    }
  }
  return seen;
}

Variant fromAutomation(const VARIANT& value) {
  return converted(value, nullptr);
}

void toAutomation(const Variant& value, VARIANT& result) {
  std::visit(Writer{result}, value.storage());
}

SAFEARRAY* toSafeArray(const AnyArray& array) {
  return std::visit([](const auto& typed) { return newSafeArray(typed); }, array.storage());
}

SAFEARRAY* toSafeArray(const Array<std::int32_t>& array) {
  return newSafeArray(array);
}

}  // namespace mervane::automation
