#include "cli/arguments.h"

#include <functional>
#include <utility>

#include "cli/argument_shapes.h"
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
    "  mervane cluster iris.xlsx -i 'Iris!B2:E151' --outputs 'Iris!G2' -o out.xlsx\n"
    "  mervane sheets iris.xlsx\n"
    "  mervane cluster --help\n"
    "\n"
    "Exit status: 0 done, 1 data refused, 2 usage, 3 file trouble, 4 engine or\n"
    "internal failure, 130 interrupted.";

constexpr const char* clusterDescription =
    "Groups the rows of a table into clusters. A CSV or\n"
    "TSV file is written back with a column \"Cluster\"; a\n"
    "workbook gets a listing, statistics and charts.";

constexpr const char* clusterFooter =
    "Examples:\n"
    "  mervane cluster iris.csv --clusters 3 -o clustered.csv\n"
    "  mervane cluster iris.csv -k 3 --columns sepal_length,petal_length --report\n"
    "  mervane cluster sales.csv -k 5 --columns 2-4 --delimiter ';' --decimal comma\n"
    "  seq 1 100 | mervane cluster - --clusters 4 --format csv\n"
    "  mervane cluster iris.csv -k 3 --format json | jq '.[0].Cluster'\n"
    "  mervane cluster iris.xlsx -i 'Iris!B2:E151' --outputs 'Iris!G2' -o out.xlsx\n"
    "  mervane cluster iris.xlsx -i 'Iris!B2:E151' --in-place=.bak --no-sort --yes\n"
    "\n"
    "Exit status: 0 done, 1 data refused, 2 usage, 3 file trouble, 4 engine or\n"
    "internal failure, 130 interrupted.";

/// The same setter, which also notes that the flag was given.
template <class Set>
auto noting(std::string& place, const char* flag, Set set) {
  return [&place, flag, set = std::move(set)](const auto& value) {
    place = flag;
    set(value);
  };
}

