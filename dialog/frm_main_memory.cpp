#include <utility>

#include "dialog/entry_rules.h"
#include "dialog/frm_main.h"
#include "dialog/procedure_keys.h"
#include "dialog/remembered_options.h"
#include "mervane/convert.h"
#include "support/globals.h"
#include "support/procedures.h"

/// What the dialog remembers. Loading and saving skip a statement that fails: an item or a window edge then stays as
/// it was, and the rest is still loaded or saved.
namespace mervane {

namespace {

using platform::WindowMeasure;

using dialog::valuesSection;
using dialog::windowSection;

constexpr std::pair<const char*, WindowMeasure> measures[] = {
    {"left", WindowMeasure::left},
    {"top", WindowMeasure::top},
    {"width", WindowMeasure::width},
    {"height", WindowMeasure::height},
};

constexpr const char* valueKeys[] = {"INPUTS", "OUTPUTS",        "CLUSTERS",           "LEARNINGRATE",
                                     "EPOCHS", "INITIALWEIGHTS", "STARTLEARNINGRADIUS"};

constexpr const char* networkCheckKeys[] = {"USECONVEX", "SCALEVALUES"};

/// Group headers with what they are where the store does not say.
constexpr std::pair<const char*, std::int16_t> groupKeys[] = {
    {"DATAGROUP", 1}, {"NNPARAMSGROUP", 1}, {"OUTPUTGROUP", 0}};

constexpr const char* outputCheckKeys[] = {"AUTOFILTER",   "DRAWCHARTS",  "AVERAGES",       "WEIGHTEDAVERAGES",
                                           "MINIMUMS",     "MAXIMUMS",    "CLUSTERWEIGHTS", "SETCOLORS",
                                           "SORTCLUSTERS", "TABLETORANGE"};

const char* literalOf(bool value) {
  return value ? "1" : "0";
}

/// The form in which an item's value goes into the store. The store keeps every number as a whole one, so a number
/// with a fraction, as an edit leaves it in an item, is handed over as its text and is found again as it was left.
Variant storable(const Variant& value) {
  if (value.kind() == Variant::Kind::real) return toText(value, globals::locale());
  return value;
}

}  // namespace

void frmMain::LoadWindowSettings() {
  for (const auto& [key, which] : measures) {
    attempt([&, name = key, edge = which] {
      const Variant stored = settings().GetSetting(windowSection, name, window_->measure(edge));
      // NB: applied as it stands, also off the screen.
      window_->setMeasure(edge, toSingle(stored, globals::locale()));
    });
  }
}

void frmMain::SaveWindowSettings() {
  for (const auto& [key, which] : measures) {
    attempt([&, name = key, edge = which] {
      Variant value = window_->measure(edge);
      settings().SaveSetting(windowSection, name, value);
    });
  }
}

void frmMain::SetDefaultValues() {
  attempt([&] { suiOptions_.Item("LEARNINGRATE").Value = 0.5; });
  attempt([&] { suiOptions_.Item("EPOCHS").Value = std::int32_t{100}; });
  attempt([&] { suiOptions_.Item("INITIALWEIGHTS").Value = 0.3; });
  attempt([&] { suiOptions_.Item("STARTLEARNINGRADIUS").Value = std::int32_t{3}; });
  attempt([&] { suiOptions_.Item("USECONVEX").Checked = true; });
  attempt([&] { suiOptions_.Item("SCALEVALUES").Checked = true; });
  attempt([&] { suiOptions_.Item("ACTIVATIONFUNCTION").SelectedCode = "3"; });
  attempt([&] { SyncActivationCaption(); });
}

void frmMain::LoadParameterValues() {
  // 1.
  for (const char* key : valueKeys) {
    attempt([&] {
      platform::OptionItem& one = suiOptions_.Item(key);
      one.Value = settings().GetSetting(valuesSection, key, one.Value);
    });
  }
  // 2.
  attempt([&] { ValidateLoadedValues(); });
  // 3.
  for (const char* key : networkCheckKeys) {
    attempt([&] {
      platform::OptionItem& one = suiOptions_.Item(key);
      one.Checked = GetBooleanSetting(valuesSection, key, one.Checked);
    });
  }
  // 4. NB: a code that no choice has is kept.
  attempt([&] {
    platform::OptionItem& function = suiOptions_.Item("ACTIVATIONFUNCTION");
    function.SelectedCode = settings().GetSetting(valuesSection, "ACTIVATIONFUNCTION", function.SelectedCode);
  });
  // 5. NB: only 1 opens a group.
  for (const auto& [key, open] : groupKeys) {
    attempt([&, name = key, standard = open] {
      const Variant stored = settings().GetSetting(valuesSection, name, standard);
      suiOptions_.Item(name).Expanded = toDouble(stored, globals::locale()) == 1.0;
    });
  }
  // 6.
  attempt([&] { SyncActivationCaption(); });
}

void frmMain::ValidateLoadedValues() {
  const CValidation validation;
  for (const dialog::EntryRule& rule : dialog::entryRules) {
    attempt([&] {
      platform::OptionItem& one = suiOptions_.Item(rule.key);
      // NB: unlike an edit, a value that passes stays the text that was stored.
      if (!dialog::accepts(rule, validation, toText(one.Value, globals::locale()))) {
        one.Value = dialog::mendedValue(rule);
      }
    });
  }
}

void frmMain::SaveParameterValues() {
  for (const char* key : valueKeys) {
    attempt([&] {
      Variant value = storable(suiOptions_.Item(key).Value);
      settings().SaveSetting(valuesSection, key, value);
    });
  }
  for (const char* key : networkCheckKeys) {
    attempt([&] { SaveBooleanSetting(valuesSection, key, suiOptions_.Item(key).Checked); });
  }
  attempt([&] {
    Variant code = suiOptions_.Item("ACTIVATIONFUNCTION").SelectedCode;
    settings().SaveSetting(valuesSection, "ACTIVATIONFUNCTION", code);
  });
  for (const auto& [key, open] : groupKeys) {
    attempt([&, name = key] {
      Variant state = static_cast<std::int16_t>(suiOptions_.Item(name).Expanded ? 1 : 0);
      settings().SaveSetting(valuesSection, name, state);
    });
  }
}

void frmMain::LoadOutputSettings() {
  attempt([&] {
    setOutputOption(toInt32(settings().GetSetting(valuesSection, "OUTSPLIT", std::int32_t{1}), globals::locale()));
  });
  for (const char* key : outputCheckKeys) {
    attempt([&] {
      platform::OptionItem& one = suiOptions_.Item(key);
      one.Checked = GetBooleanSetting(valuesSection, key, one.Checked);
    });
  }
}

void frmMain::SaveOutputSettings() {
  attempt([&] {
    Variant layout = getOutputOption();
    settings().SaveSetting(valuesSection, "OUTSPLIT", layout);
  });
  for (const char* key : outputCheckKeys) {
    attempt([&] { SaveBooleanSetting(valuesSection, key, suiOptions_.Item(key).Checked); });
  }
}

void frmMain::setOutputOption(std::int32_t value) {
  if (value == 0) {
    attempt([&] { suiOptions_.Item("SPLITONE").Checked = false; });
    attempt([&] { suiOptions_.Item("SPLITMULTIPLE").Checked = true; });
  } else if (value == 1) {
    attempt([&] { suiOptions_.Item("SPLITMULTIPLE").Checked = false; });
    attempt([&] { suiOptions_.Item("SPLITONE").Checked = true; });
  }
}

bool frmMain::GetBooleanSetting(const std::string& section, const std::string& key, bool defaultValue) {
  bool result = false;
  traced(dialog::key::GetBooleanSetting, [&](Steps& step) {
    step([&] {
      // NB: any number but 0 is true, one beyond 16 bits or no number at all is a failure.
      result = toInt16(settings().GetSetting(section, key, literalOf(defaultValue)), globals::locale()) != 0;
    });
  });
  return result;
}

void frmMain::SaveBooleanSetting(const std::string& section, const std::string& key, bool value) {
  attempt([&] {
    Variant literal = literalOf(value);
    settings().SaveSetting(section, key, literal);
  });
}

}  // namespace mervane
