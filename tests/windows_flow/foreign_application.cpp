#include "tests/windows_flow/foreign_application.h"

#include <cctype>
#include <filesystem>
#include <utility>
#include <vector>

#include "hosts/automation/variant_conversion.h"
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

/// An object that has nothing but its extra members.
class Bare final : public sheet::Object {
 public:
  Variant invoke(sheet::Access /*access*/, sheet::member::Id /*member*/,
                 std::span<const Variant> /*arguments*/) override {
    raise(runtime::memberNotSupported);
  }
};

VARIANT toRecord(const std::string& text) {
  VARIANT record = nothing();
  automation::toAutomation(Variant(text), record);
  return record;
}

/// A reference such as 'It''s'!B2:E151 in its two parts, the name without its quotes.
std::pair<std::string, std::string> splitReference(const std::string& reference) {
  const std::size_t mark = reference.rfind('!');
  std::string name;
  for (std::size_t i = 0; i < mark; ++i) {
    if (reference[i] != '\'' || (!name.empty() && i + 1 < mark && reference[i + 1] == '\'' && ++i != 0))
      name += reference[i];
  }
  return {name, reference.substr(mark + 1)};
}

/// Cells as the application writes them: with a dollar sign before every part unless told otherwise.
std::string addressOf(const std::string& cells, std::span<const Variant> arguments) {
  const auto isAbsolute = [&](std::size_t place) {
    return arguments.size() <= place || arguments[place] != Variant(false);
  };
  std::string text;
  char before = ':';
  for (const char sign : cells) {
    const bool startsRow = std::isdigit(sign) != 0 && std::isdigit(before) == 0;
    const bool startsColumn = std::isalpha(sign) != 0 && std::isalpha(before) == 0;
    if ((startsRow && isAbsolute(0)) || (startsColumn && isAbsolute(1))) text += '$';
    text += sign;
    before = sign;
  }
  return text;
}

}  // namespace

IDispatch* ForeignApplication::create() {
  const auto application = std::make_shared<ForeignApplication>();
  ForeignApplication* const self = application.get();
  return HostDispatch::wrap(application,
                            {{L"Workbooks", [self](std::span<const Variant>) { return self->workbooks(); }},
                             {L"Selects",
                              [self](std::span<const Variant> arguments) {
                                self->selected_ = onlyText(arguments);
                                return nothing();
                              }},
                             {L"Selection", [self](std::span<const Variant>) { return self->range(self->selected_); }},
                             {L"Picks",
                              [self](std::span<const Variant> arguments) {
                                self->picks_.push_back(onlyText(arguments));
                                return nothing();
                              }},
                             {L"InputBox", [self](std::span<const Variant> arguments) { return self->ask(arguments); }},
                             {L"Asked", [self](std::span<const Variant>) { return toRecord(self->asked_); }}});
}

VARIANT ForeignApplication::ask(std::span<const Variant> arguments) {
  if (arguments.size() != 8 || arguments[7] != Variant(std::int16_t{8})) raise(runtime::wrongArgumentCount);
  asked_ += toText(arguments[0], englishLocale()) + "[" + toText(arguments[2], englishLocale()) + "]";
  VARIANT cancelled = nothing();
  cancelled.vt = VT_BOOL;
  if (picks_.empty()) return cancelled;
  const std::string picked = picks_.front();
  picks_.pop_front();
  return range(picked);
}

VARIANT ForeignApplication::range(const std::string& reference) {
  if (reference.empty()) return nothing();
  const auto [sheetName, cells] = splitReference(reference);
  const auto self = shared_from_this();
  const sheet::ObjectRef object =
      invoke(sheet::Access::get, sheet::member::Range, std::vector<Variant>{reference}).object();
  return toRecord(HostDispatch::wrap(
      object, {{L"Address",
                [cells = cells](std::span<const Variant> arguments) { return toRecord(addressOf(cells, arguments)); }},
               {L"Areas", [self, reference](std::span<const Variant>) { return self->range(reference); }},
               {L"Worksheet", [sheetName = sheetName](std::span<const Variant>) {
                  return toRecord(HostDispatch::wrap(
                      std::make_shared<Bare>(),
                      {{L"Name", [sheetName](std::span<const Variant>) { return toRecord(sheetName); }}}));
                }}}));
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
  return toRecord(HostDispatch::wrap(std::make_shared<Bare>(), {{L"Open", [self](std::span<const Variant> arguments) {
                                                                   return self->open(onlyText(arguments));
                                                                 }}}));
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
