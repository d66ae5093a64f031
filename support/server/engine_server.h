#pragma once

#include <windows.h>
// The generated header needs the platform's first.
#include <network_engine.h>

#include <atomic>
#include <memory>

#include "component/network_engine/network_engine.h"
#include "support/server/module.h"
#include "support/server/sample_blocks_interface.h"

namespace mervane::server {

/// The network engine as a class of the component model: one call of its interface for one call of the engine, and
/// blocks of samples for callers of its own apartment.
class EngineServer final : public INetworkEngine, public ISampleBlocks, public ISupportErrorInfo {
 public:
  /// What the class factory calls.
  static HRESULT create(REFIID interfaceId, void** object);

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // INetworkEngine
  HRESULT STDMETHODCALLTYPE Create(LONG layerCount, LONG inputCount, SAFEARRAY** neuronCounts, double initialWeights,
                                   LONG activationFunction) override;
  HRESULT STDMETHODCALLTYPE GetWeightRows(LONG* rows) override;
  HRESULT STDMETHODCALLTYPE GetWeightColumns(LONG* columns) override;
  HRESULT STDMETHODCALLTYPE InitConvexWeights() override;
  HRESULT STDMETHODCALLTYPE FinishWeightSetup() override;
  HRESULT STDMETHODCALLTYPE SetLearningRate(double rate) override;
  HRESULT STDMETHODCALLTYPE SetRadius(LONG radius) override;
  HRESULT STDMETHODCALLTYPE SetWeight(double value, LONG layer, LONG first, LONG second, LONG* result) override;
  HRESULT STDMETHODCALLTYPE SetInputs(SAFEARRAY** sample) override;
  HRESULT STDMETHODCALLTYPE SetConvexInputs(SAFEARRAY** sample, double convexFactor, LONG layer) override;
  HRESULT STDMETHODCALLTYPE Propagate() override;
  HRESULT STDMETHODCALLTYPE GetWinner(LONG* winner) override;
  HRESULT STDMETHODCALLTYPE AdjustWeights() override;
  HRESULT STDMETHODCALLTYPE DestroyNetwork() override;

  // ISampleBlocks
  HRESULT STDMETHODCALLTYPE Learn(const double* values, std::int64_t valueCount, std::int32_t count) override;
  HRESULT STDMETHODCALLTYPE LearnConvex(const double* values, std::int64_t valueCount, const double* factors,
                                        std::int32_t count) override;
  HRESULT STDMETHODCALLTYPE Classify(const double* values, std::int64_t valueCount, std::int32_t* winners,
                                     std::int32_t count) override;
  HRESULT STDMETHODCALLTYPE ClassifyConvex(const double* values, std::int64_t valueCount, std::int32_t* winners,
                                           std::int32_t count) override;

  // ISupportErrorInfo
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID interfaceId) override;

 private:
  explicit EngineServer(std::shared_ptr<NetworkEngine> engine) : engine_(std::move(engine)) {}
  virtual ~EngineServer() = default;

  ModuleLock lock_;
  std::atomic<ULONG> references_{1};
  std::shared_ptr<NetworkEngine> engine_;
};

}  // namespace mervane::server
