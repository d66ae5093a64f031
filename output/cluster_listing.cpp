#include <cstddef>
#include <utility>
#include <vector>

#include "mervane/convert.h"
#include "output/cluster_texts.h"
#include "output/output_formatting.h"
#include "output/procedure_keys.h"
#include "support/globals.h"
#include "support/procedures.h"

namespace mervane {

namespace key = output::key;

void COutputFormatting::SortInputRange() {
  traced(key::SortInputRange, [&](Steps& step) {
    const Locale& locale = globals::platform().locale;
    // 1. The rows of the input from the first column of the sheet to one column right of it, the scratch column.
    sheet::Range rows;
    step([&] {
      const sheet::Range first = inputRange_.Offset(0, 1 - inputRange_.Column());
      const std::int32_t height = inputRange_.Rows().Count();
      const std::int32_t width = inputRange_.Columns().Count();
      rows = first.Resize(height, width + inputRange_.Column());
    });
    std::int32_t scratch = 0;
    step([&] { scratch = rows.Columns().Count(); });
    // 2. Room for what stands in the scratch column.
    std::int32_t count = 0;
    step([&] { count = inputRange_.Rows().Count(); });
    Array<Variant> saved;
    step([&] { saved = Array<Variant>({{1, count}}); });
    // 3. The cluster numbers take the scratch column.
    for (std::int32_t i = 1; i <= count; ++i) {
      step([&] { saved.at(i) = rows.Cells(i, scratch).Value(); });
      step([&] { rows.Cells(i, scratch).Value(Variant(result_.at(i))); });
    }
    // 4. All cells left of it move with them.
    step([&] { rows.Sort(rows.Columns(scratch), sheet::ascending); });
    // 5. The sorted numbers come back, and the old contents go to where they stood, as values.
    for (std::int32_t i = 1; i <= count; ++i) {
      step([&] { result_.at(i) = toInt32(rows.Cells(i, scratch).Value(), locale); });
      step([&] { rows.Cells(i, scratch).Value(saved.at(i)); });
    }
  });
}

void COutputFormatting::PrintClusters() {
  if (toOneColumn_) {
    PrintClustersToOneColumn();
  } else {
    PrintClustersToMutipleColumns();
  }
}

void COutputFormatting::PrintClustersToOneColumn() {
  wrapping(key::className, key::PrintClustersToOneColumn, [&] {
    // 1.
    const sheet::Range listing = outputRange();
    // 2. In row 1 there is no place for the header.
    attempt([&] { listing.Cells(0, 1).Value(Variant("Clusters")); });
    attempt([&] { listing.Cells(0, 1).Font().Bold(true); });
    // 3.
    const std::int32_t last = result_.upperBound(1);
    for (std::int32_t i = result_.lowerBound(1); i <= last; ++i) {
      listing.Cells(i, 1).Value(Variant(result_.at(i)));
      if (setColors_) FillRange(listing.Cells(i, 1), ClusterColorIndex(result_.at(i)));
    }
    // 4.
    ApplyAutofilter(listing);
  });
}

void COutputFormatting::PrintClustersToMutipleColumns() {
  wrapping(key::className, key::PrintClustersToMutipleColumns, [&] {
    // 1.
    const sheet::Range listing = outputRange();
    // 2. In row 1 there is no place for the headers.
    for (std::int32_t k = 1; k <= clusters_; ++k) {
      attempt([&] { listing.Cells(0, k).Value(Variant(output::clusterName(k))); });
      attempt([&] { listing.Cells(0, k).Font().Bold(true); });
    }
    // 3. The colour goes over the whole row, the zeros included.
    const std::int32_t last = result_.upperBound(1);
    for (std::int32_t i = result_.lowerBound(1); i <= last; ++i) {
      const std::int32_t cluster = result_.at(i);
      for (std::int32_t k = 1; k <= clusters_; ++k) {
        listing.Cells(i, k).Value(Variant(std::int32_t{k == cluster ? 1 : 0}));
      }
      if (setColors_) FillRange(listing.Offset(i - 1, 0).Resize(1, clusters_), ClusterColorIndex(cluster));
    }
    // 4.
    ApplyAutofilter(listing);
  });
}

void COutputFormatting::ApplyAutofilter(const sheet::Range& listing) {
  // AutoFilter only switches over, so the present state decides. A state that cannot be read counts as the other one.
  const bool switchOver = holdsOrFails([&] { return application_.ActiveSheet().AutoFilterMode() != setAutofilter_; });
  if (switchOver) attempt([&] { listing.Offset(-1, 0).AutoFilter(); });
}

void COutputFormatting::ColorInputRows() {
  std::int32_t count = 0;
  attempt([&] { count = inputRange_.Rows().Count(); });
  for (std::int32_t i = 1; i <= count; ++i) {
    attempt([&] {
      const sheet::Range first = inputRange_.Cells(i, 1);
      FillRange(first.Resize(1, inputRange_.Columns().Count()), ClusterColorIndex(result_.at(i)));
    });
  }
}

void COutputFormatting::FillRange(const sheet::Range& target, std::int32_t colorIndex) {
  attempt([&] { target.Interior().Pattern(sheet::patternSolid); });
  attempt([&] { target.Interior().ColorIndex(colorIndex); });
}

}  // namespace mervane