void addReadingOptions(CLI::App& app, ClusterOptions& options) {
  const std::string group = "Reading data files";
  std::string& given = options.dataFileFlag;
  const auto addColumns = [&given, &options](const CLI::results_t& texts) {
    given = "--columns";
    options.columns = texts;
    return true;
  };
  app.add_option("-c,--columns", addColumns,
                 "The columns to cluster by: names, numbers from 1, ranges such as 2-5, with commas between. May be "
                 "given again. Without it: every column that holds numbers only.")
      ->type_name("COLUMNS")
      ->group(group)
      ->expected(1)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
      ->allow_extra_args(false);
  addValue(app, "--delimiter", "The character between fields, or comma, semicolon, tab, bar, space.", "CHAR", group,
           noting(given, "--delimiter",
                  [&](const std::string& text) { options.dialect.delimiter = delimiterOption("--delimiter", text); }));
  addSwitch(app, "header", "Whether the first line names the columns.", group,
            noting(given, "--header", [&](bool on) { options.header = on; }));
  addValue(app, "--decimal", "The decimal mark of the numbers: point or comma.", "MARK", group,
           noting(given, "--decimal", [&](const std::string& text) { options.decimal = decimalOption(text); }));
  addValue(app, "--quote", "The character that quotes fields, or none. Default: the double quote.", "CHAR", group,
           noting(given, "--quote", [&](const std::string& text) { options.dialect.quote = quoteOption(text); }));
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
  addValue(app, "--initial-weights",
           "Start weights without --convex, from 0 to below 1. Default: 0.3. For workbooks it sets the component's "
           "property, because the item of that name in the options dialog has no effect.",
           "X", group,
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
  addValue(
      app, "-o,--output",
      "The file to write; an old one is replaced when the new one is whole. Default for data files: standard output.",
      "FILE", group, [&](const std::string& text) { options.output = text; });
  app.add_flag_callback(
         "--force", [&options] { options.force = true; },
         "Write the file also where an office's lock file beside it says that it is open.")
      ->group(group);
  addValue(app, "-f,--format",
           "csv, tsv, json, ndjson or table. Default: what the name of the output ends in, or the format of the input.",
           "FORMAT", group, [&](const std::string& text) { options.format = formatOption(text); });
  addValue(app, "--output-delimiter", "The character between fields of csv and tsv. Default: that of the input.",
           "CHAR", group,
           [&](const std::string& text) { options.outputDelimiter = delimiterOption("--output-delimiter", text); });
  addValue(app, "--cluster-column", "The name of the column that is added. Default: Cluster.", "NAME", group,
           [&](const std::string& text) { options.resultName = text; });
}

BookHost hostOption(const std::string& text) {
  if (text == "workbook") return BookHost::workbook;
  if (text == "calc") return BookHost::calc;
  throw Problem(ExitStatus::usage, "--host: \"" + text + "\" will not do", "Give workbook or calc.");
}

void addHostOption(CLI::App& app, const std::string& group, const Setter& set) {
  addValue(app, "--host",
           "What opens the workbook: workbook, the program itself, or calc, LibreOffice Calc without windows. Default: "
           "calc for .ods, .fods and .xls where it is there, else workbook.",
           "NAME", group, set);
}

void addWorkbookOptions(CLI::App& app, ClusterOptions& options, std::string& inPlace) {
  const std::string group = "Workbooks";
  std::string& given = options.workbookFlag;
  WorkbookOptions& book = options.book;
  addValue(app, "-i,--inputs",
           "The range to cluster, rows of numbers without their header, such as Sheet1!B2:E151. Without it the one "
           "block of numbers on the active sheet is proposed.",
           "RANGE", group, noting(given, "--inputs", [&](const std::string& text) { book.inputs = text; }));
  addValue(app, "--outputs",
           "The first cell of the listing of cluster numbers, such as Sheet1!G2. Without it a free column is proposed.",
           "CELL", group, noting(given, "--outputs", [&](const std::string& text) { book.outputs = text; }));
  const auto addPlainFlag = [&](const char* name, bool& flag, const char* description) {
    app.add_flag_callback(
           name,
           [&given, &flag, name] {
             given = name;
             flag = true;
           },
           description)
        ->group(group);
  };
  addPlainFlag("--yes", book.yes, "Take what is proposed.");
  addPlainFlag("--overwrite", book.overwrite,
               "Let go what the run would remove or overwrite: cells with contents, charts without a title, filters.");
  app.add_flag("--in-place{*}", inPlace,
               "Write the results into the workbook itself; --in-place=.bak keeps the old file under that ending, "
               "and never writes over an earlier copy.")
      ->group(group)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  addPlainFlag("--dry-run", book.dryRun, "Write nothing; list the cells that would be written and what they hold.");
  addHostOption(app, group, noting(given, "--host", [&](const std::string& text) { book.host = hostOption(text); }));
  addPlainFlag("--remembered", book.remembered,
               "Begin with what the options dialog remembers, and remember what is used.");
}

void addSheetOptions(CLI::App& app, ClusterOptions& options) {
  const std::string group = "On the sheet, all on by default";
  OutputSwitches& output = options.book.output;
  const auto add = [&](const char* name, const char* description, std::optional<bool>& place) {
    addSwitch(app, name, description, group, noting(options.workbookFlag, name, [&place](bool on) { place = on; }));
  };
  app.add_flag_function(
         "--one-column,!--multiple-columns,!--no-one-column,--no-multiple-columns",
         [&](std::int64_t count) {
           options.workbookFlag = "--one-column";
           output.oneColumn = count > 0;
         },
         "List the cluster numbers in one column, the default, or as one column of 0 and 1 for each cluster.")
      ->group(group)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  add("autofilter", "Filter arrows over the listing.", output.autofilter);
  add("charts", "Charts of profiles and weights; the first needs the weighted averages, the second the weights.",
      output.charts);
  add("averages", "Averages of each cluster under the inputs.", output.averages);
  add("weighted-averages", "How far each average lies from that of all rows, as a percentage.",
      output.weightedAverages);
  add("minimums", "Minimums of each cluster.", output.minimums);
  add("maximums", "Maximums of each cluster.", output.maximums);
  add("weights", "The share of rows in each cluster.", output.weights);
  add("colors", "A colour for each cluster.", output.colors);
  add("sort", "Sort the rows by cluster; cells left of the inputs move along, cells right of them do not.",
      output.sort);
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
           "The answer to a failure of the run: abort, retry:N (up to N times) or ignore. Default: a question on a "
           "terminal, abort elsewhere.",
           "ANSWER", group, [&](const std::string& text) { options.run.onError = onErrorOption(text); });
  addValue(app, "--log", "Append every failure report to a file.", "FILE", group,
           [&](const std::string& text) { options.run.logs.errors = text; });
  addValue(app, "--trace-calls", "Append a line to a file when a procedure is entered or left.", "FILE", group,
           [&](const std::string& text) { options.run.logs.calls = text; });
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

/// Texts of options that are judged when all are read.
struct RawTexts {
  std::string report;
  std::string inPlace;
};

void defineCluster(CLI::App& app, ClusterOptions& options, RawTexts& raw) {
  app.footer(clusterFooter);
  app.add_option("DATA", options.input, "The data file or workbook; - is a data file from standard input.")
      ->required()
      ->type_name("")
      ->group("Input");
  addReadingOptions(app, options);
  addWorkbookOptions(app, options, raw.inPlace);
  addSheetOptions(app, options);
  addNetworkOptions(app, options.run.network);
  addWritingOptions(app, options);
  addRunningOptions(app, options, raw.report);
}

void defineSheets(CLI::App& app, SheetsOptions& options) {
  app.footer("Example:\n  mervane sheets iris.xlsx");
  app.add_option("BOOK", options.input, "The workbook, .xlsx or .xlsm.")->required()->type_name("")->group("Input");
  addValue(app, "-f,--format", "text or json. Default: text.", "FORMAT", "Writing", [&](const std::string& text) {
    if (text != "text" && text != "json") {
      throw Problem(ExitStatus::usage, "--format: \"" + text + "\" will not do", "Give text or json.");
    }
    options.json = text == "json";
  });
  addHostOption(app, "Input", [&](const std::string& text) { options.host = hostOption(text); });
}

void defineSettings(CLI::App& app, SettingsOptions& options) {
  app.require_subcommand(0, 1);
  app.footer(
      "Without a command it lists. Examples:\n"
      "  mervane settings set CLUSTERS 5\n"
      "  mervane settings export settings.json");
  const auto add = [&](const char* name, const char* description, SettingsOptions::Action action) -> CLI::App& {
    CLI::App& command = *app.add_subcommand(name, description);
    command.callback([&options, action] { options.action = action; });
    return command;
  };
  add("list", "Lists each setting, with what is remembered of it.", SettingsOptions::Action::list);
  CLI::App& set = add("set", "Remembers one value.", SettingsOptions::Action::set);
  set.add_option("KEY", options.key, "The setting's name.")->required()->type_name("");
  set.add_option("VALUE", options.value, "What to remember.")->required()->type_name("");
  add("clear", "Forgets everything, the place of the window too.", SettingsOptions::Action::clear);
  add("export", "Writes what is remembered as JSON.", SettingsOptions::Action::exportAll)
      .add_option("FILE", options.file, "The file to write. Default: standard output.")
      ->type_name("");
  add("import", "Remembers what such a file holds, all or nothing.", SettingsOptions::Action::importAll)
      .add_option("FILE", options.file, "The file to read; - is standard input.")
      ->required()
      ->type_name("");
}

void judgeInPlace(const std::string& text, ClusterOptions& options) {
  if (text.empty()) return;
  options.workbookFlag = "--in-place";
  options.book.inPlace = true;
  if (text == "*") return;
  if (text.find('/') != std::string::npos) {
    throw Problem(ExitStatus::usage, "--in-place: \"" + text + "\" will not do",
                  "Give the ending of the copy's name, such as --in-place=.bak.");
  }
  options.book.backupSuffix = text;
}

Problem usageProblem(const CLI::App* command, const CLI::ParseError& error) {
  const bool lacksSomething = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
  if (command == nullptr) {
    if (!lacksSomething) return {ExitStatus::usage, error.what(), "See mervane --help."};
    return {ExitStatus::usage, "no command is given",
            "The commands are cluster, sheets and settings; see mervane --help."};
  }
  const std::string advice = "See mervane " + command->get_name() + " --help.";
  if (lacksSomething && command->get_name() == "cluster") return {ExitStatus::usage, "no data file is named", advice};
  if (lacksSomething && command->get_name() == "sheets") return {ExitStatus::usage, "no workbook is named", advice};
  return {ExitStatus::usage, error.what(), advice};
}

std::string withNewline(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text + "\n";
}

}  // namespace

