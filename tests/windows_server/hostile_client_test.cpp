#include <gtest/gtest.h>
#include <network_engine.h>

#include <functional>
#include <limits>

#include "tests/windows_server/client.h"

// Calls that no careful client makes. None may take the program down that hosts the component: each ends in a failure
// with error information, and the object goes on working.

namespace mervane::tests {
namespace {

constexpr HRESULT subscriptOutOfRange = static_cast<HRESULT>(0x800A0009);
constexpr HRESULT typeMismatch = static_cast<HRESULT>(0x800A000D);
constexpr HRESULT invalidArgument = static_cast<HRESULT>(0x80044589);

/// Two rows of two columns of a type, all zero.
Value zeros(VARTYPE type) {
  SAFEARRAYBOUND bounds[] = {{2, 1}, {2, 1}};
  return {SafeArrayCreate(type, 2, bounds), type};
}

VARIANT referenceTo(VARTYPE type, void* place) {
  VARIANT reference{};
  reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
  reference.byref = place;
  return reference;
}

class HostileClient : public testing::Test {
 protected:
  /// The object still does its work.
  void TearDown() override {
    EXPECT_EQ(classifier->put_Clusters(3), S_OK);
    EXPECT_EQ(classifier->put_Inputs(*grid(1, 1, {{1, 10}, {9, 90}, {2, 20}}).get()), S_OK);
    EXPECT_EQ(classifier->Run(), S_OK);
    const Numbers outputs = outputsOf(classifier.get());
    ASSERT_EQ(outputs.elements.size(), 3U);
    for (const LONG cluster : outputs.elements) EXPECT_GT(cluster, 0);
  }

  /// One call by a slot: it fails and says why.
  static void expectTold(HRESULT result, HRESULT expected, const std::string& call) {
    const Raised raised = raisedBySlots(result);
    EXPECT_EQ(raised.number, expected) << call;
    EXPECT_NE(raised.description, L"") << call;
  }
  /// Sets Inputs by the slot and by dispatch.
  void expectRefused(const VARIANT& inputs, HRESULT expected, const std::string& what) {
    expectTold(classifier->put_Inputs(inputs), expected, what + " by slot");
    VARIANT argument = inputs;
    EXPECT_EQ(invoke(0x6803000B, DISPATCH_PROPERTYPUT, &argument), expected) << what << " by dispatch";
  }
  /// The number of a failure by dispatch, whichever way it came.
  HRESULT invoke(DISPID id, WORD flags, VARIANT* argument, VARIANT* result = nullptr) {
    DISPID putId = DISPID_PROPERTYPUT;
    const bool puts = flags != DISPATCH_METHOD && flags != DISPATCH_PROPERTYGET;
    DISPPARAMS parameters{argument, puts ? &putId : nullptr, argument == nullptr ? 0U : 1U, puts ? 1U : 0U};
    EXCEPINFO exception{};
    const HRESULT called =
        classifier->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result, &exception, nullptr);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    return called == DISP_E_EXCEPTION ? exception.scode : called;
  }

