#include "support/server/engine_server.h"

#include <span>
#include <vector>

#include "engine/create_network_engine.h"
#include "hosts/automation/safe_array.h"
#include "mervane/runtime_errors.h"
#include "support/server/guarded.h"
#include "support/server/server_ids.h"

namespace mervane::server {
namespace {

template <class Body>
HRESULT guarded(Body&& body) {
  return server::guarded(engineInterfaceId, std::forward<Body>(body));
}

template <class Body>
HRESULT guardedBlock(const void* values, std::int64_t valueCount, const void* each, std::int32_t count, Body&& body) {
  if (valueCount < 0 || count < 0) return com::report(E_INVALIDARG, "A count is negative.", sampleBlocksInterfaceId);
  if ((values == nullptr && valueCount > 0) || (each == nullptr && count > 0)) {
    return refusedPointer(sampleBlocksInterfaceId);
  }
  return server::guarded(sampleBlocksInterfaceId, std::forward<Body>(body));
}

template <class Element>
std::span<Element> blockOf(Element* first, std::int64_t count) {
  return {first, static_cast<std::size_t>(count)};
}

template <class Body>
HRESULT answer(LONG* result, Body&& body) {
  if (result == nullptr) return refusedPointer(engineInterfaceId);
  return guarded([&] { *result = body(); });
}

/// Direct sight of the elements of a one-dimensional array while it lives.
template <class Element>
class VectorView {
 public:
  VectorView(SAFEARRAY** array, VARTYPE type) : view_(given(array), type) {
    if (view_.bounds().size() != 1) raise(runtime::typeMismatch);
  }
  [[nodiscard]] std::span<const Element> elements() const {
    return {view_.as<Element>(), static_cast<std::size_t>(view_.bounds().front().count())};
  }

 private:
  static SAFEARRAY* given(SAFEARRAY** array) {
    if (array == nullptr || *array == nullptr) raise(runtime::typeMismatch);
    return *array;
  }

  automation::SafeArrayView view_;
};

}  // namespace

HRESULT EngineServer::create(REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  EngineServer* made = nullptr;
  HRESULT result = guarded([&] { made = new EngineServer(createNetworkEngine()); });
  if (FAILED(result)) return result;
  result = made->QueryInterface(interfaceId, object);
  made->Release();
  return result;
}

HRESULT EngineServer::QueryInterface(REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (interfaceId == IID_IUnknown || interfaceId == engineInterfaceId) {
    *object = static_cast<INetworkEngine*>(this);
  } else if (interfaceId == sampleBlocksInterfaceId && engine_->blocks() != nullptr) {
    *object = static_cast<ISampleBlocks*>(this);
  } else if (interfaceId == IID_ISupportErrorInfo) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG EngineServer::AddRef() {
  return ++references_;
}

ULONG EngineServer::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT EngineServer::Create(LONG layerCount, LONG inputCount, SAFEARRAY** neuronCounts, double initialWeights,
                             LONG activationFunction) {
  return guarded([&] {
    const VectorView<LONG> given(neuronCounts, VT_I4);
    const std::vector<std::int32_t> counts(given.elements().begin(), given.elements().end());
    engine_->Create(static_cast<std::int32_t>(layerCount), static_cast<std::int32_t>(inputCount), counts,
                    initialWeights, static_cast<std::int32_t>(activationFunction));
  });
}

HRESULT EngineServer::GetWeightRows(LONG* rows) {
  return answer(rows, [&] { return engine_->GetWeightRows(); });
}

HRESULT EngineServer::GetWeightColumns(LONG* columns) {
  return answer(columns, [&] { return engine_->GetWeightColumns(); });
}

HRESULT EngineServer::InitConvexWeights() {
  return guarded([&] { engine_->InitConvexWeights(); });
}

HRESULT EngineServer::FinishWeightSetup() {
  return guarded([&] { engine_->FinishWeightSetup(); });
}

HRESULT EngineServer::SetLearningRate(double rate) {
  return guarded([&] { engine_->SetLearningRate(rate); });
}

HRESULT EngineServer::SetRadius(LONG radius) {
  return guarded([&] { engine_->SetRadius(static_cast<std::int32_t>(radius)); });
}

HRESULT EngineServer::SetWeight(double value, LONG layer, LONG first, LONG second, LONG* result) {
  return answer(result, [&] {
    return engine_->SetWeight(value, static_cast<std::int32_t>(layer), static_cast<std::int32_t>(first),
                              static_cast<std::int32_t>(second));
  });
}

HRESULT EngineServer::SetInputs(SAFEARRAY** sample) {
  return guarded([&] {
    const VectorView<double> values(sample, VT_R8);
    engine_->SetInputs(values.elements());
  });
}

HRESULT EngineServer::SetConvexInputs(SAFEARRAY** sample, double convexFactor, LONG layer) {
  return guarded([&] {
    const VectorView<double> values(sample, VT_R8);
    engine_->SetConvexInputs(values.elements(), convexFactor, static_cast<std::int32_t>(layer));
  });
}

HRESULT EngineServer::Propagate() {
  return guarded([&] { engine_->Propagate(); });
}

HRESULT EngineServer::GetWinner(LONG* winner) {
  return answer(winner, [&] { return engine_->GetWinner(); });
}

HRESULT EngineServer::AdjustWeights() {
  return guarded([&] { engine_->AdjustWeights(); });
}

HRESULT EngineServer::DestroyNetwork() {
  return guarded([&] { engine_->DestroyNetwork(); });
}

HRESULT EngineServer::Learn(const double* values, std::int64_t valueCount, std::int32_t count) {
  return guardedBlock(values, valueCount, this, count,
                      [&] { engine_->blocks()->learn(blockOf(values, valueCount), count); });
}

HRESULT EngineServer::LearnConvex(const double* values, std::int64_t valueCount, const double* factors,
                                  std::int32_t count) {
  return guardedBlock(values, valueCount, factors, count,
                      [&] { engine_->blocks()->learnConvex(blockOf(values, valueCount), blockOf(factors, count)); });
}

HRESULT EngineServer::Classify(const double* values, std::int64_t valueCount, std::int32_t* winners,
                               std::int32_t count) {
  return guardedBlock(values, valueCount, winners, count,
                      [&] { engine_->blocks()->classify(blockOf(values, valueCount), blockOf(winners, count)); });
}

HRESULT EngineServer::ClassifyConvex(const double* values, std::int64_t valueCount, std::int32_t* winners,
                                     std::int32_t count) {
  return guardedBlock(values, valueCount, winners, count,
                      [&] { engine_->blocks()->classifyConvex(blockOf(values, valueCount), blockOf(winners, count)); });
}

HRESULT EngineServer::InterfaceSupportsErrorInfo(REFIID interfaceId) {
  return interfaceId == engineInterfaceId || interfaceId == sampleBlocksInterfaceId ? S_OK : S_FALSE;
}

}  // namespace mervane::server
