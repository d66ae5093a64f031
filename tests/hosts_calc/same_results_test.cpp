#include <gtest/gtest.h>

#include <sstream>

#include "mervane/convert.h"
#include "tests/conformance/flow_desk.h"
#include "tests/conformance/workbook_under_test.h"
#include "tests/hosts_calc/calc_under_test.h"

namespace mervane::tests {
namespace {

namespace member = sheet::member;
using sheet::Access;

std::string shown(const Variant& value) {
  if (value.kind() == Variant::Kind::null) return "mixed";
  if (const auto* error = value.getIf<ErrorValue>()) return "error " + std::to_string(error->code);
  if (const auto* date = value.getIf<Date>()) return "date " + formatNumber(date->serial, englishLocale());
  if (value.isEmpty()) return "";
  return toText(value, englishLocale());
}

Variant ask(const sheet::ObjectRef& object, member::Id member, const std::vector<Variant>& arguments = {}) {
  return object->invoke(Access::get, member, arguments);
}

/// What stands in a cell and how it is shown, as both hosts answer for it.
std::string cellStory(const sheet::ObjectRef& cell) {
  std::ostringstream story;
  story << shown(ask(cell, member::Value)) << " | " << shown(ask(cell, member::NumberFormat));
  const auto interior = ask(cell, member::Interior).object();
  story << " | fill " << shown(ask(interior, member::ColorIndex)) << " " << shown(ask(interior, member::Color));
  story << " | bold " << shown(ask(ask(cell, member::Font).object(), member::Bold));
  return story.str();
}

/// The lines that a run draws around and inside the cells.
std::string lineStory(const sheet::ObjectRef& cells) {
  std::ostringstream story;
  for (std::int32_t index = 7; index <= 10; ++index) {
    const auto border = ask(cells, member::Borders, {index}).object();
    story << index << ": " << shown(ask(border, member::LineStyle)) << " " << shown(ask(border, member::Weight))
          << "  ";
  }
  return story.str();
}

std::string chartStory(const sheet::ObjectRef& chart) {
  std::ostringstream story;
  story << shown(ask(ask(chart, member::ChartTitle).object(), member::Text)) << " type "
        << shown(ask(chart, member::ChartType)) << " legend " << shown(ask(chart, member::HasLegend));
  const auto series = chart->invoke(Access::call, member::SeriesCollection, {}).object();
  const std::int32_t count = toInt32(ask(series, member::Count), englishLocale());
  for (std::int32_t i = 1; i <= count; ++i) {
    const auto one = ask(series, member::Item, {i}).object();
    story << "\n  " << shown(ask(one, member::Name)) << ": " << shown(ask(one, member::Formula));
  }
  return story.str();
}

/// Everything that a run leaves on the sheet, a line for each thing.
std::vector<std::string> storyOf(FlowDesk& desk, const std::string& area, const std::vector<std::string>& blocks) {
  std::vector<std::string> story;
  const sheet::ObjectRef application = desk.look().host().application();
  const auto cells = ask(application, member::Range, {Variant(area)}).object();
  const auto all = ask(cells, member::NewEnum).object();
  for (Variant one = all->invoke(Access::call, member::Next, {}); !one.isEmpty();
       one = all->invoke(Access::call, member::Next, {})) {
    story.push_back(cellStory(one.object()));
  }
  for (const std::string& block : blocks) {
    story.push_back(block + " " + lineStory(ask(application, member::Range, {Variant(block)}).object()));
  }
  const auto sheet = ask(application, member::ActiveSheet).object();
  story.push_back("filter " + shown(ask(sheet, member::AutoFilterMode)));
  const auto charts = sheet->invoke(Access::call, member::ChartObjects, {}).object();
  const auto each = ask(charts, member::NewEnum).object();
  for (Variant one = each->invoke(Access::call, member::Next, {}); !one.isEmpty();
       one = each->invoke(Access::call, member::Next, {})) {
    story.push_back(chartStory(ask(one.object(), member::Chart).object()));
  }
  return story;
}

/// What one more table holds, beside the one of the flow tests.
const std::vector<MadeSheet>& longerTable() {
  static const std::vector<MadeSheet> sheets = [] {
    MadeSheet data{"Sheet1", {{"", "x", "y", "Remark"}}};
    for (int i = 0; i < 24; ++i) {
      const double x = i % 3 == 0 ? 1.0 + i : i % 3 == 1 ? 50.0 + i : 200.0 - i;
      data.rows.push_back({MadeCell(Variant("row" + std::to_string(i))), MadeCell(Variant(x)),
                           i == 5 ? MadeCell() : MadeCell(Variant(x * 0.25 - 3.0)),
                           i == 7 ? MadeCell("=1+1", Variant(2.0)) : MadeCell(Variant(i % 2 == 0))});
    }
    return std::vector<MadeSheet>{data};
  }();
  return sheets;
}

HostKind withLongerTable(const HostKind& kind) {
  HostKind other = kind;
  if (kind.name == "Calc") {
    other.make = [](const std::vector<MadeSheet>&) { return calcKind().make(longerTable()); };
  } else {
    other.make = [](const std::vector<MadeSheet>&) { return workbookKind().make(longerTable()); };
  }
  return other;
}

/// What a run leaves, while the document is open and when it was saved and opened again.
std::pair<std::vector<std::string>, std::vector<std::string>> storiesOn(const HostKind& kind, bool longer,
                                                                        const FlowOptions& options,
                                                                        const std::string& area,
                                                                        const std::vector<std::string>& blocks) {
  const HostKind used = longer ? withLongerTable(kind) : kind;
  FlowDesk desk(used, std::make_shared<MemberRecord>());
  if (longer) desk.useBuiltInNetwork();
  EXPECT_EQ(desk.clusterize(options), "CLOSE");
  desk.expectQuiet();
  std::vector<std::string> open = storyOf(desk, area, blocks);
  desk.look().host().reopen();
  return {std::move(open), storyOf(desk, area, blocks)};
}

void expectSame(const FlowOptions& options, const std::string& area, const std::vector<std::string>& blocks,
                bool longer = false) {
  const auto wanted = storiesOn(workbookKind(), longer, options, area, blocks);
  const auto got = storiesOn(calcKind(), longer, options, area, blocks);
  const auto compare = [](const std::vector<std::string>& one, const std::vector<std::string>& other,
                          const char* when) {
    ASSERT_EQ(one.size(), other.size()) << when;
    for (std::size_t i = 0; i < one.size(); ++i) EXPECT_EQ(one[i], other[i]) << when << ", line " << i;
  };
  compare(got.first, wanted.first, "while it is open");
  compare(got.second, wanted.second, "opened again");
}

TEST(SameResults, TheWorkedExampleIsTheSameOnBothHosts) {
  expectSame({}, "A1:G18", {"B7:E8", "B9:E10", "B11:E12", "B13:E14", "D15:E16"});
}

TEST(SameResults, ASortedRunWithAFilterIsTheSameOnBothHosts) {
  expectSame({.autofilter = true, .sort = true}, "A1:G18", {"B7:E8", "D15:E16"});
}

TEST(SameResults, AColumnForEachClusterWithoutColoursIsTheSameOnBothHosts) {
  expectSame({.oneColumn = false, .colors = false}, "A1:H18", {"B7:E8", "D15:E16"});
}

TEST(SameResults, AClusterWithoutMembersIsTheSameOnBothHosts) {
  expectSame({.clusters = "3"}, "A1:G22", {"B7:E9", "D19:E21"});
}

TEST(SameResults, ALongerTableWithTheBuiltInNetworkIsTheSameOnBothHosts) {
  expectSame({.input = "Sheet1!B2:C25", .output = "Sheet1!F2", .clusters = "3", .sort = true}, "A1:G41", {"B26:D28"},
             true);
}

}  // namespace
}  // namespace mervane::tests
