#include "hosts/workbook/objects/application_object.h"

#include <memory>
#include <string>

#include "hosts/workbook/auto_filter.h"
#include "hosts/workbook/book.h"
#include "hosts/workbook/objects/arguments.h"
#include "hosts/workbook/objects/range_object.h"
#include "hosts/workbook/refuse.h"
#include "spreadsheet/r1c1.h"

namespace mervane::workbook {

namespace member = sheet::member;
using sheet::Access;

namespace {

constexpr std::int32_t styleA1 = 1;
constexpr std::int32_t styleR1C1 = -4150;
constexpr std::int32_t errorValue = 2015;

class WorksheetObject final : public sheet::Object {
 public:
  WorksheetObject(Book& book, std::int32_t position) : book_(book), position_(position) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    if (access == Access::put) return put(member, arguments);
    switch (member) {
      case member::Name:
        return Variant(book_.sheetName(position_));
      case member::Range: {
        const std::string reference = textArgument(arguments, 0);
        const SheetArea area = book_.resolve(reference, position_);
        if (area.sheet != position_) {
          refuse("\"" + reference + "\" lies on another sheet than " + book_.sheetName(position_) + ".");
        }
        return Variant(book_.rangeObject(area));
      }
      case member::Cells: {
        const CellArea all{1, 1, lastSheetRow, lastSheetColumn};
        const sheet::ObjectRef cells = book_.rangeObject({position_, all});
        return arguments.empty() ? Variant(cells) : cells->invoke(Access::get, member::Item, arguments);
      }
      case member::AutoFilterMode:
        return hasAutoFilter(book_.sheet(position_));
      case member::ChartObjects: {
        const sheet::ObjectRef all = book_.charts().chartObjects(position_);
        return arguments.empty() ? Variant(all) : all->invoke(Access::get, member::Item, arguments);
      }
      case member::Shapes:
        return Variant(book_.charts().shapes(position_));
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  Variant put(member::Id member, Arguments arguments) {
    if (member != member::AutoFilterMode) raise(runtime::memberNotSupported);
    // Only switching off is possible this way, as in the application.
    if (truthArgument(arguments, 0)) raise(runtime::applicationDefined);
    Sheet& target = book_.sheet(position_);
    if (hasAutoFilter(target)) toggleAutoFilter(book_, target, {1, 1, 1, 1});
    return {};
  }

  Book& book_;
  std::int32_t position_;
};

class WorksheetEnumerator final : public sheet::Object {
 public:
  explicit WorksheetEnumerator(Book& book) : book_(book) {}
  Variant invoke(Access, member::Id member, Arguments) override {
    if (member != member::Next) raise(runtime::memberNotSupported);
    if (at_ >= book_.sheetCount()) return {};
    return makeWorksheet(book_, at_++);
  }

