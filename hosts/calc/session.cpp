#include "hosts/calc/session.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/AddressConvention.hpp>
#include <com/sun/star/sheet/XCellAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/sheet/XFormulaParser.hpp>
#include <com/sun/star/sheet/XFormulaTokens.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <utility>

#include "hosts/calc/cell_reader.h"
#include "hosts/calc/charts/calc_charts.h"
#include "hosts/calc/format_buffer.h"
#include "hosts/calc/number_formats.h"
#include "hosts/calc/objects/range_object.h"
#include "hosts/calc/sheet_facts.h"
#include "hosts/calc/value_buffer.h"
#include "hosts/objects/reference_style.h"
#include "mervane/letter_case.h"
#include "mervane/runtime_errors.h"

namespace mervane::calc {

namespace {

constexpr const char* plainDate = "m/d/yyyy";

CellArea cellArea(CellAddress at) {
  return {at.row, at.column, at.row, at.column};
}

SheetArea areaAt(const uno::Reference<uno::XInterface>& cells) {
  const uno::Reference<css::sheet::XCellRangeAddressable> range(cells, uno::UNO_QUERY);
  if (range.is()) {
    const css::table::CellRangeAddress at = range->getRangeAddress();
    return {at.Sheet, {at.StartRow + 1, at.StartColumn + 1, at.EndRow + 1, at.EndColumn + 1}};
  }
  const uno::Reference<css::sheet::XCellAddressable> cell(cells, uno::UNO_QUERY_THROW);
  const css::table::CellAddress at = cell->getCellAddress();
  return {at.Sheet, {at.Row + 1, at.Column + 1, at.Row + 1, at.Column + 1}};
}

/// The cells that a name of the document or of a sheet stands for; nothing where there is no such name.
std::optional<SheetArea> namedArea(const uno::Reference<uno::XInterface>& owner, const std::string& lowerName) {
  const uno::Reference<css::beans::XPropertySet> properties(owner, uno::UNO_QUERY_THROW);
  const uno::Reference<css::container::XNameAccess> names(properties->getPropertyValue("NamedRanges"),
                                                          uno::UNO_QUERY_THROW);
  for (const rtl::OUString& name : names->getElementNames()) {
    if (lowered(fromOffice(name)) != lowerName) continue;
    const uno::Reference<css::sheet::XCellRangeReferrer> referrer(names->getByName(name), uno::UNO_QUERY);
    const auto cells = referrer.is() ? referrer->getReferredCells() : uno::Reference<css::table::XCellRange>();
    if (cells.is()) return areaAt(cells);
  }
  return std::nullopt;
}

}  // namespace

Session::Session(const uno::Reference<uno::XComponentContext>& context, const uno::Reference<css::frame::XModel>& model)
    : referenceStyle(hosts::styleA1),
      context_(context),
      model_(model),
      document_(model, uno::UNO_QUERY),
      numberFormats_(std::make_unique<NumberFormats>(*this)),
      facts_(std::make_unique<SheetFacts>(*this)),
      values_(std::make_unique<ValueBuffer>(*this)),
      formats_(std::make_unique<FormatBuffer>(*this)),
      reader_(std::make_unique<CellReader>(*this)),
      charts_(std::make_shared<CalcCharts>(*this)) {
  if (!document_.is()) refuse("The document is no spreadsheet.");
  referenceStyle = chosenReferenceStyle();
}

Session::~Session() = default;

std::int32_t Session::chosenReferenceStyle() const {
  constexpr sal_Int32 grammarR1C1 = 2;
  try {
    const uno::Reference<css::lang::XMultiServiceFactory> provider(
        context_->getServiceManager()->createInstanceWithContext("com.sun.star.configuration.ConfigurationProvider",
                                                                 context_),
        uno::UNO_QUERY_THROW);
    const uno::Any path(css::beans::PropertyValue("nodepath", 0,
                                                  uno::Any(rtl::OUString("/org.openoffice.Office.Calc/Formula/Syntax")),
                                                  css::beans::PropertyState_DIRECT_VALUE));
    const uno::Reference<css::container::XNameAccess> syntax(
        provider->createInstanceWithArguments("com.sun.star.configuration.ConfigurationAccess",
                                              uno::Sequence<uno::Any>(&path, 1)),
        uno::UNO_QUERY_THROW);
    sal_Int32 grammar = 0;
    syntax->getByName("Grammar") >>= grammar;
    return grammar == grammarR1C1 ? hosts::styleR1C1 : hosts::styleA1;
  } catch (const uno::Exception&) {
    return hosts::styleA1;  // an office without that setting has the plain style
  }
}

void Session::close() noexcept {
  if (!open_) return;
  try {
    settle();
    charts_->draw();
  } catch (const Failure&) {  // nobody is left to be told
  }
  if (!screenUpdating_) {
    try {
      lockOffice(false);
    } catch (const Failure&) {
    }
  }
  open_ = false;
  charts_->close();
}

void Session::requireOpen() const {
  if (!open_) refuseClosed();
}

template <class Body>
void Session::keepingFailure(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    if (!firstFailure_) firstFailure_ = failure;
    throw;
  }
}

