#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "bench/clustering_quality.h"
#include "tests/windows_server/client.h"

namespace mervane::tests {
namespace {

namespace files = std::filesystem;

const files::path linuxOutputs = MERVANE_LINUX_OUTPUTS;

Value inputsOf(const quality::Table& table) {
  SAFEARRAYBOUND bounds[] = {{static_cast<ULONG>(table.rows), 1}, {static_cast<ULONG>(table.columns), 1}};
  SAFEARRAY* array = SafeArrayCreate(VT_R8, 2, bounds);
  void* data = nullptr;
  SafeArrayAccessData(array, &data);
  for (std::size_t i = 0; i < table.values.size(); ++i) {
    const std::size_t row = i / table.columns;
    const std::size_t column = i % table.columns;
    static_cast<double*>(data)[column * table.rows + row] = table.values[i];
  }
  SafeArrayUnaccessData(array);
  return {array, VT_R8};
}

std::vector<LONG> readOutputs(const files::path& file) {
  std::vector<LONG> result;
  std::ifstream stream(file);
  for (LONG number = 0; stream >> number;) result.push_back(number);
  return result;
}

/// The folder holds CLUSTERS_MODE folders, each with one file of cluster numbers for each data set.
TEST(LinuxOutputs, AreTheSameOnAllExampleData) {
  ASSERT_TRUE(files::exists(linuxOutputs)) << "Run scripts/linux_outputs first, as ./check windows does.";
  int compared = 0;
  for (const auto& folder : files::directory_iterator(linuxOutputs)) {
    const std::string name = folder.path().filename().string();
    const bool convex = name.substr(name.find('_') + 1) == "convex";
    for (const auto& file : files::directory_iterator(folder)) {
      const std::string set = file.path().stem().string();
      const files::path examples = files::path(MERVANE_SOURCE_DIR) / "examples";
      const quality::Table table =
          quality::readNumbers((set == "iris" ? examples : examples / "data") / (set + ".csv"));
      const Classifier classifier;
      ASSERT_EQ(classifier->put_Clusters(std::stol(name)), S_OK);
      ASSERT_EQ(classifier->put_UseConvexCombination(convex ? VARIANT_TRUE : VARIANT_FALSE), S_OK);
      ASSERT_EQ(classifier->put_Inputs(*inputsOf(table).get()), S_OK);
      ASSERT_EQ(classifier->Run(), S_OK);
      EXPECT_EQ(outputsOf(classifier.get()).elements, readOutputs(file.path())) << set << " " << name;
      ++compared;
    }
  }
  EXPECT_GE(compared, 50);
}

}  // namespace
}  // namespace mervane::tests
