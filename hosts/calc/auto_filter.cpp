#include "hosts/calc/auto_filter.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XSheetFilterDescriptor.hpp>
#include <com/sun/star/sheet/XSheetFilterable.hpp>
#include <com/sun/star/sheet/XUnnamedDatabaseRanges.hpp>

#include "hosts/calc/book_facts.h"
#include "hosts/calc/sheet_facts.h"
#include "hosts/objects/current_region.h"

namespace mervane::calc {

namespace {

using Properties = uno::Reference<css::beans::XPropertySet>;

uno::Reference<css::sheet::XUnnamedDatabaseRanges> unnamedRanges(const Session& session) {
  const Properties document(session.model(), uno::UNO_QUERY_THROW);
  return uno::Reference<css::sheet::XUnnamedDatabaseRanges>(document->getPropertyValue("UnnamedDatabaseRanges"),
                                                            uno::UNO_QUERY_THROW);
}

/// The range without a name that belongs to the sheet; empty where it has none.
Properties plainRange(const Session& session, std::int32_t sheet) {
  const auto ranges = unnamedRanges(session);
  if (!ranges->hasByTable(sheet)) return {};
  return Properties(ranges->getByTable(sheet), uno::UNO_QUERY_THROW);
}

CellArea areaOf(const Properties& range) {
  const uno::Reference<css::sheet::XDatabaseRange> database(range, uno::UNO_QUERY_THROW);
  const css::table::CellRangeAddress at = database->getDataArea();
  return {at.StartRow + 1, at.StartColumn + 1, at.EndRow + 1, at.EndColumn + 1};
}

bool hasArrows(const Properties& range) {
  bool has = false;
  return range.is() && (range->getPropertyValue("AutoFilter") >>= has) && has;
}

/// Shows the rows that a filter hides, and takes the arrows away.
void switchOff(const Session& session, std::int32_t sheet, const Properties& range) {
  const uno::Reference<css::sheet::XSheetFilterable> filterable(session.rangeOf({sheet, areaOf(range)}),
                                                                uno::UNO_QUERY_THROW);
  filterable->filter(filterable->createFilterDescriptor(true));
  range->setPropertyValue("AutoFilter", uno::Any(false));
}

/// A named database range with the area inside it.
Properties tableAround(const Session& session, const SheetArea& area) {
  const Properties document(session.model(), uno::UNO_QUERY_THROW);
  const uno::Reference<css::container::XIndexAccess> ranges(document->getPropertyValue("DatabaseRanges"),
                                                            uno::UNO_QUERY_THROW);
  for (sal_Int32 i = 0; i < ranges->getCount(); ++i) {
    const uno::Reference<css::sheet::XDatabaseRange> range(ranges->getByIndex(i), uno::UNO_QUERY_THROW);
    if (range->getDataArea().Sheet != area.sheet) continue;
    const Properties properties(range, uno::UNO_QUERY_THROW);
    if (areaOf(properties).contains(area.area)) return properties;
  }
  return {};
}

/// What a filter of the sheet must not overlap.
std::vector<CellArea> barriers(Session& session, std::int32_t sheet) {
  std::vector<CellArea> areas;
  for (const guard::Table& table : tablesOf(session, sheet)) areas.push_back(table.area);
  for (const guard::PivotTable& table : pivotTablesOf(session, sheet)) areas.push_back(table.area);
  if (const auto used = session.facts().used(sheet)) {
    const std::vector<CellArea> merged = session.facts().mergedIn({sheet, *used});
    areas.insert(areas.end(), merged.begin(), merged.end());
  }
  return areas;
}

void switchOn(Session& session, const SheetArea& area) {
  SheetFacts& facts = session.facts();
  CellArea whole = area.area;
  if (whole.cells() == 1) {
    whole = hosts::currentRegion(
        whole, [&](const CellArea& cells) { return facts.isFilled(area.sheet, cells); }, barriers(session, area.sheet));
    // Rows that only a corner brought in and that hold nothing are left out again.
    while (whole.rows() > 1 &&
           !facts.isFilled(area.sheet, {whole.firstRow, whole.firstColumn, whole.firstRow, whole.lastColumn})) {
      ++whole.firstRow;
    }
  }
  if (!facts.isFilled(area.sheet, whole)) {
    refuse("The filter cannot be switched on at " + session.place(area.sheet, area.area) +
           ": there is no table around it.");
  }
  unnamedRanges(session)->setByTable({static_cast<sal_Int16>(area.sheet), whole.firstColumn - 1, whole.firstRow - 1,
                                      whole.lastColumn - 1, whole.lastRow - 1});
  plainRange(session, area.sheet)->setPropertyValue("AutoFilter", uno::Any(true));
}

}  // namespace

bool hasAutoFilter(Session& session, std::int32_t sheet) {
  return inOffice("tell its filters", [&] { return hasArrows(plainRange(session, sheet)); });
}

bool hasFilterArrows(const Session& session, const SheetArea& area) {
  const Properties plain = plainRange(session, area.sheet);
  if (hasArrows(plain) && areaOf(plain).meets(area.area)) return true;
  const Properties document(session.model(), uno::UNO_QUERY_THROW);
  const uno::Reference<css::container::XIndexAccess> ranges(document->getPropertyValue("DatabaseRanges"),
                                                            uno::UNO_QUERY_THROW);
  for (sal_Int32 i = 0; i < ranges->getCount(); ++i) {
    const uno::Reference<css::sheet::XDatabaseRange> range(ranges->getByIndex(i), uno::UNO_QUERY_THROW);
    const Properties table(range, uno::UNO_QUERY_THROW);
    if (range->getDataArea().Sheet == area.sheet && hasArrows(table) && areaOf(table).meets(area.area)) return true;
  }
  return false;
}

std::optional<guard::Filter> filterOf(const Session& session, std::int32_t sheet) {
  const Properties plain = plainRange(session, sheet);
  if (!hasArrows(plain)) return std::nullopt;
  const uno::Reference<css::sheet::XDatabaseRange> range(plain, uno::UNO_QUERY_THROW);
  return guard::Filter{areaOf(plain), range->getFilterDescriptor()->getFilterFields().getLength() > 0};
}

std::vector<guard::Table> tablesOf(const Session& session, std::int32_t sheet) {
  const Properties document(session.model(), uno::UNO_QUERY_THROW);
  const uno::Reference<css::container::XNameAccess> ranges(document->getPropertyValue("DatabaseRanges"),
                                                           uno::UNO_QUERY_THROW);
  std::vector<guard::Table> tables;
  for (const rtl::OUString& name : ranges->getElementNames()) {
    const uno::Reference<css::sheet::XDatabaseRange> range(ranges->getByName(name), uno::UNO_QUERY_THROW);
    if (range->getDataArea().Sheet != sheet) continue;
    const Properties properties(range, uno::UNO_QUERY_THROW);
    guard::Table table;
    table.name = fromOffice(name);
    table.area = areaOf(properties);
    properties->getPropertyValue("ContainsHeader") >>= table.hasHeader;
    properties->getPropertyValue("TotalsRow") >>= table.hasTotals;
    table.hasArrows = hasArrows(properties);
    tables.push_back(table);
  }
  return tables;
}

void toggleAutoFilter(Session& session, const SheetArea& area) {
  session.settle();
  inOffice("switch a filter", [&] {
    session.facts().requireUnprotected(area.sheet, "filters");
    if (const Properties table = tableAround(session, area); table.is()) {
      if (hasArrows(table)) {
        switchOff(session, area.sheet, table);
      } else {
        table->setPropertyValue("AutoFilter", uno::Any(true));
      }
      return;
    }
    const Properties plain = plainRange(session, area.sheet);
    if (hasArrows(plain)) {
      switchOff(session, area.sheet, plain);
    } else {
      switchOn(session, area);
    }
  });
}

}  // namespace mervane::calc
