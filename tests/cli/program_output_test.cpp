#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

const std::string iris = MERVANE_SOURCE_DIR "/examples/iris.csv";

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> all;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) all.push_back(line);
  return all;
}

TEST(Program, GivesIrisOneClusterNumberForEachRowTheSameOnEachRun) {
  const Outcome first = runProgram({"cluster", iris, "--clusters", "3", "--format", "json"});
  EXPECT_EQ(first.status, 0);
  EXPECT_EQ(first.err, "");
  const nlohmann::json rows = nlohmann::json::parse(first.out);
  ASSERT_EQ(rows.size(), 150U);
  for (const nlohmann::json& row : rows) {
    EXPECT_GE(row["Cluster"], 1);
    EXPECT_LE(row["Cluster"], 3);
    EXPECT_TRUE(row["species"].is_string());
    EXPECT_TRUE(row["petal_length"].is_number());
  }
  EXPECT_EQ(runProgram({"cluster", iris, "--clusters", "3", "--format", "json"}).out, first.out);
}

TEST(Program, FindsTheSpeciesThatStandsApart) {
  const Outcome outcome = runProgram({"cluster", iris, "--clusters", "3", "--format", "json"});
  std::map<std::string, std::map<int, int>> counts;
  for (const nlohmann::json& row : nlohmann::json::parse(outcome.out)) ++counts[row["species"]][row["Cluster"]];
  EXPECT_EQ(counts["setosa"].size(), 1U);
  EXPECT_FALSE(counts["virginica"].contains(counts["setosa"].begin()->first));
}

TEST(Program, ReadsAPipeAndMakesContiguousGroups) {
  const Outcome outcome = runProgram({"cluster", "-", "--clusters", "4", "--format", "csv"}, countTo(100));
  EXPECT_EQ(outcome.status, 0);
  const std::vector<std::string> rows = lines(outcome.out);
  ASSERT_EQ(rows.size(), 100U);
  std::vector<std::string> groups;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::size_t comma = rows[i].find(',');
    EXPECT_EQ(rows[i].substr(0, comma), std::to_string(i + 1));
    const std::string cluster = rows[i].substr(comma + 1);
    if (groups.empty() || groups.back() != cluster) groups.push_back(cluster);
  }
  std::vector<std::string> sorted = groups;
  std::ranges::sort(sorted);
  EXPECT_EQ(sorted, (std::vector<std::string>{"1", "2", "3", "4"}));
}

// With one cluster every row gets the number 1, whatever the network learns.
TEST(Program, WritesBackEveryByteOfADataFile) {
  const std::string text =
      "\xEF\xBB\xBFname;\"height; m\";n\r\n\"\xc3\x85sa\";1,80; 7\r\n\r\n\"B\r\n\"\"x\"\"\";1,65;8";
  const Outcome outcome = runProgram({"cluster", "-", "-k", "1"}, text);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "\xEF\xBB\xBFname;\"height; m\";n;Cluster\r\n\"\xc3\x85sa\";1,80; 7;1\r\n\r\n\"B\r\n\"\"x\"\"\";1,65;8;1");
}

TEST(Program, WritesEachFormat) {
  const std::string text = "name,x\na,1.5\nb,2\n";
  const auto written = [&](const std::string& format) {
    return runProgram({"cluster", "-", "-k", "1", "--format", format}, text).out;
  };
  EXPECT_EQ(written("csv"), "name,x,Cluster\na,1.5,1\nb,2,1\n");
  EXPECT_EQ(written("tsv"), "name\tx\tCluster\na\t1.5\t1\nb\t2\t1\n");
  EXPECT_EQ(written("json"),
            "[\n{\"name\":\"a\",\"x\":1.5,\"Cluster\":1},\n{\"name\":\"b\",\"x\":2,\"Cluster\":1}\n]\n");
  EXPECT_EQ(written("ndjson"), "{\"name\":\"a\",\"x\":1.5,\"Cluster\":1}\n{\"name\":\"b\",\"x\":2,\"Cluster\":1}\n");
  EXPECT_EQ(written("table"), "name    x  Cluster\n----  ---  -------\na     1.5        1\nb       2        1\n");
}

TEST(Program, TakesTheColumnsThatAreNamed) {
  const std::string text = "id,x,y\n1,0,5\n2,9,5\n3,0,5\n4,9,5\n";
  const Outcome outcome = runProgram({"cluster", "-", "-k", "2", "--columns", "x", "-f", "ndjson"}, text);
  std::map<int, std::set<int>> clusters;
  for (const std::string& line : lines(outcome.out)) {
    const nlohmann::json row = nlohmann::json::parse(line);
    clusters[row["x"]].insert(row["Cluster"].get<int>());
  }
  EXPECT_EQ(clusters[0].size(), 1U);
  EXPECT_EQ(clusters[9].size(), 1U);
  EXPECT_NE(clusters[0], clusters[9]);
}

