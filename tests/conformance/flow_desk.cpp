#include "tests/conformance/flow_desk.h"

#include <cmath>

#include "engine/competitive_network.h"
#include "mervane/convert.h"

namespace mervane::tests {

namespace member = sheet::member;

namespace {

/// Clicks a check until it stands as wanted.
void set(platform::HeadlessOptionWindow& window, const char* key, bool on) {
  if (window.options().Item(key).Checked != on) window.click(key);
  EXPECT_EQ(window.options().Item(key).Checked, on) << key;
}

std::string titleOf(const sheet::Chart& chart) {
  return chart.HasTitle() ? chart.ChartTitle().Text() : std::string();
}

}  // namespace

std::vector<MadeSheet> flowSheets() {
  return {{"Sheet1",
           {{"Name", "Length", "Width", "Weight"},
            {"a", 1.0, 10.0, 100.0},
            {"b", 2.0, 20.0, 200.0},
            {"c", 4.0, 40.0, 400.0},
            {"d", 7.0, 70.0, 700.0},
            {"e", 6.0, 60.0, 600.0}}},
          {"Other's", {{4.0}, {6.0}, {5.0}}}};
}

FlowDesk::FlowDesk(const HostKind& kind, std::shared_ptr<MemberRecord> record)
    : walk_(kind, kind.make(flowSheets()), std::move(record)) {
  machine_.services->regularExpressions = kind.regularExpressions();
  machine_.services->createOptionWindow = platform::headlessOptionWindows(user_);
  installErrorDialog(*machine_.services, dialog_);
  const auto engine = std::make_shared<RecordingEngine>();
  engine->winner = [this](const std::vector<double>& sample) {
    return clusters_.at(static_cast<std::int32_t>(std::llround(sample.at(0)))) - 1;
  };
  classifier_ = Classifier3::create({.createEngine = [engine] { return engine; }});
  classifier_->ExcelApplication(walk_.application().object());
}

FlowDesk::~FlowDesk() {
  classifier_->UnloadfrmMain();
}

void FlowDesk::useBuiltInNetwork() {
  classifier_->UnloadfrmMain();
  classifier_ = Classifier3::create({.createEngine = [] { return std::make_shared<CompetitiveNetwork>(); }});
  classifier_->ExcelApplication(walk_.application().object());
}

std::string FlowDesk::clusterize(const FlowOptions& options) {
  user_->atNextShowing([options](platform::HeadlessOptionWindow& window) {
    EXPECT_TRUE(window.edit("INPUTS", options.input));
    EXPECT_TRUE(window.edit("OUTPUTS", options.output));
    EXPECT_TRUE(window.edit("CLUSTERS", options.clusters));
    EXPECT_TRUE(window.edit("EPOCHS", "20"));
    // The network of the tests goes by the values as they stand on the sheet.
    set(window, "SCALEVALUES", false);
    set(window, options.oneColumn ? "SPLITONE" : "SPLITMULTIPLE", true);
    set(window, "AUTOFILTER", options.autofilter);
    set(window, "DRAWCHARTS", options.charts);
    set(window, "AVERAGES", options.averages);
    set(window, "WEIGHTEDAVERAGES", options.weightedAverages);
    set(window, "MINIMUMS", options.minimums);
    set(window, "MAXIMUMS", options.maximums);
    set(window, "CLUSTERWEIGHTS", options.weights);
    set(window, "SETCOLORS", options.colors);
    set(window, "SORTCLUSTERS", options.sort);
    window.press("CLASSIFY");
  });
  return classifier_->ShowMainForm();
}

std::vector<std::string> FlowDesk::messages() const {
  std::vector<std::string> texts;
  for (const auto& one : machine_.messageBox->shown) texts.push_back(one.text);
  return texts;
}

void FlowDesk::expectQuiet() const {
  EXPECT_EQ(messages(), std::vector<std::string>());
  EXPECT_EQ(reports(), std::vector<std::string>());
}

std::vector<std::string> FlowDesk::texts(const std::string& reference) {
  std::vector<std::string> found;
  for (const Variant& value : values(reference)) {
    found.push_back(value.kind() == Variant::Kind::error ? "(error)" : toText(value, englishLocale()));
  }
  return found;
}

std::vector<std::int32_t> FlowDesk::fills(const std::string& reference) {
  std::vector<std::int32_t> found;
  sheet::forEach<sheet::Range>(walk_.range(reference).Cells(), [&](const sheet::Range& cell) {
    found.push_back(toInt32(walk_.shown(cell.Interior(), member::ColorIndex), englishLocale()));
  });
  return found;
}

void FlowDesk::expectBold(const std::string& reference, bool bold) {
  SCOPED_TRACE(reference);
  sheet::forEach<sheet::Range>(walk_.range(reference).Cells(), [&](const sheet::Range& cell) {
    walk_.expectShown(cell.Font(), member::Bold, Variant(bold));
  });
}

std::vector<std::string> FlowDesk::chartTitles() {
  std::vector<std::string> titles;
  sheet::forEach<sheet::ChartObject>(walk_.activeSheet().ChartObjects(),
                                     [&](const sheet::ChartObject& one) { titles.push_back(titleOf(one.Chart())); });
  return titles;
}

sheet::Shape FlowDesk::shape(const std::string& title) {
  sheet::Shape found;
  sheet::forEach<sheet::Shape>(walk_.activeSheet().Shapes(), [&](const sheet::Shape& one) {
    if (titleOf(one.DrawingObject().Chart()) == title) found = one;
  });
  if (!found) throw Failure(runtime::applicationDefined.number, "there is no chart \"" + title + "\"");
  return found;
}

sheet::Chart FlowDesk::chart(const std::string& title) {
  return shape(title).DrawingObject().Chart();
}

}  // namespace mervane::tests
