#include "hosts/workbook/objects/application_object.h"

#include <memory>
#include <string>

#include "hosts/objects/reference_style.h"
#include "hosts/objects/worksheets.h"
#include "hosts/workbook/auto_filter.h"
#include "hosts/workbook/book.h"
#include "hosts/workbook/objects/range_object.h"
#include "hosts/workbook/refuse.h"

namespace mervane::workbook {

namespace member = sheet::member;
using sheet::Access;

namespace {

class WorksheetObject final : public sheet::Object {
 public:
  WorksheetObject(Book& book, std::int32_t position) : book_(book), position_(position) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    if (access == Access::put) return put(member, arguments);
    switch (member) {
      case member::Name:
        return Variant(book_.sheetName(position_));
      case member::Range: {
        const std::string reference = hosts::textArgument(arguments, 0);
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
    if (hosts::truthArgument(arguments, 0)) raise(runtime::applicationDefined);
    Sheet& target = book_.sheet(position_);
    if (hasAutoFilter(target)) toggleAutoFilter(book_, target, {1, 1, 1, 1});
    return {};
  }

  Book& book_;
  std::int32_t position_;
};

Variant worksheets(Book& book, Arguments arguments) {
  return hosts::worksheetsOf(
      {[&book] { return book.sheetCount(); }, [&book](const std::string& name) { return book.sheetNamed(name); },
       [&book](std::int32_t position) { return makeWorksheet(book, position); }},
      arguments);
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
        return Variant(book_.rangeObject(book_.resolve(hosts::textArgument(arguments, 0), book_.activeSheet())));
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
        return hosts::convertFormula(
            arguments, [this] { return book_.activeCell(); },
            [this](const Variant& cells) { return book_.areaOf(cells); });
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  Variant put(member::Id member, Arguments arguments) {
    switch (member) {
      case member::ScreenUpdating:
        book_.screenUpdating = hosts::truthArgument(arguments, 0);
        return {};
      case member::ReferenceStyle:
        book_.referenceStyle = hosts::referenceStyle(arguments);
        return {};
      default:
        raise(runtime::memberNotSupported);
    }
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
