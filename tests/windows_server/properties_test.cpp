#include <gtest/gtest.h>

#include <limits>

#include "tests/windows_server/client.h"
#include "tests/windows_server/sink.h"

namespace mervane::tests {
namespace {

constexpr HRESULT invalidArgument = static_cast<HRESULT>(0x80044589);
const Raised refused{invalidArgument, L"Invalid argument", L"MervaneCls31.Classifier3"};

TEST(ServerProperties, AFreshObjectReportsItsDefaults) {
  const Classifier classifier;
  LateBound late = classifier.lateBound();
  EXPECT_EQ(late.get(L"Clusters")->lVal, 3);
  EXPECT_EQ(late.get(L"InitialWeights")->dblVal, 0.3);
  EXPECT_EQ(late.get(L"LearningRadius")->dblVal, 3.0);
  EXPECT_EQ(late.get(L"LearningRate")->dblVal, 0.5);
  EXPECT_EQ(late.get(L"EpochCount")->lVal, 100);
  EXPECT_EQ(late.get(L"ActivationFunction")->lVal, 3);
  EXPECT_EQ(late.get(L"UseConvexCombination")->boolVal, VARIANT_TRUE);
  EXPECT_EQ(late.get(L"AutoScaleInputs")->boolVal, VARIANT_TRUE);
  EXPECT_EQ(late.get(L"Inputs").type(), VT_EMPTY);
  EXPECT_EQ(late.get(L"CellInputs").text(), L"");
}

TEST(ServerProperties, LateBoundPutsAreReadBack) {
  const Classifier classifier;
  LateBound late = classifier.lateBound();
  EXPECT_EQ(late.put(L"Clusters", 5).number, S_OK);
  EXPECT_EQ(late.put(L"InitialWeights", 0.25).number, S_OK);
  EXPECT_EQ(late.put(L"LearningRadius", -2.5).number, S_OK);
  EXPECT_EQ(late.put(L"LearningRate", 0.0).number, S_OK);
  EXPECT_EQ(late.put(L"EpochCount", -1).number, S_OK);
  EXPECT_EQ(late.put(L"ActivationFunction", 4).number, S_OK);
  EXPECT_EQ(late.put(L"UseConvexCombination", false).number, S_OK);
  EXPECT_EQ(late.put(L"AutoScaleInputs", false).number, S_OK);
  EXPECT_EQ(late.put(L"CellInputs", L"Sheet1!B2:C10").number, S_OK);
  EXPECT_EQ(late.put(L"CellOutputs", L"Sheet1!\u00e9").number, S_OK);
  EXPECT_EQ(late.get(L"Clusters")->lVal, 5);
  EXPECT_EQ(late.get(L"InitialWeights")->dblVal, 0.25);
  EXPECT_EQ(late.get(L"LearningRadius")->dblVal, -2.5);
  EXPECT_EQ(late.get(L"LearningRate")->dblVal, 0.0);
  EXPECT_EQ(late.get(L"EpochCount")->lVal, -1);
  EXPECT_EQ(late.get(L"ActivationFunction")->lVal, 4);
  EXPECT_EQ(late.get(L"UseConvexCombination")->boolVal, VARIANT_FALSE);
  EXPECT_EQ(late.get(L"AutoScaleInputs")->boolVal, VARIANT_FALSE);
  EXPECT_EQ(late.get(L"CellInputs").text(), L"Sheet1!B2:C10");
  EXPECT_EQ(late.get(L"CellOutputs").text(), L"Sheet1!\u00e9");
}

TEST(ServerProperties, ValuesOfOtherKindsAreConvertedAndUnfitOnesRefused) {
  const Classifier classifier;
  LateBound late = classifier.lateBound();
  EXPECT_EQ(late.put(L"Clusters", L"12").number, S_OK);
  EXPECT_EQ(late.get(L"Clusters")->lVal, 12);
  EXPECT_EQ(late.put(L"Clusters", 2.5).number, S_OK);
  EXPECT_EQ(late.get(L"Clusters")->lVal, 2);
  EXPECT_EQ(late.put(L"Clusters", L"many").number, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(late.put(L"Clusters", 1e12).number, DISP_E_OVERFLOW);
  EXPECT_EQ(late.get(L"Clusters")->lVal, 2);
}

TEST(ServerProperties, ARefusedValueComesWithNumberDescriptionAndSourceByDispatch) {
  const Classifier classifier;
  LateBound late = classifier.lateBound();
  for (const wchar_t* name : {L"LearningRate", L"InitialWeights"}) {
    const double before = late.get(name)->dblVal;
    for (const double bad : {1.0, -0.1, 1.5, std::numeric_limits<double>::quiet_NaN()}) {
      EXPECT_EQ(late.put(name, bad), refused) << bad;
      EXPECT_EQ(late.get(name)->dblVal, before);
    }
    EXPECT_EQ(late.put(name, 0.999999).number, S_OK);
  }
  EXPECT_EQ(late.put(L"Inputs", 5), refused);
  EXPECT_EQ(late.put(L"Inputs", L"text"), refused);
}

TEST(ServerProperties, ARefusedValueComesWithNumberDescriptionAndSourceBySlots) {
  const Classifier classifier;
  EXPECT_EQ(raisedBySlots(classifier->put_LearningRate(1.0)), refused);
  EXPECT_EQ(raisedBySlots(classifier->put_InitialWeights(-0.1)), refused);
  EXPECT_EQ(raisedBySlots(classifier->put_Inputs(*Value(3).get())), refused);
  double rate = 0.0;
  EXPECT_EQ(classifier->get_LearningRate(&rate), S_OK);
  EXPECT_EQ(rate, 0.5);
}

TEST(ServerProperties, ErrorsOfTheRunTimeKeepTheirNumbers) {
  const Classifier classifier;
  double value = 0.0;
  const Raised raised = raisedBySlots(classifier->getMaxValue(0, &value));
  EXPECT_EQ(raised.number, static_cast<HRESULT>(0x800A0009));
  EXPECT_EQ(raised.description, L"Subscript out of range");
}

TEST(ServerProperties, AnyNumberButZeroIsTrueBySlots) {
  const Classifier classifier;
  VARIANT_BOOL value = 5;
  EXPECT_EQ(classifier->put_UseConvexCombination(VARIANT_FALSE), S_OK);
  EXPECT_EQ(classifier->put_UseConvexCombination(value), S_OK);
  EXPECT_EQ(classifier->put_AutoScaleInputs(&value), S_OK);
  VARIANT_BOOL answer = VARIANT_FALSE;
  EXPECT_EQ(classifier->get_UseConvexCombination(&answer), S_OK);
  EXPECT_EQ(answer, VARIANT_TRUE);
  answer = VARIANT_FALSE;
  EXPECT_EQ(classifier->get_AutoScaleInputs(&answer), S_OK);
  EXPECT_EQ(answer, VARIANT_TRUE);
}

TEST(ServerProperties, NullPointersAreRefused) {
  const Classifier classifier;
  EXPECT_EQ(classifier->get_Clusters(nullptr), E_POINTER);
  EXPECT_EQ(classifier->get_Inputs(nullptr), E_POINTER);
  EXPECT_EQ(classifier->get_Outputs(nullptr), E_POINTER);
  EXPECT_EQ(classifier->put_CellInputs(nullptr), E_POINTER);
  EXPECT_EQ(classifier->put_ActivationFunction(nullptr), E_POINTER);
  EXPECT_EQ(classifier->put_AutoScaleInputs(nullptr), E_POINTER);
  EXPECT_EQ(classifier->ShowMainForm(nullptr), E_POINTER);
}

TEST(ServerProperties, ScaleValueIsCalledByNameAndBySlot) {
  const Classifier classifier;
  LateBound late = classifier.lateBound();
  EXPECT_EQ(late.get(L"ScaleValue", {5.0, 0.0, 10.0, 0.0, 1.0})->dblVal, 0.5);
  EXPECT_EQ(late.get(L"scalevalue", {11, 0, 10, 0, 1})->dblVal, 11.0);
  double result = 0.0;
  EXPECT_EQ(classifier->ScaleValue(10, 0, 10, 0.001, 0.999, &result), S_OK);
  EXPECT_EQ(result, 0.999);
  EXPECT_EQ(late.call(L"ScaleValue", {5.0, 0.0}).number, DISP_E_BADPARAMCOUNT);
}

TEST(ServerProperties, AnyLateBoundObjectServesAsTheApplication) {
  const Classifier classifier;
  const Classifier application;
  LateBound late = classifier.lateBound();
  EXPECT_EQ(late.get(L"ExcelApplication")->pdispVal, nullptr);
  EXPECT_EQ(late.putReference(L"ExcelApplication", application.get()).number, S_OK);
  const Value given = late.get(L"ExcelApplication");
  EXPECT_EQ(given.type(), VT_DISPATCH);
  EXPECT_EQ(given->pdispVal, static_cast<IDispatch*>(application.get()));
  EXPECT_EQ(late.putReference(L"ExcelApplication", 5).number, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(late.get(L"ExcelApplication")->pdispVal, static_cast<IDispatch*>(application.get()));
  EXPECT_EQ(late.putReference(L"ExcelApplication", static_cast<IDispatch*>(nullptr)).number, S_OK);
  EXPECT_EQ(late.get(L"ExcelApplication")->pdispVal, nullptr);
}

/// An application whose dispatch part and whose own slots are two objects, as those of a proxy are.
class SplitApplication final : public IDispatch {
 public:
  virtual ~SplitApplication() = default;
  Sink slots{server::applicationInterfaceId};

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
    if (interfaceId == server::applicationInterfaceId) return slots.QueryInterface(interfaceId, object);
    *object = interfaceId == IID_IUnknown || interfaceId == IID_IDispatch ? this : nullptr;
    return *object != nullptr ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
};

TEST(ServerProperties, TheApplicationIsGivenBackByItsOwnSlots) {
  SplitApplication application;
  {
    const Classifier classifier;
    LateBound late = classifier.lateBound();
    EXPECT_EQ(late.putReference(L"ExcelApplication", static_cast<IDispatch*>(&application)).number, S_OK);
    _Application* given = nullptr;
    EXPECT_EQ(classifier->get_ExcelApplication(&given), S_OK);
    EXPECT_EQ(static_cast<IDispatch*>(given), static_cast<IDispatch*>(&application.slots));
    EXPECT_EQ(application.slots.references, 2U);
    given->Release();
  }
  EXPECT_EQ(application.slots.references, 1U);
}

}  // namespace
}  // namespace mervane::tests
