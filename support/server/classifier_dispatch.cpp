#include <algorithm>
#include <optional>
#include <vector>

#include "hosts/automation/variant_conversion.h"
#include "support/server/classifier_server.h"
#include "support/server/guarded.h"
#include "support/server/server_ids.h"
#include "support/server/type_library.h"

using Microsoft::WRL::ComPtr;

/// The dispatch side of the class: names and calls go through the type library.
namespace mervane::server {
namespace {

bool puts(WORD flags) {
  return (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

/// What a slot of ours answered, in the form of dispatch.
HRESULT toException(HRESULT result, EXCEPINFO& told) {
  ComPtr<IErrorInfo> info;
  if (SUCCEEDED(result) || GetErrorInfo(0, &info) != S_OK) return result;
  info->GetDescription(&told.bstrDescription);
  info->GetSource(&told.bstrSource);
  told.scode = result;
  return DISP_E_EXCEPTION;
}

/// An argument of a call as a value without references to variants; nothing where no member could take it.
///
/// Variables of scripts come as such references. The type library's own call knows none for arguments of one type, and
/// would follow one that leads to itself for ever.
std::optional<VARIANT> plainArgument(const VARIANT& given) {
  const bool refersToVariant = given.vt == (VT_BYREF | VT_VARIANT);
  std::optional<VARIANT> seen = refersToVariant ? automation::seenThrough(given) : given;
  if (seen && (seen->vt & VT_BYREF) != 0 && seen->byref == nullptr) return std::nullopt;
  return seen;
}

/// The texts of a failed call belong to the caller, who may not have asked for them.
void hand(EXCEPINFO& told, EXCEPINFO* exception) {
  if (exception != nullptr) {
    *exception = told;
    return;
  }
  SysFreeString(told.bstrSource);
  SysFreeString(told.bstrDescription);
  SysFreeString(told.bstrHelpFile);
}

}  // namespace

HRESULT ClassifierServer::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT ClassifierServer::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  return index == 0 ? typeInfoOf(defaultInterfaceId, info) : DISP_E_BADINDEX;
}

HRESULT ClassifierServer::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                        DISPID* ids) {
  if (names == nullptr || ids == nullptr) return E_POINTER;
  if (count == 0) return E_INVALIDARG;
  if (std::find(names, names + count, nullptr) != names + count) return E_POINTER;
  ComPtr<ITypeInfo> info;
  const HRESULT result = typeInfoOf(defaultInterfaceId, &info);
  return FAILED(result) ? result : info->GetIDsOfNames(names, count, ids);
}

HRESULT ClassifierServer::Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags, DISPPARAMS* parameters,
                                 VARIANT* result, EXCEPINFO* exception, UINT* argument) {
  if (parameters == nullptr) return E_POINTER;
  if (parameters->cNamedArgs > parameters->cArgs) return DISP_E_BADPARAMCOUNT;
  if (parameters->cArgs > 0 && parameters->rgvarg == nullptr) return E_POINTER;
  if (parameters->cNamedArgs > 0 && parameters->rgdispidNamedArgs == nullptr) return E_POINTER;
  SetErrorInfo(0, nullptr);
  UINT misfit = 0;
  EXCEPINFO told{};
  HRESULT called = S_OK;
  const HRESULT entered = guarded(defaultInterfaceId, [&] {
    std::vector<VARIANT> plain;
    plain.reserve(parameters->cArgs);
    for (; misfit < parameters->cArgs; ++misfit) {
      const std::optional<VARIANT> seen = plainArgument(parameters->rgvarg[misfit]);
      if (!seen || ((seen->vt & VT_ARRAY) != 0 && id != inputsId)) {
        called = DISP_E_TYPEMISMATCH;
        return;
      }
      plain.push_back(*seen);
    }
    misfit = 0;
    if (id == excelApplicationId) {
      called = invokeExcelApplication(flags, plain, result, &misfit);
    } else if (id == inputsId && puts(flags)) {
      // The type library's own call would copy the array first, whatever is wrong with it.
      called = (flags & DISPATCH_PROPERTYPUT) == 0 ? DISP_E_MEMBERNOTFOUND
               : plain.size() != 1                 ? DISP_E_BADPARAMCOUNT
                                                   : toException(put_Inputs(plain[0]), told);
    } else if (id == outputsId && !puts(flags) && plain.size() == 1) {
      called = toException(invokeOutput(plain[0], result), told);
    } else {
      called = invokeByTypeLibrary(
          id, flags, {plain.data(), parameters->rgdispidNamedArgs, parameters->cArgs, parameters->cNamedArgs}, result,
          told, misfit);
    }
  });
  hand(told, exception);
  if (FAILED(called) && argument != nullptr) *argument = misfit;
  return FAILED(entered) ? entered : called;
}

HRESULT ClassifierServer::invokeOutput(const VARIANT& index, VARIANT* result) {
  automation::OwnedVariant row;
  const HRESULT converted = VariantChangeType(row.get(), const_cast<VARIANT*>(&index), 0, VT_I4);
  if (FAILED(converted)) return converted;
  return guarded(defaultInterfaceId, [&] {
    const std::int32_t cluster = classifier_->Outputs().at(static_cast<std::int32_t>(row.value().lVal));
    if (result == nullptr) return;
    VariantInit(result);
    automation::toAutomation(Variant(cluster), *result);
  });
}

HRESULT ClassifierServer::invokeByTypeLibrary(DISPID id, WORD flags, DISPPARAMS parameters, VARIANT* result,
                                              EXCEPINFO& exception, UINT& argument) {
  ComPtr<ITypeInfo> info;
  const HRESULT found = typeInfoOf(defaultInterfaceId, &info);
  if (FAILED(found)) return found;
  return info->Invoke(static_cast<_Classifier3*>(this), id, flags, &parameters, result, &exception, &argument);
}

HRESULT ClassifierServer::invokeExcelApplication(WORD flags, std::span<const VARIANT> arguments, VARIANT* result,
                                                 UINT* argument) {
  if (!puts(flags)) {
    if (!arguments.empty()) return DISP_E_BADPARAMCOUNT;
    if (result == nullptr) return S_OK;
    VariantInit(result);
    result->vt = VT_DISPATCH;
    return get_ExcelApplication(reinterpret_cast<_Application**>(&result->pdispVal));
  }
  if (arguments.size() != 1) return DISP_E_BADPARAMCOUNT;
  *argument = 0;
  const std::optional<VARIANT> given = automation::seenThrough(arguments[0]);
  if (!given || (given->vt != VT_DISPATCH && given->vt != VT_UNKNOWN)) return DISP_E_TYPEMISMATCH;
  ComPtr<IDispatch> application;
  if (given->punkVal != nullptr && FAILED(given->punkVal->QueryInterface(IID_PPV_ARGS(&application)))) {
    return DISP_E_TYPEMISMATCH;
  }
  // Only its dispatch part is ever used, so any late-bound application will do.
  return putref_ExcelApplication(static_cast<_Application*>(application.Get()));
}

}  // namespace mervane::server
