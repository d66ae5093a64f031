#include "hosts/objects/range_cells.h"

#include <memory>
#include <utility>

#include "hosts/objects/refuse.h"

namespace mervane::hosts {

namespace {

sheet::CellArea onSheet(std::int64_t row, std::int64_t column, std::int64_t rows, std::int64_t columns) {
  if (rows < 1 || columns < 1 || !sheet::isOnSheet(row, column) ||
      !sheet::isOnSheet(row + rows - 1, column + columns - 1)) {
    raise(runtime::applicationDefined);
  }
  return {static_cast<std::int32_t>(row), static_cast<std::int32_t>(column), static_cast<std::int32_t>(row + rows - 1),
          static_cast<std::int32_t>(column + columns - 1)};
}

class RangeEnumerator final : public sheet::Object {
 public:
  RangeEnumerator(const RangeCells& cells, std::function<Variant(const RangeCells&)> object)
      : cells_(cells), object_(std::move(object)) {}

  Variant invoke(sheet::Access, sheet::member::Id member, Arguments) override {
    if (member != sheet::member::Next) raise(runtime::memberNotSupported);
    if (next_ >= cells_.count()) return {};
    return object_(cells_.element(next_++));
  }

 private:
  RangeCells cells_;
  std::function<Variant(const RangeCells&)> object_;
  std::int64_t next_ = 0;
};

}  // namespace

RangeCells RangeCells::item(Arguments arguments) const {
  atMost(arguments, 2);
  if (view == View::rows && !isGiven(arguments, 1)) return row(arguments);
  if (view == View::columns && !isGiven(arguments, 1)) return column(arguments);
  return cell(arguments);
}

RangeCells RangeCells::cell(Arguments arguments) const {
  atMost(arguments, 2);
  if (!isGiven(arguments, 1)) {
    const std::int64_t index = std::int64_t{wholeArgument(arguments, 0)} - 1;
    const std::int64_t width = area.columns();
    const std::int64_t down = index >= 0 ? index / width : -((-index + width - 1) / width);
    return {onSheet(area.firstRow + down, area.firstColumn + index - down * width, 1, 1)};
  }
  const std::int64_t down = wholeArgument(arguments, 0);
  const std::int64_t right = columnArgument(arguments, 1);
  return {onSheet(area.firstRow + down - 1, area.firstColumn + right - 1, 1, 1)};
}

RangeCells RangeCells::row(Arguments arguments) const {
  const std::int64_t index = wholeArgument(arguments, 0);
  return {onSheet(area.firstRow + index - 1, area.firstColumn, 1, area.columns()), View::rows};
}

RangeCells RangeCells::column(Arguments arguments) const {
  const std::int64_t index = columnArgument(arguments, 0);
  return {onSheet(area.firstRow, area.firstColumn + index - 1, area.rows(), 1), View::columns};
}

RangeCells RangeCells::offset(Arguments arguments) const {
  atMost(arguments, 2);
  const std::int64_t down = isGiven(arguments, 0) ? wholeArgument(arguments, 0) : 0;
  const std::int64_t right = isGiven(arguments, 1) ? wholeArgument(arguments, 1) : 0;
  return {onSheet(area.firstRow + down, area.firstColumn + right, area.rows(), area.columns()), view};
}

RangeCells RangeCells::resize(Arguments arguments) const {
  atMost(arguments, 2);
  const std::int64_t rows = isGiven(arguments, 0) ? wholeArgument(arguments, 0) : area.rows();
  const std::int64_t columns = isGiven(arguments, 1) ? wholeArgument(arguments, 1) : area.columns();
  return {onSheet(area.firstRow, area.firstColumn, rows, columns), view};
}

RangeCells RangeCells::entireColumns() const {
  return {{1, area.firstColumn, sheet::lastSheetRow, area.lastColumn}, View::columns};
}

std::int64_t RangeCells::count() const noexcept {
  switch (view) {
    case View::rows:
      return area.rows();
    case View::columns:
      return area.columns();
    case View::cells:
      break;
  }
  return area.cells();
}

std::int32_t RangeCells::shownCount() const {
  if (count() > INT32_MAX) raise(runtime::overflow);
  return static_cast<std::int32_t>(count());
}

RangeCells RangeCells::element(std::int64_t position) const noexcept {
  sheet::CellArea one = area;
  switch (view) {
    case View::rows:
      one.firstRow = one.lastRow = area.firstRow + static_cast<std::int32_t>(position);
      break;
    case View::columns:
      one.firstColumn = one.lastColumn = area.firstColumn + static_cast<std::int32_t>(position);
      break;
    case View::cells:
      one.firstRow = one.lastRow = area.firstRow + static_cast<std::int32_t>(position / area.columns());
      one.firstColumn = one.lastColumn = area.firstColumn + static_cast<std::int32_t>(position % area.columns());
      break;
  }
  return {one, view};
}

sheet::ObjectRef enumeratorOf(const RangeCells& cells, std::function<Variant(const RangeCells&)> object) {
  return std::make_shared<RangeEnumerator>(cells, std::move(object));
}

void requireWholeColumns(const sheet::CellArea& area) {
  if (area.firstRow == 1 && area.lastRow == sheet::lastSheetRow) return;
  refuse("Only whole columns can be fitted to their contents.");
}

}  // namespace mervane::hosts
