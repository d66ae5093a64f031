#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on
#include <wrl/client.h>

#include <atomic>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "spreadsheet/object.h"

namespace mervane::tests {

/// A member that the application has beside those that the system asks of a host.
struct ExtraMember {
  std::wstring name;
  /// Answers the record that the caller clears.
  std::function<VARIANT(std::span<const Variant> arguments)> call;
};

/// An object of a host as a late-bound object of a foreign application.
///
/// Members are found by name without regard to case and called by number. The default member is Item, or Value where it
/// is used without arguments. A member that the object does not have is refused as the platform does; any other failure
/// becomes an exception with number, description and source. As an application whose names are English, it refuses the
/// members that depend on the language under any other locale than 1033.
class HostDispatch : public IDispatch {
 public:
  /// A new object with one reference, or null for an empty one.
  [[nodiscard]] static IDispatch* wrap(sheet::ObjectRef object, std::vector<ExtraMember> extras = {});

  /// Objects that clients still hold references to.
  [[nodiscard]] static long alive() { return alive_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

 private:
  HostDispatch(sheet::ObjectRef object, std::vector<ExtraMember> extras);
  virtual ~HostDispatch();

  [[nodiscard]] VARIANT invoke(DISPID id, LCID locale, WORD flags, std::span<const Variant> arguments);
  [[nodiscard]] VARIANT ask(sheet::member::Id member, WORD flags, std::span<const Variant> arguments);

  static std::atomic<long> alive_;
  std::atomic<ULONG> references_{1};
  sheet::ObjectRef object_;
  std::vector<ExtraMember> extras_;
};

/// Takes over the one reference of a new object. The pointer's own Attach counts another one in this tool chain.
[[nodiscard]] inline Microsoft::WRL::ComPtr<IDispatch> adopted(IDispatch* dispatch) {
  Microsoft::WRL::ComPtr<IDispatch> pointer;
  *pointer.GetAddressOf() = dispatch;
  return pointer;
}

}  // namespace mervane::tests
