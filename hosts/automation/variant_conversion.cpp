#include "hosts/automation/variant_conversion.h"

#include <cstring>
#include <limits>
#include <type_traits>

#include "hosts/automation/automation_object.h"
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

VARTYPE elementTypeOf(SAFEARRAY* array) {
  VARTYPE type = VT_EMPTY;
  if (FAILED(SafeArrayGetVartype(array, &type))) raise(runtime::typeMismatch);
  return type;
}

std::vector<Bounds> boundsOf(SAFEARRAY* array) {
  std::vector<Bounds> bounds;
  const UINT dimensions = SafeArrayGetDim(array);
  for (UINT dimension = 1; dimension <= dimensions; ++dimension) {
    LONG lower = 0;
    LONG upper = -1;
    if (FAILED(SafeArrayGetLBound(array, dimension, &lower)) || FAILED(SafeArrayGetUBound(array, dimension, &upper))) {
      raise(runtime::subscriptOutOfRange);
    }
    bounds.push_back({static_cast<std::int32_t>(lower), static_cast<std::int32_t>(upper)});
  }
  return bounds;
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

/// Direct sight of an array's elements while it lives.
class ArrayData {
 public:
  explicit ArrayData(SAFEARRAY* array) : array_(array) {
    if (FAILED(SafeArrayAccessData(array_, &data_))) raise(runtime::outOfMemory);
  }
  ~ArrayData() { SafeArrayUnaccessData(array_); }
  ArrayData(const ArrayData&) = delete;
  ArrayData& operator=(const ArrayData&) = delete;
  template <class T>
  [[nodiscard]] T* as() const {
    return static_cast<T*>(data_);
  }

 private:
  SAFEARRAY* array_;
  void* data_ = nullptr;
};

template <class Source, class Element, class Convert>
Variant copied(SAFEARRAY* array, Convert&& convert) {
  const std::vector<Bounds> bounds = boundsOf(array);
  Array<Element> result(bounds);
  const ArrayData data(array);
  const auto* source = data.as<const Source>();
  forEachPosition(bounds, [&](std::size_t rowMajor, std::size_t columnMajor) {
    result.elements()[rowMajor] = convert(source[columnMajor]);
  });
  return Variant(std::move(result));
}

template <class T>
Variant copiedAsIs(SAFEARRAY* array) {
  return copied<T, T>(array, [](T element) { return element; });
}

/// Elements of a type without a counterpart go through the platform's own conversion, one by one.
template <class Source>
Variant copiedThroughVariant(SAFEARRAY* array, VARTYPE type) {
  return copied<Source, Variant>(array, [type](const Source& element) {
    VARIANT value{};
    value.vt = type;
    static_assert(sizeof(Source) <= sizeof(value.llVal));
    std::memcpy(&value.llVal, &element, sizeof(Source));
    return fromAutomation(value);
  });
}

VARIANT readThrough(const VARIANT& value) {
  OwnedVariant copy;
  const HRESULT result = VariantCopyInd(copy.get(), const_cast<VARIANT*>(&value));
  if (FAILED(result)) throw com::failureOf(result, nullptr, IID_NULL);
  VARIANT taken = copy.value();
  VariantInit(copy.get());
  return taken;
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

SAFEARRAY* newSafeArray(VARTYPE type, const std::vector<Bounds>& bounds) {
  std::vector<SAFEARRAYBOUND> described;
  for (const Bounds& one : bounds) described.push_back({static_cast<ULONG>(one.count()), one.lower});
  SAFEARRAY* array = SafeArrayCreate(type, static_cast<UINT>(described.size()), described.data());
  if (array == nullptr) raise(runtime::outOfMemory);
  return array;
}

template <class T>
SAFEARRAY* newSafeArray(const Array<T>& source) {
  if (source.dimensions() == 0) return nullptr;
  SAFEARRAY* array = newSafeArray(ElementType<T>::value, source.bounds());
  try {
    const ArrayData data(array);
    forEachPosition(source.bounds(), [&](std::size_t rowMajor, std::size_t columnMajor) {
      if constexpr (std::is_same_v<T, std::string>) {
        data.as<BSTR>()[columnMajor] = com::newBstr(source.elements()[rowMajor]);
      } else if constexpr (std::is_same_v<T, Variant>) {
        toAutomation(source.elements()[rowMajor], data.as<VARIANT>()[columnMajor]);
      } else {
        data.as<T>()[columnMajor] = source.elements()[rowMajor];
      }
    });
  } catch (const Failure&) {
    SafeArrayDestroy(array);
    throw;
  }
  return array;
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

}  // namespace

Variant fromAutomation(const VARIANT& value) {
  if ((value.vt & VT_BYREF) != 0) {
    OwnedVariant read;
    *read.get() = readThrough(value);
    return fromAutomation(read.value());
  }
  if ((value.vt & VT_ARRAY) != 0) return fromSafeArray(value.parray, static_cast<VARTYPE>(value.vt & VT_TYPEMASK));
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

void toAutomation(const Variant& value, VARIANT& result) {
  std::visit(Writer{result}, value.storage());
}

Variant fromSafeArray(SAFEARRAY* array, VARTYPE elementType) {
  if (array == nullptr) return Variant(Array<Variant>());
  if (elementType == VT_EMPTY) elementType = elementTypeOf(array);
  switch (elementType) {
    case VT_R8:
      return copiedAsIs<double>(array);
    case VT_R4:
      return copiedAsIs<float>(array);
    case VT_I4:
    case VT_INT:
      return copied<LONG, std::int32_t>(array, [](LONG element) { return static_cast<std::int32_t>(element); });
    case VT_I2:
      return copiedAsIs<std::int16_t>(array);
    case VT_UI1:
      return copiedAsIs<std::uint8_t>(array);
    case VT_BSTR:
      return copied<BSTR, std::string>(array, [](BSTR element) { return com::fromBstr(element); });
    case VT_VARIANT:
      return copied<VARIANT, Variant>(array, [](const VARIANT& element) { return fromAutomation(element); });
    case VT_BOOL:
      return copied<VARIANT_BOOL, Variant>(array,
                                           [](VARIANT_BOOL element) { return Variant(element != VARIANT_FALSE); });
    case VT_DATE:
      return copied<DATE, Variant>(array, [](DATE element) { return Variant(Date{element}); });
    case VT_ERROR:
      return copied<SCODE, Variant>(array, [](SCODE element) { return fromErrorCode(element); });
    case VT_CY:
      return copiedThroughVariant<CY>(array, VT_CY);
    case VT_I1:
      return copiedThroughVariant<CHAR>(array, VT_I1);
    case VT_UI2:
      return copiedThroughVariant<USHORT>(array, VT_UI2);
    case VT_UI4:
    case VT_UINT:
      return copiedThroughVariant<ULONG>(array, VT_UI4);
    case VT_I8:
      return copiedThroughVariant<LONGLONG>(array, VT_I8);
    case VT_UI8:
      return copiedThroughVariant<ULONGLONG>(array, VT_UI8);
    case VT_DECIMAL:
      return copied<DECIMAL, Variant>(array, [](const DECIMAL& element) {
        double number = 0.0;
        if (FAILED(VarR8FromDec(const_cast<DECIMAL*>(&element), &number))) raise(runtime::overflow);
        return Variant(number);
      });
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return copied<IUnknown*, Variant>(array, [](IUnknown* element) { return fromObject(element); });
    default:
      raise(runtime::typeMismatch);
  }
}

SAFEARRAY* toSafeArray(const AnyArray& array) {
  return std::visit([](const auto& typed) { return newSafeArray(typed); }, array.storage());
}

SAFEARRAY* toSafeArray(const Array<std::int32_t>& array) {
  return newSafeArray(array);
}

}  // namespace mervane::automation
