#pragma once

#include <windows.h>
// The component model's header needs the platform's first.
#include <unknwn.h>

#include <cstdint>

namespace mervane::server {

/// What our engine offers beside INetworkEngine to a caller in its own apartment: `SampleBlocks` of the engine port in
/// the component model. An engine that does not know it is called sample by sample.
///
/// It passes bare addresses, so nothing marshals it; another apartment's proxy refuses it, as it should. Its id changes
/// with its slots.
class ISampleBlocks : public IUnknown {
 public:
  /// @param values `valueCount` numbers, which have to be `count` samples of the network's input count.
  virtual HRESULT STDMETHODCALLTYPE Learn(const double* values, std::int64_t valueCount, std::int32_t count) = 0;
  /// @param factors `count` numbers, one for each sample.
  virtual HRESULT STDMETHODCALLTYPE LearnConvex(const double* values, std::int64_t valueCount, const double* factors,
                                                std::int32_t count) = 0;
  /// @param winners `count` places; those before a sample that is refused are filled.
  virtual HRESULT STDMETHODCALLTYPE Classify(const double* values, std::int64_t valueCount, std::int32_t* winners,
                                             std::int32_t count) = 0;
  virtual HRESULT STDMETHODCALLTYPE ClassifyConvex(const double* values, std::int64_t valueCount, std::int32_t* winners,
                                                   std::int32_t count) = 0;
};

}  // namespace mervane::server
