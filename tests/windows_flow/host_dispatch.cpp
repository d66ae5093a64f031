#include "tests/windows_flow/host_dispatch.h"

#include <exception>
#include <optional>

#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "platform/com/text.h"
#include "spreadsheet/member_table.h"
#include "tests/windows_flow/dispatch_values.h"
#include "tests/windows_flow/host_enumerator.h"

namespace mervane::tests {

namespace member = sheet::member;
using sheet::Access;

namespace {

constexpr LCID englishUnitedStates = 1033;
constexpr DISPID firstMember = 100;
constexpr DISPID firstExtra = 10000;

bool isSameName(std::wstring_view left, std::wstring_view right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(), static_cast<int>(right.size()),
                              TRUE) == CSTR_EQUAL;
}

std::optional<member::Id> memberOf(std::wstring_view name) {
  for (const sheet::MemberUse& use : sheet::memberTable()) {
    if (isSameName(com::toWide(sheet::nameOf(use.member)), name)) return use.member;
  }
  return std::nullopt;
}

bool isPut(WORD flags) {
  return (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

}  // namespace

std::atomic<long> HostDispatch::alive_{0};

IDispatch* HostDispatch::wrap(sheet::ObjectRef object, std::vector<ExtraMember> extras) {
  if (object == nullptr) return nullptr;
  return new HostDispatch(std::move(object), std::move(extras));
}

HostDispatch::HostDispatch(sheet::ObjectRef object, std::vector<ExtraMember> extras)
    : object_(std::move(object)), extras_(std::move(extras)) {
  ++alive_;
}

HostDispatch::~HostDispatch() {
  --alive_;
}

HRESULT HostDispatch::QueryInterface(REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (interfaceId == hostDispatchId) {
    *object = &object_;  // NB: not counted, for immediate use.
    return S_OK;
  }
  if (interfaceId != IID_IUnknown && interfaceId != IID_IDispatch) return E_NOINTERFACE;
  *object = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

ULONG HostDispatch::AddRef() {
  return ++references_;
}

ULONG HostDispatch::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT HostDispatch::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT HostDispatch::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) {
  return DISP_E_BADINDEX;
}

HRESULT HostDispatch::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* ids) {
  if (names == nullptr || ids == nullptr || count == 0) return E_POINTER;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  for (std::size_t i = 0; i < extras_.size(); ++i) {
    if (isSameName(extras_[i].name, names[0])) ids[0] = firstExtra + static_cast<DISPID>(i);
  }
  if (ids[0] == DISPID_UNKNOWN) {
    const std::optional<member::Id> found = memberOf(names[0]);
    if (found) ids[0] = firstMember + *found;
  }
  // Names of arguments are known for no member.
  return ids[0] != DISPID_UNKNOWN && count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT HostDispatch::Invoke(DISPID id, REFIID /*reserved*/, LCID locale, WORD flags, DISPPARAMS* parameters,
                             VARIANT* result, EXCEPINFO* exception, UINT* /*argument*/) {
  if (parameters == nullptr) return E_POINTER;
  const bool namesValue =
      isPut(flags) && parameters->cNamedArgs == 1 && parameters->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
  if (isPut(flags) ? !namesValue : parameters->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
  try {
    VARIANT answer = invoke(id, locale, flags, fromClient(*parameters));
    if (result != nullptr) {
      *result = answer;
    } else {
      VariantClear(&answer);
    }
    return S_OK;
  } catch (const Failure& failure) {
    return tellClient(failure, exception);
  } catch (const std::exception&) {
    return E_UNEXPECTED;
  }
}

VARIANT HostDispatch::invoke(DISPID id, LCID locale, WORD flags, std::span<const Variant> arguments) {
  if (id >= firstExtra && id < firstExtra + static_cast<DISPID>(extras_.size())) {
    return extras_[static_cast<std::size_t>(id - firstExtra)].call(arguments);
  }
  if (id == DISPID_NEWENUM) {
    VARIANT record;
    VariantInit(&record);
    record.punkVal = wrapEnumerator(object_->invoke(Access::get, member::NewEnum, {}).object());
    record.vt = VT_UNKNOWN;
    return record;
  }
  if (id == DISPID_VALUE) {
    const std::size_t indexes = arguments.size() - (isPut(flags) ? 1 : 0);
    return ask(indexes == 0 ? member::Value : member::Item, flags, arguments);
  }
  if (id < firstMember || id > firstMember + member::Next) raise(runtime::memberNotSupported);
  const auto called = static_cast<member::Id>(id - firstMember);
  if (sheet::usesEnglishLocale(called) && locale != englishUnitedStates) {
    throw Failure(runtime::applicationDefined.number, "Old format or invalid type library", "Test spreadsheet");
  }
  return ask(called, flags, arguments);
}

VARIANT HostDispatch::ask(member::Id called, WORD flags, std::span<const Variant> arguments) {
  if (isPut(flags)) {
    static_cast<void>(object_->invoke(Access::put, called, arguments));
    return toClient({});
  }
  // A client that cannot tell a property from a method asks for both.
  if ((flags & DISPATCH_PROPERTYGET) != 0) {
    try {
      return toClient(object_->invoke(Access::get, called, arguments));
    } catch (const Failure& failure) {
      if (failure.number() != runtime::memberNotSupported.number || (flags & DISPATCH_METHOD) == 0) throw;
    }
  }
  return toClient(object_->invoke(Access::call, called, arguments));
}

}  // namespace mervane::tests
