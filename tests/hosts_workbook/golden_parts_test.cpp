#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <pugixml.hpp>
#include <sstream>

#include "tests/conformance/flow_desk.h"
#include "tests/conformance/workbook_under_test.h"
#include "tests/hosts_workbook/part_order/part_order.h"

namespace mervane::tests {
namespace {

constexpr const char* folder = MERVANE_SOURCE_DIR "/tests/hosts_workbook/golden/";

/// A part line by line, one element each, so that a difference is seen at its place.
std::string lines(const std::string& part) {
  pugi::xml_document document;
  EXPECT_TRUE(document.load_buffer(part.data(), part.size()));
  std::ostringstream stream;
  document.save(stream, " ", pugi::format_indent | pugi::format_no_declaration);
  return stream.str();
}

std::string kept(const std::string& name) {
  std::ifstream file(folder + name);
  EXPECT_TRUE(file) << name;
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

/// The parts of the file behind the desk as they would be saved now.
std::map<std::string, std::string> saved(FlowDesk& desk) {
  return dynamic_cast<WorkbookUnderTest&>(desk.look().host()).savedParts();
}

class GoldenParts : public testing::Test {
 protected:
  void expectKept(const std::map<std::string, std::string>& parts, const std::string& part, const std::string& name) {
    ASSERT_TRUE(parts.contains(part)) << part;
    if (std::getenv("MERVANE_KEEP_GOLDEN") != nullptr) {
      std::ofstream(folder + name) << lines(parts.at(part));
      ADD_FAILURE() << "kept " << name;
    }
    EXPECT_EQ(lines(parts.at(part)), kept(name)) << part;
  }

  FlowDesk desk_{workbookKind(), std::make_shared<MemberRecord>()};
};

TEST_F(GoldenParts, ASortedClusteringWritesTheseParts) {
  EXPECT_EQ(desk_.clusterize({.autofilter = true, .sort = true}), "CLOSE");
  const auto parts = saved(desk_);
  expectKept(parts, "xl/worksheets/sheet1.xml", "sheet.xml");
  expectKept(parts, "xl/worksheets/_rels/sheet1.xml.rels", "sheet_relations.xml");
  expectKept(parts, "xl/styles.xml", "styles.xml");
  expectKept(parts, "xl/workbook.xml", "workbook.xml");
  expectKept(parts, "xl/drawings/drawing1.xml", "drawing.xml");
  expectKept(parts, "xl/drawings/_rels/drawing1.xml.rels", "drawing_relations.xml");
  expectKept(parts, "xl/charts/chart1.xml", "profiles_chart.xml");
  expectKept(parts, "xl/charts/chart2.xml", "weights_chart.xml");
  expectKept(parts, "[Content_Types].xml", "content_types.xml");
}

TEST_F(GoldenParts, AMatrixInGreyWithoutChartsWritesThisSheet) {
  EXPECT_EQ(desk_.clusterize({.clusters = "3", .oneColumn = false, .charts = false, .colors = false}), "CLOSE");
  const auto parts = saved(desk_);
  expectKept(parts, "xl/worksheets/sheet1.xml", "grey_matrix_sheet.xml");
  expectKept(parts, "xl/styles.xml", "grey_matrix_styles.xml");
  EXPECT_FALSE(parts.contains("xl/drawings/drawing1.xml"));
}

TEST_F(GoldenParts, ASecondSaveWritesTheSameBytes) {
  EXPECT_EQ(desk_.clusterize({.sort = true}), "CLOSE");
  EXPECT_EQ(saved(desk_), saved(desk_));
}

TEST_F(GoldenParts, TheSheetThatNoRunTouchedKeepsItsBytes) {
  const auto before = saved(desk_);
  EXPECT_EQ(desk_.clusterize(), "CLOSE");
  EXPECT_EQ(saved(desk_).at("xl/worksheets/sheet2.xml"), before.at("xl/worksheets/sheet2.xml"));
}

}  // namespace
}  // namespace mervane::tests
