#include "hosts/objects/sort_order.h"

#include <vector>

#include "tests/ground/raises.h"

namespace mervane::hosts {
namespace {

using Values = std::vector<Variant>;

/// Sorts B2:D9 of the second sheet by a key.
SortOrder order(const sheet::SheetArea& key, const Values& more = {}) {
  Values arguments{Variant("key")};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return sortOrder(arguments, {1, {2, 2, 9, 4}},
                   [&](const Variant& value) { return value == Variant("key") ? std::optional(key) : std::nullopt; });
}

TEST(SortOrder, IsAscendingUnlessTheOrderSaysOtherwise) {
  const sheet::SheetArea key{1, {2, 4, 2, 4}};
  EXPECT_EQ(order(key).column, 4);
  EXPECT_FALSE(order(key).descending);
  EXPECT_FALSE(order(key, {Variant(1)}).descending);
  EXPECT_TRUE(order(key, {Variant(2)}).descending);
}

TEST(SortOrder, AKeyBesideTheCellsIsRefused) {
  for (const sheet::SheetArea& key :
       {sheet::SheetArea{0, {2, 3, 2, 3}}, sheet::SheetArea{1, {2, 1, 2, 1}}, sheet::SheetArea{1, {2, 5, 2, 5}}}) {
    EXPECT_THROW(static_cast<void>(order(key)), Failure);
  }
}

TEST(SortOrder, AKeyThatIsNoRangeDoesNotMatch) {
  const Values arguments{Variant("text")};
  expectRaises(runtime::typeMismatch,
               [&] { static_cast<void>(sortOrder(arguments, {}, [](const Variant&) { return std::nullopt; })); });
}

}  // namespace
}  // namespace mervane::hosts
