#include "tests/windows_flow/host_dispatch.h"

#include <gtest/gtest.h>

#include "hosts/automation/automation_object.h"
#include "mervane/convert.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "spreadsheet/application.h"
#include "tests/conformance/workbook_under_test.h"
#include "tests/windows_flow/dispatch_client.h"

namespace mervane::tests {
namespace {

using automation::AutomationObject;

class ForeignObjects : public testing::Test {
 protected:
  WorkbookUnderTest book{{{"Sheet1", {{1.0, 2.0}, {3.0, 4.0}}}}};
  DispatchClient client{adopted(HostDispatch::wrap(book.application()))};
  sheet::Application application{std::make_shared<AutomationObject>(client.get())};
};

template <class Body>
Failure failureOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure;
  }
  ADD_FAILURE() << "nothing was raised";
  return {0, ""};
}

TEST_F(ForeignObjects, TheDefaultMemberIsTheItemWithArgumentsAndTheValueWithout) {
  const DispatchClient range = client.object(L"Range", {"A1:B2"});
  automation::OwnedVariant value;
  DISPPARAMS none{};
  ASSERT_EQ(range.object(L"Item", {2, 1})
                .get()
                ->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, value.get(), nullptr, nullptr),
            S_OK);
  EXPECT_EQ(automation::fromAutomation(value.value()), Variant(3.0));
  automation::OwnedVariant cell;
  VARIANT places[2];
  places[0].vt = places[1].vt = VT_I4;
  places[0].lVal = 2;  // the column, as the last argument comes first
  places[1].lVal = 1;
  DISPPARAMS parameters{places, nullptr, 2, 0};
  ASSERT_EQ(range.get()->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET | DISPATCH_METHOD, &parameters,
                                cell.get(), nullptr, nullptr),
            S_OK);
  EXPECT_EQ(DispatchClient(cell.value().pdispVal).call(L"value"), Variant(2.0));
}

TEST_F(ForeignObjects, AnEnumeratorGivesEveryCellOfARange) {
  std::vector<double> numbers;
  sheet::forEach<sheet::Range>(application.Range("A1:B2").Cells(), [&](const sheet::Range& cell) {
    numbers.push_back(toDouble(cell.Value(), englishLocale()));
  });
  EXPECT_EQ(numbers, (std::vector<double>{1.0, 2.0, 3.0, 4.0}));
}

TEST_F(ForeignObjects, AFailureOfTheApplicationKeepsNumberDescriptionAndSource) {
  const Failure there = failureOf([&] { static_cast<void>(sheet::Application(book.application()).Range("No!A1")); });
  const Failure here = failureOf([&] { static_cast<void>(application.Range("No!A1")); });
  EXPECT_EQ(here.number(), there.number());
  EXPECT_EQ(here.description(), there.description());
  EXPECT_EQ(here.source(), there.source());
}

TEST_F(ForeignObjects, AMemberThatAnObjectLacksIsRefusedAsSuch) {
  EXPECT_EQ(failureOf([&] { static_cast<void>(client.call(L"Strikethrough")); }).number(),
            runtime::memberNotSupported.number);
  EXPECT_EQ(failureOf([&] { static_cast<void>(client.call(L"NoSuchMember")); }).number(),
            runtime::memberNotSupported.number);
}

TEST_F(ForeignObjects, MembersThatDependOnTheLanguageArePassedTheEnglishLocale) {
  EXPECT_NO_THROW(application.ScreenUpdating(false));
  EXPECT_NO_THROW(static_cast<void>(application.ReferenceStyle()));
  // A client with the user's own locale would fail on a machine of another language.
  EXPECT_EQ(failureOf([&] { client.put(L"ScreenUpdating", false); }).description(),
            "Old format or invalid type library");
}

TEST_F(ForeignObjects, EveryReferenceIsGivenBack) {
  const long before = HostDispatch::alive();
  {
    const sheet::Range cells = application.Range("A1:B2");
    sheet::forEach<sheet::Range>(cells.Cells(), [](const sheet::Range& cell) { cell.Font().Bold(true); });
    EXPECT_GT(HostDispatch::alive(), before);
  }
  EXPECT_EQ(HostDispatch::alive(), before);
}

}  // namespace
}  // namespace mervane::tests
