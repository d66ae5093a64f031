#include "calc/references.h"

#include <gtest/gtest.h>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/XNamedRanges.hpp>

#include "tests/calc_extension/hidden_sheet.h"

namespace mervane::addin {
namespace {

using star::table::CellRangeAddress;

class References : public HiddenSheet {};

TEST_F(References, ARangeIsWrittenAsTheComponentReadsIt) {
  rename("Data");
  EXPECT_EQ(referenceText(document, CellRangeAddress(0, 1, 1, 4, 150)), "Data!B2:E151");
  EXPECT_EQ(referenceText(document, CellRangeAddress(0, 27, 8, 27, 8)), "Data!AB9");
  rename("My 'own' data");
  EXPECT_EQ(referenceText(document, CellRangeAddress(0, 0, 0, 0, 0)), "'My ''own'' data'!A1");
  rename("2024");
  EXPECT_EQ(referenceText(document, CellRangeAddress(0, 0, 0, 0, 0)), "'2024'!A1");
}

TEST_F(References, WhatThePickerWritesAndWhatTheDialogHoldsNameTheSameRange) {
  for (const char* name : {"Data", "My 'own' data"}) {
    rename(name);
    const CellRangeAddress range(0, 1, 2, 3, 5);
    for (const std::string& text : {pickerText(document, range), referenceText(document, range)}) {
      const auto found = rangeOf(document, text);
      ASSERT_TRUE(found) << text;
      EXPECT_EQ(referenceText(document, *found), referenceText(document, range)) << text;
    }
  }
}

TEST_F(References, ATextThatNamesNoRangeGivesNone) {
  for (const char* text : {"", "nonsense", "Nowhere!A1:B2", "A1:B2;C3"}) EXPECT_FALSE(rangeOf(document, text)) << text;
}

TEST_F(References, TheOfficesOwnNotationIsTurnedIntoTheComponents) {
  rename("Data");
  const std::pair<const char*, const char*> cases[] = {
      {"$Data.$B$2:$E$151", "Data!B2:E151"}, {"Data.B2", "Data!B2"},
      {"'Data'.$B$2:C9", "Data!B2:C9"},      {"$B$2:$C$12", "Data!B2:C12"},
      {"Data!$B$2:$E$20", "Data!B2:E20"},    {"  $Data.$C$3  ", "Data!C3"},
  };
  for (const auto& [typed, read] : cases) EXPECT_EQ(componentReference(document, typed), read) << typed;
  rename("It's.mine");
  EXPECT_EQ(componentReference(document, "$'It''s.mine'.$B$2:$C$3"), "'It''s.mine'!B2:C3");
}

TEST_F(References, WhatIsNoRangeHereAndWhatTheComponentReadsAlreadyStayAsTyped) {
  rename("Data");
  for (const char* text : {"", "nonsense", "Nowhere.B2:C3", "$Nowhere.$B$2", "'file:///a.ods'#$Data.B2", "data!b2:c9",
                           "B2", "Nowhere!B2:C3", "B2.5"}) {
    EXPECT_EQ(componentReference(document, text), text);
  }
}

TEST_F(References, WholeColumnsMeanTheirUsedCellsBelowTheHeadings) {
  rename("Data");
  EXPECT_EQ(componentReference(document, "C:E"), "Data!C3:E5");
  EXPECT_EQ(componentReference(document, "$Data.$C$1:$D$1048576"), "Data!C3:D5");
}

TEST_F(References, ANamedRangeIsTakenByItsName) {
  rename("Data");
  const uno::Reference<star::beans::XPropertySet> book(document, uno::UNO_QUERY_THROW);
  const uno::Reference<star::sheet::XNamedRanges> names(book->getPropertyValue("NamedRanges"), uno::UNO_QUERY_THROW);
  names->addNewByName("numbers", "$Data.$C$3:$E$5", star::table::CellAddress(0, 0, 0), 0);
  names->addNewByName("formula", "1+1", star::table::CellAddress(0, 0, 0), 0);
  EXPECT_EQ(componentReference(document, "numbers"), "Data!C3:E5");
  EXPECT_EQ(componentReference(document, "formula"), "formula");
}

}  // namespace
}  // namespace mervane::addin
