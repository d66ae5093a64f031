#include "support/server/given_inputs.h"

#include "mervane/runtime_errors.h"

namespace mervane::server {
namespace {

bool systemKeeps(VARTYPE elementType) {
  switch (elementType) {
    case VT_R8:
    case VT_R4:
    case VT_I4:
    case VT_I2:
    case VT_UI1:
    case VT_BSTR:
    case VT_VARIANT:
      return true;
    default:
      return false;
  }
}

const AnyArray* arrayIn(const Variant& value) {
  const auto* array = value.getIf<std::shared_ptr<const AnyArray>>();
  return array != nullptr ? array->get() : nullptr;
}

}  // namespace

void GivenInputs::remember(const VARIANT& given, const Variant& taken) {
  array_.reset();
  taken_ = Variant();
  type_ = static_cast<VARTYPE>(given.vt & VT_TYPEMASK);
  if (systemKeeps(type_) || given.parray == nullptr) return;
  SAFEARRAY* copy = nullptr;
  if (FAILED(SafeArrayCopy(given.parray, &copy))) raise(runtime::outOfMemory);
  array_.reset(copy);
  taken_ = taken;
}

bool GivenInputs::giveBack(const Variant& present, VARIANT& value) const {
  // The taken array is held here, so no other one can stand in its place.
  if (array_ == nullptr || arrayIn(present) != arrayIn(taken_)) return false;
  SAFEARRAY* copy = nullptr;
  if (FAILED(SafeArrayCopy(array_.get(), &copy))) raise(runtime::outOfMemory);
  value.parray = copy;
  value.vt = static_cast<VARTYPE>(VT_ARRAY | type_);
  return true;
}

}  // namespace mervane::server
