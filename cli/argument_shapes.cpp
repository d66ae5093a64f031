#include "cli/argument_shapes.h"

#include <algorithm>

namespace mervane::cli {
namespace {

constexpr std::size_t nameWidth = 26;
constexpr std::size_t lineWidth = 80;

/// Help pages of 80 cells, with the names of flags as they are typed.
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() { column_width(nameWidth); }

  std::string make_option_name(const CLI::Option* option, bool isPositional) const override {
    const std::string name = CLI::Formatter::make_option_name(option, isPositional);
    std::string plain;
    bool isInside = false;  // The library adds what a flag stands for in braces.
    for (const char c : name) {
      isInside = c == '{' || (isInside && c != '}');
      if (!isInside && c != '}') plain += c;
      if (c == ',' && !isInside) plain += ' ';
    }
    return plain;
  }

  std::string make_option_desc(const CLI::Option* option) const override {
    const std::string text = CLI::Formatter::make_option_desc(option);
    std::string wrapped;
    std::size_t used = nameWidth;
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t end = std::min(text.find(' ', begin), text.size());
      if (used > nameWidth && used + 1 + end - begin >= lineWidth) {
        wrapped += '\n';
        used = nameWidth;
      } else if (used > nameWidth) {
        wrapped += ' ';
        ++used;
      }
      wrapped.append(text, begin, end - begin);
      used += end - begin;
      begin = end + 1;
    }
    return wrapped;
  }
};

}  // namespace

std::shared_ptr<CLI::FormatterBase> helpFormatter() {
  return std::make_shared<HelpFormatter>();
}

CLI::Option* addValue(CLI::App& app, const std::string& names, const std::string& description,
                      const std::string& valueName, const std::string& group, const Setter& set) {
  const auto call = [set](const CLI::results_t& results) {
    set(results.back());
    return true;
  };
  return app.add_option(names, call, description)
      ->type_name(valueName)
      ->expected(1)
      ->group(group)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void addSwitch(CLI::App& app, const std::string& name, const std::string& description, const std::string& group,
               const std::function<void(bool)>& set) {
  app.add_flag_function(
         "--" + name + ",!--no-" + name, [set](std::int64_t count) { set(count > 0); }, description)
      ->group(group)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

}  // namespace mervane::cli
