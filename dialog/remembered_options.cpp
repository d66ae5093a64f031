#include "dialog/remembered_options.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "dialog/entry_rules.h"
#include "mervane/convert.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "support/app_settings.h"
#include "support/globals.h"
#include "support/procedures.h"

namespace mervane::dialog {

namespace {

/// What a setting takes, and the form in which it is stored.
enum class Form { text, number, check, functionCode, group, layout, twips };

struct Setting {
  const char* section;
  const char* key;
  Form form;
};

constexpr Setting settingsTable[] = {
    {windowSection, "left", Form::twips},
    {windowSection, "top", Form::twips},
    {windowSection, "width", Form::twips},
    {windowSection, "height", Form::twips},
    {valuesSection, "INPUTS", Form::text},
    {valuesSection, "OUTPUTS", Form::text},
    {valuesSection, "CLUSTERS", Form::number},
    {valuesSection, "LEARNINGRATE", Form::number},
    {valuesSection, "EPOCHS", Form::number},
    {valuesSection, "INITIALWEIGHTS", Form::number},
    {valuesSection, "STARTLEARNINGRADIUS", Form::number},
    {valuesSection, "USECONVEX", Form::check},
    {valuesSection, "SCALEVALUES", Form::check},
    {valuesSection, "ACTIVATIONFUNCTION", Form::functionCode},
    {valuesSection, "DATAGROUP", Form::group},
    {valuesSection, "NNPARAMSGROUP", Form::group},
    {valuesSection, "OUTPUTGROUP", Form::group},
    {valuesSection, "OUTSPLIT", Form::layout},
    {valuesSection, "AUTOFILTER", Form::check},
    {valuesSection, "DRAWCHARTS", Form::check},
    {valuesSection, "AVERAGES", Form::check},
    {valuesSection, "WEIGHTEDAVERAGES", Form::check},
    {valuesSection, "MINIMUMS", Form::check},
    {valuesSection, "MAXIMUMS", Form::check},
    {valuesSection, "CLUSTERWEIGHTS", Form::check},
    {valuesSection, "SETCOLORS", Form::check},
    {valuesSection, "SORTCLUSTERS", Form::check},
    {valuesSection, "TABLETORANGE", Form::check},
};

std::string lowerCase(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return result;
}

[[noreturn]] void refuse(const std::string& sentence) {
  throw Failure(runtime::invalidProcedureCall.number, sentence);
}

CAppSettings openSettings() {
  CAppSettings settings;
  settings.Init(companyName, applicationName);
  return settings;
}

std::optional<bool> truthOf(const std::string& text) {
  const std::string word = lowerCase(text);
  for (const char* yes : {"1", "yes", "true", "on"}) {
    if (word == yes) return true;
  }
  for (const char* no : {"0", "no", "false", "off"}) {
    if (word == no) return false;
  }
  return std::nullopt;
}

bool requiredTruth(const Setting& setting, const std::string& text) {
  const auto truth = truthOf(text);
  if (!truth) refuse(std::string(setting.key) + " takes 1 or 0, not \"" + text + "\".");
  return *truth;
}

const EntryRule& ruleOf(const char* key) {
  return *std::ranges::find(entryRules, std::string_view(key), [](const EntryRule& rule) { return rule.key; });
}

std::string limitsOf(const EntryRule& rule) {
  const Locale& locale = globals::locale();
  return std::string(rule.number == EntryRule::Number::real ? "a number" : "a whole number") + " above " +
         formatNumber(rule.minValue, locale) + " and below " + formatNumber(rule.maxValue, locale);
}

Variant storedForm(const Setting& setting, const std::string& text) {
  switch (setting.form) {
    case Form::text:
      return text;
    case Form::number: {
      const EntryRule& rule = ruleOf(setting.key);
      if (!accepts(rule, CValidation(), text)) {
        refuse(std::string(setting.key) + " takes " + limitsOf(rule) + ", not \"" + text + "\".");
      }
      return text;
    }
    case Form::check:
      return requiredTruth(setting, text) ? "1" : "0";
    case Form::functionCode:
      if (text.size() != 1 || text[0] < '1' || text[0] > '4') {
        refuse(std::string(setting.key) + " takes a function's number from 1 to 4, not \"" + text + "\".");
      }
      return text;
    case Form::group:
    case Form::layout:
      return std::int32_t{requiredTruth(setting, text) ? 1 : 0};
    case Form::twips:
      break;
  }
  if (!CValidation().ValidateLong(text)) {
    refuse(std::string(setting.key) + " takes a whole number of twips, not \"" + text + "\".");
  }
  return toInt32(text, globals::locale());
}

const Setting& settingNamed(const std::string& key) {
  const std::string wanted = lowerCase(key);
  const auto* found = std::ranges::find(settingsTable, wanted, [](const Setting& one) { return lowerCase(one.key); });
  if (found == std::end(settingsTable)) refuse("There is no setting \"" + key + "\".");
  return *found;
}

}  // namespace

std::vector<RememberedOption> rememberedOptions() {
  CAppSettings settings = openSettings();
  std::vector<RememberedOption> options;
  for (const Setting& setting : settingsTable) {
    RememberedOption option{setting.section, setting.key, std::nullopt};
    // A value that cannot be read is none; the dialog passes it over as well.
    attempt([&] {
      const Variant found = settings.GetSetting(setting.section, setting.key, Variant());
      if (!found.isEmpty()) option.value = found;
    });
    options.push_back(std::move(option));
  }
  return options;
}

void remember(const std::string& key, const std::string& text) {
  const Setting& setting = settingNamed(key);
  Variant value = storedForm(setting, text);
  openSettings().SaveSetting(setting.section, setting.key, value);
}

void checkRemembered(const std::string& key, const std::string& text) {
  (void)storedForm(settingNamed(key), text);
}

void forgetRememberedOptions() {
  CAppSettings settings = openSettings();
  for (const char* section : {valuesSection, windowSection}) {
    // Deleting what is not there fails, so it is looked for first.
    Array<std::string> keys;
    bool present = false;
    attempt([&] {
      settings.GetAllKeys(section, keys);
      present = true;
    });
    if (present) settings.DeleteSetting(section, {});
  }
}

}  // namespace mervane::dialog
