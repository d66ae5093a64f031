#pragma once

#include <functional>
#include <vector>

#include "tests/windows_server/client.h"

namespace mervane::tests {

/// Receives NextEpoch as a client's own object does, and counts the references that are held to it.
class Sink final : public IDispatch {
 public:
  struct Event {
    LONG epoch;
    double rate;
    LONG radius;
    bool operator==(const Event&) const = default;
  };

  /// @param answered the interface id that it answers beside IUnknown and IDispatch.
  explicit Sink(const IID& answered = IID_IDispatch) : answered_(answered) {}
  virtual ~Sink() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                                   UINT*) override;

  /// Called with the arguments by reference, after they have been noted.
  std::function<HRESULT(LONG& epoch, double& rate, LONG& radius)> action;
  std::vector<Event> events;
  std::vector<VARTYPE> argumentTypes;  ///< of the last event, in the order declared
  DISPID lastId = DISPID_UNKNOWN;
  ULONG references = 1;  ///< the owner's own counts as one; the object lives where it is declared

 private:
  IID answered_;
};

/// A sink's connection while it lives.
class Connection {
 public:
  Connection(_Classifier3* classifier, const IID& eventInterface, Sink& sink);
  ~Connection() { disconnect(); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  HRESULT disconnect();
  [[nodiscard]] HRESULT result() const noexcept { return result_; }

 private:
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  HRESULT result_ = E_FAIL;
};

}  // namespace mervane::tests