  Classifier classifier;
};

TEST_F(HostileClient, AnArrayWhoseElementsHaveBeenGivenBackIsRefused) {
  for (const VARTYPE type : {VT_R8, VT_R4, VT_I2, VT_UI1, VT_I8, VT_CY, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_DECIMAL}) {
    Value array = zeros(type);
    ASSERT_EQ(SafeArrayDestroyData(array->parray), S_OK);
    ASSERT_EQ(array->parray->pvData, nullptr);
    expectRefused(*array.get(), subscriptOutOfRange, std::to_string(type));
    SAFEARRAY* referred = array->parray;
    expectRefused(referenceTo(static_cast<VARTYPE>(VT_ARRAY | type), &referred), subscriptOutOfRange,
                  "reference " + std::to_string(type));
  }
}

TEST_F(HostileClient, AnArrayThatHoldsOtherElementsThanTheValueSaysIsNotRead) {
  const std::pair<VARTYPE, VARTYPE> heldAndSaid[] = {
      {VT_I2, VT_R8},       {VT_UI1, VT_VARIANT}, {VT_R4, VT_DECIMAL},  {VT_I8, VT_BSTR}, {VT_I4, VT_BSTR},
      {VT_R8, VT_DISPATCH}, {VT_BSTR, VT_I8},     {VT_VARIANT, VT_R8},  {VT_R8, VT_I2},   {VT_R8, VT_RECORD},
      {VT_I4, VT_UNKNOWN},  {VT_DISPATCH, VT_I4}, {VT_BSTR, VT_VARIANT}};
  for (const auto& [held, said] : heldAndSaid) {
    const Value array = zeros(held);
    VARIANT lie = *array.operator->();
    lie.vt = static_cast<VARTYPE>(VT_ARRAY | said);
    expectRefused(lie, typeMismatch, std::to_string(held) + " as " + std::to_string(said));
  }
}

TEST_F(HostileClient, BitsOfOneSizeMayBeToldByEitherName) {
  const Value array = zeros(VT_I4);
  VARIANT other = *array.operator->();
  other.vt = VT_ARRAY | VT_INT;
  EXPECT_EQ(classifier->put_Inputs(other), S_OK);
}

TEST_F(HostileClient, BoundsBeyondThirtyTwoBitsAreRefused) {
  const Value array = zeros(VT_R8);
  for (SAFEARRAYBOUND* const bound : {&array->parray->rgsabound[0], &array->parray->rgsabound[1]}) {
    bound->lLbound = std::numeric_limits<LONG>::max();
    expectRefused(*array.operator->(), subscriptOutOfRange, "beyond the last");
    bound->lLbound = std::numeric_limits<LONG>::min();
    const ULONG count = std::exchange(bound->cElements, 0);
    expectRefused(*array.operator->(), subscriptOutOfRange, "one below the first");
    *bound = {count, 1};
  }
}

TEST_F(HostileClient, AValueThatRefersToItselfIsNoArray) {
  VARIANT value{};
  value.vt = VT_BYREF | VT_VARIANT;
  value.pvarVal = &value;
  expectTold(classifier->put_Inputs(value), invalidArgument, "by slot");
  VARIANT first{};
  VARIANT second = referenceTo(VT_VARIANT, &first);
  first = referenceTo(VT_VARIANT, &second);
  expectTold(classifier->put_Inputs(first), invalidArgument, "two in a ring");
  // Whatever takes one argument takes it by dispatch.
  for (const DISPID id : {0x6803000B, 0x68030009, 0x68030008, 0x68030007, 0x68030006, 0x68030005, 0x68030004,
                          0x68030003, 0x68030002, 0x68030001, 0x68030000}) {
    EXPECT_EQ(invoke(id, DISPATCH_PROPERTYPUT, &value), DISP_E_TYPEMISMATCH) << id;
    EXPECT_EQ(invoke(id, DISPATCH_PROPERTYPUT, &first), DISP_E_TYPEMISMATCH) << id;
  }
  EXPECT_EQ(invoke(0x6803000C, DISPATCH_PROPERTYPUTREF, &value), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(invoke(0x6003000D, DISPATCH_METHOD, &value), DISP_E_TYPEMISMATCH);
}

TEST_F(HostileClient, AnArrayThatLiesInItselfIsRefused) {
  const Value array = zeros(VT_VARIANT);
  auto* elements = static_cast<VARIANT*>(array->parray->pvData);
  elements[3] = *array.operator->();
  expectRefused(*array.operator->(), typeMismatch, "itself");
  SAFEARRAY* again = array->parray;
  elements[3] = referenceTo(VT_ARRAY | VT_VARIANT, &again);
  expectRefused(*array.operator->(), typeMismatch, "a reference to itself");
  elements[3] = referenceTo(VT_VARIANT, &elements[3]);
  expectRefused(*array.operator->(), typeMismatch, "an element that refers to itself");
  elements[3] = {};
}

TEST_F(HostileClient, ReferencesThatLeadNowhereAreRefused) {
  for (const VARTYPE type : {VT_VARIANT, VT_I4, VT_R8, VT_DECIMAL, VT_BSTR, VT_DISPATCH}) {
    expectTold(classifier->put_Inputs(referenceTo(type, nullptr)), invalidArgument, std::to_string(type));
    VARIANT reference = referenceTo(type, nullptr);
    EXPECT_EQ(invoke(0x68030007, DISPATCH_PROPERTYPUT, &reference), DISP_E_TYPEMISMATCH) << type;
    EXPECT_EQ(invoke(0x68030001, DISPATCH_PROPERTYPUT, &reference), DISP_E_TYPEMISMATCH) << type;
    const Value array = zeros(VT_VARIANT);
    auto* elements = static_cast<VARIANT*>(array->parray->pvData);
    elements[0] = referenceTo(type, nullptr);
    expectRefused(*array.operator->(), typeMismatch, "element " + std::to_string(type));
    elements[0] = {};
  }
  expectTold(classifier->put_Inputs(referenceTo(VT_ARRAY | VT_R8, nullptr)), invalidArgument, "array");
  SAFEARRAY* none = nullptr;
  expectTold(classifier->put_Inputs(referenceTo(VT_ARRAY | VT_R8, &none)), subscriptOutOfRange, "no array");
}

TEST_F(HostileClient, EveryTypeThereIsOrIsNotIsAnswered) {
  for (const unsigned flags : {0x0000U, 0x1000U, 0x2000U, 0x4000U, 0x6000U, 0x7000U, 0x8000U, 0xF000U, 0xFF80U}) {
    for (unsigned base = 0; base <= 0x7F; ++base) {
      VARIANT value{};
      value.vt = static_cast<VARTYPE>(flags | base);
      const bool holdsArray = (flags & VT_ARRAY) != 0 && (flags & VT_BYREF) == 0;
      ASSERT_EQ(classifier->put_Inputs(value), holdsArray ? subscriptOutOfRange : invalidArgument) << value.vt;
      ASSERT_TRUE(FAILED(invoke(0x6803000B, DISPATCH_PROPERTYPUT, &value))) << value.vt;
      static_cast<void>(invoke(0x68030007, DISPATCH_PROPERTYPUT, &value));
      static_cast<void>(invoke(0x68030001, DISPATCH_PROPERTYPUT, &value));
    }
  }
}

TEST_F(HostileClient, ANullPointerInAnySlotIsToldAsSuch) {
  _Classifier3* const object = classifier.get();
  const std::pair<const char*, std::function<HRESULT()>> calls[] = {
      {"get_ExcelApplication", [&] { return object->get_ExcelApplication(nullptr); }},
      {"get_Inputs", [&] { return object->get_Inputs(nullptr); }},
      {"getMaxValue", [&] { return object->getMaxValue(0, nullptr); }},
      {"getMinValue", [&] { return object->getMinValue(0, nullptr); }},
      {"get_Outputs", [&] { return object->get_Outputs(nullptr); }},
      {"get_InitialWeights", [&] { return object->get_InitialWeights(nullptr); }},
      {"put_ActivationFunction", [&] { return object->put_ActivationFunction(nullptr); }},
      {"get_ActivationFunction", [&] { return object->get_ActivationFunction(nullptr); }},
      {"get_Clusters", [&] { return object->get_Clusters(nullptr); }},
      {"get_LearningRadius", [&] { return object->get_LearningRadius(nullptr); }},
      {"get_LearningRate", [&] { return object->get_LearningRate(nullptr); }},
      {"get_EpochCount", [&] { return object->get_EpochCount(nullptr); }},
      {"get_UseConvexCombination", [&] { return object->get_UseConvexCombination(nullptr); }},
      {"put_AutoScaleInputs", [&] { return object->put_AutoScaleInputs(nullptr); }},
      {"get_AutoScaleInputs", [&] { return object->get_AutoScaleInputs(nullptr); }},
      {"GetSamplesCount", [&] { return object->GetSamplesCount(nullptr); }},
      {"GetColumnsCount", [&] { return object->GetColumnsCount(nullptr); }},
      {"ScaleValue", [&] { return object->ScaleValue(5, 0, 10, 0, 1, nullptr); }},
      {"ShowMainForm", [&] { return object->ShowMainForm(nullptr); }},
      {"put_CellInputs", [&] { return object->put_CellInputs(nullptr); }},
      {"get_CellInputs", [&] { return object->get_CellInputs(nullptr); }},
      {"put_CellOutputs", [&] { return object->put_CellOutputs(nullptr); }},
      {"get_CellOutputs", [&] { return object->get_CellOutputs(nullptr); }},
  };
  for (const auto& [name, call] : calls) expectTold(call(), E_POINTER, name);
  // Nothing is a value here.
  EXPECT_EQ(object->putref_ExcelApplication(nullptr), S_OK);
  BSTR none = nullptr;
  EXPECT_EQ(object->put_CellInputs(&none), S_OK);
}

TEST_F(HostileClient, NullPointersToItsOtherInterfacesAreRefused) {
  _Classifier3* const object = classifier.get();
  EXPECT_EQ(object->GetTypeInfoCount(nullptr), E_POINTER);
  EXPECT_EQ(object->GetTypeInfo(0, 0, nullptr), E_POINTER);
  OLECHAR run[] = L"Run";
  OLECHAR* names[] = {run, nullptr};
  DISPID ids[2] = {};
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, nullptr, 1, 0, ids), E_POINTER);
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, 0, nullptr), E_POINTER);
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 2, 0, ids), E_POINTER);
  EXPECT_TRUE(FAILED(object->GetIDsOfNames(IID_NULL, names, 0, 0, ids)));
  EXPECT_EQ(object->Invoke(0x60030011, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_POINTER);
  DISPPARAMS promised{nullptr, nullptr, 3, 0};
  EXPECT_EQ(object->Invoke(0x6003000D, IID_NULL, 0, DISPATCH_METHOD, &promised, nullptr, nullptr, nullptr), E_POINTER);
  VARIANT argument{};
  DISPPARAMS unnamed{&argument, nullptr, 1, 1};
  EXPECT_EQ(object->Invoke(0x68030007, IID_NULL, 0, DISPATCH_PROPERTYPUT, &unnamed, nullptr, nullptr, nullptr),
            E_POINTER);
  DISPID names3[] = {DISPID_PROPERTYPUT, 5, 6};
  DISPPARAMS tooManyNames{&argument, names3, 1, 3};
  EXPECT_EQ(object->Invoke(0x68030007, IID_NULL, 0, DISPATCH_PROPERTYPUT, &tooManyNames, nullptr, nullptr, nullptr),
            DISP_E_BADPARAMCOUNT);
  // A failure whose text nobody asks for, and an answer that nobody wants.
  argument = *Value(7.0).operator->();
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS rate{&argument, &put, 1, 1};
  EXPECT_EQ(object->Invoke(0x68030005, IID_NULL, 0, DISPATCH_PROPERTYPUT, &rate, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
  DISPPARAMS nothing{};
  EXPECT_EQ(object->Invoke(0x68030007, IID_NULL, 0, DISPATCH_PROPERTYGET, &nothing, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(object->Invoke(0x6803000C, IID_NULL, 0, DISPATCH_PROPERTYGET, &nothing, nullptr, nullptr, nullptr), S_OK);

  ComPtr<IProvideClassInfo2> informed;
  object->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(informed.GetAddressOf()));
  EXPECT_EQ(informed->GetClassInfo(nullptr), E_POINTER);
  EXPECT_EQ(informed->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr), E_POINTER);
}

TEST_F(HostileClient, NullPointersToItsEventsAreRefused) {
  ComPtr<IConnectionPointContainer> container;
  classifier->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(container.GetAddressOf()));
  EXPECT_EQ(container->EnumConnectionPoints(nullptr), E_POINTER);
  EXPECT_EQ(container->FindConnectionPoint(server::eventInterfaceId, nullptr), E_POINTER);
  ComPtr<IEnumConnectionPoints> points;
  ASSERT_EQ(container->EnumConnectionPoints(&points), S_OK);
  IConnectionPoint* two[2] = {};
  EXPECT_EQ(points->Next(1, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(points->Next(2, two, nullptr), E_POINTER);
  EXPECT_EQ(points->Clone(nullptr), E_POINTER);
  ComPtr<IConnectionPoint> point;
  ASSERT_EQ(points->Next(1, &point, nullptr), S_OK);
  DWORD cookie = 0;
  EXPECT_EQ(point->Advise(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(point->Advise(classifier.get(), nullptr), E_POINTER);
  EXPECT_TRUE(FAILED(point->Unadvise(77)));
  EXPECT_EQ(point->GetConnectionInterface(nullptr), E_POINTER);
  EXPECT_EQ(point->GetConnectionPointContainer(nullptr), E_POINTER);
  EXPECT_EQ(point->EnumConnections(nullptr), E_POINTER);
  ComPtr<IEnumConnections> connections;
  ASSERT_EQ(point->EnumConnections(&connections), S_OK);
  EXPECT_EQ(connections->Next(1, nullptr, nullptr), E_POINTER);
  CONNECTDATA data[2] = {};
  EXPECT_EQ(connections->Next(2, data, nullptr), E_POINTER);
  EXPECT_EQ(connections->Clone(nullptr), E_POINTER);
}

TEST_F(HostileClient, TheEngineRefusesArraysThatHoldNothing) {
  ServerLibrary library(MERVANE_ENGINE_SERVER);
  ComPtr<IClassFactory> factory;
  ASSERT_EQ(
      library.classObject(server::engineClassId, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf())),
      S_OK);
  ComPtr<INetworkEngine> engine;
  ASSERT_EQ(
      factory->CreateInstance(nullptr, server::engineInterfaceId, reinterpret_cast<void**>(engine.GetAddressOf())),
      S_OK);
  SAFEARRAY* none = nullptr;
  expectTold(engine->Create(1, 2, nullptr, 0.3, 3), typeMismatch, "Create");
  expectTold(engine->Create(1, 2, &none, 0.3, 3), typeMismatch, "Create without an array");
  SAFEARRAY* hollow = SafeArrayCreateVector(VT_R8, 0, 0);
  const Value owner(hollow, VT_R8);
  SAFEARRAYBOUND bound{2, 0};
  SAFEARRAY* emptied = SafeArrayCreate(VT_R8, 1, &bound);
  const Value emptiedOwner(emptied, VT_R8);
  SafeArrayDestroyData(emptied);
  SAFEARRAY* counts = SafeArrayCreateVector(VT_I4, 0, 1);
  const Value countsOwner(counts, VT_I4);
  *static_cast<LONG*>(counts->pvData) = 2;
  ASSERT_EQ(engine->Create(1, 2, &counts, 0.3, 3), S_OK);
  expectTold(engine->SetInputs(&emptied), subscriptOutOfRange, "SetInputs");
  expectTold(engine->SetConvexInputs(&emptied, 0.5, 0), subscriptOutOfRange, "SetConvexInputs");
  EXPECT_TRUE(FAILED(engine->SetInputs(&hollow)));
  expectTold(engine->GetWeightRows(nullptr), E_POINTER, "GetWeightRows");
  expectTold(engine->GetWeightColumns(nullptr), E_POINTER, "GetWeightColumns");
  expectTold(engine->GetWinner(nullptr), E_POINTER, "GetWinner");
  expectTold(engine->SetWeight(0.5, 0, 0, 0, nullptr), E_POINTER, "SetWeight");
}

}  // namespace
}  // namespace mervane::tests
