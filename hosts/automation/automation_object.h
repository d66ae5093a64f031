#pragma once

// The platform's headers only work in this order.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on
#include <wrl/client.h>

#include <array>
#include <cstdint>
#include <unordered_map>

#include "spreadsheet/object.h"

namespace mervane::automation {

/// One object of a running spreadsheet application, called late-bound. Holds one counted reference.
class AutomationObject : public sheet::Object {
 public:
  explicit AutomationObject(IDispatch* dispatch) : dispatch_(dispatch) {}

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override;

  /// Not counted; the object keeps it alive.
  [[nodiscard]] IDispatch* dispatch() const noexcept { return dispatch_.Get(); }

 private:
  [[nodiscard]] DISPID idOf(sheet::member::Id member);

  Microsoft::WRL::ComPtr<IDispatch> dispatch_;
  std::unordered_map<std::uint16_t, DISPID> ids_;
};

}  // namespace mervane::automation
