#include "support/server/classifier_server.h"

// The codes of connections.
#include <olectl.h>

#include <new>
#include <optional>

#include "hosts/automation/automation_object.h"
#include "hosts/automation/variant_conversion.h"
#include "platform/com/text.h"
#include "support/server/composition.h"
#include "support/server/guarded.h"
#include "support/server/server_ids.h"
#include "support/server/type_library.h"

using Microsoft::WRL::ComPtr;

namespace mervane::server {
namespace {

VARIANT_BOOL toPlatform(bool value) {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}

sheet::ObjectRef hostObject(IDispatch* dispatch) {
  if (dispatch == nullptr) return nullptr;
  return std::make_shared<automation::AutomationObject>(dispatch);
}

HRESULT refusedPointer() {
  return server::refusedPointer(defaultInterfaceId);
}

/// Fills an out argument by a function.
template <class Result, class Body>
HRESULT answer(Result* result, Body&& body) {
  if (result == nullptr) return refusedPointer();
  return guarded(defaultInterfaceId, [&] { *result = body(); });
}

template <class Body>
HRESULT guarded(Body&& body) {
  return server::guarded(defaultInterfaceId, std::forward<Body>(body));
}

}  // namespace

ClassifierServer::ClassifierServer()
    : points_{{EventPoint(eventInterfaceId, *this), EventPoint(earlierEventInterfaceId, *this)}} {}

HRESULT ClassifierServer::create(REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  ClassifierServer* made = new (std::nothrow) ClassifierServer();
  if (made == nullptr) return E_OUTOFMEMORY;
  // Asked first: a component and its dialog hold each other, and a caller who gets no reference could not part them.
  HRESULT result = made->QueryInterface(interfaceId, object);
  if (SUCCEEDED(result)) result = guarded([&] { made->compose(); });
  if (FAILED(result) && *object != nullptr) {
    static_cast<IUnknown*>(*object)->Release();
    *object = nullptr;
  }
  made->Release();
  return result;
}

void ClassifierServer::compose() {
  classifier_ = composeClassifier();
  try {
    classifier_->addNextEpochSink(
        [this](std::int32_t& epoch, double& rate, std::int32_t& radius) { raiseNextEpoch(epoch, rate, radius); });
  } catch (...) {
    classifier_->UnloadfrmMain();
    throw;
  }
}

HRESULT ClassifierServer::QueryInterface(REFIID interfaceId, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (interfaceId == IID_IUnknown || interfaceId == IID_IDispatch || interfaceId == defaultInterfaceId ||
      interfaceId == earlierDefaultInterfaceId) {
    *object = static_cast<_Classifier3*>(this);
  } else if (interfaceId == IID_ISupportErrorInfo) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else if (interfaceId == IID_IProvideClassInfo || interfaceId == IID_IProvideClassInfo2) {
    *object = static_cast<IProvideClassInfo2*>(this);
  } else if (interfaceId == IID_IConnectionPointContainer) {
    *object = static_cast<IConnectionPointContainer*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG ClassifierServer::AddRef() {
  return ++references_;
}

ULONG ClassifierServer::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ClassifierServer::putref_ExcelApplication(_Application* value) {
  return guarded([&] { classifier_->ExcelApplication(hostObject(value)); });
}

HRESULT ClassifierServer::get_ExcelApplication(_Application** value) {
  return answer(value, [&]() -> _Application* {
    const sheet::ObjectRef object = classifier_->ExcelApplication();
    const auto* foreign = dynamic_cast<const automation::AutomationObject*>(object.get());
    if (foreign == nullptr || foreign->dispatch() == nullptr) return nullptr;
    // The application's own slots, where it has some: its dispatch part may be another object's face.
    ComPtr<_Application> slots;
    if (SUCCEEDED(foreign->dispatch()->QueryInterface(applicationInterfaceId,
                                                      reinterpret_cast<void**>(slots.GetAddressOf())))) {
      return slots.Detach();
    }
    foreign->dispatch()->AddRef();
    return static_cast<_Application*>(foreign->dispatch());
  });
}

HRESULT ClassifierServer::put_Inputs(VARIANT value) {
  return guarded([&] {
    // What is no array is refused as such, also where the system has no counterpart of it.
    const std::optional<VARIANT> seen = automation::seenThrough(value);
    const bool holdsArray = seen && (seen->vt & VT_ARRAY) != 0;
    const Variant inputs = holdsArray ? automation::fromAutomation(*seen) : Variant();
    if (holdsArray) given_.remember(*seen, inputs);
    classifier_->Inputs(inputs);
  });
}

HRESULT ClassifierServer::get_Inputs(VARIANT* value) {
  if (value == nullptr) return refusedPointer();
  VariantInit(value);
  return guarded([&] {
    const Variant inputs = classifier_->Inputs();
    if (!given_.giveBack(inputs, *value)) automation::toAutomation(inputs, *value);
  });
}

HRESULT ClassifierServer::getMaxValue(LONG column, double* value) {
  return answer(value, [&] { return classifier_->getMaxValue(static_cast<std::int32_t>(column)); });
}

HRESULT ClassifierServer::getMinValue(LONG column, double* value) {
  return answer(value, [&] { return classifier_->getMinValue(static_cast<std::int32_t>(column)); });
}

HRESULT ClassifierServer::get_Outputs(SAFEARRAY** value) {
  return answer(value, [&] { return automation::toSafeArray(classifier_->Outputs()); });
}

HRESULT ClassifierServer::put_InitialWeights(double value) {
  return guarded([&] { classifier_->InitialWeights(value); });
}

HRESULT ClassifierServer::get_InitialWeights(double* value) {
  return answer(value, [&] { return classifier_->InitialWeights(); });
}

HRESULT ClassifierServer::put_ActivationFunction(::enuActivationFunction* value) {
  if (value == nullptr) return refusedPointer();
  return guarded([&] { classifier_->ActivationFunction(static_cast<enuActivationFunction>(*value)); });
}

HRESULT ClassifierServer::get_ActivationFunction(::enuActivationFunction* value) {
  return answer(value, [&] { return static_cast<::enuActivationFunction>(classifier_->ActivationFunction()); });
}

HRESULT ClassifierServer::put_Clusters(LONG value) {
  return guarded([&] { classifier_->Clusters(static_cast<std::int32_t>(value)); });
}

HRESULT ClassifierServer::get_Clusters(LONG* value) {
  return answer(value, [&] { return classifier_->Clusters(); });
}

HRESULT ClassifierServer::put_LearningRadius(double value) {
  return guarded([&] { classifier_->LearningRadius(value); });
}

HRESULT ClassifierServer::get_LearningRadius(double* value) {
  return answer(value, [&] { return classifier_->LearningRadius(); });
}

HRESULT ClassifierServer::put_LearningRate(double value) {
  return guarded([&] { classifier_->LearningRate(value); });
}

HRESULT ClassifierServer::get_LearningRate(double* value) {
  return answer(value, [&] { return classifier_->LearningRate(); });
}

HRESULT ClassifierServer::put_EpochCount(LONG value) {
  return guarded([&] { classifier_->EpochCount(static_cast<std::int32_t>(value)); });
}

HRESULT ClassifierServer::get_EpochCount(LONG* value) {
  return answer(value, [&] { return classifier_->EpochCount(); });
}

HRESULT ClassifierServer::put_UseConvexCombination(VARIANT_BOOL value) {
  return guarded([&] { classifier_->UseConvexCombination(value != VARIANT_FALSE); });
}

HRESULT ClassifierServer::get_UseConvexCombination(VARIANT_BOOL* value) {
  return answer(value, [&] { return toPlatform(classifier_->UseConvexCombination()); });
}

HRESULT ClassifierServer::put_AutoScaleInputs(VARIANT_BOOL* value) {
  if (value == nullptr) return refusedPointer();
  return guarded([&] { classifier_->AutoScaleInputs(*value != VARIANT_FALSE); });
}

HRESULT ClassifierServer::get_AutoScaleInputs(VARIANT_BOOL* value) {
  return answer(value, [&] { return toPlatform(classifier_->AutoScaleInputs()); });
}

HRESULT ClassifierServer::StopLearning() {
  return guarded([&] { classifier_->StopLearning(); });
}

HRESULT ClassifierServer::Run() {
  // A sink may give the client's last reference back.
  const ComPtr<_Classifier3> alive(this);
  return guarded([&] { classifier_->Run(); });
}

HRESULT ClassifierServer::GetSamplesCount(LONG* value) {
  return answer(value, [&] { return classifier_->GetSamplesCount(); });
}

HRESULT ClassifierServer::GetColumnsCount(LONG* value) {
  return answer(value, [&] { return classifier_->GetColumnsCount(); });
}

HRESULT ClassifierServer::ScaleValue(double value, double minSrcRangeValue, double maxSrcRangeValue,
                                     double minDestRangeValue, double maxDestRangeValue, double* result) {
  return answer(result, [&] {
    return classifier_->ScaleValue(value, minSrcRangeValue, maxSrcRangeValue, minDestRangeValue, maxDestRangeValue);
  });
}

HRESULT ClassifierServer::ShowMainForm(BSTR* result) {
  // So may whatever runs while the dialog is up.
  const ComPtr<_Classifier3> alive(this);
  return answer(result, [&] { return com::newBstr(classifier_->ShowMainForm()); });
}

HRESULT ClassifierServer::put_CellInputs(BSTR* value) {
  if (value == nullptr) return refusedPointer();
  return guarded([&] { classifier_->CellInputs(com::fromBstr(*value)); });
}

HRESULT ClassifierServer::get_CellInputs(BSTR* value) {
  return answer(value, [&] { return com::newBstr(classifier_->CellInputs()); });
}

HRESULT ClassifierServer::put_CellOutputs(BSTR* value) {
  if (value == nullptr) return refusedPointer();
  return guarded([&] { classifier_->CellOutputs(com::fromBstr(*value)); });
}

HRESULT ClassifierServer::get_CellOutputs(BSTR* value) {
  return answer(value, [&] { return com::newBstr(classifier_->CellOutputs()); });
}

HRESULT ClassifierServer::UnloadfrmMain() {
  return guarded([&] { classifier_->UnloadfrmMain(); });
}

HRESULT ClassifierServer::InterfaceSupportsErrorInfo(REFIID interfaceId) {
  return interfaceId == defaultInterfaceId || interfaceId == earlierDefaultInterfaceId ? S_OK : S_FALSE;
}

HRESULT ClassifierServer::GetClassInfo(ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  return typeInfoOf(classId, info);
}

HRESULT ClassifierServer::GetGUID(DWORD kind, GUID* id) {
  if (id == nullptr) return E_POINTER;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *id = eventInterfaceId;
  return S_OK;
}

HRESULT ClassifierServer::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (points == nullptr) return E_POINTER;
  *points = nullptr;
  return guarded([&] { *points = new ConnectionPoints({&points_[0], &points_[1]}); });
}

HRESULT ClassifierServer::FindConnectionPoint(REFIID interfaceId, IConnectionPoint** point) {
  if (point == nullptr) return E_POINTER;
  *point = nullptr;
  for (EventPoint& one : points_) {
    if (one.interfaceId() != interfaceId) continue;
    *point = &one;
    one.AddRef();
    return S_OK;
  }
  return CONNECT_E_NOCONNECTION;
}

void ClassifierServer::raiseNextEpoch(std::int32_t& epoch, double& rate, std::int32_t& radius) {
  LONG epochArgument = epoch;
  LONG radiusArgument = radius;
  std::array<VARIANT, 3> arguments{};
  arguments[2].vt = VT_BYREF | VT_I4;
  arguments[2].plVal = &epochArgument;
  arguments[1].vt = VT_BYREF | VT_R8;
  arguments[1].pdblVal = &rate;
  arguments[0].vt = VT_BYREF | VT_I4;
  arguments[0].plVal = &radiusArgument;
  DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
  for (EventPoint& point : points_) point.raise(nextEpochId, parameters);
  epoch = static_cast<std::int32_t>(epochArgument);
  radius = static_cast<std::int32_t>(radiusArgument);
}

}  // namespace mervane::server
