#pragma once

#include <windows.h>
// The component model's header needs the platform's first.
#include <ocidl.h>
#include <wrl/client.h>

#include <atomic>
#include <map>
#include <utility>
#include <vector>

namespace mervane::server {

/// Where sinks of one event interface connect. It is part of its owner and shares the owner's count of references.
class EventPoint : public IConnectionPoint {
 public:
  /// @param owner outlives the point, being its container.
  EventPoint(REFIID interfaceId, IConnectionPointContainer& owner) : interfaceId_(interfaceId), owner_(owner) {}
  virtual ~EventPoint() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* interfaceId) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

  [[nodiscard]] const IID& interfaceId() const noexcept { return interfaceId_; }
  /// Calls a method of every sink with arguments that the sinks may write to, last argument first. A sink that
  /// fails is passed over, as an event has no result.
  void raise(DISPID method, DISPPARAMS& arguments);

 private:
  IID interfaceId_;
  IConnectionPointContainer& owner_;
  std::map<DWORD, Microsoft::WRL::ComPtr<IDispatch>> sinks_;
  DWORD lastCookie_ = 0;
};

/// A list of connection points as an enumerator.
class ConnectionPoints : public IEnumConnectionPoints {
 public:
  explicit ConnectionPoints(std::vector<Microsoft::WRL::ComPtr<IConnectionPoint>> list, std::size_t position = 0)
      : list_(std::move(list)), position_(position) {}
  virtual ~ConnectionPoints() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE Next(ULONG count, IConnectionPoint** points, ULONG* fetched) override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
  HRESULT STDMETHODCALLTYPE Reset() override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumConnectionPoints** copy) override;

 private:
  std::vector<Microsoft::WRL::ComPtr<IConnectionPoint>> list_;
  std::size_t position_;
  std::atomic<ULONG> references_{1};
};

}  // namespace mervane::server
