#include <gtest/gtest.h>

#include <cstring>

#include "tests/windows_server/client.h"

namespace mervane::tests {
namespace {

/// Rows 5 to 7 and columns 3 to 4 of one element type: {1, 2}, {3, 4}, {5, 60}.
template <class Element, class Make>
Value arrayOf(VARTYPE type, Make&& make) {
  SAFEARRAYBOUND bounds[] = {{3, 5}, {2, 3}};
  SAFEARRAY* array = SafeArrayCreate(type, 2, bounds);
  const int elements[3][2] = {{1, 2}, {3, 4}, {5, 60}};
  for (LONG row = 0; row < 3; ++row) {
    for (LONG column = 0; column < 2; ++column) {
      LONG position[] = {row + 5, column + 3};
      void* place = nullptr;
      SafeArrayPtrOfIndex(array, position, &place);
      const Element element = make(elements[row][column]);
      std::memcpy(place, &element, sizeof element);
    }
  }
  return {array, type};
}

class ServerArrays : public testing::Test {
 protected:
  /// Sets an array from arrayOf and looks at what the component makes of it.
  void expectTaken(Value array) {
    const VARTYPE type = array.type();
    ASSERT_EQ(late.put(L"Inputs", std::move(array)).number, S_OK) << type;
    EXPECT_EQ(late.get(L"GetSamplesCount")->lVal, 3);
    EXPECT_EQ(late.get(L"GetColumnsCount")->lVal, 2);
    EXPECT_EQ(late.get(L"getMinValue", {0})->dblVal, 1.0) << type;
    EXPECT_EQ(late.get(L"getMaxValue", {0})->dblVal, 5.0) << type;
    EXPECT_EQ(late.get(L"getMaxValue", {1})->dblVal, 60.0) << type;
    EXPECT_EQ(late.get(L"getMaxValue", {2})->dblVal, 0.0);
    EXPECT_EQ(outputsOf(classifier.get()), (Numbers{5, {0, 0, 0}}));
  }
  Classifier classifier;
  LateBound late = classifier.lateBound();
};

TEST_F(ServerArrays, NumbersOfEveryWidthAreTaken) {
  expectTaken(arrayOf<double>(VT_R8, [](int value) { return static_cast<double>(value); }));
  expectTaken(arrayOf<float>(VT_R4, [](int value) { return static_cast<float>(value); }));
  expectTaken(arrayOf<LONG>(VT_I4, [](int value) { return static_cast<LONG>(value); }));
  expectTaken(arrayOf<SHORT>(VT_I2, [](int value) { return static_cast<SHORT>(value); }));
  expectTaken(arrayOf<BYTE>(VT_UI1, [](int value) { return static_cast<BYTE>(value); }));
  expectTaken(arrayOf<USHORT>(VT_UI2, [](int value) { return static_cast<USHORT>(value); }));
  expectTaken(arrayOf<ULONG>(VT_UI4, [](int value) { return static_cast<ULONG>(value); }));
  expectTaken(arrayOf<LONGLONG>(VT_I8, [](int value) { return static_cast<LONGLONG>(value); }));
}

TEST_F(ServerArrays, DatesCurrencyTextsAndVariantsAreTaken) {
  expectTaken(arrayOf<DATE>(VT_DATE, [](int value) { return static_cast<DATE>(value); }));
  expectTaken(arrayOf<CY>(VT_CY, [](int value) {
    CY amount{};
    amount.int64 = value * 10000LL;
    return amount;
  }));
  expectTaken(arrayOf<BSTR>(VT_BSTR, [](int value) { return SysAllocString(std::to_wstring(value).c_str()); }));
  expectTaken(arrayOf<VARIANT>(VT_VARIANT, [](int value) {
    VARIANT element{};
    element.vt = value % 2 == 0 ? VT_BSTR : VT_I2;
    if (value % 2 == 0) {
      element.bstrVal = SysAllocString(std::to_wstring(value).c_str());
    } else {
      element.iVal = static_cast<SHORT>(value);
    }
    return element;
  }));
}

TEST_F(ServerArrays, AnArrayByReferenceIsTaken) {
  Value owner = arrayOf<double>(VT_R8, [](int value) { return static_cast<double>(value); });
  SAFEARRAY* array = owner->parray;
  VARIANT reference{};
  reference.vt = VT_ARRAY | VT_BYREF | VT_R8;
  reference.pparray = &array;
  EXPECT_EQ(classifier->put_Inputs(reference), S_OK);
  EXPECT_EQ(outputsOf(classifier.get()), (Numbers{5, {0, 0, 0}}));
}

TEST_F(ServerArrays, InputsComeBackWithTheirTypeAndBounds) {
  ASSERT_EQ(late.put(L"Inputs", arrayOf<float>(VT_R4, [](int value) { return static_cast<float>(value); })).number,
            S_OK);
  const Value back = late.get(L"Inputs");
  ASSERT_EQ(back.type(), VT_ARRAY | VT_R4);
  LONG lower = 0;
  LONG upper = 0;
  SafeArrayGetLBound(back->parray, 1, &lower);
  SafeArrayGetUBound(back->parray, 1, &upper);
  EXPECT_EQ(lower, 5);
  EXPECT_EQ(upper, 7);
  SafeArrayGetLBound(back->parray, 2, &lower);
  SafeArrayGetUBound(back->parray, 2, &upper);
  EXPECT_EQ(lower, 3);
  EXPECT_EQ(upper, 4);
  LONG last[] = {7, 4};
  float element = 0.0F;
  SafeArrayGetElement(back->parray, last, &element);
  EXPECT_EQ(element, 60.0F);
}

TEST_F(ServerArrays, InputsComeBackAsTheTypeThatCame) {
  const auto expectBack = [&](Value array) {
    const VARTYPE type = array.type();
    const std::size_t size = SafeArrayGetElemsize(array->parray) * 6;
    ASSERT_EQ(classifier->put_Inputs(*array.get()), S_OK) << type;
    const Value back = late.get(L"Inputs");
    ASSERT_EQ(back.type(), type);
    VARTYPE own = VT_EMPTY;
    EXPECT_EQ(SafeArrayGetVartype(back->parray, &own), S_OK);
    EXPECT_EQ(VT_ARRAY | own, type);
    EXPECT_EQ(back->parray->rgsabound[1].lLbound, 5);
    EXPECT_NE(back->parray->pvData, array->parray->pvData);
    EXPECT_EQ(std::memcmp(back->parray->pvData, array->parray->pvData, size), 0) << type;
    EXPECT_EQ(late.get(L"getMaxValue", {1})->dblVal, 60.0) << type;
  };
  expectBack(arrayOf<LONGLONG>(VT_I8, [](int value) { return static_cast<LONGLONG>(value); }));
  expectBack(arrayOf<ULONGLONG>(VT_UI8, [](int value) { return static_cast<ULONGLONG>(value); }));
  expectBack(arrayOf<USHORT>(VT_UI2, [](int value) { return static_cast<USHORT>(value); }));
  expectBack(arrayOf<ULONG>(VT_UI4, [](int value) { return static_cast<ULONG>(value); }));
  expectBack(arrayOf<CHAR>(VT_I1, [](int value) { return static_cast<CHAR>(value); }));
  expectBack(arrayOf<LONGLONG>(VT_CY, [](int value) { return value * 10000LL; }));
  expectBack(arrayOf<double>(VT_R8, [](int value) { return static_cast<double>(value); }));
}

TEST_F(ServerArrays, DatesBooleansAndObjectsComeBackAsSuch) {
  const auto typeBack = [&](Value array) {
    static_cast<void>(classifier->put_Inputs(*array.get()));
    return late.get(L"Inputs").type();
  };
  EXPECT_EQ(typeBack(arrayOf<DATE>(VT_DATE, [](int value) { return static_cast<DATE>(value); })), VT_ARRAY | VT_DATE);
  EXPECT_EQ(typeBack(arrayOf<VARIANT_BOOL>(VT_BOOL, [](int) { return VARIANT_TRUE; })), VT_ARRAY | VT_BOOL);
  // Objects are no numbers, but they have become the value by then.
  EXPECT_EQ(typeBack(arrayOf<IDispatch*>(VT_DISPATCH, [](int) { return static_cast<IDispatch*>(nullptr); })),
            VT_ARRAY | VT_DISPATCH);
  // What comes after does not turn into what came before.
  EXPECT_EQ(typeBack(grid(5, 3, {{1, 2}, {3, 4}, {5, 60}})), VT_ARRAY | VT_R8);
  EXPECT_EQ(late.put(L"Inputs", 7).description, L"Invalid argument");
  EXPECT_EQ(late.get(L"Inputs").type(), VT_ARRAY | VT_R8);
}

TEST_F(ServerArrays, ARefusedValueLeavesTheTypeThatCame) {
  Value dates = arrayOf<DATE>(VT_DATE, [](int value) { return static_cast<DATE>(value); });
  ASSERT_EQ(classifier->put_Inputs(*dates.get()), S_OK);
  EXPECT_EQ(late.put(L"Inputs", 7).description, L"Invalid argument");
  EXPECT_EQ(late.get(L"Inputs").type(), VT_ARRAY | VT_DATE);
}

TEST_F(ServerArrays, OneElementOfOutputsIsReadByItsRow) {
  ASSERT_EQ(late.put(L"Inputs", grid(5, 3, {{1, 2}, {3, 4}, {5, 60}})).number, S_OK);
  ASSERT_EQ(classifier->Run(), S_OK);
  const Numbers outputs = outputsOf(classifier.get());
  for (LONG row = 5; row <= 7; ++row) {
    const Value cluster = late.get(L"Outputs", {row});
    ASSERT_EQ(cluster.type(), VT_I4);
    EXPECT_EQ(cluster->lVal, outputs.elements[static_cast<std::size_t>(row - 5)]);
  }
  EXPECT_EQ(late.get(L"Outputs", {L"6"})->lVal, outputs.elements[1]);
  Value answer;
  EXPECT_EQ(late.call(L"Outputs", {4}, &answer).number, static_cast<HRESULT>(0x800A0009));
  EXPECT_EQ(late.call(L"Outputs", {8}, &answer).number, static_cast<HRESULT>(0x800A0009));
  EXPECT_EQ(late.call(L"Outputs", {L"first"}, &answer).number, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(late.get(L"Outputs").type(), VT_ARRAY | VT_I4);
}

TEST_F(ServerArrays, WhatIsNoArrayChangesNothing) {
  ASSERT_EQ(late.put(L"Inputs", grid(5, 3, {{1, 2}, {3, 4}, {5, 60}})).number, S_OK);
  EXPECT_EQ(late.put(L"Inputs", 7).description, L"Invalid argument");
  EXPECT_EQ(late.get(L"Inputs").type(), VT_ARRAY | VT_R8);
  EXPECT_EQ(outputsOf(classifier.get()), (Numbers{5, {0, 0, 0}}));
}

TEST_F(ServerArrays, WhatIsNoArrayIsRefusedAsSuchWhateverItsKind) {
  const Raised refused{static_cast<HRESULT>(0x80044589), L"Invalid argument", L"MervaneCls31.Classifier3"};
  VARIANT scalar{};
  for (const VARTYPE kind : {VT_EMPTY, VT_NULL, VT_CY, VT_UNKNOWN, VT_RECORD}) {
    scalar.vt = kind;
    EXPECT_EQ(raisedBySlots(classifier->put_Inputs(scalar)), refused) << kind;
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &scalar;
    EXPECT_EQ(raisedBySlots(classifier->put_Inputs(reference)), refused) << kind;
  }
}

TEST_F(ServerArrays, AVariantByReferenceMayHoldTheArray) {
  Value array = grid(5, 3, {{1, 2}, {3, 4}, {5, 60}});
  VARIANT reference{};
  reference.vt = VT_BYREF | VT_VARIANT;
  reference.pvarVal = array.get();
  EXPECT_EQ(classifier->put_Inputs(reference), S_OK);
  EXPECT_EQ(outputsOf(classifier.get()), (Numbers{5, {0, 0, 0}}));
}

TEST_F(ServerArrays, OneDimensionFailsWithTheSubscriptErrorAndStays) {
  SAFEARRAY* vector = SafeArrayCreateVector(VT_R8, 1, 4);
  EXPECT_EQ(late.put(L"Inputs", Value(vector, VT_R8)).number, static_cast<HRESULT>(0x800A0009));
  EXPECT_EQ(late.get(L"Inputs").type(), VT_ARRAY | VT_R8);
}

TEST_F(ServerArrays, AnElementThatIsNoNumberFailsWithTheTypeMismatch) {
  Value array = arrayOf<BSTR>(VT_BSTR, [](int value) { return SysAllocString(value == 60 ? L"n/a" : L"1"); });
  EXPECT_EQ(late.put(L"Inputs", std::move(array)).number, static_cast<HRESULT>(0x800A000D));
}

TEST_F(ServerArrays, NegativeLowerBoundsAreKept) {
  ASSERT_EQ(late.put(L"Inputs", grid(-2, -7, {{1, 2}, {3, 4}, {5, 60}, {7, 8}})).number, S_OK);
  EXPECT_EQ(classifier->Run(), S_OK);
  const Numbers outputs = outputsOf(classifier.get());
  EXPECT_EQ(outputs.lower, -2);
  ASSERT_EQ(outputs.elements.size(), 4U);
  for (const LONG cluster : outputs.elements) EXPECT_TRUE(cluster >= 1 && cluster <= 3) << cluster;
}

}  // namespace
}  // namespace mervane::tests
