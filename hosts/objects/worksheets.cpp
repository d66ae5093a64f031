#include "hosts/objects/worksheets.h"

#include <memory>
#include <utility>

#include "mervane/runtime_errors.h"
#include "spreadsheet/member.h"
#include "spreadsheet/object.h"

namespace mervane::hosts {

namespace member = sheet::member;
using sheet::Access;

namespace {

class WorksheetEnumerator final : public sheet::Object {
 public:
  explicit WorksheetEnumerator(SheetList sheets) : sheets_(std::move(sheets)) {}

  Variant invoke(Access, member::Id member, Arguments) override {
    if (member != member::Next) raise(runtime::memberNotSupported);
    if (at_ >= sheets_.count()) return {};
    return sheets_.object(at_++);
  }

 private:
  SheetList sheets_;
  std::int32_t at_ = 0;
};

class WorksheetsObject final : public sheet::Object {
 public:
  explicit WorksheetsObject(SheetList sheets) : sheets_(std::move(sheets)) {}

  Variant invoke(Access access, member::Id member, Arguments arguments) override {
    if (access == Access::put) raise(runtime::memberNotSupported);
    switch (member) {
      case member::Count:
        return sheets_.count();
      case member::Item:
        return item(arguments);
      case member::NewEnum:
        return Variant(sheet::ObjectRef(std::make_shared<WorksheetEnumerator>(sheets_)));
      default:
        raise(runtime::memberNotSupported);
    }
  }

 private:
  [[nodiscard]] Variant item(Arguments arguments) const {
    if (const std::string* name = given(arguments, 0).getIf<std::string>()) {
      const std::optional<std::int32_t> position = sheets_.named(*name);
      if (!position) raise(runtime::subscriptOutOfRange);
      return sheets_.object(*position);
    }
    const std::int32_t position = wholeArgument(arguments, 0);
    if (position < 1 || position > sheets_.count()) raise(runtime::subscriptOutOfRange);
    return sheets_.object(position - 1);
  }

  SheetList sheets_;
};

}  // namespace

Variant worksheetsOf(SheetList sheets, Arguments arguments) {
  const sheet::ObjectRef all = std::make_shared<WorksheetsObject>(std::move(sheets));
  return arguments.empty() ? Variant(all) : all->invoke(Access::get, member::Item, arguments);
}

}  // namespace mervane::hosts
