#include "mervane/locale.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace mervane {
namespace {

TEST(Locale, ATagIsTakenInEverySpelling) {
  for (const char* tag : {"de-DE", "de_DE", "de_DE.UTF-8", "DE-de", "de_DE@euro", "de", "de-AT"})
    EXPECT_EQ(localeNamed(tag).name, "de-DE") << tag;
  EXPECT_EQ(localeNamed("de_CH.UTF-8").name, "de-CH");
  EXPECT_EQ(localeNamed("pt").name, "pt-BR");
}

TEST(Locale, AnUnknownTagGivesTheEnglishOne) {
  for (const char* tag : {"", "C", "POSIX", "C.UTF-8", "xx-YY", "d", "deutsch"})
    EXPECT_EQ(localeNamed(tag), englishLocale()) << tag;
  EXPECT_EQ(englishLocale(), Locale{});
}

TEST(Locale, EachBuiltInOneIsFoundByItsNameAndCanTellItsMarksApart) {
  std::set<std::string> names;
  for (const Locale& one : builtInLocales()) {
    EXPECT_EQ(localeNamed(one.name), one);
    EXPECT_TRUE(names.insert(one.name).second) << one.name;
    EXPECT_NE(one.trueWord, one.falseWord) << one.name;
    for (const std::string& separator : one.groupSeparators) EXPECT_NE(separator, one.decimalSeparator) << one.name;
  }
  for (const char* name : {"en-US", "en-GB", "de-DE", "fr-FR", "sv-SE", "pt-BR", "ru-RU", "de-CH", "hi-IN", "ja-JP"})
    EXPECT_TRUE(names.contains(name)) << name;
}

}  // namespace
}  // namespace mervane
