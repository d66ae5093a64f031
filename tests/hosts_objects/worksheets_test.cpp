#include "hosts/objects/worksheets.h"

#include <array>
#include <vector>

#include "spreadsheet/member.h"
#include "spreadsheet/object.h"
#include "tests/ground/raises.h"

namespace mervane::hosts {
namespace {

/// Two sheets; a name stands for the object of a sheet.
SheetList twoSheets() {
  static const std::vector<std::string> names{"Data", "Notes"};
  return {[] { return static_cast<std::int32_t>(names.size()); },
          [](const std::string& name) -> std::optional<std::int32_t> {
            if (name == "Notes") return 1;
            return std::nullopt;
          },
          [](std::int32_t position) { return Variant(names[static_cast<std::size_t>(position)]); }};
}

Variant oneOf(const Variant& index) {
  const std::array<Variant, 1> arguments{index};
  return worksheetsOf(twoSheets(), arguments);
}

TEST(Worksheets, AnItemIsFoundByItsPositionFromOneOrByItsName) {
  EXPECT_EQ(oneOf(Variant(1)), Variant("Data"));
  EXPECT_EQ(oneOf(Variant(2.0)), Variant("Notes"));
  EXPECT_EQ(oneOf(Variant("Notes")), Variant("Notes"));
  for (const Variant& index : {Variant(0), Variant(3), Variant("Other")}) {
    expectRaises(runtime::subscriptOutOfRange, [&] { static_cast<void>(oneOf(index)); });
  }
}

TEST(Worksheets, TheCollectionCountsAndGoesThroughItsSheets) {
  const sheet::ObjectRef all = worksheetsOf(twoSheets(), {}).object();
  EXPECT_EQ(all->invoke(sheet::Access::get, sheet::member::Count, {}), Variant(2));
  const sheet::ObjectRef each = all->invoke(sheet::Access::get, sheet::member::NewEnum, {}).object();
  EXPECT_EQ(each->invoke(sheet::Access::get, sheet::member::Next, {}), Variant("Data"));
  EXPECT_EQ(each->invoke(sheet::Access::get, sheet::member::Next, {}), Variant("Notes"));
  EXPECT_EQ(each->invoke(sheet::Access::get, sheet::member::Next, {}), Variant());
  expectRaises(runtime::memberNotSupported,
               [&] { static_cast<void>(all->invoke(sheet::Access::put, sheet::member::Count, {})); });
}

}  // namespace
}  // namespace mervane::hosts
