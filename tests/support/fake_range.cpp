#include "tests/support/fake_range.h"

#include <algorithm>
#include <compare>
#include <numeric>

#include "mervane/convert.h"

namespace mervane::tests {

using enum sheet::member::Id;
using sheet::Access;
using sheet::member::Id;

namespace {

constexpr std::int32_t lastRow = 1048576;
constexpr std::int32_t lastColumn = 16384;
constexpr double columnWidth = 48.0;
constexpr double rowHeight = 12.75;

std::string letters(std::int32_t column) {
  std::string text;
  for (; column > 0; column = (column - 1) / 26) {
    text.insert(text.begin(), static_cast<char>('A' + (column - 1) % 26));
  }
  return text;
}

/// Reads one cell address from the front of the text.
FakeRange::Place takeCell(std::string& text) {
  FakeRange::Place place{0, 0, 1, 1};
  std::size_t at = 0;
  for (; at < text.size() && ((text[at] | 0x20) >= 'a' && (text[at] | 0x20) <= 'z') && place.column <= lastColumn;
       ++at) {
    place.column = place.column * 26 + ((text[at] | 0x20) - 'a' + 1);
  }
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9' && place.row <= lastRow; ++at) {
    place.row = place.row * 10 + (text[at] - '0');
  }
  text.erase(0, at);
  return place;
}

}  // namespace

FakeRange::FakeRange(FakeSheet* host, std::shared_ptr<FakeWorksheet> sheet, Place place)
    : host_(host), sheet_(std::move(sheet)), place_(place) {
  if (place.row < 1 || place.column < 1 || place.rows < 1 || place.columns < 1 ||
      place.row + place.rows - 1 > lastRow || place.column + place.columns - 1 > lastColumn) {
    raise(runtime::applicationDefined);
  }
}

FakeRange::Place FakeRange::placeOf(const std::string& address) {
  std::string rest = address;
  Place place = takeCell(rest);
  if (!rest.empty() && rest.front() == ':') {
    rest.erase(0, 1);
    const Place end = takeCell(rest);
    place.rows = end.row - place.row + 1;
    place.columns = end.column - place.column + 1;
  }
  if (!rest.empty()) raise(runtime::applicationDefined);
  return place;
}

std::string FakeRange::addressOf(const Place& place) {
  const auto cell = [](std::int32_t row, std::int32_t column) { return letters(column) + formatExact(row); };
  const std::string first = cell(place.row, place.column);
  if (place.rows == 1 && place.columns == 1) return first;
  return first + ":" + cell(place.row + place.rows - 1, place.column + place.columns - 1);
}

Variant FakeRange::invoke(Access access, Id member, std::span<const Variant> arguments) {
  const auto index = [&](std::size_t i) { return number(arguments[i]); };
  switch (member) {
    case Cells:
    case Item:
      if (arguments.empty()) return asValue(at(place_));
      return asValue(at({place_.row + index(0) - 1, place_.column + index(1) - 1, 1, 1}));
    case NewEnum: {
      std::vector<sheet::ObjectRef> cells;
      for (std::int32_t i = 0; i < place_.rows * place_.columns; ++i) {
        cells.push_back(at({place_.row + i / place_.columns, place_.column + i % place_.columns, 1, 1}));
      }
      return asValue(std::make_shared<FakeEnumerator>(std::move(cells)));
    }
    case Rows:
      return asValue(parts(false));
    case Columns:
      if (arguments.empty()) return asValue(parts(true));
      return asValue(at({place_.row, place_.column + index(0) - 1, place_.rows, 1}));
    case Column:
      return Variant(place_.column);
    case Offset:
      return asValue(at({place_.row + index(0), place_.column + index(1), place_.rows, place_.columns}));
    case Resize:
      return asValue(at({place_.row, place_.column, index(0), index(1)}));
    case Value:
      return value(access, arguments);
    case NumberFormat:
      eachCell([&](FakeCell& cell) { cell.numberFormat = toText(arguments[0], englishLocale()); });
      return {};
    case Font:
      return asValue(font());
    case Interior:
      return asValue(interior());
    case Borders:
      return asValue(border(index(0)));
    case Sort:
      sort(arguments[0]);
      return {};
    case AutoFilter:
      sheet_->autoFilterMode = !sheet_->autoFilterMode;
      sheet_->autoFilterRange = name();
      return {};
    case AutoFit:
      for (std::int32_t i = 0; i < place_.columns; ++i) sheet_->fittedColumns.insert(place_.column + i);
      return {};
    case Select:
      host_->selection = name();
      return {};
    case Left:
      return Variant((place_.column - 1) * columnWidth);
    case Top:
      return Variant((place_.row - 1) * rowHeight);
    case Width:
      return Variant(place_.columns * columnWidth);
    case Worksheet:
      return asValue(host_->worksheetObject(sheet_));
    default:
      raise(runtime::memberNotSupported);
  }
}

