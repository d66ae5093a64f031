#include "platform/com/failure_conversion.h"

#include <wrl/client.h>

#include <iterator>
#include <new>
#include <string>

#include "mervane/runtime_errors.h"
#include "platform/com/text.h"

using Microsoft::WRL::ComPtr;

namespace mervane::com {
namespace {

constexpr std::uint32_t runtimeFacility = 0x800A0000U;

/// Codes that the platform raises for what the run time has a number and a text of its own.
const RuntimeError* runtimeErrorOf(HRESULT result) {
  switch (result) {
    case DISP_E_TYPEMISMATCH:
      return &runtime::typeMismatch;
    case DISP_E_OVERFLOW:
      return &runtime::overflow;
    case DISP_E_BADINDEX:
      return &runtime::subscriptOutOfRange;
    case DISP_E_DIVBYZERO:
      return &runtime::divisionByZero;
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNNAME:
      return &runtime::memberNotSupported;
    case DISP_E_BADPARAMCOUNT:
      return &runtime::wrongArgumentCount;
    case DISP_E_PARAMNOTOPTIONAL:
      return &runtime::argumentNotOptional;
    case E_OUTOFMEMORY:
      return &runtime::outOfMemory;
    default:
      return nullptr;
  }
}

std::int32_t numberOf(HRESULT result) {
  const auto bits = static_cast<std::uint32_t>(result);
  if ((bits & 0xFFFF0000U) == runtimeFacility) return static_cast<std::int32_t>(bits & 0xFFFFU);
  return static_cast<std::int32_t>(result);
}

std::string systemText(HRESULT result) {
  wchar_t* buffer = nullptr;
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                     nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  std::string text = length > 0 ? fromWide(std::wstring_view(buffer, length)) : "Automation error";
  LocalFree(buffer);
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' ')) text.pop_back();
  return text;
}

Failure failureOfCode(HRESULT result) {
  if (const RuntimeError* known = runtimeErrorOf(result)) return {known->number, known->description};
  return {numberOf(result), systemText(result)};
}

std::string taken(BSTR& text) {
  std::string result = fromBstr(text);
  SysFreeString(text);
  text = nullptr;
  return result;
}

/// Sets the thread's error information. Where there is no memory for it, the caller has the code alone.
void leave(wchar_t* description, wchar_t* source, REFIID interfaceId) noexcept {
  ComPtr<ICreateErrorInfo> created;
  ComPtr<IErrorInfo> info;
  if (FAILED(CreateErrorInfo(&created))) return;
  created->SetGUID(interfaceId);
  created->SetDescription(description);
  created->SetSource(source);
  if (SUCCEEDED(created.As(&info))) SetErrorInfo(0, info.Get());
}

}  // namespace

Failure failureOf(HRESULT result, IUnknown* source, REFIID interfaceId) {
  ComPtr<ISupportErrorInfo> support;
  const bool speaks = source != nullptr && SUCCEEDED(source->QueryInterface(IID_PPV_ARGS(&support))) &&
                      support->InterfaceSupportsErrorInfo(interfaceId) == S_OK;
  ComPtr<IErrorInfo> info;
  if (!speaks || GetErrorInfo(0, &info) != S_OK) return failureOfCode(result);
  BSTR description = nullptr;
  BSTR origin = nullptr;
  info->GetDescription(&description);
  info->GetSource(&origin);
  std::string text = taken(description);
  if (text.empty()) text = failureOfCode(result).description();
  return {numberOf(result), std::move(text), taken(origin)};
}

Failure failureOf(HRESULT result, EXCEPINFO& exception) {
  if (result != DISP_E_EXCEPTION) return failureOfCode(result);
  if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
  const HRESULT code = exception.scode != 0 ? exception.scode : static_cast<HRESULT>(runtimeFacility | exception.wCode);
  std::string description = taken(exception.bstrDescription);
  std::string source = taken(exception.bstrSource);
  SysFreeString(exception.bstrHelpFile);
  exception.bstrHelpFile = nullptr;
  if (description.empty()) description = failureOfCode(code).description();
  return {numberOf(code), std::move(description), std::move(source)};
}

HRESULT resultOf(const Failure& failure) noexcept {
  const auto bits = static_cast<std::uint32_t>(failure.number());
  if ((bits & 0x80000000U) != 0) return static_cast<HRESULT>(bits);
  return static_cast<HRESULT>(runtimeFacility | (bits & 0xFFFFU));
}

HRESULT report(const Failure& failure, REFIID interfaceId) noexcept {
  try {
    std::wstring description = toWide(failure.description());
    std::wstring source = toWide(failure.source());
    leave(description.data(), source.data(), interfaceId);
  } catch (const std::bad_alloc&) {
    leave(nullptr, nullptr, interfaceId);  // The number alone, then.
  }
  return resultOf(failure);
}

HRESULT report(HRESULT result, const char* description, REFIID interfaceId) noexcept {
  wchar_t text[128] = {};
  for (std::size_t i = 0; description[i] != '\0' && i + 1 < std::size(text); ++i)
    text[i] = static_cast<unsigned char>(description[i]);
  wchar_t source[] = L"";
  leave(text, source, interfaceId);
  return result;
}

}  // namespace mervane::com