TEST(Program, ASecondRunLeavesTheFirstResultsAsTheyAre) {
  const Outcome first = runProgram({"cluster", "-", "-k", "1"}, "x\n1\n2\n");
  const Outcome second = runProgram({"cluster", "-", "-k", "1"}, first.out);
  EXPECT_EQ(second.out, "x,Cluster,Cluster_2\n1,1,1\n2,1,1\n");
  EXPECT_NE(second.err.find("column Cluster is left out"), std::string::npos);
}

TEST(Program, NamesTheResultColumnAsAsked) {
  EXPECT_EQ(runProgram({"cluster", "-", "-k", "1", "--cluster-column", "Group"}, "x\n1\n").out, "x,Group\n1,1\n");
}

TEST(Program, HeaderFlagsDecide) {
  EXPECT_EQ(runProgram({"cluster", "-", "-k", "1", "--header"}, "1\n2\n").out, "1,Cluster\n2,1\n");
  EXPECT_EQ(runProgram({"cluster", "-", "-k", "1", "--no-header", "-c", "1"}, "1\n2\n").out, "1,1\n2,1\n");
}

TEST(Program, EveryPropertyReachesTheComponent) {
  const std::string text = "x,y\n1,200\n2,100\n3,500\n9,300\n8,900\n7,100\n";
  const auto traced = [&](const std::vector<std::string>& flags) {
    TestFolder folder;
    std::vector<std::string> arguments{"cluster", "-", "--trace", folder.file("t")};
    arguments.insert(arguments.end(), flags.begin(), flags.end());
    EXPECT_EQ(runProgram(arguments, text).status, 0);
    return folder.get("t");
  };
  EXPECT_EQ(traced({"--epochs", "2", "--learning-rate", "0.25", "--learning-radius", "4.8"}),
            "epoch,learning_rate,radius\n1,0.125,2\n2,0,0\n");
  EXPECT_EQ(traced({"--epochs", "0"}), "epoch,learning_rate,radius\n");
  for (const std::string flag : {"--convex", "--no-convex", "--scale", "--no-scale"}) {
    EXPECT_EQ(lines(traced({flag, "--initial-weights", "0.5", "--activation", "2"})).size(), 101U);
  }
}

TEST(Program, ScalingDecidesWhichColumnCounts) {
  // Unscaled, the large column outweighs the one that parts the rows evenly.
  const std::string text = "x,y\n0,1000\n0,1010\n1,1000\n1,1010\n0,1000\n1,1010\n";
  const auto partition = [&](const std::string& flag) {
    std::map<int, std::set<int>> clustersOfY;
    const Outcome outcome = runProgram({"cluster", "-", "-k", "2", flag, "-f", "ndjson"}, text);
    for (const std::string& line : lines(outcome.out)) {
      const nlohmann::json row = nlohmann::json::parse(line);
      clustersOfY[row["y"]].insert(row["Cluster"].get<int>());
    }
    return clustersOfY;
  };
  EXPECT_EQ(partition("--no-scale")[1000].size(), 1U);
  EXPECT_EQ(partition("--no-scale")[1010].size(), 1U);
}

TEST(Program, ReportTellsOfTheClustersOnStandardError) {
  const Outcome outcome = runProgram({"cluster", iris, "-k", "3", "--report", "-f", "csv"});
  EXPECT_EQ(lines(outcome.out).size(), 151U);
  for (const char* part :
       {"Rows                        150\n", "Cluster 1   ", "Cluster 3   ", "Quantisation error  ",
        "Topographic error  ", "Within sum of squares  ", "Between sum of squares  ", "Silhouette  "}) {
    EXPECT_NE(outcome.err.find(part), std::string::npos) << part;
  }
}

TEST(Program, ReportAsJsonHoldsTheSameRun) {
  const Outcome outcome = runProgram({"cluster", iris, "-k", "3", "-q", "--report=json"});
  const nlohmann::json report = nlohmann::json::parse(outcome.err);
  EXPECT_EQ(report["rows"], 150);
  EXPECT_EQ(report["sizes"].size(), 3U);
  const double total = report["total_sum_of_squares"];
  EXPECT_NEAR(report["within_sum_of_squares"].get<double>() + report["between_sum_of_squares"].get<double>(), total,
              1e-9 * total);
}

TEST(Program, WarnsOfEmptyClusters) {
  const Outcome outcome = runProgram({"cluster", "-", "-k", "5"}, "1\n2\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.err.find("warning: clusters "), std::string::npos);
  EXPECT_NE(outcome.err.find(" are empty"), std::string::npos);
  EXPECT_EQ(runProgram({"cluster", "-", "-k", "5", "-q"}, "1\n2\n").err, "");
}

}  // namespace
}  // namespace mervane::cli
