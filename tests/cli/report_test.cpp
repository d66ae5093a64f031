#include "cli/report.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/cluster_run.h"

namespace mervane::cli {
namespace {

/// Two clusters on a line, a third that is empty.
ClusterRun exampleRun() {
  ClusterRun run;
  run.labels = {1, 1, 2, 2};
  run.samples = {0.0, 2.0, 10.0, 14.0};
  run.units = {1.0, 12.0, 30.0};
  run.columns = 1;
  run.clusters = 3;
  run.epochs = 100;
  run.epochsDone = 100;
  return run;
}

Report reportOf(const ClusterRun& run, std::vector<std::string> columns, bool scaled) {
  Report report = countsOf(run, std::move(columns), scaled);
  measure(report, run);
  return report;
}

TEST(Report, HoldsTheMeasuresOfTheRun) {
  const Report report = reportOf(exampleRun(), {"x"}, true);
  EXPECT_EQ(report.rows, 4);
  EXPECT_EQ(report.sizes, (std::vector<std::int64_t>{2, 2, 0}));
  EXPECT_EQ(report.emptyClusters, (std::vector<std::int32_t>{3}));
  EXPECT_EQ(report.rowsWithoutCluster, 0);
  EXPECT_DOUBLE_EQ(report.within, 10.0);
  EXPECT_DOUBLE_EQ(report.between, 121.0);
  EXPECT_DOUBLE_EQ(*report.quantisationError, 1.5);
  EXPECT_DOUBLE_EQ(*report.topographicError, 0.0);
  EXPECT_TRUE(report.silhouette.mean.has_value());
}

TEST(ReportText, IsForPeople) {
  EXPECT_EQ(reportText(reportOf(exampleRun(), {"x"}, true)),
            "Rows                        4\n"
            "Columns                     1 (x)\n"
            "Epochs                      100\n"
            "Cluster 1                   2 rows   50.0 %\n"
            "Cluster 2                   2 rows   50.0 %\n"
            "Cluster 3                   0 rows    0.0 %\n"
            "Quantisation error          1.5\n"
            "Topographic error           0.0 %\n"
            "Within sum of squares       10\n"
            "Between sum of squares      121 (92.4 % of all)\n"
            "Silhouette                  0.720299\n"
            "Measured on the scaled values.\n");
}

TEST(ReportText, TellsOfAnInterruptedRunAndOfRowsWithoutACluster) {
  ClusterRun run = exampleRun();
  run.epochsDone = 37;
  run.labels[3] = 0;
  run.units.clear();
  const std::string text = reportText(reportOf(run, {"x"}, false));
  EXPECT_NE(text.find("Epochs                      37 of 100\n"), std::string::npos);
  EXPECT_NE(text.find("Rows without a cluster      1\n"), std::string::npos);
  EXPECT_EQ(text.find("Quantisation"), std::string::npos);
  EXPECT_NE(text.find("Measured on the values as they are.\n"), std::string::npos);
}

TEST(ReportText, SaysWhereTheSilhouetteIsNotDefined) {
  ClusterRun run = exampleRun();
  run.labels = {1, 1, 1, 1};
  EXPECT_NE(reportText(reportOf(run, {"x"}, true)).find("not defined with fewer than two clusters"), std::string::npos);
}

TEST(ReportJson, IsOneObjectOnOneLine) {
  const std::string text = reportJson(reportOf(exampleRun(), {"x", "gr\xfc"}, true));
  EXPECT_EQ(text.find('\n'), text.size() - 1);
  const nlohmann::json json = nlohmann::json::parse(text);
  EXPECT_EQ(json["rows"], 4);
  EXPECT_EQ(json["clusters"], 3);
  EXPECT_EQ(json["sizes"], nlohmann::json::array({2, 2, 0}));
  EXPECT_EQ(json["empty_clusters"], nlohmann::json::array({3}));
  EXPECT_EQ(json["within_sum_of_squares"], 10.0);
  EXPECT_EQ(json["quantisation_error"], 1.5);
}

TEST(EmptyClustersText, ListsTheClusters) {
  EXPECT_EQ(emptyClustersText({}), "");
  EXPECT_EQ(emptyClustersText({4}), "cluster 4 is empty");
  EXPECT_EQ(emptyClustersText({1, 4}), "clusters 1 and 4 are empty");
  EXPECT_EQ(emptyClustersText({1, 4, 7}), "clusters 1, 4 and 7 are empty");
  EXPECT_EQ(emptyClustersText(std::vector<std::int32_t>(11, 1)), "11 clusters are empty");
}

}  // namespace
}  // namespace mervane::cli