sheet::ObjectRef FakeRange::at(const Place& place) const {
  return std::make_shared<FakeRange>(host_, sheet_, place);
}

template <class Change>
void FakeRange::eachCell(Change&& change) const {
  for (std::int32_t row = place_.row; row < place_.row + place_.rows; ++row) {
    for (std::int32_t column = place_.column; column < place_.column + place_.columns; ++column) {
      change(sheet_->cells[{row, column}]);
    }
  }
}

sheet::ObjectRef FakeRange::parts(bool columns) const {
  auto object = std::make_shared<FakeObject>();
  const FakeRange range = *this;
  object->handlers[Count] = [range, columns](Access, std::span<const Variant>) {
    return Variant(columns ? range.place_.columns : range.place_.rows);
  };
  object->handlers[NewEnum] = [range, columns](Access, std::span<const Variant>) {
    const Place& place = range.place_;
    std::vector<sheet::ObjectRef> elements;
    for (std::int32_t i = 0; i < (columns ? place.columns : place.rows); ++i) {
      elements.push_back(columns ? range.at({place.row, place.column + i, place.rows, 1})
                                 : range.at({place.row + i, place.column, 1, place.columns}));
    }
    return asValue(std::make_shared<FakeEnumerator>(std::move(elements)));
  };
  object->handlers[EntireColumn] = [range](Access, std::span<const Variant>) {
    return asValue(range.at({1, range.place_.column, lastRow, range.place_.columns}));
  };
  return object;
}

sheet::ObjectRef FakeRange::font() const {
  auto object = std::make_shared<FakeObject>();
  object->handlers[Bold] = [range = *this](Access, std::span<const Variant> arguments) {
    range.eachCell([&](FakeCell& cell) { cell.bold = toBoolean(arguments[0], englishLocale()); });
    return Variant();
  };
  return object;
}

sheet::ObjectRef FakeRange::interior() const {
  auto object = std::make_shared<FakeObject>();
  const auto sets = [&](Id id, std::optional<std::int32_t> FakeCell::*field) {
    object->handlers[id] = [range = *this, field](Access, std::span<const Variant> arguments) {
      range.eachCell([&](FakeCell& cell) { cell.*field = number(arguments[0]); });
      return Variant();
    };
  };
  sets(Pattern, &FakeCell::pattern);
  sets(ColorIndex, &FakeCell::colorIndex);
  sets(Color, &FakeCell::color);
  return object;
}

sheet::ObjectRef FakeRange::border(std::int32_t index) const {
  auto object = std::make_shared<FakeObject>();
  const bool lacking =
      (index == sheet::insideVertical && place_.columns == 1) || (index == sheet::insideHorizontal && place_.rows == 1);
  const std::string where = name() + " edge " + formatExact(index);
  for (const Id id : {LineStyle, Weight, ColorIndex}) {
    object->handlers[id] = [sheet = sheet_, where, lacking, id](Access, std::span<const Variant> arguments) {
      if (lacking) raise(runtime::applicationDefined);
      sheet->borders[where][id] = number(arguments[0]);
      return Variant();
    };
  }
  return object;
}

Variant FakeRange::value(Access access, std::span<const Variant> arguments) const {
  if (place_.rows != 1 || place_.columns != 1) raise(runtime::applicationDefined);
  if (access == Access::get) {
    const auto cell = sheet_->cells.find({place_.row, place_.column});
    return cell == sheet_->cells.end() ? Variant() : cell->second.value;
  }
  // Numbers are kept as doubles, as a sheet does.
  const Variant& written = arguments[0];
  const bool integer = written.kind() == Variant::Kind::int32 || written.kind() == Variant::Kind::int16;
  sheet_->cells[{place_.row, place_.column}].value = integer ? Variant(toDouble(written, englishLocale())) : written;
  return {};
}

void FakeRange::sort(const Variant& key) const {
  const auto& keyRange = dynamic_cast<const FakeRange&>(*key.object());
  const std::int32_t keyColumn = keyRange.place_.column;
  std::vector<std::int32_t> order(static_cast<std::size_t>(place_.rows));
  std::iota(order.begin(), order.end(), place_.row);
  const auto keyOf = [&](std::int32_t row) { return sheet_->cells[{row, keyColumn}].value; };
  std::stable_sort(order.begin(), order.end(), [&](std::int32_t a, std::int32_t b) {
    return compare(keyOf(a), keyOf(b), englishLocale()) == std::partial_ordering::less;
  });
  std::map<FakeWorksheet::Position, FakeCell> sorted;
  for (std::int32_t i = 0; i < place_.rows; ++i) {
    for (std::int32_t column = place_.column; column < place_.column + place_.columns; ++column) {
      sorted[{place_.row + i, column}] = sheet_->cells[{order[static_cast<std::size_t>(i)], column}];
    }
  }
  for (auto& [position, cell] : sorted) sheet_->cells[position] = std::move(cell);
}

}  // namespace mervane::tests