void Session::refreshNames() const {
  if (!sheetNames_.empty()) return;
  const uno::Reference<css::container::XIndexAccess> sheets(document_->getSheets(), uno::UNO_QUERY_THROW);
  const sal_Int32 count = sheets->getCount();
  std::vector<std::string> names;
  sheets_.clear();
  for (sal_Int32 i = 0; i < count; ++i) {
    const uno::Reference<css::sheet::XSpreadsheet> sheet(sheets->getByIndex(i), uno::UNO_QUERY_THROW);
    const uno::Reference<css::container::XNamed> named(sheet, uno::UNO_QUERY_THROW);
    names.push_back(fromOffice(named->getName()));
    sheets_.push_back(sheet);
  }
  sheetNames_ = std::move(names);
}

std::int32_t Session::sheetCount() const {
  requireOpen();
  inOffice("tell its sheets", [&] { refreshNames(); });
  return static_cast<std::int32_t>(sheetNames_.size());
}

const std::string& Session::sheetName(std::int32_t sheet) const {
  if (sheet < 0 || sheet >= sheetCount()) refuse("The sheet has been deleted.");
  return sheetNames_[static_cast<std::size_t>(sheet)];
}

std::optional<std::int32_t> Session::sheetNamed(std::string_view name) const {
  const std::string wanted = lowered(name);
  for (std::int32_t sheet = 0; sheet < sheetCount(); ++sheet) {
    if (lowered(sheetName(sheet)) == wanted) return sheet;
  }
  return std::nullopt;
}

uno::Reference<css::sheet::XSpreadsheet> Session::sheetAt(std::int32_t sheet) const {
  static_cast<void>(sheetName(sheet));
  return sheets_[static_cast<std::size_t>(sheet)];
}

uno::Reference<css::table::XCellRange> Session::rangeOf(const SheetArea& area) const {
  const CellArea& cells = area.area;
  return sheetAt(area.sheet)
      ->getCellRangeByPosition(cells.firstColumn - 1, cells.firstRow - 1, cells.lastColumn - 1, cells.lastRow - 1);
}

std::string Session::place(std::int32_t sheet, const CellArea& area) const {
  return sheet::quotedSheetName(sheetName(sheet)) + "!" + a1(area);
}

uno::Reference<css::sheet::XSpreadsheetView> Session::view() const {
  return {model_->getCurrentController(), uno::UNO_QUERY};
}

std::int32_t Session::activeSheet() const {
  requireOpen();
  return inOffice("tell its active sheet", [&] {
    const auto shown = view();
    return shown.is() ? areaAt(shown->getActiveSheet()).sheet : ownActiveSheet_;
  });
}

void Session::activateSheet(std::int32_t sheet) {
  inOffice("activate a sheet", [&] {
    const auto shown = view();
    if (shown.is()) shown->setActiveSheet(sheetAt(sheet));
    ownActiveSheet_ = sheet;
  });
}

void Session::select(const SheetArea& area) {
  if (area.sheet != activeSheet()) {
    refuse("The cells " + absoluteA1(sheetName(area.sheet), area.area) +
           " cannot be selected: their sheet is not the active one.");
  }
  inOffice("select cells", [&] {
    const uno::Reference<css::view::XSelectionSupplier> selection(model_->getCurrentController(), uno::UNO_QUERY);
    if (!selection.is()) refuse("Nothing can be selected in a document that is not shown.");
    selection->select(uno::Any(rangeOf(area)));
  });
}

