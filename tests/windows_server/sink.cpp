#include "tests/windows_server/sink.h"

namespace mervane::tests {

HRESULT Sink::QueryInterface(REFIID interfaceId, void** object) {
  *object = nullptr;
  if (interfaceId != IID_IUnknown && interfaceId != IID_IDispatch && interfaceId != answered_) return E_NOINTERFACE;
  *object = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

HRESULT Sink::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT Sink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*, UINT*) {
  lastId = id;
  argumentTypes.clear();
  for (UINT i = parameters->cArgs; i-- > 0;) argumentTypes.push_back(parameters->rgvarg[i].vt);
  if (argumentTypes != std::vector<VARTYPE>{VT_BYREF | VT_I4, VT_BYREF | VT_R8, VT_BYREF | VT_I4}) return E_UNEXPECTED;
  LONG& epoch = *parameters->rgvarg[2].plVal;
  double& rate = *parameters->rgvarg[1].pdblVal;
  LONG& radius = *parameters->rgvarg[0].plVal;
  events.push_back({epoch, rate, radius});
  return action ? action(epoch, rate, radius) : S_OK;
}

Connection::Connection(_Classifier3* classifier, const IID& eventInterface, Sink& sink) {
  ComPtr<IConnectionPointContainer> container;
  result_ =
      classifier->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(container.GetAddressOf()));
  if (SUCCEEDED(result_)) result_ = container->FindConnectionPoint(eventInterface, &point_);
  if (SUCCEEDED(result_)) result_ = point_->Advise(&sink, &cookie_);
}

HRESULT Connection::disconnect() {
  if (cookie_ == 0) return S_FALSE;
  const DWORD cookie = cookie_;
  cookie_ = 0;
  return point_->Unadvise(cookie);
}

}  // namespace mervane::tests
