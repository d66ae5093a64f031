#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "mervane/failure.h"
#include "spreadsheet/application.h"
#include "spreadsheet/member_table.h"
#include "tests/support/fake_sheet.h"

namespace mervane::tests {

namespace {

using enum sheet::member::Id;
using sheet::Access;

/// Answers every call with one value and keeps what it was asked.
class Answering : public sheet::Object {
 public:
  explicit Answering(Variant answer) : answer_(std::move(answer)) {}
  Variant invoke(Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
    lastAccess = access;
    lastMember = member;
    lastArguments.assign(arguments.begin(), arguments.end());
    return answer_;
  }
  Access lastAccess = Access::get;
  sheet::member::Id lastMember = Next;
  std::vector<Variant> lastArguments;

 private:
  Variant answer_;
};

template <class Statement>
std::int32_t failureNumber(Statement&& statement) {
  try {
    statement();
  } catch (const Failure& failure) {
    return failure.number();
  }
  return 0;
}

TEST(Proxies, EmptyReferenceRaisesAtEveryUse) {
  const int notSet = runtime::objectNotSet.number;
  EXPECT_EQ(failureNumber([] { static_cast<void>(sheet::Range().Value()); }), notSet);
  EXPECT_EQ(failureNumber([] { sheet::Range().Value(Variant(1.0)); }), notSet);
  EXPECT_EQ(failureNumber([] { sheet::Range().AutoFit(); }), notSet);
  EXPECT_EQ(failureNumber([] { static_cast<void>(sheet::Enumerator<sheet::Shape>(sheet::Shapes())); }), notSet);
  EXPECT_FALSE(sheet::Enumerator<sheet::Shape>().next());
}

TEST(Proxies, AnswerWithoutAnObjectIsAnEmptyReference) {
  EXPECT_FALSE(sheet::Application(std::make_shared<Answering>(Variant())).ActiveChart());
  EXPECT_FALSE(sheet::Application(std::make_shared<Answering>(Variant(sheet::ObjectRef()))).ActiveChart());
}

TEST(Proxies, AnswerOfAnotherKindIsConvertedOrRefused) {
  const auto chart = [](Variant answer) { return sheet::Chart(std::make_shared<Answering>(std::move(answer))); };
  EXPECT_TRUE(chart(Variant(-1.0)).HasTitle());
  EXPECT_FALSE(chart(Variant(std::int16_t{0})).HasTitle());
  EXPECT_EQ(failureNumber([&] { static_cast<void>(chart(Variant(1.0)).Legend()); }), runtime::typeMismatch.number);
  EXPECT_EQ(failureNumber([&] { static_cast<void>(chart(Variant(Null())).HasTitle()); }),
            runtime::invalidUseOfNull.number);
  EXPECT_EQ(sheet::Range(std::make_shared<Answering>(Variant(2.5))).Column(), 2);
}

TEST(Proxies, AssignedValueStandsBehindTheIndexes) {
  const auto object = std::make_shared<Answering>(Variant());
  sheet::Font(object).Name("Arial");
  EXPECT_EQ(object->lastAccess, Access::put);
  EXPECT_EQ(object->lastMember, Name);
  EXPECT_EQ(object->lastArguments, (std::vector<Variant>{Variant("Arial")}));
  const auto key = std::make_shared<Answering>(Variant());
  sheet::Range(object).Sort(sheet::Range(key), sheet::ascending);
  EXPECT_EQ(object->lastAccess, Access::call);
  EXPECT_EQ(object->lastArguments, (std::vector<Variant>{Variant(sheet::ObjectRef(key)), Variant(std::int32_t{1})}));
}

TEST(Proxies, LoopEndsWhereTheBodySaysSo) {
  FakeSheet excel;
  std::vector<std::string> seen;
  sheet::forEach<sheet::Range>(excel.application().Range("A1:B2").Cells(), [&](const sheet::Range& cell) {
    seen.push_back(FakeSheet::nameOf(*cell.object()));
    return seen.size() < 3;
  });
  EXPECT_EQ(seen, (std::vector<std::string>{"A1", "B1", "A2"}));
}

TEST(Members, NamesAreThoseOfTheObjectModel) {
  EXPECT_EQ(sheet::nameOf(ActiveChart), "ActiveChart");
  EXPECT_EQ(sheet::nameOf(XValues), "XValues");
  EXPECT_EQ(sheet::nameOf(Next), "Next");
  EXPECT_THROW(static_cast<void>(sheet::nameOf(static_cast<sheet::member::Id>(Next + 1))), Failure);
}

TEST(Members, ThreeAreUsedInEnglish) {
  std::set<sheet::member::Id> english;
  for (const sheet::MemberUse& use : sheet::memberTable()) {
    if (sheet::usesEnglishLocale(use.member)) english.insert(use.member);
  }
  EXPECT_EQ(english, (std::set<sheet::member::Id>{ScreenUpdating, ReferenceStyle, ConvertFormula}));
}

TEST(Members, TableHoldsEveryMemberAndNoUseTwice) {
  std::set<sheet::member::Id> members;
  std::set<std::string> uses;
  for (const sheet::MemberUse& use : sheet::memberTable()) {
    members.insert(use.member);
    const std::string text = std::string(use.object) + "." + std::string(sheet::nameOf(use.member)) + "(" +
                             std::string(use.arguments) + ")" + (use.access == Access::put ? "=" : "");
    EXPECT_TRUE(uses.insert(text).second) << text;
  }
  EXPECT_EQ(members.size(), std::size_t{Next} + 1);
}

TEST(Members, ClassesThatTheTableGivesAreInIt) {
  std::set<std::string_view> objects;
  for (const sheet::MemberUse& use : sheet::memberTable()) objects.insert(use.object);
  objects.insert({"", "Boolean", "Long", "Double", "String", "Variant"});
  for (const sheet::MemberUse& use : sheet::memberTable()) {
    std::string_view result = use.result;
    if (result.starts_with("Enumerator of ")) result.remove_prefix(std::string_view("Enumerator of ").size());
    EXPECT_TRUE(objects.contains(result)) << result;
  }
}

}  // namespace

}  // namespace mervane::tests
