#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on
#include <wrl/client.h>

#include <string>
#include <vector>

#include "hosts/automation/variant_conversion.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "platform/com/failure_conversion.h"

namespace mervane::tests {

/// A client that knows an object by the names of its members alone, as a script does.
class DispatchClient {
 public:
  explicit DispatchClient(Microsoft::WRL::ComPtr<IDispatch> object) : object_(std::move(object)) {}

  [[nodiscard]] IDispatch* get() const { return object_.Get(); }

  Variant call(const wchar_t* name, const std::vector<Variant>& arguments = {}) const {
    automation::OwnedVariant result;
    invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, result.get());
    return automation::fromAutomation(result.value());
  }
  /// An object that the member answers.
  [[nodiscard]] DispatchClient object(const wchar_t* name, const std::vector<Variant>& arguments = {}) const {
    automation::OwnedVariant result;
    invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, result.get());
    if (result.value().vt != VT_DISPATCH) raise(runtime::typeMismatch);
    return DispatchClient(result.value().pdispVal);
  }
  void put(const wchar_t* name, const Variant& value) const { invoke(name, DISPATCH_PROPERTYPUT, {value}, nullptr); }
  void putReference(const wchar_t* name, const DispatchClient& value) const {
    VARIANT record;
    VariantInit(&record);
    record.vt = VT_DISPATCH;
    record.pdispVal = value.get();
    invokeRecords(name, DISPATCH_PROPERTYPUTREF, &record, 1, nullptr);
  }

 private:
  void invoke(const wchar_t* name, WORD flags, const std::vector<Variant>& arguments, VARIANT* result) const {
    std::vector<automation::OwnedVariant> owned(arguments.size());
    std::vector<VARIANT> records;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      automation::toAutomation(arguments[arguments.size() - 1 - i], *owned[i].get());
      records.push_back(owned[i].value());
    }
    invokeRecords(name, flags, records.data(), static_cast<UINT>(records.size()), result);
  }

  void invokeRecords(const wchar_t* name, WORD flags, VARIANT* records, UINT count, VARIANT* result) const {
    std::wstring text = name;
    OLECHAR* names = text.data();
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(found)) throw com::failureOf(found, nullptr, IID_NULL);
    DISPID putId = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{records, nullptr, count, 0};
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
      parameters.cNamedArgs = 1;
      parameters.rgdispidNamedArgs = &putId;
    }
    EXCEPINFO exception{};
    const HRESULT called =
        object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &exception, nullptr);
    if (FAILED(called)) throw com::failureOf(called, exception);
  }

  Microsoft::WRL::ComPtr<IDispatch> object_;
};

}  // namespace mervane::tests
