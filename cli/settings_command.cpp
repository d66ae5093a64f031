#include "cli/settings_command.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "cli/byte_source.h"
#include "cli/output_file.h"
#include "cli/problem.h"
#include "dialog/remembered_options.h"
#include "mervane/convert.h"
#include "mervane/failure.h"
#include "mervane/service_errors.h"
#include "support/globals.h"

namespace mervane::cli {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* listAdvice = "See mervane settings list for the names.";

/// What the store or the dialog's rules refuse, as the program tells it.
template <class Call>
void told(Call&& call) {
  try {
    call();
  } catch (const Failure& failure) {
    if (failure.number() == eErr_SaveSetting || failure.number() == eErr_DeleteSetting) {
      throw Problem(ExitStatus::fileTrouble, "the settings cannot be stored", failure.description() + ".");
    }
    std::string message = failure.description();
    if (message.ends_with('.')) message.pop_back();
    throw Problem(ExitStatus::usage, message, listAdvice);
  }
}

std::string textOf(const Variant& value) {
  return toText(value, globals::locale());
}

void list() {
  const auto out = openOutput("-");
  for (const dialog::RememberedOption& option : dialog::rememberedOptions()) {
    out->write(option.key + (option.value ? "=" + textOf(*option.value) : std::string()) + "\n");
  }
  out->commit();
}

void exportTo(const std::string& file) {
  Json document = Json::object();
  for (const dialog::RememberedOption& option : dialog::rememberedOptions()) {
    if (!option.value) continue;
    Json& place = document[option.section][option.key];
    if (const auto* number = option.value->getIf<std::int32_t>()) {
      place = *number;
    } else {
      place = textOf(*option.value);
    }
  }
  const auto out = openOutput(file);
  // A text that is no UTF-8, as a foreign hand may have stored it, is written with replacement characters.
  out->write(document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
  out->commit();
}

std::string readAll(const std::string& file) {
  constexpr std::size_t mostBytes = std::size_t{16} << 20;
  const auto source = openSource(file);
  std::string text = readAtMost(*source, mostBytes + 1);
  if (text.size() > mostBytes) {
    throw Problem(ExitStatus::dataRefused, sourceName(file) + " is too long for exported settings");
  }
  return text;
}

[[noreturn]] void refuseFile(const std::string& file, const std::string& what) {
  throw Problem(ExitStatus::dataRefused, sourceName(file) + " holds no exported settings: " + what,
                "Write such a file with mervane settings export.");
}

void importFrom(const std::string& file) {
  const std::string bytes = readAll(file);
  const Json document = Json::parse(bytes, nullptr, false);
  if (document.is_discarded()) refuseFile(file, "it is not JSON");
  if (!document.is_object()) refuseFile(file, "it is no JSON object");
  std::vector<std::pair<std::string, std::string>> settings;
  for (const auto& [section, values] : document.items()) {
    if (!values.is_object()) refuseFile(file, "\"" + section + "\" is no object");
    for (const auto& [key, value] : values.items()) {
      if (value.is_string()) {
        settings.emplace_back(key, value.get<std::string>());
      } else if (value.is_number_integer()) {
        settings.emplace_back(key, value.dump());
      } else {
        refuseFile(file, "\"" + key + "\" is neither a text nor a whole number");
      }
    }
  }
  // Everything is checked before anything is stored.
  for (const auto& [key, value] : settings) {
    told([&, name = key, text = value] { dialog::checkRemembered(name, text); });
  }
  for (const auto& [key, value] : settings) {
    told([&, name = key, text = value] { dialog::remember(name, text); });
  }
}

}  // namespace

ExitStatus settings(const SettingsOptions& options) {
  switch (options.action) {
    case SettingsOptions::Action::list:
      list();
      break;
    case SettingsOptions::Action::set:
      told([&] { dialog::remember(options.key, options.value); });
      break;
    case SettingsOptions::Action::clear:
      told([] { dialog::forgetRememberedOptions(); });
      break;
    case SettingsOptions::Action::exportAll:
      exportTo(options.file);
      break;
    case SettingsOptions::Action::importAll:
      importFrom(options.file);
      break;
  }
  return ExitStatus::done;
}

}  // namespace mervane::cli
