#include "hosts/workbook/package.h"

#include <gtest/gtest.h>

#include "fixture.h"
#include "mervane/runtime_errors.h"

namespace mervane::workbook::tests {
namespace {

constexpr const char* sheetType = "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml";

/// A small workbook as a package.
class PackageTest : public testing::Test {
 protected:
  PackageTest() {
    BookText text;
    text.more.emplace_back("xl/media/image1.png", std::string("\x89PNG\0\xFF", 6));
    writeZip(path_, text.parts());
    package_ = Package::open(path_);
  }

  std::map<std::string, std::string> saved() {
    package_->save(folder_ / "saved.xlsx");
    return readZip(folder_ / "saved.xlsx");
  }

  TemporaryFolder folder_;
  std::filesystem::path path_ = folder_ / "book.xlsx";
  std::unique_ptr<Package> package_;
};

TEST_F(PackageTest, NamesAreInTheOrderOfTheFileAndFoundInWhicheverCase) {
  EXPECT_EQ(package_->names().front(), "[Content_Types].xml");
  EXPECT_EQ(package_->names().back(), "xl/media/image1.png");
  EXPECT_TRUE(package_->has("XL/Workbook.XML"));
  EXPECT_FALSE(package_->has("xl/none.xml"));
  EXPECT_EQ(package_->read("xl/MEDIA/image1.png"), std::string("\x89PNG\0\xFF", 6));
  EXPECT_EQ(package_->path(), path_);
}

TEST_F(PackageTest, AMissingPartIsNamedWithItsFile) {
  const std::string text = failureOf([&] { static_cast<void>(package_->read("xl/none.xml")); });
  EXPECT_NE(text.find("book.xlsx"), std::string::npos);
  EXPECT_NE(text.find("\"xl/none.xml\""), std::string::npos);
}

TEST_F(PackageTest, StreamingAndPullingGiveWhatReadingGives) {
  const std::string content(300000, 'x');
  package_->put("xl/large.xml", content);
  package_->save(folder_ / "large.xlsx");
  package_ = Package::open(folder_ / "large.xlsx");
  std::string streamed;
  package_->stream("xl/large.xml", [&](std::string_view piece) { streamed += piece; });
  EXPECT_EQ(streamed, content);
  const auto pull = package_->pull("xl/large.xml");
  std::string pulled;
  char bytes[1000];
  while (const std::size_t count = pull(bytes, sizeof bytes)) pulled.append(bytes, count);
  EXPECT_EQ(pulled, content);
  EXPECT_EQ(pull(bytes, sizeof bytes), 0U) << "the end stays the end";
}

TEST_F(PackageTest, APartThatWasPutIsReadBackAndSaved) {
  package_->put("xl/worksheets/sheet1.xml", "<new/>");
  EXPECT_EQ(package_->read("xl/worksheets/sheet1.xml"), "<new/>");
  package_->put("xl/worksheets/sheet7.xml", "<seven/>", sheetType);
  EXPECT_EQ(package_->contentType("xl/worksheets/sheet7.xml"), sheetType);
  const auto parts = saved();
  EXPECT_EQ(parts.at("xl/worksheets/sheet1.xml"), "<new/>");
  EXPECT_EQ(parts.at("xl/worksheets/sheet7.xml"), "<seven/>");
  EXPECT_NE(parts.at("[Content_Types].xml").find("/xl/worksheets/sheet7.xml"), std::string::npos);
}

TEST_F(PackageTest, PartsThatNobodyTouchedKeepTheirBytes) {
  const auto before = readZip(path_);
  package_->put("xl/worksheets/sheet1.xml", "<new/>");
  auto parts = saved();
  parts.at("xl/worksheets/sheet1.xml") = before.at("xl/worksheets/sheet1.xml");
  EXPECT_EQ(parts, before);
}

TEST_F(PackageTest, ARemovedPartTakesItsTypeAndRelationsAlong) {
  static_cast<void>(package_->addRelation("xl/worksheets/sheet1.xml", "drawing", "xl/drawings/drawing1.xml"));
  package_->remove("xl/worksheets/sheet1.xml");
  EXPECT_FALSE(package_->has("xl/worksheets/sheet1.xml"));
  const auto parts = saved();
  EXPECT_FALSE(parts.contains("xl/worksheets/sheet1.xml"));
  EXPECT_FALSE(parts.contains("xl/worksheets/_rels/sheet1.xml.rels"));
  EXPECT_EQ(parts.at("[Content_Types].xml").find("sheet1.xml"), std::string::npos);
  package_->remove("xl/worksheets/sheet1.xml");
}

TEST_F(PackageTest, APartThatWasRemovedMayBePutAgain) {
  package_->remove("xl/worksheets/sheet1.xml");
  package_->put("xl/worksheets/sheet1.xml", "<again/>", sheetType);
  const auto parts = saved();
  EXPECT_EQ(parts.at("xl/worksheets/sheet1.xml"), "<again/>");
  EXPECT_NE(parts.at("[Content_Types].xml").find("sheet1.xml"), std::string::npos);
}

TEST_F(PackageTest, RelationsAreAddedUnderFreeIdsAndRemoved) {
  const std::string part = "xl/worksheets/sheet1.xml";
  EXPECT_TRUE(package_->relations(part).empty());
  const std::string first = package_->addRelation(part, "drawing", "xl/drawings/drawing1.xml");
  const std::string second = package_->addRelation(part, "table", "xl/tables/table1.xml");
  EXPECT_NE(first, second);
  ASSERT_EQ(package_->relations(part).size(), 2U);
  EXPECT_EQ(package_->relations(part)[0].kind, "drawing");
  EXPECT_EQ(package_->relations(part)[0].target, "xl/drawings/drawing1.xml");
  package_->removeRelation(part, first);
  const auto parts = saved();
  package_ = Package::open(folder_ / "saved.xlsx");
  ASSERT_EQ(package_->relations(part).size(), 1U);
  EXPECT_EQ(package_->relations(part)[0].id, second);
  EXPECT_EQ(package_->relations(part)[0].target, "xl/tables/table1.xml");
}

TEST_F(PackageTest, ThePackagesOwnRelationsLeadToTheWorkbook) {
  ASSERT_EQ(package_->relations("").size(), 1U);
  EXPECT_EQ(package_->relations("")[0].target, "xl/workbook.xml");
  EXPECT_FALSE(package_->isStrict());
}

TEST_F(PackageTest, FreeNamesSkipThoseThatAreTaken) {
  EXPECT_EQ(package_->freeName("xl/worksheets/sheet", ".xml"), "xl/worksheets/sheet2.xml");
  EXPECT_EQ(package_->freeName("xl/charts/chart", ".xml"), "xl/charts/chart1.xml");
  package_->put("XL/Charts/Chart1.xml", "<c/>");
  EXPECT_EQ(package_->freeName("xl/charts/chart", ".xml"), "xl/charts/chart2.xml");
}

TEST_F(PackageTest, SavingOverTheFileThatWasOpenedKeepsItReadable) {
  package_->put("xl/worksheets/sheet1.xml", "<new/>");
  package_->save(path_);
  EXPECT_EQ(readZip(path_).at("xl/worksheets/sheet1.xml"), "<new/>");
  EXPECT_EQ(package_->read("xl/media/image1.png"), std::string("\x89PNG\0\xFF", 6));
}

TEST_F(PackageTest, TheUnfinishedFileIsToldOfAndGoneAfterwards) {
  std::vector<std::filesystem::path> told;
  package_->save(path_, {.unfinished = [&](const std::filesystem::path& one) { told.push_back(one); }});
  ASSERT_EQ(told.size(), 2U);
  EXPECT_FALSE(told[0].empty());
  EXPECT_FALSE(std::filesystem::exists(told[0]));
  EXPECT_TRUE(told[1].empty());
}

TEST_F(PackageTest, LimitsAreThoseOfTheCaller) {
  PackageLimits limits;
  limits.entries = 3;
  failureOf([&] { static_cast<void>(Package::open(path_, limits)); });
  limits = {};
  limits.totalSize = 100;
  failureOf([&] { static_cast<void>(Package::open(path_, limits)); });
  limits = {};
  limits.smallPart = 5;
  int number = 0;
  failureOf([&] { static_cast<void>(Package::open(path_, limits)); }, &number);
  EXPECT_EQ(number, runtime::applicationDefined.number);
}

}  // namespace
}  // namespace mervane::workbook::tests
