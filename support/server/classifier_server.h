#pragma once

#include <windows.h>
// The component model's headers need the platform's first.
#include <mervane_class3.h>
#include <ocidl.h>
#include <wrl/client.h>

#include <array>
#include <atomic>
#include <memory>
#include <span>

#include "mervane/classifier3.h"
#include "support/server/connection_points.h"
#include "support/server/given_inputs.h"
#include "support/server/module.h"

namespace mervane::server {

/// Classifier3 as a class of the component model: both dispatch and slots, error information, class information, and
/// events under the present and the earlier id. One thread's apartment owns an object.
class ClassifierServer : public _Classifier3,
                         public ISupportErrorInfo,
                         public IProvideClassInfo2,
                         public IConnectionPointContainer {
 public:
  /// What the class factory calls. The object is made with the services of the calling thread.
  static HRESULT create(REFIID interfaceId, void** object);

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // IDispatch, through the type library
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT* argument) override;

  // _Classifier3
  HRESULT STDMETHODCALLTYPE putref_ExcelApplication(_Application* value) override;
  HRESULT STDMETHODCALLTYPE get_ExcelApplication(_Application** value) override;
  HRESULT STDMETHODCALLTYPE put_Inputs(VARIANT value) override;
  HRESULT STDMETHODCALLTYPE get_Inputs(VARIANT* value) override;
  HRESULT STDMETHODCALLTYPE getMaxValue(LONG column, double* value) override;
  HRESULT STDMETHODCALLTYPE getMinValue(LONG column, double* value) override;
  HRESULT STDMETHODCALLTYPE get_Outputs(SAFEARRAY** value) override;
  HRESULT STDMETHODCALLTYPE put_InitialWeights(double value) override;
  HRESULT STDMETHODCALLTYPE get_InitialWeights(double* value) override;
  HRESULT STDMETHODCALLTYPE put_ActivationFunction(::enuActivationFunction* value) override;
  HRESULT STDMETHODCALLTYPE get_ActivationFunction(::enuActivationFunction* value) override;
  HRESULT STDMETHODCALLTYPE put_Clusters(LONG value) override;
  HRESULT STDMETHODCALLTYPE get_Clusters(LONG* value) override;
  HRESULT STDMETHODCALLTYPE put_LearningRadius(double value) override;
  HRESULT STDMETHODCALLTYPE get_LearningRadius(double* value) override;
  HRESULT STDMETHODCALLTYPE put_LearningRate(double value) override;
  HRESULT STDMETHODCALLTYPE get_LearningRate(double* value) override;
  HRESULT STDMETHODCALLTYPE put_EpochCount(LONG value) override;
  HRESULT STDMETHODCALLTYPE get_EpochCount(LONG* value) override;
  HRESULT STDMETHODCALLTYPE put_UseConvexCombination(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE get_UseConvexCombination(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_AutoScaleInputs(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE get_AutoScaleInputs(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE StopLearning() override;
  HRESULT STDMETHODCALLTYPE Run() override;
  HRESULT STDMETHODCALLTYPE GetSamplesCount(LONG* value) override;
  HRESULT STDMETHODCALLTYPE GetColumnsCount(LONG* value) override;
  HRESULT STDMETHODCALLTYPE ScaleValue(double value, double minSrcRangeValue, double maxSrcRangeValue,
                                       double minDestRangeValue, double maxDestRangeValue, double* result) override;
  HRESULT STDMETHODCALLTYPE ShowMainForm(BSTR* result) override;
  HRESULT STDMETHODCALLTYPE put_CellInputs(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE get_CellInputs(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_CellOutputs(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE get_CellOutputs(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE UnloadfrmMain() override;

  // ISupportErrorInfo
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID interfaceId) override;

  // IProvideClassInfo2
  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override;

  // IConnectionPointContainer
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID interfaceId, IConnectionPoint** point) override;

 private:
  ClassifierServer();
  virtual ~ClassifierServer() = default;

  /// Makes the component behind this object; raises what that raises.
  void compose();
  void raiseNextEpoch(std::int32_t& epoch, double& rate, std::int32_t& radius);
  /// ExcelApplication by dispatch. The type library gives it the type of the application's own library, and a call
  /// through the type information would fail on a machine without that one.
  HRESULT invokeExcelApplication(WORD flags, std::span<const VARIANT> arguments, VARIANT* result, UINT* argument);

  /// One element of Outputs by dispatch, for scripts: their languages index no array of 32-bit integers.
  HRESULT invokeOutput(const VARIANT& index, VARIANT* result);
  /// Everything else; @param exception, argument are filled as Invoke fills its own.
  HRESULT invokeByTypeLibrary(DISPID id, WORD flags, DISPPARAMS parameters, VARIANT* result, EXCEPINFO& exception,
                              UINT& argument);

  ModuleLock lock_;
  std::atomic<ULONG> references_{1};
  std::array<EventPoint, 2> points_;
  std::shared_ptr<Classifier3> classifier_;
  GivenInputs given_;
};

}  // namespace mervane::server
