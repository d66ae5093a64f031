#include "hosts/calc/format_buffer.h"

#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <utility>

namespace mervane::calc {

namespace {

constexpr std::int32_t white = 0xFFFFFF;
constexpr std::int32_t noFill = -1;
constexpr std::size_t mostStrips = 256;

}  // namespace

bool FormatBuffer::meets(const Strip& strip, const CellArea& area) {
  auto next = strip.upper_bound(area.lastRow);
  return next != strip.begin() && std::prev(next)->second.lastRow >= area.firstRow;
}

void FormatBuffer::set(const SheetArea& area, Property property, std::int32_t value) {
  const CellArea& cells = area.area;
  const Columns columns{area.sheet, cells.firstColumn, cells.lastColumn};
  // A fill goes over one that was only made sure of, and is not made sure of any more.
  if (property == Property::fill) {
    Strip& pending = strips(Property::solidFill)[columns];
    const auto same = pending.find(cells.firstRow);
    if (same != pending.end() && same->second.lastRow == cells.lastRow) pending.erase(same);
    if (pending.empty()) strips(Property::solidFill).erase(columns);
  }
  const bool isFill = property == Property::fill || property == Property::solidFill;
  bool crosses = false;
  for (const Property one : {property, property == Property::fill ? Property::solidFill : Property::fill}) {
    if (one != property && !isFill) break;
    for (const auto& [other, strip] : strips(one)) {
      if (other.sheet != columns.sheet || other.last < columns.first || other.first > columns.last) continue;
      if (one == property && other == columns) {
        const auto same = strip.find(cells.firstRow);
        if (same != strip.end() && same->second.lastRow == cells.lastRow) continue;
      }
      crosses = crosses || meets(strip, cells);
    }
  }
  // Formats for cells that overlap otherwise are set in the order in which they were asked for.
  if (crosses || strips(property).size() > mostStrips) write();
  strips(property)[columns][cells.firstRow] = {cells.lastRow, value};
}

bool FormatBuffer::willBeFilled(const SheetArea& area) const {
  const Strips& fills = strips_[static_cast<std::size_t>(Property::fill)];
  const auto strip = fills.find({area.sheet, area.area.firstColumn, area.area.lastColumn});
  if (strip == fills.end()) return false;
  const auto same = strip->second.find(area.area.firstRow);
  return same != strip->second.end() && same->second.lastRow == area.area.lastRow && same->second.value != noFill;
}

void FormatBuffer::write() {
  // What is made sure of was asked for before any fill that waits for the same cells, or it would be gone.
  for (const Property property : {Property::solidFill, Property::fill, Property::numberFormat, Property::weight}) {
    write(property);
  }
}

void FormatBuffer::write(Property property) {
  std::map<std::pair<std::int32_t, std::int32_t>, std::vector<CellArea>> groups;
  const Strips strips = std::exchange(this->strips(property), {});
  for (const auto& [columns, strip] : strips) {
    for (const auto& [row, stretch] : strip) {
      std::vector<CellArea>& areas = groups[{columns.sheet, stretch.value}];
      if (!areas.empty() && areas.back().firstColumn == columns.first && areas.back().lastColumn == columns.last &&
          areas.back().lastRow == row - 1) {
        areas.back().lastRow = stretch.lastRow;
      } else {
        areas.push_back({row, columns.first, stretch.lastRow, columns.last});
      }
    }
  }
  std::optional<Failure> failure;
  for (const auto& [group, areas] : groups) {
    try {
      inOffice([&, sheet = group.first, &first = areas.front()] { return "format " + session_.place(sheet, first); },
               [&, &sheetAndValue = group, &places = areas] {
                 if (property == Property::solidFill) {
                   for (const CellArea& area : places) makeSolid({sheetAndValue.first, area});
                 } else {
                   apply(sheetAndValue.first, property, sheetAndValue.second, places);
                 }
               });
    } catch (const Failure& one) {
      if (!failure) failure = one;
    }
  }
  if (failure) throw Failure(*failure);
}

void FormatBuffer::apply(std::int32_t sheet, Property property, std::int32_t value,
                         const std::vector<CellArea>& areas) {
  uno::Reference<css::beans::XPropertySet> target;
  if (areas.size() == 1) {
    target.set(session_.rangeOf({sheet, areas.front()}), uno::UNO_QUERY_THROW);
  } else {
    uno::Sequence<css::table::CellRangeAddress> addresses(static_cast<sal_Int32>(areas.size()));
    auto* address = addresses.getArray();
    for (const CellArea& area : areas) {
      *address++ = {static_cast<sal_Int16>(sheet), area.firstColumn - 1, area.firstRow - 1, area.lastColumn - 1,
                    area.lastRow - 1};
    }
    const auto container = session_.make<css::sheet::XSheetCellRangeContainer>("com.sun.star.sheet.SheetCellRanges");
    container->addRangeAddresses(addresses, false);
    target.set(container, uno::UNO_QUERY_THROW);
  }
  switch (property) {
    case Property::fill:
    case Property::solidFill:
      target->setPropertyValue("CellBackColor", uno::Any(static_cast<sal_Int32>(value)));
      break;
    case Property::numberFormat:
      target->setPropertyValue("NumberFormat", uno::Any(static_cast<sal_Int32>(value)));
      break;
    case Property::weight:
      target->setPropertyValue("CharWeight", uno::Any(static_cast<float>(value)));
      break;
  }
}

void FormatBuffer::makeSolid(const SheetArea& area) {
  const auto range = session_.rangeOf(area);
  const uno::Reference<css::beans::XPropertyState> state(range, uno::UNO_QUERY_THROW);
  if (area.area.cells() > 1 && state->getPropertyState("CellBackColor") == css::beans::PropertyState_AMBIGUOUS_VALUE) {
    SheetArea first = area;
    SheetArea second = area;
    if (area.area.rows() > 1) {
      first.area.lastRow = area.area.firstRow + area.area.rows() / 2 - 1;
      second.area.firstRow = first.area.lastRow + 1;
    } else {
      first.area.lastColumn = area.area.firstColumn + area.area.columns() / 2 - 1;
      second.area.firstColumn = first.area.lastColumn + 1;
    }
    makeSolid(first);
    makeSolid(second);
    return;
  }
  const uno::Reference<css::beans::XPropertySet> properties(range, uno::UNO_QUERY_THROW);
  sal_Int32 color = noFill;
  properties->getPropertyValue("CellBackColor") >>= color;
  if (color == noFill) properties->setPropertyValue("CellBackColor", uno::Any(sal_Int32{white}));
}

}  // namespace mervane::calc
