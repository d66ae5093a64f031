#include "tests/windows_flow/foreign_application.h"

#include <filesystem>

#include "mervane/convert.h"
#include "mervane/failure.h"
#include "mervane/runtime_errors.h"
#include "tests/windows_flow/host_dispatch.h"

namespace mervane::tests {

namespace {

VARIANT toRecord(IDispatch* object) {
  VARIANT record;
  VariantInit(&record);
  record.vt = VT_DISPATCH;
  record.pdispVal = object;
  return record;
}

VARIANT nothing() {
  VARIANT record;
  VariantInit(&record);
  return record;
}

std::string onlyText(std::span<const Variant> arguments) {
  if (arguments.size() != 1) raise(runtime::wrongArgumentCount);
  return toText(arguments[0], englishLocale());
}

std::filesystem::path toPath(const std::string& text) {
  return {std::u8string(text.begin(), text.end())};
}

/// The collection has nothing but its one method.
class Workbooks final : public sheet::Object {
 public:
  Variant invoke(sheet::Access /*access*/, sheet::member::Id /*member*/,
                 std::span<const Variant> /*arguments*/) override {
    raise(runtime::memberNotSupported);
  }
};

}  // namespace

IDispatch* ForeignApplication::create() {
  const auto application = std::make_shared<ForeignApplication>();
  ForeignApplication* const self = application.get();
  return HostDispatch::wrap(application,
                            {{L"Workbooks", [self](std::span<const Variant>) { return self->workbooks(); }}});
}

Variant ForeignApplication::invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) {
  return openBook().application()->invoke(access, member, arguments);
}

workbook::WorkbookHost& ForeignApplication::openBook() {
  if (book_ == nullptr) throw Failure(runtime::applicationDefined.number, "No workbook is open.", "Test spreadsheet");
  return *book_;
}

VARIANT ForeignApplication::workbooks() {
  const auto self = shared_from_this();
  return toRecord(HostDispatch::wrap(
      std::make_shared<Workbooks>(),
      {{L"Open", [self](std::span<const Variant> arguments) { return self->open(onlyText(arguments)); }}}));
}

VARIANT ForeignApplication::open(const std::string& path) {
  book_ = workbook::WorkbookHost::open(toPath(path));
  const auto self = shared_from_this();
  const sheet::ObjectRef book = invoke(sheet::Access::get, sheet::member::ActiveWorkbook, {}).object();
  return toRecord(HostDispatch::wrap(book, {{L"SaveAs",
                                             [self](std::span<const Variant> arguments) {
                                               self->openBook().save(toPath(onlyText(arguments)));
                                               return nothing();
                                             }},
                                            {L"Close", [self](std::span<const Variant>) {
                                               self->book_.reset();
                                               return nothing();
                                             }}}));
}

}  // namespace mervane::tests
