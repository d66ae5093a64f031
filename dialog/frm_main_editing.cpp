#include <string>
#include <utility>

#include "dialog/entry_rules.h"
#include "dialog/frm_main.h"
#include "dialog/procedure_keys.h"
#include "mervane/convert.h"
#include "mervane/runtime_errors.h"
#include "support/globals.h"
#include "support/procedures.h"

/// What the user's actions do to the items. The dialog shows no message: a refused entry is answered by a beep.
namespace mervane {

namespace {

using platform::OptionItem;
using platform::OptionKind;

/// What an item's field leaves free of the list's width, in twips.
constexpr std::pair<const char*, float> widthRule[] = {
    {"INPUTS", 1485},    {"OUTPUTS", 1365},       {"CLUSTERS", 1365},           {"LEARNINGRATE", 630},
    {"EPOCHS", 1440},    {"INITIALWEIGHTS", 960}, {"STARTLEARNINGRADIUS", 495}, {"ACTIVATIONFUNCTION", 600},
    {"USECONVEX", 2100}, {"SCALEVALUES", 2100},
};

bool isEdit(const OptionItem& item) {
  return item.kind == OptionKind::edit || item.kind == OptionKind::editWithBrowse;
}

void beep() {
  const auto& screen = globals::platform().screen;
  if (!screen) raise(runtime::objectNotSet);
  screen->beep();
}

}  // namespace

// --- What the window reports --------------------------------------------------------------------------------------

/// Runs one event. A failure that leaves its procedure ends the showing and is raised by Show: the window's own code
/// below us can carry none.
template <class Event>
void frmMain::handle(Event&& event) {
  if (!loaded_) return;
  try {
    event();
    changed();
  } catch (const Failure& failure) {
    if (!shown_) return;
    if (!unhandled_) unhandled_ = failure;
    attempt([&] {
      if (window_) window_->hide();
    });
  }
}

bool frmMain::edited(const std::string& key, const std::string& text) {
  bool cancel = false;
  handle([&] {
    if (!suiOptions_.Contains(key)) return;
    OptionItem& one = suiOptions_.Item(key);
    if (!isEdit(one)) return;
    const Variant earlier = std::exchange(one.Value, Variant(text));
    suiOptions_AfterEdit(one, cancel);
    if (cancel) one.Value = earlier;
  });
  return !cancel;
}

void frmMain::chosen(const std::string& key, const std::string& caption) {
  handle([&] {
    if (!suiOptions_.Contains(key)) return;
    OptionItem& one = suiOptions_.Item(key);
    if (one.kind != OptionKind::dropDown) return;
    one.Value = caption;
    suiOptions_AfterDropDown(one);
  });
}

void frmMain::browsed(const std::string& key) {
  handle([&] {
    if (suiOptions_.Contains(key)) suiOptions_Browse(suiOptions_.Item(key));
  });
}

void frmMain::clicked(const std::string& key) {
  handle([&] {
    // A spacer has no key, and a click on it does nothing.
    if (!suiOptions_.Contains(key)) return;
    OptionItem& one = suiOptions_.Item(key);
    if (one.kind == OptionKind::check) one.Checked = !one.Checked;
    if (one.kind == OptionKind::groupHeader) one.Expanded = !one.Expanded;
    suiOptions_Click(one);
  });
}

void frmMain::buttonClicked(const std::string& key) {
  handle([&] {
    if (suiButtons_.Contains(key)) suiButtons_Click(suiButtons_.Item(key));
  });
}

void frmMain::resized() {
  handle([&] {
    for (const auto& [key, constant] : widthRule) {
      // The width is read anew for each item.
      attempt([&, name = key, margin = constant] {
        const float width = window_->listWidth() - margin;
        suiOptions_.Item(name).Width = width;
      });
    }
  });
}

bool frmMain::closeRequested(platform::UnloadMode mode) {
  if (!loaded_) return true;
  const auto owner = classifier_;  // Unloading lets it go, and with it may go this dialog.
  bool cancel = false;
  // What leaves either procedure is raised by Show; the window closes all the same.
  const auto keepFailure = [&](auto&& part) {
    try {
      part();
    } catch (const Failure& failure) {
      if (shown_ && !unhandled_) unhandled_ = failure;
    }
  };
  keepFailure([&] { Form_QueryUnload(cancel, mode); });
  if (cancel) return false;
  keepFailure([&] { release(); });
  return true;
}

// --- Entries ------------------------------------------------------------------------------------------------------

void frmMain::suiOptions_AfterEdit(OptionItem& item, bool& cancel) {
  traced(dialog::key::suiOptions_AfterEdit, [&](Steps& step) {
    const CValidation validation;
    for (const dialog::EntryRule& rule : dialog::entryRules) {
      if (item.Key != rule.key) continue;
      // 1. and 2.
      step([&] { cancel = !dialog::accepts(rule, validation, toText(item.Value, globals::locale())); });
      // 3.
      if (cancel) continue;
      step([&] {
        if (rule.number == dialog::EntryRule::Number::real) {
          item.Value = toDouble(item.Value, globals::locale());
        } else {
          item.Value = toInt32(item.Value, globals::locale());
        }
      });
    }
    if (cancel) step([] { beep(); });
  });
}

void frmMain::suiOptions_AfterDropDown(const OptionItem& item) {
  traced(dialog::key::suiOptions_AfterDropDown, [&](Steps& step) {
    if (item.Key == "ACTIVATIONFUNCTION") step([&] { SyncActivationValue(); });
  });
}

void frmMain::SyncActivationValue() {
  attempt([&] {
    OptionItem& function = suiOptions_.Item("ACTIVATIONFUNCTION");
    const std::string caption = toText(function.Value, globals::locale());
    for (const OptionItem& choice : function.SubItems) {
      if (choice.Caption != caption) continue;
      function.SelectedCode = choice.Value;
      return;
    }
  });
}

void frmMain::SyncActivationCaption() {
  attempt([&] {
    OptionItem& function = suiOptions_.Item("ACTIVATIONFUNCTION");
    // Compared as texts, since the code may be a number and the choices' codes are texts.
    const std::string code = toText(function.SelectedCode, globals::locale());
    for (const OptionItem& choice : function.SubItems) {
      if (toText(choice.Value, globals::locale()) != code) continue;
      function.Value = choice.Caption;
      return;
    }
  });
}

void frmMain::suiOptions_Click(const OptionItem& item) {
  if (item.Key == "SPLITMULTIPLE") {
    attempt([&] { suiOptions_.Item("SPLITONE").Checked = false; });
    attempt([&] { suiOptions_.Item("SPLITMULTIPLE").Checked = true; });
  } else if (item.Key == "SPLITONE") {
    attempt([&] { suiOptions_.Item("SPLITMULTIPLE").Checked = false; });
    attempt([&] { suiOptions_.Item("SPLITONE").Checked = true; });
  } else if (item.Key == "DEFAULTS") {
    attempt([&] { SetDefaultValues(); });
  }
}

// --- Ways out of a showing ----------------------------------------------------------------------------------------

void frmMain::suiOptions_Browse(const OptionItem& item) {
  traced(dialog::key::suiOptions_Browse, [&](Steps& step) {
    if (item.Key == "INPUTS") {
      step([&] { BrowseInputs(); });
    } else if (item.Key == "OUTPUTS") {
      step([&] { BrowseOutputs(); });
    }
  });
}

void frmMain::BrowseInputs() {
  tag_ = "INPUTS";
  Hide();
}

void frmMain::BrowseOutputs() {
  tag_ = "OUTPUTS";
  Hide();
}

void frmMain::suiButtons_Click(const OptionItem& item) {
  traced(dialog::key::suiButtons_Click, [&](Steps& step) {
    if (item.Key == "CLASSIFY") {
      step([&] { Classify(); });
    } else if (item.Key == "CLOSE") {
      step([&] { CloseForm(); });
    }
  });
}

void frmMain::Classify() {
  traced(dialog::key::Classify, [&](Steps& step) {
    // 1.
    step([&] { SaveParameterValues(); });
    // 2.
    step([&] { SaveOutputSettings(); });
    // 3.
    step([&] { SaveWindowSettings(); });
    // 4.
    step([&] { tag_ = "CLASSIFY"; });
    // 5.
    step([&] { Hide(); });
  });
}

void frmMain::CloseForm() {
  traced(dialog::key::CloseForm, [&](Steps& step) {
    // 1.
    step([&] { SaveWindowSettings(); });
    // 2.
    step([&] { tag_ = "CLOSE"; });
    // 3.
    step([&] { Hide(); });
  });
}

}  // namespace mervane
