#include "hosts/calc/objects/application_object.h"

#include <string>
#include <utility>

#include "hosts/calc/auto_filter.h"
#include "hosts/calc/charts/calc_charts.h"
#include "hosts/calc/objects/range_object.h"
#include "hosts/calc/session.h"
#include "hosts/charts/chart_object.h"
#include "hosts/charts/shape_objects.h"
#include "hosts/objects/reference_style.h"
#include "hosts/objects/worksheets.h"

namespace mervane::calc {

namespace member = sheet::member;
using sheet::Access;

namespace {

using SessionRef = std::shared_ptr<Session>;
using Drawings = mervane::charts::DrawingCollectionObject;

class WorksheetObject final : public sheet::Object {
 public:
  WorksheetObject(SessionRef session, std::int32_t position) : session_(std::move(session)), position_(position) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    session_->requireOpen();
    if (access == Access::put) return put(member, arguments);
    switch (member) {
      case member::Name:
        return session_->sheetName(position_);
      case member::Range: {
        const std::string reference = hosts::textArgument(arguments, 0);
        const SheetArea area = session_->resolve(reference, position_);
        if (area.sheet != position_) {
          refuse("\"" + reference + "\" lies on another sheet than " + session_->sheetName(position_) + ".");
        }
        return RangeObject::make(session_, area);
      }
      case member::Cells: {
        const SheetArea all{position_, {1, 1, sheet::lastSheetRow, sheet::lastSheetColumn}};
        const Variant cells = RangeObject::make(session_, all);
        return arguments.empty() ? cells : cells.object()->invoke(Access::get, member::Item, arguments);
      }
      case member::AutoFilterMode:
        return hasAutoFilter(*session_, position_);
      case member::ChartObjects:
        return drawings(Drawings::Elements::charts, arguments);
      case member::Shapes:
        return drawings(Drawings::Elements::shapes, arguments);
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  Variant drawings(Drawings::Elements elements, Arguments arguments) {
    const sheet::ObjectRef all = std::make_shared<Drawings>(session_->chartsRef(), position_, elements);
    return arguments.empty() ? Variant(all) : all->invoke(Access::get, member::Item, arguments);
  }

  Variant put(member::Id member, Arguments arguments) {
    if (member != member::AutoFilterMode) raise(runtime::memberNotSupported);
    // Only switching off is possible this way, as in the application.
    if (hosts::truthArgument(arguments, 0)) raise(runtime::applicationDefined);
    if (hasAutoFilter(*session_, position_)) toggleAutoFilter(*session_, {position_, {1, 1, 1, 1}});
    return {};
  }

  SessionRef session_;
  std::int32_t position_;
};

Variant worksheets(const SessionRef& session, Arguments arguments) {
  return hosts::worksheetsOf({[session] { return session->sheetCount(); },
                              [session](const std::string& name) { return session->sheetNamed(name); },
                              [session](std::int32_t position) { return makeWorksheet(session, position); }},
                             arguments);
}

class WorkbookObject final : public sheet::Object {
 public:
  explicit WorkbookObject(SessionRef session) : session_(std::move(session)) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    session_->requireOpen();
    if (access == Access::put) raise(runtime::memberNotSupported);
    switch (member) {
      case member::Worksheets:
        return worksheets(session_, arguments);
      case member::ActiveSheet:
        return makeWorksheet(session_, session_->activeSheet());
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  SessionRef session_;
};

class ApplicationObject final : public sheet::Object {
 public:
  explicit ApplicationObject(SessionRef session) : session_(std::move(session)) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    session_->requireOpen();
    if (access == Access::put) return put(member, arguments);
    switch (member) {
      case member::Range:
        return RangeObject::make(session_,
                                 session_->resolve(hosts::textArgument(arguments, 0), session_->activeSheet()));
      case member::ActiveWorkbook:
        // A look at the workbook as a whole begins anew: the user may have changed it meanwhile.
        session_->forgetAll();
        return Variant(sheet::ObjectRef(std::make_shared<WorkbookObject>(session_)));
      case member::ActiveSheet:
        return makeWorksheet(session_, session_->activeSheet());
      case member::Worksheets:
        return worksheets(session_, arguments);
      case member::ActiveChart: {
        const auto& active = session_->charts().active();
        if (active == nullptr) return {};
        return Variant(sheet::ObjectRef(std::make_shared<mervane::charts::ChartObject>(session_->chartsRef(), active)));
      }
      case member::Charts:
        return Variant(sheet::ObjectRef(std::make_shared<mervane::charts::ChartsObject>(session_->chartsRef())));
      case member::Version:
        return Variant("16.0");
      case member::ReferenceStyle:
        return session_->referenceStyle;
      case member::ScreenUpdating:
        return session_->screenUpdating();
      case member::ConvertFormula:
        return hosts::convertFormula(
            arguments, [this] { return session_->activeCell(); },
            [this](const Variant& cells) { return session_->areaOf(cells); });
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  Variant put(member::Id member, Arguments arguments) {
    switch (member) {
      case member::ScreenUpdating:
        session_->screenUpdating(hosts::truthArgument(arguments, 0));
        return {};
      case member::ReferenceStyle:
        session_->referenceStyle = hosts::referenceStyle(arguments);
        return {};
      default:
        raise(runtime::memberNotSupported);
    }
  }

  SessionRef session_;
};

}  // namespace

sheet::ObjectRef makeApplication(std::shared_ptr<Session> session) {
  return std::make_shared<ApplicationObject>(std::move(session));
}

Variant makeWorksheet(std::shared_ptr<Session> session, std::int32_t position) {
  return Variant(sheet::ObjectRef(std::make_shared<WorksheetObject>(std::move(session), position)));
}

}  // namespace mervane::calc
