#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
#include <ocidl.h>
// clang-format on
#include <mervane_class3.h>
#include <wrl/client.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "support/server/server_ids.h"

/// What a client of the component sees, written with the platform's own types alone.
namespace mervane::tests {

using Microsoft::WRL::ComPtr;

/// The calling thread's apartment.
struct Apartment {
  Apartment() { CoInitialize(nullptr); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// A record that clears itself.
class Value {
 public:
  Value() { VariantInit(&record_); }
  Value(LONG number) : Value() {  // NOLINT(google-explicit-constructor): an argument list reads as one
    record_.vt = VT_I4;
    record_.lVal = number;
  }
  Value(int number) : Value(static_cast<LONG>(number)) {}  // NOLINT(google-explicit-constructor)
  Value(double number) : Value() {                         // NOLINT(google-explicit-constructor)
    record_.vt = VT_R8;
    record_.dblVal = number;
  }
  Value(bool on) : Value() {  // NOLINT(google-explicit-constructor)
    record_.vt = VT_BOOL;
    record_.boolVal = on ? VARIANT_TRUE : VARIANT_FALSE;
  }
  Value(const wchar_t* text) : Value() {  // NOLINT(google-explicit-constructor)
    record_.vt = VT_BSTR;
    record_.bstrVal = SysAllocString(text);
  }
  Value(IDispatch* object) : Value() {  // NOLINT(google-explicit-constructor)
    record_.vt = VT_DISPATCH;
    record_.pdispVal = object;
    if (object != nullptr) object->AddRef();
  }
  /// Takes the array over.
  Value(SAFEARRAY* array, VARTYPE elementType) : Value() {
    record_.vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
    record_.parray = array;
  }
  Value(const Value& other) : Value() { VariantCopy(&record_, const_cast<VARIANT*>(&other.record_)); }
  Value(Value&& other) noexcept : record_(other.record_) { VariantInit(&other.record_); }
  Value& operator=(Value other) noexcept {
    std::swap(record_, other.record_);
    return *this;
  }
  ~Value() { VariantClear(&record_); }

  [[nodiscard]] VARIANT* get() noexcept { return &record_; }
  [[nodiscard]] const VARIANT* operator->() const noexcept { return &record_; }
  [[nodiscard]] VARTYPE type() const noexcept { return record_.vt; }
  [[nodiscard]] std::wstring text() const { return type() == VT_BSTR ? record_.bstrVal : L"(no text)"; }

 private:
  VARIANT record_;
};

/// A failure as it arrives at a client.
struct Raised {
  HRESULT number = S_OK;
  std::wstring description;
  std::wstring source;

  bool operator==(const Raised&) const = default;
};
/// What the thread's error information says after a failed call, and nothing of it stays.
[[nodiscard]] Raised raisedBySlots(HRESULT result);

/// Members of an object by their names.
class LateBound {
 public:
  explicit LateBound(IDispatch* object) : object_(object) {}
  [[nodiscard]] DISPID id(const wchar_t* name) const;
  Value get(const wchar_t* name, std::vector<Value> arguments = {});
  Raised put(const wchar_t* name, Value value);
  Raised putReference(const wchar_t* name, Value value);
  Raised call(const wchar_t* name, std::vector<Value> arguments = {}, Value* answer = nullptr);

 private:
  Raised invoke(WORD flags, const wchar_t* name, std::vector<Value> arguments, Value* answer);
  ComPtr<IDispatch> object_;
};

/// The server's library by its path, and its exports.
class ServerLibrary {
 public:
  /// @param path in the build's own notation.
  explicit ServerLibrary(const char* path);
  ~ServerLibrary() { FreeLibrary(module_); }
  ServerLibrary(const ServerLibrary&) = delete;
  ServerLibrary& operator=(const ServerLibrary&) = delete;

  HRESULT registerServer() { return call("DllRegisterServer"); }
  HRESULT unregisterServer() { return call("DllUnregisterServer"); }
  HRESULT canUnloadNow() { return call("DllCanUnloadNow"); }
  HRESULT classObject(REFCLSID classId, REFIID interfaceId, void** object);
  [[nodiscard]] HMODULE module() const noexcept { return module_; }
  [[nodiscard]] std::wstring path() const;

 private:
  HRESULT call(const char* name);
  HMODULE module_;
};

/// A new object by its class id. The test fails where there is none.
[[nodiscard]] ComPtr<_Classifier3> newClassifier();

/// Breaks the circle of a component and its dialog at the end, as a host does.
class Classifier {
 public:
  Classifier() : object_(newClassifier()) {}
  ~Classifier() { object_->UnloadfrmMain(); }
  Classifier(const Classifier&) = delete;
  Classifier& operator=(const Classifier&) = delete;
  _Classifier3* operator->() const noexcept { return object_.Get(); }
  [[nodiscard]] _Classifier3* get() const noexcept { return object_.Get(); }
  [[nodiscard]] LateBound lateBound() const { return LateBound(object_.Get()); }

 private:
  ComPtr<_Classifier3> object_;
};

/// A grid of 64-bit floats with bounds, row after row.
[[nodiscard]] Value grid(LONG firstRow, LONG firstColumn, const std::vector<std::vector<double>>& rows);
/// The elements of Outputs, with its lower bound.
struct Numbers {
  LONG lower = 0;
  std::vector<LONG> elements;
  bool operator==(const Numbers&) const = default;
};
[[nodiscard]] Numbers outputsOf(_Classifier3* classifier);

}  // namespace mervane::tests