CellAddress Session::activeCell() const {
  return inOffice("tell its active cell", [&]() -> CellAddress {
    const uno::Reference<uno::XInterface> selection = model_->getCurrentSelection();
    const uno::Reference<css::sheet::XCellRangeAddressable> range(selection, uno::UNO_QUERY);
    const uno::Reference<css::sheet::XCellAddressable> cell(selection, uno::UNO_QUERY);
    if (!range.is() && !cell.is()) return {};
    const SheetArea area = areaAt(selection);
    return {area.area.firstRow, area.area.firstColumn};
  });
}

SheetArea Session::resolve(std::string_view reference, std::int32_t sheetWithout) const {
  requireOpen();
  const auto fail = [&]() -> SheetArea {
    refuse("\"" + std::string(reference) + "\" names no cells of this workbook.");
  };
  while (reference.starts_with(' ')) reference.remove_prefix(1);
  while (reference.ends_with(' ')) reference.remove_suffix(1);
  if (const std::optional<sheet::ReferenceText> text = sheet::parseReference(reference)) {
    if (!text->hasSheet) return {sheetWithout, text->area};
    const std::optional<std::int32_t> sheet = sheetNamed(text->sheet);
    return sheet ? SheetArea{*sheet, text->area} : fail();
  }
  std::int32_t owner = sheetWithout;
  std::string_view name = reference;
  if (const std::size_t mark = reference.rfind('!'); mark != std::string_view::npos) {
    name = reference.substr(mark + 1);
    // The sheet part is read by giving it a cell.
    const auto text = sheet::parseReference(std::string(reference.substr(0, mark)) + "!A1");
    const std::optional<std::int32_t> sheet = text ? sheetNamed(text->sheet) : std::nullopt;
    if (!sheet) return fail();
    owner = *sheet;
  }
  const std::optional<SheetArea> found = inOffice("look up a name", [&] {
    const std::optional<SheetArea> own = namedArea(sheetAt(owner), lowered(name));
    return own ? own : namedArea(model_, lowered(name));
  });
  return found ? *found : fail();
}

Variant Session::value(std::int32_t sheet, CellAddress at) {
  requireOpen();
  return inOffice([&] { return "read " + place(sheet, cellArea(at)); },
                  [&] {
                    if (reader_->isWaiting(sheet, at)) settleValues();
                    std::optional<Variant> value = reader_->value(sheet, at, !values_->isEmpty());
                    if (!value) {
                      settleValues();
                      value = reader_->value(sheet, at, false);
                    }
                    return value.value_or(Variant());
                  });
}

