#include "tests/windows_server/client.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace mervane::tests {
namespace {

std::wstring taken(BSTR text) {
  std::wstring result(text == nullptr ? L"" : text, SysStringLen(text));
  SysFreeString(text);
  return result;
}

}  // namespace

Raised raisedBySlots(HRESULT result) {
  Raised raised{result, {}, {}};
  ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, &info) != S_OK) return raised;
  BSTR text = nullptr;
  info->GetDescription(&text);
  raised.description = taken(text);
  text = nullptr;
  info->GetSource(&text);
  raised.source = taken(text);
  return raised;
}

DISPID LateBound::id(const wchar_t* name) const {
  auto* names = const_cast<OLECHAR*>(name);
  DISPID id = DISPID_UNKNOWN;
  return SUCCEEDED(object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id)) ? id : DISPID_UNKNOWN;
}

Value LateBound::get(const wchar_t* name, std::vector<Value> arguments) {
  Value answer;
  const Raised raised = invoke(DISPATCH_PROPERTYGET | DISPATCH_METHOD, name, std::move(arguments), &answer);
  EXPECT_EQ(raised.number, S_OK);
  return answer;
}

Raised LateBound::put(const wchar_t* name, Value value) {
  return invoke(DISPATCH_PROPERTYPUT, name, {std::move(value)}, nullptr);
}

Raised LateBound::putReference(const wchar_t* name, Value value) {
  return invoke(DISPATCH_PROPERTYPUTREF, name, {std::move(value)}, nullptr);
}

Raised LateBound::call(const wchar_t* name, std::vector<Value> arguments, Value* answer) {
  return invoke(DISPATCH_METHOD, name, std::move(arguments), answer);
}

Raised LateBound::invoke(WORD flags, const wchar_t* name, std::vector<Value> arguments, Value* answer) {
  std::reverse(arguments.begin(), arguments.end());
  std::vector<VARIANT> records;
  for (Value& argument : arguments) records.push_back(*argument.get());
  DISPPARAMS parameters{records.data(), nullptr, static_cast<UINT>(records.size()), 0};
  DISPID putId = DISPID_PROPERTYPUT;
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
    parameters.cNamedArgs = 1;
    parameters.rgdispidNamedArgs = &putId;
  }
  EXCEPINFO exception{};
  const HRESULT result = object_->Invoke(id(name), IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                         answer == nullptr ? nullptr : answer->get(), &exception, nullptr);
  if (result != DISP_E_EXCEPTION) return {result, {}, {}};
  SysFreeString(exception.bstrHelpFile);
  return {exception.scode, taken(exception.bstrDescription), taken(exception.bstrSource)};
}

ServerLibrary::ServerLibrary(const char* path) : module_(LoadLibraryA(path)) {
  if (module_ == nullptr) ADD_FAILURE() << path << " cannot be loaded: " << GetLastError();
}

HRESULT ServerLibrary::call(const char* name) {
  using Export = HRESULT(STDAPICALLTYPE*)();
  const FARPROC address = GetProcAddress(module_, name);
  if (address == nullptr) return E_NOTIMPL;
  return reinterpret_cast<Export>(reinterpret_cast<void*>(address))();
}

HRESULT ServerLibrary::classObject(REFCLSID classId, REFIID interfaceId, void** object) {
  using Export = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  const FARPROC address = GetProcAddress(module_, "DllGetClassObject");
  if (address == nullptr) return E_NOTIMPL;
  return reinterpret_cast<Export>(reinterpret_cast<void*>(address))(classId, interfaceId, object);
}

std::wstring ServerLibrary::path() const {
  wchar_t text[MAX_PATH] = {};
  GetModuleFileNameW(module_, text, MAX_PATH);
  return text;
}

ComPtr<_Classifier3> newClassifier() {
  ComPtr<_Classifier3> object;
  const HRESULT result = CoCreateInstance(server::classId, nullptr, CLSCTX_INPROC_SERVER, server::defaultInterfaceId,
                                          reinterpret_cast<void**>(object.GetAddressOf()));
  if (FAILED(result)) throw std::runtime_error("no Classifier3 can be created: " + std::to_string(result));
  return object;
}

Value grid(LONG firstRow, LONG firstColumn, const std::vector<std::vector<double>>& rows) {
  SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(rows.size()), firstRow},
                             {static_cast<ULONG>(rows.front().size()), firstColumn}};
  SAFEARRAY* array = SafeArrayCreate(VT_R8, 2, bounds);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      LONG position[] = {firstRow + static_cast<LONG>(row), firstColumn + static_cast<LONG>(column)};
      double element = rows[row][column];
      SafeArrayPutElement(array, position, &element);
    }
  }
  return {array, VT_R8};
}

Numbers outputsOf(_Classifier3* classifier) {
  SAFEARRAY* array = nullptr;
  EXPECT_EQ(classifier->get_Outputs(&array), S_OK);
  const Value owner(array, VT_I4);
  Numbers result;
  LONG upper = -1;
  if (array == nullptr || SafeArrayGetDim(array) != 1) return result;
  SafeArrayGetLBound(array, 1, &result.lower);
  SafeArrayGetUBound(array, 1, &upper);
  for (LONG i = result.lower; i <= upper; ++i) {
    LONG element = 0;
    SafeArrayGetElement(array, &i, &element);
    result.elements.push_back(element);
  }
  return result;
}

}  // namespace mervane::tests
