#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>
#include <string>

namespace mervane::cli {

/// Help pages of 80 cells, with the names of flags as they are typed.
[[nodiscard]] std::shared_ptr<CLI::FormatterBase> helpFormatter();

/// Takes the text of an option; raises a Problem of its own for one that will not do.
using Setter = std::function<void(const std::string&)>;

/// An option with a value; the last one given counts.
CLI::Option* addValue(CLI::App& app, const std::string& names, const std::string& description,
                      const std::string& valueName, const std::string& group, const Setter& set);

/// A pair --name and --no-name; the last one given counts.
void addSwitch(CLI::App& app, const std::string& name, const std::string& description, const std::string& group,
               const std::function<void(bool)>& set);

}  // namespace mervane::cli
