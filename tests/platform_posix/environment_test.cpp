#include "platform/posix/environment.h"

#include <gtest/gtest.h>

#include <map>

namespace mervane::tests {

namespace {

posix::Environment environmentOf(std::map<std::string, std::string> variables) {
  return [variables = std::move(variables)](const char* name) -> std::optional<std::string> {
    const auto found = variables.find(name);
    if (found == variables.end()) return std::nullopt;
    return found->second;
  };
}

}  // namespace

TEST(EnvironmentLocale, NothingSetMeansEnglish) {
  EXPECT_EQ(posix::localeOf(environmentOf({})), englishLocale());
  EXPECT_EQ(posix::localeOf(environmentOf({{"LANG", "C"}})), englishLocale());
  EXPECT_EQ(posix::localeOf(environmentOf({{"LC_ALL", "POSIX"}})), englishLocale());
  EXPECT_EQ(posix::localeOf(environmentOf({{"LANG", "tlh_KX.UTF-8"}})), englishLocale());
}

TEST(EnvironmentLocale, LangSetsEverything) {
  EXPECT_EQ(posix::localeOf(environmentOf({{"LANG", "de_DE.UTF-8"}})), localeNamed("de-DE"));
}

TEST(EnvironmentLocale, LcAllCountsBeforeEverythingElse) {
  EXPECT_EQ(posix::localeOf(environmentOf({{"LANG", "en_US"}, {"LC_NUMERIC", "en_US"}, {"LC_ALL", "de_DE"}})),
            localeNamed("de-DE"));
}

TEST(EnvironmentLocale, AnEmptyVariableCountsAsMissing) {
  EXPECT_EQ(posix::localeOf(environmentOf({{"LC_ALL", ""}, {"LANG", "de_DE"}})), localeNamed("de-DE"));
}

TEST(EnvironmentLocale, NumbersAndDatesHaveVariablesOfTheirOwn) {
  const Locale locale =
      posix::localeOf(environmentOf({{"LANG", "en_US"}, {"LC_NUMERIC", "de_DE"}, {"LC_TIME", "sv_SE"}}));
  EXPECT_EQ(locale.decimalSeparator, ",");
  EXPECT_EQ(locale.dateOrder, Locale::DateOrder::yearMonthDay);
  EXPECT_EQ(locale.dateSeparator, "-");
  EXPECT_EQ(locale.trueWord, "True");
  EXPECT_EQ(locale.currencySymbol, "$");
}

TEST(ConfigurationFolder, TheConfiguredFolderCountsWhereItIsAbsolute) {
  EXPECT_EQ(posix::configurationFolder(environmentOf({{"XDG_CONFIG_HOME", "/etc/mine"}, {"HOME", "/home/me"}})),
            "/etc/mine");
  EXPECT_EQ(posix::configurationFolder(environmentOf({{"XDG_CONFIG_HOME", "mine"}, {"HOME", "/home/me"}})),
            "/home/me/.config");
  EXPECT_EQ(posix::configurationFolder(environmentOf({{"XDG_CONFIG_HOME", ""}, {"HOME", "/home/me"}})),
            "/home/me/.config");
}

TEST(ConfigurationFolder, WithoutAHomeTheUserDatabaseIsAsked) {
  const std::string folder = posix::configurationFolder(environmentOf({}));
  EXPECT_TRUE(folder.empty() || (folder.front() == '/' && folder.ends_with("/.config"))) << folder;
}

}  // namespace mervane::tests
