#include "calc/run_refusal.h"

#include "calc/references.h"
#include "guard/cluster_count.h"
#include "mervane/convert.h"
#include "support/globals.h"

namespace mervane::addin {

std::optional<Refusal> runRefusal(const uno::Reference<star::frame::XModel>& document,
                                  const platform::OptionItems& items) {
  const auto range = [&](const char* key) {
    return rangeOf(document, toText(items.Item(key).Value, globals::locale()));
  };
  const auto inputs = range("INPUTS");
  if (!inputs || !range("OUTPUTS")) return std::nullopt;
  const std::string trouble =
      guard::clusterCountTrouble(toInt32(items.Item("CLUSTERS").Value, globals::locale()),
                                 inputs->EndRow - inputs->StartRow + 1, items.Item("DRAWCHARTS").Checked);
  if (trouble.empty()) return std::nullopt;
  return Refusal{.key = "CLUSTERS", .sentence = "Clusters: " + trouble + "."};
}

}  // namespace mervane::addin
