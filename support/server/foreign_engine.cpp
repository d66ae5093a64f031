#include "support/server/foreign_engine.h"

#include <windows.h>
// The generated header needs the platform's first.
#include <network_engine.h>
#include <wrl/client.h>

#include <algorithm>

#include "component/network_engine/network_engine.h"
#include "mervane/runtime_errors.h"
#include "platform/com/failure_conversion.h"
#include "support/server/sample_blocks_interface.h"
#include "support/server/server_ids.h"

using Microsoft::WRL::ComPtr;

namespace mervane::server {
namespace {

/// An array of the platform over values of ours, made for one call.
template <class Element, class Source>
class CallArray {
 public:
  CallArray(VARTYPE type, std::span<const Source> values)
      : array_(SafeArrayCreateVector(type, 0, static_cast<ULONG>(values.size()))) {
    void* data = nullptr;
    if (array_ == nullptr || FAILED(SafeArrayAccessData(array_, &data))) {
      SafeArrayDestroy(array_);
      raise(runtime::outOfMemory);
    }
    std::copy(values.begin(), values.end(), static_cast<Element*>(data));
    SafeArrayUnaccessData(array_);
  }
  ~CallArray() { SafeArrayDestroy(array_); }
  CallArray(const CallArray&) = delete;
  CallArray& operator=(const CallArray&) = delete;
  [[nodiscard]] SAFEARRAY** byReference() noexcept { return &array_; }

 private:
  SAFEARRAY* array_;
};

/// A network engine of the component model behind the engine port: one call for one call.
///
/// OPTIMIZATION: ours takes blocks of samples. An array made for each call and five calls for each sample would take
/// many times as long as the learning.
class ForeignEngine : public NetworkEngine, public SampleBlocks {
 public:
  explicit ForeignEngine(ComPtr<INetworkEngine> engine) : engine_(std::move(engine)) {
    engine_->QueryInterface(sampleBlocksInterfaceId, reinterpret_cast<void**>(blocks_.GetAddressOf()));
  }

  void Create(std::int32_t layerCount, std::int32_t inputCount, std::span<const std::int32_t> neuronCounts,
              double initialWeights, std::int32_t activationFunction) override {
    CallArray<LONG, std::int32_t> counts(VT_I4, neuronCounts);
    check(engine_->Create(layerCount, inputCount, counts.byReference(), initialWeights, activationFunction));
  }
  std::int32_t GetWeightRows() override {
    return answerOf([&](LONG* rows) { return engine_->GetWeightRows(rows); });
  }
  std::int32_t GetWeightColumns() override {
    return answerOf([&](LONG* columns) { return engine_->GetWeightColumns(columns); });
  }
  void InitConvexWeights() override { check(engine_->InitConvexWeights()); }
  void FinishWeightSetup() override { check(engine_->FinishWeightSetup()); }
  void SetLearningRate(double rate) override { check(engine_->SetLearningRate(rate)); }
  void SetRadius(std::int32_t radius) override { check(engine_->SetRadius(radius)); }
  std::int32_t SetWeight(double value, std::int32_t layer, std::int32_t first, std::int32_t second) override {
    return answerOf([&](LONG* result) { return engine_->SetWeight(value, layer, first, second, result); });
  }
  void SetInputs(std::span<const double> sample) override {
    CallArray<double, double> values(VT_R8, sample);
    check(engine_->SetInputs(values.byReference()));
  }
  void SetConvexInputs(std::span<const double> sample, double convexFactor, std::int32_t layer) override {
    CallArray<double, double> values(VT_R8, sample);
    check(engine_->SetConvexInputs(values.byReference(), convexFactor, layer));
  }
  void Propagate() override { check(engine_->Propagate()); }
  std::int32_t GetWinner() override {
    return answerOf([&](LONG* winner) { return engine_->GetWinner(winner); });
  }
  void AdjustWeights() override { check(engine_->AdjustWeights()); }
  void DestroyNetwork() override { check(engine_->DestroyNetwork()); }
  [[nodiscard]] SampleBlocks* blocks() noexcept override { return blocks_ != nullptr ? this : nullptr; }

  void learn(std::span<const double> samples, std::int32_t count) override {
    checkBlock(blocks_->Learn(samples.data(), lengthOf(samples), count));
  }
  void learnConvex(std::span<const double> samples, std::span<const double> convexFactors) override {
    checkBlock(blocks_->LearnConvex(samples.data(), lengthOf(samples), convexFactors.data(),
                                    static_cast<std::int32_t>(convexFactors.size())));
  }
  void classify(std::span<const double> samples, std::span<std::int32_t> winners) override {
    checkBlock(blocks_->Classify(samples.data(), lengthOf(samples), winners.data(),
                                 static_cast<std::int32_t>(winners.size())));
  }
  void classifyConvex(std::span<const double> samples, std::span<std::int32_t> winners) override {
    checkBlock(blocks_->ClassifyConvex(samples.data(), lengthOf(samples), winners.data(),
                                       static_cast<std::int32_t>(winners.size())));
  }

 private:
  static std::int64_t lengthOf(std::span<const double> samples) { return static_cast<std::int64_t>(samples.size()); }
  void checkBlock(HRESULT result) const {
    if (FAILED(result)) throw com::failureOf(result, blocks_.Get(), sampleBlocksInterfaceId);
  }
  void check(HRESULT result) const {
    if (FAILED(result)) throw com::failureOf(result, engine_.Get(), engineInterfaceId);
  }
  template <class Call>
  [[nodiscard]] std::int32_t answerOf(Call&& call) const {
    LONG value = 0;
    check(call(&value));
    return static_cast<std::int32_t>(value);
  }

  ComPtr<INetworkEngine> engine_;
  ComPtr<ISampleBlocks> blocks_;  ///< null where the engine knows single samples alone
};

}  // namespace

std::shared_ptr<NetworkEngine> createForeignEngine() {
  ComPtr<INetworkEngine> engine;
  const HRESULT result = CoCreateInstance(engineClassId, nullptr, CLSCTX_INPROC_SERVER, engineInterfaceId,
                                          reinterpret_cast<void**>(engine.GetAddressOf()));
  if (result == REGDB_E_CLASSNOTREG) return nullptr;
  if (FAILED(result)) throw com::failureOf(result, nullptr, engineInterfaceId);
  return std::make_shared<ForeignEngine>(std::move(engine));
}

}  // namespace mervane::server
