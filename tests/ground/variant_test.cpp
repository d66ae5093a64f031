#include "mervane/variant.h"

#include <memory>
#include <type_traits>

#include "tests/ground/raises.h"

namespace mervane {
namespace {

TEST(Variant, CarriesTheKindOfWhatItWasMadeFrom) {
  EXPECT_EQ(Variant().kind(), Variant::Kind::empty);
  EXPECT_EQ(Variant(true).kind(), Variant::Kind::boolean);
  EXPECT_EQ(Variant(1).kind(), Variant::Kind::int32);
  EXPECT_EQ(Variant(1.0F).kind(), Variant::Kind::single);
  EXPECT_EQ(Variant(1.0).kind(), Variant::Kind::real);
  EXPECT_EQ(Variant("a").kind(), Variant::Kind::text);  // NB: a literal must not turn into a boolean.
  EXPECT_EQ(Variant(Date{1}).kind(), Variant::Kind::date);
  EXPECT_EQ(Variant(ErrorValue{2042}).kind(), Variant::Kind::error);
  EXPECT_EQ(Variant(Null{}).kind(), Variant::Kind::null);
  EXPECT_EQ(Variant(Missing{}).kind(), Variant::Kind::missing);
  EXPECT_TRUE(Variant(Array<double>()).isArray());
  EXPECT_TRUE(Variant(std::shared_ptr<sheet::Object>()).isObject());
}

TEST(Variant, TakesNoPointersAndNoForeignNumbers) {
  EXPECT_FALSE((std::is_constructible_v<Variant, const void*>));
  EXPECT_FALSE((std::is_constructible_v<Variant, int*>));
}

TEST(Variant, EqualityIsThatOfKindAndContent) {
  EXPECT_EQ(Variant("a"), Variant(std::string("a")));
  EXPECT_FALSE(Variant(1) == Variant(1.0));
  EXPECT_FALSE(Variant() == Variant(0));
  const Variant array(Array<double>({{0, 1}}));
  const Variant copy = array;
  EXPECT_EQ(array, copy);
  EXPECT_FALSE(array == Variant(Array<double>({{0, 1}})));
}

TEST(Variant, AskingForAnotherKindRaisesTypeMismatch) {
  expectRaises(runtime::typeMismatch, [] { (void)Variant(1).array(); });
  expectRaises(runtime::typeMismatch, [] { (void)Variant().object(); });
  expectRaises(runtime::typeMismatch, [] { (void)Variant(std::shared_ptr<const AnyArray>()).array(); });
  EXPECT_EQ(Variant(1).getIf<double>(), nullptr);
}

}  // namespace
}  // namespace mervane
