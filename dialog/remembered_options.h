#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mervane/variant.h"

/// What the dialog remembers from one session to the next, for programs that show or change it without a dialog.
///
/// NB: a value with a fraction (both rates of the network, after an edit) is stored as its text in the user's regional
/// settings, every other number as a whole one. The store rounds a number to a whole one: a rate of 0.5 would come back
/// as 0, which the dialog refuses, and so would be forgotten.
namespace mervane::dialog {

/// Where the dialog keeps its settings.
inline constexpr const char* companyName = "Tarvik";
inline constexpr const char* applicationName = "MervaneCls3";
inline constexpr const char* windowSection = "window";
inline constexpr const char* valuesSection = "values";

struct RememberedOption {
  std::string section;
  std::string key;
  /// What is stored, a text or a 32-bit integer; no value where nothing is.
  std::optional<Variant> value;
};

/// Every setting that the dialog reads, in the order in which it reads them.
[[nodiscard]] std::vector<RememberedOption> rememberedOptions();

/// Stores one setting in the form in which the dialog stores it.
/// @param key as `rememberedOptions` names it, in any case
/// @param text a number within the dialog's limits, 1 or 0 (also yes and no, true and false, on and off) for a check
/// box or a group, a function's number, and any text for the two ranges. Raises invalidProcedureCall with a sentence
/// that names the key and what it takes, and whatever the store raises.
void remember(const std::string& key, const std::string& text);
/// Raises what `remember` would raise for a bad key or text, and stores nothing.
void checkRemembered(const std::string& key, const std::string& text);

/// Forgets everything, the window's place included. Nothing happens where nothing is remembered.
void forgetRememberedOptions();

}  // namespace mervane::dialog
