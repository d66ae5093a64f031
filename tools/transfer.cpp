#include <compare>
#include <cstdint>
#include <utility>

#include "mervane/convert.h"
#include "support/globals.h"
#include "support/procedures.h"
#include "tools/m_tools.h"

namespace mervane::mTools {

namespace {

constexpr const char* className = "mTools";
constexpr const char* keyRange2ArraySingle = "MervaneClass3.mTools.Range2ArraySingle";
constexpr const char* keyRepeatedInputs = "MervaneClass3.mTools.RepeatedInputs";

constexpr std::int32_t notNumericNumber = errorBase + 563;

}  // namespace

Variant Range2ArraySingle(const Variant& range) {
  return wrapping(className, keyRange2ArraySingle, [&] {
    const Locale& locale = globals::platform().locale;
    const sheet::Range source(range.object());
    // 1. Columns first, then rows.
    const std::int32_t columns = source.Columns().Count();
    const std::int32_t rows = source.Rows().Count();
    // 2. The array.
    Array<float> cells({{1, rows}, {1, columns}});
    // 3. Column by column; each cell is read once for the test and once for its value.
    for (std::int32_t column = 1; column <= columns; ++column) {
      for (std::int32_t row = 1; row <= rows; ++row) {
        // NB: this failure is raised below the wrapping of this very function, so callers never see its text.
        if (!isNumeric(source.Item(row, column).Value(), locale)) {
          throw Failure(notNumericNumber, "Only numeric cells are allowed");
        }
        cells.at(row, column) = toSingle(source.Item(row, column).Value(), locale);
      }
    }
    // 4.
    return Variant(std::move(cells));
  });
}

bool AllCellsNumeric(const sheet::Application& application, std::string& reference) {
  const Locale& locale = globals::platform().locale;
  // 1.
  reference = ReferenceToA1(application, reference);
  // 2. A range that cannot be taken or gone through has no cell to object to.
  bool allNumeric = true;
  attempt([&] {
    sheet::forEach<sheet::Range>(application.Range(reference).Cells(), [&](const sheet::Range& cell) {
      // A cell whose test fails counts as one that is not numeric.
      allNumeric = !holdsOrFails([&] { return !isNumeric(cell.Value(), locale); });
      return allNumeric;
    });
  });
  // 3.
  return allNumeric;
}

bool RepeatedInputs(const sheet::Application& application, std::string& reference) {
  return wrapping(className, keyRepeatedInputs, [&] {
    const Locale& locale = globals::platform().locale;
    // 1.
    reference = ReferenceToA1(application, reference);
    // 2. NB: the result is settled in the first column; the others are never looked at.
    const sheet::Enumerator<sheet::Range> columns(application.Range(reference).Columns());
    const sheet::Range column = columns.next();
    if (!column) return false;
    // 3. The first cell against each further one.
    const sheet::Enumerator<sheet::Range> cells(column.Cells());
    const sheet::Range first = cells.next();
    const Variant pattern = first.Value();
    while (const sheet::Range cell = cells.next()) {
      if (compare(cell.Value(), pattern, locale) != std::partial_ordering::equivalent) return false;
    }
    // 4.
    return true;
  });
}

}  // namespace mervane::mTools
