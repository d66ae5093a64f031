#include "tests/hosts_calc/witness.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <ooo/vba/XFontBase.hpp>
#include <ooo/vba/excel/XBorder.hpp>
#include <ooo/vba/excel/XFont.hpp>
#include <ooo/vba/excel/XGlobals.hpp>
#include <ooo/vba/excel/XInterior.hpp>
#include <ooo/vba/excel/XRange.hpp>
#include <ooo/vba/excel/XWorksheet.hpp>
#include <stdexcept>

#include "hosts/calc/office_call.h"

namespace mervane::tests {

namespace css = com::sun::star;
namespace uno = com::sun::star::uno;
namespace excel = ooo::vba::excel;

namespace {

using RangeRef = uno::Reference<excel::XRange>;

constexpr sal_Int16 ascending = 1;
constexpr sal_Int16 noHeader = 2;

Variant variantOf(const uno::Any& any) {
  switch (any.getValueTypeClass()) {
    case uno::TypeClass_VOID:
      return {};
    case uno::TypeClass_BOOLEAN:
      return any.get<bool>();
    case uno::TypeClass_BYTE:
    case uno::TypeClass_SHORT:
    case uno::TypeClass_UNSIGNED_SHORT:
    case uno::TypeClass_LONG:
      return any.get<sal_Int32>();
    case uno::TypeClass_FLOAT:
    case uno::TypeClass_DOUBLE:
      return any.get<double>();
    case uno::TypeClass_STRING:
      return calc::fromOffice(any.get<rtl::OUString>());
    case uno::TypeClass_INTERFACE:
      // An empty reference stands for values that differ.
      if (!any.get<uno::Reference<uno::XInterface>>().is()) return Variant(Null{});
      [[fallthrough]];
    default:
      throw std::logic_error("The witness answered a " + calc::fromOffice(any.getValueTypeName()) + ".");
  }
}

uno::Any textAny(const std::string& text) {
  return uno::Any(calc::toOffice(text));
}

uno::Reference<excel::XBorder> line(const RangeRef& range, std::int32_t edge) {
  return {range->Borders(uno::Any(edge)), uno::UNO_QUERY_THROW};
}

}  // namespace

struct Witness::Sheet {
  uno::Reference<excel::XWorksheet> sheet;
  [[nodiscard]] RangeRef range(const std::string& reference) const {
    return RangeRef(sheet->Range(textAny(reference), uno::Any()), uno::UNO_SET_THROW);
  }
};

Witness::Witness(const uno::Reference<css::frame::XModel>& document, const std::string& sheet)
    : sheet_(std::make_unique<Sheet>()) {
  const uno::Reference<css::lang::XMultiServiceFactory> factory(document, uno::UNO_QUERY_THROW);
  const uno::Reference<excel::XGlobals> globals(factory->createInstance("ooo.vba.VBAGlobals"), uno::UNO_QUERY_THROW);
  sheet_->sheet.set(globals->WorkSheets(textAny(sheet)), uno::UNO_QUERY_THROW);
}

Witness::~Witness() = default;

Variant Witness::value(const std::string& cell) const {
  return variantOf(sheet_->range(cell)->getValue());
}

Variant Witness::numberFormat(const std::string& range) const {
  return variantOf(sheet_->range(range)->getNumberFormat());
}

Variant Witness::bold(const std::string& range) const {
  const uno::Reference<ooo::vba::XFontBase> font(sheet_->range(range)->Font(), uno::UNO_QUERY_THROW);
  return variantOf(font->getBold());
}

Variant Witness::fillIndex(const std::string& range) const {
  return variantOf(sheet_->range(range)->Interior()->getColorIndex());
}

double Witness::fillColor(const std::string& range) const {
  return sheet_->range(range)->Interior()->getColor().get<double>();
}

Variant Witness::lineWeight(const std::string& range, std::int32_t edge) const {
  return variantOf(line(sheet_->range(range), edge)->getWeight());
}

double Witness::width(const std::string& range) const {
  return sheet_->range(range)->getWidth().get<double>();
}

double Witness::left(const std::string& range) const {
  return sheet_->range(range)->getLeft().get<double>();
}

bool Witness::autoFilterMode() const {
  return sheet_->sheet->getAutoFilterMode();
}

bool Witness::isHidden(std::int32_t row) const {
  const std::string number = std::to_string(row);
  return sheet_->range("A" + number)->getEntireRow()->getHidden().get<bool>();
}

void Witness::lineStyle(const std::string& range, std::int32_t edge, std::int32_t style) const {
  line(sheet_->range(range), edge)->setLineStyle(uno::Any(style));
}

void Witness::lineWeight(const std::string& range, std::int32_t edge, std::int32_t weight) const {
  line(sheet_->range(range), edge)->setWeight(uno::Any(weight));
}

void Witness::sort(const std::string& range, const std::string& key) const {
  const uno::Any none;
  sheet_->range(range)->Sort(uno::Any(sheet_->range(key)), uno::Any(ascending), none, none, none, none, none,
                             uno::Any(noHeader), none, none, none, none, none, none, none);
}

void Witness::autoFilter(const std::string& range) const {
  const uno::Any none;
  sheet_->range(range)->AutoFilter(none, none, none, none, none);
}

void Witness::filterBy(const std::string& range, std::int32_t column, const std::string& criterion) const {
  const uno::Any none;
  sheet_->range(range)->AutoFilter(uno::Any(column), textAny(criterion), none, none, none);
}

void Witness::fitColumns(const std::string& range) const {
  // NB: the object model's own Autofit lays cells out without taking the office's lock, and the office may draw at the
  // same time: once in a dozen runs it went down.
  const uno::Reference<css::table::XColumnRowRange> cells(sheet_->range(range)->getCellRange(), uno::UNO_QUERY_THROW);
  const uno::Reference<css::beans::XPropertySet> columns(cells->getColumns(), uno::UNO_QUERY_THROW);
  columns->setPropertyValue("OptimalWidth", uno::Any(true));
}

}  // namespace mervane::tests
