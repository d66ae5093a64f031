#include "cli/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>

#include "cli/option_values.h"
#include "cli/problem.h"

#ifndef MERVANE_VERSION
#error "The build passes the version."
#endif

namespace mervane::cli {
namespace {

constexpr const char* programDescription =
    "Groups the rows of a table into clusters with a neural network.\n"
    "Data go to standard output, everything else to standard error.";

constexpr const char* programFooter =
    "Examples:\n"
    "  mervane cluster iris.csv --clusters 3\n"
    "  mervane cluster --help\n"
    "\n"
    "Exit status: 0 done, 1 data refused, 2 usage, 3 file trouble, 4 engine or\n"
    "internal failure, 130 interrupted.";

constexpr const char* clusterDescription =
    "Reads a CSV or TSV file, groups its rows into\n"
    "clusters by its columns of numbers, and writes the\n"
    "rows back with a column \"Cluster\".";

constexpr const char* clusterFooter =
    "Examples:\n"
    "  mervane cluster iris.csv --clusters 3 -o clustered.csv\n"
    "  mervane cluster iris.csv -k 3 --columns sepal_length,petal_length --report\n"
    "  mervane cluster sales.csv -k 5 --columns 2-4 --delimiter ';' --decimal comma\n"
    "  seq 1 100 | mervane cluster - --clusters 4 --format csv\n"
    "  mervane cluster iris.csv -k 3 --format json | jq '.[0].Cluster'\n"
    "\n"
    "Exit status: 0 done, 1 data refused, 2 usage, 3 file trouble, 4 engine or\n"
    "internal failure, 130 interrupted.";

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

using Setter = std::function<void(const std::string&)>;

/// An option with a value; the value is judged by `set`, which raises a Problem of its own.
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

/// A pair --name and --no-name; the last one given counts.
void addSwitch(CLI::App& app, const std::string& name, const std::string& description, const std::string& group,
               const std::function<void(bool)>& set) {
  app.add_flag_function(
         "--" + name + ",!--no-" + name, [set](std::int64_t count) { set(count > 0); }, description)
      ->group(group)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void addReadingOptions(CLI::App& app, ClusterOptions& options) {
  const std::string group = "Reading";
  app.add_option("-c,--columns", options.columns,
                 "The columns to cluster by: names, numbers from 1, ranges such as 2-5, with commas between. May be "
                 "given again. Without it: every column that holds numbers only.")
      ->type_name("COLUMNS")
      ->group(group)
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->allow_extra_args(false);
  addValue(app, "--delimiter", "The character between fields, or comma, semicolon, tab, bar, space.", "CHAR", group,
           [&](const std::string& text) { options.dialect.delimiter = delimiterOption("--delimiter", text); });
  addSwitch(app, "header", "Whether the first line names the columns.", group, [&](bool on) { options.header = on; });
  addValue(app, "--decimal", "The decimal mark of the numbers: point or comma.", "MARK", group,
           [&](const std::string& text) { options.decimal = decimalOption(text); });
  addValue(app, "--quote", "The character that quotes fields, or none. Default: the double quote.", "CHAR", group,
           [&](const std::string& text) { options.dialect.quote = quoteOption(text); });
}

void addNetworkOptions(CLI::App& app, NetworkOptions& network) {
  const std::string group = "Network";
  addValue(app, "-k,--clusters", "How many clusters to make. Default: 3.", "N", group,
           [&](const std::string& text) { network.clusters = wholeOption("--clusters", text, 1); });
  addValue(app, "--epochs", "How often the network sees all rows. Default: 100.", "N", group,
           [&](const std::string& text) { network.epochs = wholeOption("--epochs", text, 0); });
  addValue(app, "--learning-rate", "Start of the learning rate, from 0 to below 1. Default: 0.5.", "X", group,
           [&](const std::string& text) { network.learningRate = fractionOption("--learning-rate", text); });
  addValue(app, "--learning-radius", "Start of the learning radius, in clusters. Default: 3.", "X", group,
           [&](const std::string& text) { network.learningRadius = numberOption("--learning-radius", text); });
  addValue(app, "--initial-weights", "Start weights without --convex, from 0 to below 1. Default: 0.3.", "X", group,
           [&](const std::string& text) { network.initialWeights = fractionOption("--initial-weights", text); });
  addSwitch(app, "convex", "Convex combination of start weights and samples. Default: on.", group,
            [&](bool on) { network.convex = on; });
  addSwitch(app, "scale", "Scaling of each column to the same range. Default: on.", group,
            [&](bool on) { network.scale = on; });
  addValue(app, "--activation", "Activation function: 0 to 4, or default, zerot, tanh, exp05, exp. Default: exp05.",
           "NAME", group, [&](const std::string& text) { network.activation = activationOption(text); });
}

void addWritingOptions(CLI::App& app, ClusterOptions& options) {
  const std::string group = "Writing";
  addValue(app, "-o,--output",
           "The file to write; an old one is replaced when the new one is whole. Default: "
           "standard output.",
           "FILE", group, [&](const std::string& text) { options.output = text; });
  addValue(app, "-f,--format",
           "csv, tsv, json, ndjson or table. Default: what the name of the output ends in, or the format of the input.",
           "FORMAT", group, [&](const std::string& text) { options.format = formatOption(text); });
  addValue(app, "--output-delimiter", "The character between fields of csv and tsv. Default: that of the input.",
           "CHAR", group,
           [&](const std::string& text) { options.outputDelimiter = delimiterOption("--output-delimiter", text); });
  addValue(app, "--cluster-column", "The name of the column that is added. Default: Cluster.", "NAME", group,
           [&](const std::string& text) { options.resultName = text; });
}

/// @param report takes the text of --report until it is judged.
void addRunningOptions(CLI::App& app, ClusterOptions& options, std::string& report) {
  const std::string group = "Running";
  app.add_flag("--report{text}", report,
               "Tell sizes and measures of the clusters on standard error; --report=json as one JSON object.")
      ->group(group)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  addValue(app, "--trace", "Write a line for each epoch to a file: epoch, learning rate, radius.", "FILE", group,
           [&](const std::string& text) { options.trace = text; });
  addValue(app, "--on-error",
           "The answer to a failure of the run: abort, retry:N (up to N times) or ignore. Default: abort.", "ANSWER",
           group, [&](const std::string& text) { options.run.onError = onErrorOption(text); });
  addSwitch(app, "progress", "A progress bar, if standard error is a terminal. Default: on.", group,
            [&](bool on) { options.run.showProgress = on; });
  app.add_flag_callback(
         "-q,--quiet", [&options] { options.level = Talk::Level::quiet; }, "Say nothing but errors.")
      ->group(group);
  app.add_flag_callback(
         "-v,--verbose", [&options] { options.level = Talk::Level::verbose; },
         "Say also what was found out about the file.")
      ->group(group);
}

void defineCluster(CLI::App& app, ClusterOptions& options, std::string& report) {
  app.footer(clusterFooter);
  app.add_option("DATA", options.input, "The data file; - is standard input.")
      ->required()
      ->type_name("")
      ->group("Input");
  addReadingOptions(app, options);
  addNetworkOptions(app, options.run.network);
  addWritingOptions(app, options);
  addRunningOptions(app, options, report);
}

std::string withNewline(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text + "\n";
}

}  // namespace

Request parseArguments(const std::vector<std::string>& arguments) {
  CLI::App app(programDescription, "mervane");
  app.formatter(std::make_shared<HelpFormatter>());
  app.footer(programFooter);
  app.require_subcommand(1);
  app.set_help_flag("-h,--help", "Print this help, or that of a command.");
  app.set_version_flag("-V,--version", "mervane " MERVANE_VERSION, "Print the version.");

  ClusterOptions options;
  CLI::App& cluster = *app.add_subcommand("cluster", clusterDescription);
  std::string report;
  defineCluster(cluster, options, report);

  // The library takes the arguments from the last to the first.
  std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
  try {
    app.parse(reversed);
  } catch (const CLI::CallForHelp&) {
    return TextToPrint{withNewline(cluster.parsed() ? cluster.help("mervane") : app.help())};
  } catch (const CLI::CallForVersion& version) {
    return TextToPrint{withNewline(version.what())};
  } catch (const CLI::RequiredError&) {
    if (cluster.parsed()) throw Problem(ExitStatus::usage, "no data file is named", "See mervane cluster --help.");
    throw Problem(ExitStatus::usage, "no command is given", "The command is cluster; see mervane --help.");
  } catch (const CLI::ParseError& error) {
    throw Problem(ExitStatus::usage, error.what(),
                  cluster.parsed() ? "See mervane cluster --help." : "See mervane --help.");
  }
  options.report = reportOption(report);
  return options;
}

}  // namespace mervane::cli