 private:
  Book& book_;
  std::int32_t at_ = 0;
};

class WorksheetsObject final : public sheet::Object {
 public:
  explicit WorksheetsObject(Book& book) : book_(book) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    if (access == Access::put) raise(runtime::memberNotSupported);
    switch (member) {
      case member::Count:
        return book_.sheetCount();
      case member::Item:
        return item(arguments);
      case member::NewEnum:
        return Variant(sheet::ObjectRef(std::make_shared<WorksheetEnumerator>(book_)));
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  Variant item(Arguments arguments) {
    const Variant& index = given(arguments, 0);
    if (const std::string* name = index.getIf<std::string>()) {
      const std::optional<std::int32_t> position = book_.sheetNamed(*name);
      if (!position) raise(runtime::subscriptOutOfRange);
      return makeWorksheet(book_, *position);
    }
    const std::int32_t position = wholeArgument(arguments, 0);
    if (position < 1 || position > book_.sheetCount()) raise(runtime::subscriptOutOfRange);
    return makeWorksheet(book_, position - 1);
  }

  Book& book_;
};

Variant worksheets(Book& book, Arguments arguments) {
  const sheet::ObjectRef all = std::make_shared<WorksheetsObject>(book);
  return arguments.empty() ? Variant(all) : all->invoke(Access::get, member::Item, arguments);
}

class WorkbookObject final : public sheet::Object {
 public:
  explicit WorkbookObject(Book& book) : book_(book) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    if (access == Access::put) raise(runtime::memberNotSupported);
    switch (member) {
      case member::Worksheets:
        return worksheets(book_, arguments);
      case member::ActiveSheet:
        return makeWorksheet(book_, book_.activeSheet());
      case member::Name: {
        const std::u8string name = book_.package().path().filename().u8string();
        return Variant(std::string(name.begin(), name.end()));
      }
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  Book& book_;
};

class ApplicationObject final : public sheet::Object {
 public:
  explicit ApplicationObject(Book& book) : book_(book) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    if (access == Access::put) return put(member, arguments);
    switch (member) {
      case member::Range:
        return Variant(book_.rangeObject(book_.resolve(textArgument(arguments, 0), book_.activeSheet())));
      case member::ActiveWorkbook:
        return Variant(sheet::ObjectRef(std::make_shared<WorkbookObject>(book_)));
      case member::ActiveSheet:
        return makeWorksheet(book_, book_.activeSheet());
      case member::Worksheets:
        return worksheets(book_, arguments);
      case member::ActiveChart: {
        const sheet::ObjectRef chart = book_.charts().activeChart();
        return chart == nullptr ? Variant() : Variant(chart);
      }
      case member::Charts:
        return Variant(book_.charts().charts());
      case member::Version:
        return Variant("16.0");
      case member::ReferenceStyle:
        return book_.referenceStyle;
      case member::ScreenUpdating:
        return book_.screenUpdating;
      case member::ConvertFormula:
        return convertFormula(arguments);
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  Variant put(member::Id member, Arguments arguments) {
    switch (member) {
      case member::ScreenUpdating:
        book_.screenUpdating = truthArgument(arguments, 0);
        return {};
      case member::ReferenceStyle: {
        const std::int32_t style = wholeArgument(arguments, 0);
        if (style != styleA1 && style != styleR1C1) raise(runtime::applicationDefined);
        book_.referenceStyle = style;
        return {};
      }
      default:
        raise(runtime::memberNotSupported);
    }
  }

  Variant convertFormula(Arguments arguments) {
    atMost(arguments, 5);
    if (isGiven(arguments, 3)) raise(runtime::applicationDefined);  // forced kinds of reference are not served
    const std::string formula = textArgument(arguments, 0);
    const std::int32_t from = wholeArgument(arguments, 1);
    const std::int32_t to = isGiven(arguments, 2) ? wholeArgument(arguments, 2) : from;
    const auto isKnown = [](std::int32_t style) { return style == styleA1 || style == styleR1C1; };
    if (!isKnown(from) || !isKnown(to)) raise(runtime::applicationDefined);
    CellAddress base = book_.activeCell();
    if (isGiven(arguments, 4)) {
      const std::optional<SheetArea> relativeTo = book_.areaOf(arguments[4]);
      if (!relativeTo) raise(runtime::typeMismatch);
      base = {relativeTo->area.firstRow, relativeTo->area.firstColumn};
    }
    if (from == to) return Variant(formula);
    const std::optional<std::string> converted =
        from == styleR1C1 ? sheet::toA1(formula, base) : sheet::toR1C1(formula, base);
    return converted ? Variant(*converted) : Variant(ErrorValue{errorValue});
  }

  Book& book_;
};

}  // namespace

sheet::ObjectRef makeApplication(Book& book) {
  return std::make_shared<ApplicationObject>(book);
}

Variant makeWorksheet(Book& book, std::int32_t position) {
  return Variant(sheet::ObjectRef(std::make_shared<WorksheetObject>(book, position)));
}

}  // namespace mervane::workbook
