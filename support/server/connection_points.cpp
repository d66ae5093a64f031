#include "support/server/connection_points.h"

#include <olectl.h>

#include "support/server/guarded.h"

using Microsoft::WRL::ComPtr;

namespace mervane::server {
namespace {

/// A list of connections as it was when it was asked for.
class Connections : public IEnumConnections {
 public:
  explicit Connections(std::vector<std::pair<DWORD, ComPtr<IDispatch>>> list, std::size_t position = 0)
      : list_(std::move(list)), position_(position) {}
  virtual ~Connections() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (interfaceId != IID_IUnknown && interfaceId != IID_IEnumConnections) return E_NOINTERFACE;
    *object = static_cast<IEnumConnections*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, LPCONNECTDATA data, ULONG* fetched) override {
    if (data == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    ULONG given = 0;
    for (; given < count && position_ < list_.size(); ++given, ++position_) {
      data[given].dwCookie = list_[position_].first;
      data[given].pUnk = list_[position_].second.Get();
      data[given].pUnk->AddRef();
    }
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t left = list_.size() - position_;
    position_ += count < left ? count : left;
    return count <= left ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    position_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumConnections** copy) override {
    if (copy == nullptr) return E_POINTER;
    *copy = nullptr;
    return guarded(IID_IEnumConnections, [&] { *copy = new Connections(list_, position_); });
  }

 private:
  std::vector<std::pair<DWORD, ComPtr<IDispatch>>> list_;
  std::size_t position_;
  std::atomic<ULONG> references_{1};
};

}  // namespace

HRESULT EventPoint::QueryInterface(REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (interfaceId != IID_IUnknown && interfaceId != IID_IConnectionPoint) return E_NOINTERFACE;
  *object = static_cast<IConnectionPoint*>(this);
  AddRef();
  return S_OK;
}

ULONG EventPoint::AddRef() {
  return owner_.AddRef();
}
ULONG EventPoint::Release() {
  return owner_.Release();
}

HRESULT EventPoint::GetConnectionInterface(IID* interfaceId) {
  if (interfaceId == nullptr) return E_POINTER;
  *interfaceId = interfaceId_;
  return S_OK;
}

HRESULT EventPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (container == nullptr) return E_POINTER;
  *container = &owner_;
  owner_.AddRef();
  return S_OK;
}

HRESULT EventPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (sink == nullptr || cookie == nullptr) return E_POINTER;
  ComPtr<IDispatch> dispatch;
  // A sink made from the type library answers the event interface; a plain one answers late-bound calls alone.
  HRESULT result = sink->QueryInterface(interfaceId_, reinterpret_cast<void**>(dispatch.GetAddressOf()));
  if (FAILED(result)) result = sink->QueryInterface(IID_PPV_ARGS(&dispatch));
  if (FAILED(result)) return CONNECT_E_CANNOTCONNECT;
  *cookie = 0;
  return guarded(IID_IConnectionPoint, [&] {
    sinks_.emplace(lastCookie_ + 1, std::move(dispatch));
    *cookie = ++lastCookie_;
  });
}

HRESULT EventPoint::Unadvise(DWORD cookie) {
  return sinks_.erase(cookie) == 1 ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT EventPoint::EnumConnections(IEnumConnections** connections) {
  if (connections == nullptr) return E_POINTER;
  *connections = nullptr;
  return guarded(IID_IEnumConnections, [&] { *connections = new Connections({sinks_.begin(), sinks_.end()}); });
}

HRESULT ConnectionPoints::QueryInterface(REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (interfaceId != IID_IUnknown && interfaceId != IID_IEnumConnectionPoints) return E_NOINTERFACE;
  *object = static_cast<IEnumConnectionPoints*>(this);
  AddRef();
  return S_OK;
}

ULONG ConnectionPoints::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ConnectionPoints::Next(ULONG count, IConnectionPoint** points, ULONG* fetched) {
  if (points == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
  ULONG given = 0;
  for (; given < count && position_ < list_.size(); ++given, ++position_) {
    points[given] = list_[position_].Get();
    points[given]->AddRef();
  }
  if (fetched != nullptr) *fetched = given;
  return given == count ? S_OK : S_FALSE;
}

HRESULT ConnectionPoints::Skip(ULONG count) {
  const std::size_t left = list_.size() - position_;
  position_ += count < left ? count : left;
  return count <= left ? S_OK : S_FALSE;
}

HRESULT ConnectionPoints::Reset() {
  position_ = 0;
  return S_OK;
}

HRESULT ConnectionPoints::Clone(IEnumConnectionPoints** copy) {
  if (copy == nullptr) return E_POINTER;
  *copy = nullptr;
  return guarded(IID_IEnumConnectionPoints, [&] { *copy = new ConnectionPoints(list_, position_); });
}

void EventPoint::raise(DISPID method, DISPPARAMS& arguments) {
  // A sink may disconnect itself, or another, while it is called.
  const std::vector<std::pair<DWORD, ComPtr<IDispatch>>> present(sinks_.begin(), sinks_.end());
  for (const auto& [cookie, sink] : present) {
    if (sinks_.count(cookie) == 0) continue;
    sink->Invoke(method, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &arguments, nullptr, nullptr, nullptr);
  }
}

}  // namespace mervane::server
