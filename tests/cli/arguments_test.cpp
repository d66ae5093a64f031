#include "cli/arguments.h"

#include <gtest/gtest.h>

#include "tests/cli/table_of.h"

namespace mervane::cli {
namespace {

ClusterOptions optionsOf(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "cluster");
  return std::get<ClusterOptions>(parseArguments(arguments));
}

std::string textOf(const std::vector<std::string>& arguments) {
  return std::get<TextToPrint>(parseArguments(arguments)).text;
}

TEST(Arguments, LeaveTheComponentsDefaultsAlone) {
  const ClusterOptions options = optionsOf({"data.csv"});
  EXPECT_EQ(options.input, "data.csv");
  EXPECT_FALSE(options.run.network.clusters);
  EXPECT_FALSE(options.run.network.learningRate || options.run.network.epochs || options.run.network.initialWeights);
  EXPECT_FALSE(options.run.network.learningRadius || options.run.network.convex || options.run.network.scale);
  EXPECT_FALSE(options.run.network.activation || options.format || options.header || options.decimal);
  EXPECT_EQ(options.run.onError.answer, ErrorPolicy::Answer::ask);
  EXPECT_TRUE(options.run.showProgress);
  EXPECT_EQ(options.report, ReportForm::none);
  EXPECT_EQ(options.level, Talk::Level::normal);
}

TEST(Arguments, EveryPropertyIsAFlag) {
  const NetworkOptions network =
      optionsOf({"d", "--clusters", "5", "--learning-rate", "0.25", "--epochs", "0", "--initial-weights", "0",
                 "--learning-radius", "-1.5", "--no-convex", "--no-scale", "--activation", "tanh"})
          .run.network;
  EXPECT_EQ(network.clusters, 5);
  EXPECT_EQ(network.learningRate, 0.25);
  EXPECT_EQ(network.epochs, 0);
  EXPECT_EQ(network.initialWeights, 0.0);
  EXPECT_EQ(network.learningRadius, -1.5);
  EXPECT_EQ(network.convex, false);
  EXPECT_EQ(network.scale, false);
  EXPECT_EQ(network.activation, 2);
}

TEST(Arguments, OfAPairTheLastOneCounts) {
  EXPECT_EQ(optionsOf({"d", "--no-scale", "--scale"}).run.network.scale, true);
  EXPECT_EQ(optionsOf({"d", "--header", "--no-header"}).header, false);
  EXPECT_EQ(optionsOf({"d", "-k", "2", "-k", "4"}).run.network.clusters, 4);
}

TEST(Arguments, ColumnsGatherOverSeveralFlags) {
  const ClusterOptions options = optionsOf({"-c", "a,b", "d", "--columns", "x,y"});
  EXPECT_EQ(options.input, "d");
  EXPECT_EQ(options.columns, (std::vector<std::string>{"a,b", "x,y"}));
}

TEST(Arguments, ReportTakesItsFormWithAnEqualsSignOnly) {
  EXPECT_EQ(optionsOf({"--report", "d"}).report, ReportForm::text);
  EXPECT_EQ(optionsOf({"--report=json", "d"}).report, ReportForm::json);
  EXPECT_EQ(refusal([] {
              static_cast<void>(optionsOf({"--report=xml", "d"}));
            }),
            "2: --report: \"xml\" will not do / Give --report alone or --report=json.");
}

TEST(Arguments, FormOfTheFileIsTaken) {
  const ClusterOptions options = optionsOf({"-",
                                            "--delimiter",
                                            "semicolon",
                                            "--decimal",
                                            ",",
                                            "--quote",
                                            "none",
                                            "--no-header",
                                            "--output-delimiter",
                                            "\\t",
                                            "--cluster-column",
                                            "Group",
                                            "-f",
                                            "ndjson",
                                            "-o",
                                            "out",
                                            "--trace",
                                            "t",
                                            "-q",
                                            "--no-progress"});
  EXPECT_EQ(options.input, "-");
  EXPECT_EQ(options.dialect.delimiter, ';');
  EXPECT_EQ(options.dialect.quote, std::nullopt);
  EXPECT_EQ(options.decimal, DecimalMark::comma);
  EXPECT_EQ(options.header, false);
  EXPECT_EQ(options.outputDelimiter, '\t');
  EXPECT_EQ(options.resultName, "Group");
  EXPECT_EQ(options.format, Format::ndjson);
  EXPECT_EQ(options.output, "out");
  EXPECT_EQ(options.trace, "t");
  EXPECT_EQ(options.level, Talk::Level::quiet);
  EXPECT_FALSE(options.run.showProgress);
}

TEST(Arguments, WrongOnesAreRefusedWithTheUsageStatus) {
  EXPECT_EQ(refusal([] { static_cast<void>(parseArguments({})); }),
            "2: no command is given / The commands are cluster, sheets and settings; see mervane --help.");
  EXPECT_EQ(refusal([] { static_cast<void>(parseArguments({"cluster"})); }),
            "2: no data file is named / See mervane cluster --help.");
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"clutser", "d"},
                                                    {"cluster", "d", "e"},
                                                    {"cluster", "d", "--nonsense"},
                                                    {"cluster", "d", "-k"},
                                                    {"cluster", "d", "-k", "0"},
                                                    {"cluster", "d", "-k", "3.5"},
                                                    {"cluster", "d", "--learning-rate", "1"},
                                                    {"cluster", "d", "--learning-rate", "nan"},
                                                    {"cluster", "d", "--initial-weights", "-0.1"},
                                                    {"cluster", "d", "--epochs", "-1"}}) {
    EXPECT_EQ(refusal([&] { static_cast<void>(parseArguments(arguments)); }).substr(0, 2), "2:") << arguments.back();
  }
}

TEST(Arguments, HelpHasExamplesAndFitsATerminal) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"}, {"cluster", "--help"}}) {
    const std::string help = textOf(arguments);
    EXPECT_NE(help.find("Examples:\n  mervane cluster iris.csv --clusters 3"), std::string::npos);
    EXPECT_NE(help.find("130 interrupted"), std::string::npos);
    EXPECT_EQ(help.find('{'), std::string::npos);
    for (std::size_t begin = 0; begin < help.size();) {
      const std::size_t end = help.find('\n', begin);
      EXPECT_LE(end - begin, 80U) << help.substr(begin, end - begin);
      begin = end + 1;
    }
  }
}

TEST(Arguments, HelpNeedsNoData) {
  EXPECT_NE(textOf({"cluster", "-h"}).find("--clusters"), std::string::npos);
}

TEST(Arguments, VersionIsOneLine) {
  const std::string text = textOf({"--version"});
  EXPECT_TRUE(text.starts_with("mervane "));
  EXPECT_EQ(text.find('\n'), text.size() - 1);
}

}  // namespace
}  // namespace mervane::cli