Request parseArguments(const std::vector<std::string>& arguments) {
  CLI::App app(programDescription, "mervane");
  app.formatter(helpFormatter());
  app.footer(programFooter);
  app.require_subcommand(1);
  // NB: on one system the parser would take a path such as /data/iris.csv for a flag; all commands inherit this.
  app.allow_windows_style_options(false);
  app.set_help_flag("-h,--help", "Print this help, or that of a command.");
  app.set_version_flag("-V,--version", "mervane " MERVANE_VERSION, "Print the version.");

  ClusterOptions options;
  RawTexts raw;
  CLI::App& cluster = *app.add_subcommand("cluster", clusterDescription);
  defineCluster(cluster, options, raw);
  SheetsOptions sheets;
  CLI::App& listing = *app.add_subcommand("sheets", "Lists the sheets of a workbook with their used ranges.");
  defineSheets(listing, sheets);
  SettingsOptions settings;
  CLI::App& remembered = *app.add_subcommand("settings", "Shows and changes what the options dialog remembers.");
  defineSettings(remembered, settings);

  const CLI::App* const commands[] = {&cluster, &listing, &remembered};
  const auto commandGiven = [&]() -> const CLI::App* {
    for (const CLI::App* one : commands) {
      if (one->parsed()) return one;
    }
    return nullptr;
  };

  // The library takes the arguments from the last to the first.
  std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
  try {
    app.parse(reversed);
  } catch (const CLI::CallForHelp&) {
    const CLI::App* command = commandGiven();
    return TextToPrint{withNewline(command != nullptr ? command->help("mervane") : app.help())};
  } catch (const CLI::CallForVersion& version) {
    return TextToPrint{withNewline(version.what())};
  } catch (const CLI::ParseError& error) {
    throw usageProblem(commandGiven(), error);
  }
  if (listing.parsed()) return sheets;
  if (remembered.parsed()) return settings;
  options.report = reportOption(raw.report);
  judgeInPlace(raw.inPlace, options);
  return options;
}

}  // namespace mervane::cli
