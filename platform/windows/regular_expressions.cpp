#include "platform/windows/regular_expressions.h"

#include <windows.h>
#include <wrl/client.h>

#include <algorithm>
#include <vector>

#include "mervane/runtime_errors.h"
#include "platform/com/failure_conversion.h"
#include "platform/com/text.h"

using Microsoft::WRL::ComPtr;

namespace mervane::windows {
namespace {

/// A record that clears itself.
struct Record : VARIANT {
  Record() { VariantInit(this); }
  explicit Record(const std::string& text) : Record() {
    bstrVal = com::newBstr(text);
    vt = VT_BSTR;
  }
  explicit Record(bool on) : Record() {
    boolVal = on ? VARIANT_TRUE : VARIANT_FALSE;
    vt = VT_BOOL;
  }
  explicit Record(LONG number) : Record() {
    lVal = number;
    vt = VT_I4;
  }
  ~Record() { VariantClear(this); }
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;
};

/// Calls a member by name; arguments last one first.
void invoke(IDispatch* object, const wchar_t* member, WORD flags, std::vector<VARIANTARG> arguments, VARIANT* answer) {
  if (object == nullptr) raise(runtime::objectNotSet);
  std::wstring name = member;
  OLECHAR* names = name.data();
  DISPID id = DISPID_UNKNOWN;
  HRESULT result = object->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(result)) throw com::failureOf(result, nullptr, IID_NULL);
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  if (flags == DISPATCH_PROPERTYPUT) {
    parameters.rgdispidNamedArgs = &putId;
    parameters.cNamedArgs = 1;
  }
  EXCEPINFO exception{};
  result = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, answer, &exception, nullptr);
  if (FAILED(result)) throw com::failureOf(result, exception);
}

ComPtr<IDispatch> objectOf(const VARIANT& value) {
  if (value.vt != VT_DISPATCH) raise(runtime::typeMismatch);
  return value.pdispVal;
}

std::string textOf(const VARIANT& value) {
  return value.vt == VT_BSTR ? com::fromBstr(value.bstrVal) : std::string();
}

LONG countOf(IDispatch* list) {
  Record count;
  invoke(list, L"Count", DISPATCH_PROPERTYGET | DISPATCH_METHOD, {}, &count);
  return count.vt == VT_I4 ? count.lVal : 0;
}

void itemOf(IDispatch* list, LONG position, VARIANT* item) {
  const Record index(position);
  invoke(list, L"Item", DISPATCH_PROPERTYGET | DISPATCH_METHOD, {index}, item);
}

class RegularExpression final : public platform::RegularExpression {
 public:
  RegularExpression() {
    CLSID id{};
    HRESULT result = CLSIDFromProgID(L"VBScript.RegExp", &id);
    if (SUCCEEDED(result)) {
      result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object_));
    }
    if (FAILED(result)) throw com::failureOf(result, nullptr, IID_NULL);
  }

  void Pattern(const std::string& pattern) override { put(L"Pattern", Record(pattern)); }
  void IgnoreCase(bool on) override { put(L"IgnoreCase", Record(on)); }
  void Global(bool on) override { put(L"Global", Record(on)); }

  std::vector<Match> Execute(const std::string& text) override {
    const Record subject(text);
    Record list;
    invoke(object_.Get(), L"Execute", DISPATCH_METHOD, {subject}, &list);
    const ComPtr<IDispatch> matches = objectOf(list);
    std::vector<Match> result;
    const LONG count = countOf(matches.Get());
    for (LONG i = 0; i < count; ++i) {
      Record item;
      itemOf(matches.Get(), i, &item);
      result.push_back(matchOf(objectOf(item).Get()));
    }
    return result;
  }

  std::string Replace(const std::string& text, const std::string& replacement) override {
    const Record subject(text);
    const Record with(replacement);
    Record answer;
    invoke(object_.Get(), L"Replace", DISPATCH_METHOD, {with, subject}, &answer);
    return textOf(answer);
  }

 private:
  void put(const wchar_t* member, const Record& value) {
    invoke(object_.Get(), member, DISPATCH_PROPERTYPUT, {value}, nullptr);
  }

  static Match matchOf(IDispatch* match) {
    Match result;
    Record text;
    invoke(match, L"Value", DISPATCH_PROPERTYGET | DISPATCH_METHOD, {}, &text);
    result.text = textOf(text);
    Record list;
    invoke(match, L"SubMatches", DISPATCH_PROPERTYGET | DISPATCH_METHOD, {}, &list);
    const ComPtr<IDispatch> groups = objectOf(list);
    const LONG count = countOf(groups.Get());
    for (LONG i = 0; i < count; ++i) {
      Record group;
      itemOf(groups.Get(), i, &group);
      result.subMatches.push_back(textOf(group));
    }
    return result;
  }

  ComPtr<IDispatch> object_;
};

}  // namespace

std::unique_ptr<platform::RegularExpression> RegularExpressions::create() {
  return std::make_unique<RegularExpression>();
}

}  // namespace mervane::windows
