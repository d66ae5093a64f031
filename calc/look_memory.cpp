#include "calc/look_memory.h"

#include <algorithm>
#include <com/sun/star/beans/PropertyAttribute.hpp>
#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <set>

#include "calc/border.h"

namespace mervane::addin {

namespace {

namespace sheetapi = star::sheet;
using Properties = uno::Reference<star::beans::XPropertySet>;

bool isRemembered(const star::beans::Property& property) {
  // These two describe the borders anew, and the outline of the whole range with them.
  const bool skipped = property.Name == "CellStyle" || property.Name == "TableBorder" ||
                       property.Name == "TableBorder2" || property.Name.startsWith("Conditional") ||
                       property.Name.startsWith("Validation");
  return !skipped && (property.Attributes & star::beans::PropertyAttribute::READONLY) == 0;
}

}  // namespace

LookMemory::Look LookMemory::lookOf(const uno::Reference<uno::XInterface>& cells) {
  Look look;
  look.cells = uno::Reference<sheetapi::XSheetCellRanges>(cells, uno::UNO_QUERY_THROW)->getRangeAddresses();
  const Properties values(cells, uno::UNO_QUERY_THROW);
  const uno::Reference<star::beans::XPropertyState> states(cells, uno::UNO_QUERY_THROW);
  values->getPropertyValue("CellStyle") >>= look.style;
  for (const star::beans::Property& property : values->getPropertySetInfo()->getProperties()) {
    if (!isRemembered(property)) continue;
    if (states->getPropertyState(property.Name) != star::beans::PropertyState_DIRECT_VALUE) continue;
    look.own.emplace(property.Name, values->getPropertyValue(property.Name));
  }
  return look;
}

LookMemory::LookMemory(const uno::Reference<sheetapi::XSpreadsheet>& sheet, const star::table::CellRangeAddress& area)
    : area_(area) {
  const uno::Reference<sheetapi::XUniqueCellFormatRangesSupplier> formats(
      sheet->getCellRangeByPosition(area.StartColumn, area.StartRow, area.EndColumn, area.EndRow),
      uno::UNO_QUERY_THROW);
  const auto looks = formats->getUniqueCellFormatRanges();
  for (sal_Int32 i = 0; i < looks->getCount(); ++i) {
    looks_.push_back(lookOf(uno::Reference<uno::XInterface>(looks->getByIndex(i), uno::UNO_QUERY_THROW)));
  }
}

void LookMemory::restore(const uno::Reference<star::frame::XModel>& document,
                         const uno::Reference<sheetapi::XSpreadsheet>& sheet) const {
  const LookMemory now(sheet, area_);
  std::set<rtl::OUString> names;
  std::set<rtl::OUString> styles;
  for (const LookMemory* memory : {this, &now}) {
    for (const Look& look : memory->looks_) {
      styles.insert(look.style);
      for (const auto& [name, value] : look.own) names.insert(name);
    }
  }
  const uno::Reference<star::lang::XMultiServiceFactory> factory(document, uno::UNO_QUERY_THROW);
  for (const Look& look : looks_) {
    const uno::Reference<sheetapi::XSheetCellRangeContainer> ranges(
        factory->createInstance("com.sun.star.sheet.SheetCellRanges"), uno::UNO_QUERY_THROW);
    ranges->addRangeAddresses(look.cells, false);
    const Properties properties(ranges, uno::UNO_QUERY_THROW);
    const uno::Reference<star::beans::XPropertyState> states(ranges, uno::UNO_QUERY_THROW);
    if (styles.size() > 1) properties->setPropertyValue("CellStyle", uno::Any(look.style));
    // NB: several names may stand for one attribute, so all that goes must have gone before anything is set.
    for (const rtl::OUString& name : names) {
      if (look.own.count(name) == 0) atBorder([&] { states->setPropertyToDefault(name); });
    }
    for (const auto& [name, value] : look.own) {
      // A property that the office gives and does not take is of no use to anybody.
      atBorder([&, one = name, what = value] { properties->setPropertyValue(one, what); });
    }
  }
}

}  // namespace mervane::addin