void Session::setValue(std::int32_t sheet, CellAddress at, const Variant& value) {
  requireOpen();
  if (!sheet::isOnSheet(at.row, at.column)) raise(runtime::applicationDefined);
  OfficeValue written = officeValue(value, value.isText() ? place(sheet, cellArea(at)) : std::string());
  const auto action = [&] { return "write into " + place(sheet, cellArea(at)); };
  inOffice(action, [&] { facts_->requireWritable(sheet, at); });
  if (written.kind == OfficeValue::Kind::plain || written.kind == OfficeValue::Kind::empty) {
    values_->add(sheet, at, written.value);
    reader_->markWaiting(sheet, at, written.value.getValueTypeClass() == uno::TypeClass_DOUBLE);
    return;
  }
  if (reader_->isWaiting(sheet, at)) settleValues();
  inOffice(action, [&] {
    const auto cell = sheetAt(sheet)->getCellByPosition(at.column - 1, at.row - 1);
    const uno::Reference<css::beans::XPropertySet> properties(cell, uno::UNO_QUERY_THROW);
    const auto showAs = [&](NumberFormats::Kind kind, const auto& key) {
      sal_Int32 now = 0;
      properties->getPropertyValue("NumberFormat") >>= now;
      if (numberFormats_->kindOf(now) != kind) properties->setPropertyValue("NumberFormat", uno::Any(key()));
    };
    double number = 0.0;
    rtl::OUString formula;
    switch (written.kind) {
      case OfficeValue::Kind::plain:
      case OfficeValue::Kind::empty:
        break;
      case OfficeValue::Kind::formula: {
        written.value >>= formula;
        // The text is in the application's own notation, whatever notation the office is set to.
        const auto parser = make<css::sheet::XFormulaParser>("com.sun.star.sheet.FormulaParser");
        const uno::Reference<css::beans::XPropertySet> notation(parser, uno::UNO_QUERY_THROW);
        notation->setPropertyValue("CompileEnglish", uno::Any(true));
        notation->setPropertyValue("FormulaConvention", uno::Any(sal_Int32{css::sheet::AddressConvention::XL_A1}));
        const css::table::CellAddress where{static_cast<sal_Int16>(sheet), at.column - 1, at.row - 1};
        const uno::Reference<css::sheet::XFormulaTokens> tokens(cell, uno::UNO_QUERY_THROW);
        tokens->setTokens(parser->parseFormula(formula.copy(1), where));
        break;
      }
      case OfficeValue::Kind::truth:
        written.value >>= number;
        formats_->write();
        cell->setValue(number);
        showAs(NumberFormats::Kind::truth, [&] { return numberFormats_->truthKey(); });
        break;
      case OfficeValue::Kind::date:
        written.value >>= number;
        formats_->write();
        cell->setValue(number - numberFormats_->daysBehind());
        showAs(NumberFormats::Kind::date, [&] { return numberFormats_->keyOf(plainDate); });
        break;
    }
  });
  reader_->forgetPlainNumbers(sheet, cellArea(at));
  if (written.kind == OfficeValue::Kind::formula) return forgetValues(sheet, cellArea(at));
  reader_->forget(sheet, cellArea(at));
  facts_->plainValuesWritten(sheet, cellArea(at));
  reader_->formulasChanged();
}

std::optional<SheetArea> Session::areaOf(const Variant& range) const {
  if (!range.isObject()) return std::nullopt;
  const auto* object = dynamic_cast<const RangeObject*>(range.object().get());
  if (object == nullptr || &object->session() != this) return std::nullopt;
  return object->place();
}

void Session::settleValues() {
  keepingFailure([&] {
    if (values_->isEmpty()) return;
    values_->write([&](const SheetArea& area) {
      reader_->written(area.sheet, area.area);
      facts_->plainValuesWritten(area.sheet, area.area);
    });
  });
  reader_->formulasChanged();
}

void Session::settle() {
  requireOpen();
  settleValues();
  keepingFailure([&] { formats_->write(); });
}

void Session::flush() {
  requireOpen();
  try {
    settle();
    keepingFailure([&] { charts_->draw(); });
  } catch (const Failure&) {  // raised below
  }
  forgetAll();
  if (const std::optional<Failure> failure = std::exchange(firstFailure_, std::nullopt)) throw Failure(*failure);
}

void Session::forgetValues(std::int32_t sheet, const CellArea& area) {
  reader_->forget(sheet, area);
  facts_->forgetContents(sheet);
  reader_->formulasChanged();
}

void Session::forgetKinds(std::int32_t sheet, const CellArea& area) {
  reader_->forgetPlainNumbers(sheet, area);
  reader_->forget(sheet, area);
}

void Session::sorted(std::int32_t sheet, const CellArea& area, std::int32_t keyColumn) {
  reader_->sorted(sheet, area, keyColumn);
  forgetValues(sheet, area);
}

void Session::forgetAll() {
  // What waits is not known from anywhere else.
  if (values_->isEmpty()) reader_->forgetAll();
  facts_->forget();
  sheetNames_.clear();
}

void Session::lockOffice(bool locked) {
  inOffice("hold back its windows", [&] {
    const uno::Reference<css::document::XActionLockable> actions(model_, uno::UNO_QUERY);
    if (locked) {
      model_->lockControllers();
      if (actions.is()) actions->addActionLock();
    } else {
      if (actions.is()) actions->removeActionLock();
      model_->unlockControllers();
    }
  });
}

void Session::screenUpdating(bool on) {
  requireOpen();
  if (on == screenUpdating_) return;
  lockOffice(!on);
  screenUpdating_ = on;
}

}  // namespace mervane::calc
