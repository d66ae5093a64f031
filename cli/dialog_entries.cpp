#include "cli/dialog_entries.h"

#include <cmath>
#include <utility>

#include "cli/talk.h"
#include "mervane/convert.h"
#include "mervane/failure.h"
#include "platform/headless/headless_option_window.h"

namespace mervane::cli {
namespace {

using platform::HeadlessOptionWindow;

/// What a person at the window gets through.
class Person {
 public:
  Person(HeadlessOptionWindow& window, const Locale& locale) : window_(window), locale_(locale) {}

  void type(const char* key, const std::string& text) {
    if (!text.empty()) static_cast<void>(window_.edit(key, text));
  }
  void type(const char* key, const char* flag, std::optional<double> value, const char* taken) {
    if (!value || refusal_) return;
    const std::string text = formatNumber(*value, locale_);
    if (window_.edit(key, text)) return;
    refusal_ = Problem(ExitStatus::usage, std::string(flag) + " " + text + " is refused by the options of a worksheet",
                       std::string("They take ") + taken + ".");
  }
  void set(const char* key, std::optional<bool> on) {
    if (on && window_.options().Item(key).Checked != *on) window_.click(key);
  }
  void choose(const char* key, std::int32_t code) {
    if (refusal_) return;
    for (const platform::OptionItem& choice : window_.options().Item(key).SubItems) {
      if (toText(choice.Value, locale_) == toText(Variant(code), locale_)) return window_.choose(key, choice.Caption);
    }
    refusal_ = Problem(ExitStatus::usage,
                       "--activation " + toText(Variant(code), locale_) + " is no choice of the options of a worksheet",
                       "They have zerot, tanh, exp05 and exp.");
  }

  [[nodiscard]] const std::optional<Problem>& refusal() const { return refusal_; }

 private:
  HeadlessOptionWindow& window_;
  const Locale& locale_;
  std::optional<Problem> refusal_;
};

void enterNetwork(const NetworkOptions& network, Person& person, Talk& talk) {
  person.type("CLUSTERS", "--clusters", network.clusters, "a whole number from 2 to 998");
  person.type("LEARNINGRATE", "--learning-rate", network.learningRate, "a number above 0.00001 and below 0.99999");
  person.type("EPOCHS", "--epochs", network.epochs, "a whole number from 2 to 99998");
  person.type("STARTLEARNINGRADIUS", "--learning-radius", network.learningRadius, "a whole number from 2 to 998");
  if (network.learningRadius && std::trunc(*network.learningRadius) != *network.learningRadius && !person.refusal()) {
    talk.note("--learning-radius is rounded to a whole number, as the options of a worksheet do");
  }
  if (network.activation) person.choose("ACTIVATIONFUNCTION", *network.activation);
  person.set("USECONVEX", network.convex);
  person.set("SCALEVALUES", network.scale);
}

void enterOutput(const OutputSwitches& output, HeadlessOptionWindow& window, Person& person) {
  if (output.oneColumn) window.click(*output.oneColumn ? "SPLITONE" : "SPLITMULTIPLE");
  const std::pair<const char*, std::optional<bool>> boxes[] = {
      {"AUTOFILTER", output.autofilter},  {"DRAWCHARTS", output.charts},
      {"AVERAGES", output.averages},      {"WEIGHTEDAVERAGES", output.weightedAverages},
      {"MINIMUMS", output.minimums},      {"MAXIMUMS", output.maximums},
      {"CLUSTERWEIGHTS", output.weights}, {"SETCOLORS", output.colors},
      {"SORTCLUSTERS", output.sort},
  };
  for (const auto& [key, on] : boxes) person.set(key, on);
}

/// As the dialog itself reads a number of its own.
std::int32_t clustersOf(const HeadlessOptionWindow& window, const Locale& locale) {
  try {
    return toInt32(window.options().Item("CLUSTERS").Value, locale);
  } catch (const Failure&) {
    return guard::Plan{}.clusters;  // NB: the component refuses such a text.
  }
}

}  // namespace

HeldEntries heldBy(const HeadlessOptionWindow& window, const Locale& locale) {
  const auto text = [&](const char* key) { return toText(window.options().Item(key).Value, locale); };
  const auto isOn = [&](const char* key) { return window.options().Item(key).Checked; };
  HeldEntries held{text("INPUTS"), text("OUTPUTS"), {}};
  guard::Plan& plan = held.plan;
  plan.clusters = clustersOf(window, locale);
  plan.oneColumn = isOn("SPLITONE");
  plan.sort = isOn("SORTCLUSTERS");
  plan.autofilter = isOn("AUTOFILTER");
  plan.charts = isOn("DRAWCHARTS");
  plan.averages = isOn("AVERAGES");
  plan.weightedAverages = isOn("WEIGHTEDAVERAGES");
  plan.minimums = isOn("MINIMUMS");
  plan.maximums = isOn("MAXIMUMS");
  plan.weights = isOn("CLUSTERWEIGHTS");
  return held;
}

std::optional<Problem> enter(const DialogEntries& entries, HeadlessOptionWindow& window, const Locale& locale,
                             Talk& talk) {
  Person person(window, locale);
  person.type("INPUTS", entries.inputs);
  person.type("OUTPUTS", entries.outputs);
  enterNetwork(entries.network, person, talk);
  enterOutput(entries.output, window, person);
  return person.refusal();
}

}  // namespace mervane::cli
