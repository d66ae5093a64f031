#include "hosts/calc/office.h"

#include <unistd.h>

#include <array>
#include <chrono>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <cstdlib>
#include <osl/file.hxx>
#include <thread>
#include <vector>

#include "hosts/calc/office_process.h"
#include "mervane/letter_case.h"

namespace mervane::calc {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds longestStart{90};
constexpr std::chrono::seconds longestEnd{3};
constexpr std::chrono::milliseconds pause{50};

struct Format {
  const char* ending;
  const char* filter;
};
constexpr std::array<Format, 5> formats{{
    {".fods", "OpenDocument Spreadsheet Flat XML"},
    {".ods", "calc8"},
    {".xls", "MS Excel 97"},
    {".xlsm", "Calc MS Excel 2007 VBA XML"},
    {".xlsx", "Calc MS Excel 2007 XML"},
}};

const Format* formatOf(const std::filesystem::path& path) {
  const std::string ending = lowered(path.extension().string());
  for (const Format& format : formats) {
    if (format.ending == ending) return &format;
  }
  return nullptr;
}

css::beans::PropertyValue property(const char* name, const uno::Any& value) {
  return {rtl::OUString::createFromAscii(name), 0, value, css::beans::PropertyState_DIRECT_VALUE};
}

rtl::OUString urlOf(const std::filesystem::path& path) {
  rtl::OUString url;
  const rtl::OUString system = toOffice(std::filesystem::absolute(path).string());
  if (osl::FileBase::getFileURLFromSystemPath(system, url) != osl::FileBase::E_None) {
    refuse("The file name \"" + path.string() + "\" is none that LibreOffice can use.");
  }
  return url;
}

std::string freePipeName() {
  static int count = 0;
  return "mervane" + std::to_string(::getpid()) + "n" + std::to_string(++count);
}

}  // namespace

bool Office::isInstalled() {
  return ::access(OfficeProcess::program().c_str(), X_OK) == 0;
}

Office::Office() {
  if (!isInstalled()) {
    refuse("There is no LibreOffice at " + OfficeProcess::program().string() + "; install its Calc.");
  }
  const std::string pipe = freePipeName();
  process_ = std::make_unique<OfficeProcess>(pipe);
  connect(pipe);
}

void Office::connect(const std::string& pipe) {
  // The office's libraries find their services by this variable where the program lies elsewhere.
  const std::string bootstrap = std::string("vnd.sun.star.pathname:") + MERVANE_OFFICE_PROGRAM + "/fundamentalrc";
  static_cast<void>(::setenv("URE_BOOTSTRAP", bootstrap.c_str(), 0));
  inOffice("be reached", [&] {
    local_ = cppu::defaultBootstrap_InitialComponentContext();
    const auto resolver = css::bridge::UnoUrlResolver::create(local_);
    const rtl::OUString url = toOffice("uno:pipe,name=" + pipe + ";urp;StarOffice.ComponentContext");
    const auto end = steady_clock::now() + longestStart;
    while (!context_.is()) {
      try {
        context_.set(resolver->resolve(url), uno::UNO_QUERY_THROW);
      } catch (const css::connection::NoConnectException&) {
        if (process_->hasEnded()) refuse("LibreOffice ended while it was starting.");
        if (steady_clock::now() > end) refuse("LibreOffice does not answer.");
        std::this_thread::sleep_for(pause);
      }
    }
  });
}

Office::~Office() {
  try {
    // An office that ends by itself clears its sockets away; the process ends it where it does not.
    if (context_.is() && !process_->hasEnded()) static_cast<void>(css::frame::Desktop::create(context_)->terminate());
  } catch (const uno::Exception&) {  // it has gone already
  }
  const auto end = steady_clock::now() + longestEnd;
  while (!process_->hasEnded() && steady_clock::now() < end) std::this_thread::sleep_for(pause);
  context_.clear();
  process_.reset();
  try {
    const uno::Reference<css::lang::XComponent> component(local_, uno::UNO_QUERY);
    if (component.is()) component->dispose();
  } catch (const uno::Exception&) {  // the connection has gone with the office
  }
}

uno::Reference<css::frame::XModel> Office::load(const rtl::OUString& url, const std::string& name) {
  const auto model = load(url, name, false);
  const bool writable = inOffice("open " + name, [&] {
    const uno::Reference<css::frame::XStorable> storable(model, uno::UNO_QUERY_THROW);
    return !storable->isReadonly();
  });
  if (writable) return model;
  // A file that cannot be written to, or that is open elsewhere, takes no changes. A new document made of it does, and
  // is stored by another name anyway.
  close(model);
  return load(url, name, true);
}

uno::Reference<css::frame::XModel> Office::load(const rtl::OUString& url, const std::string& name, bool asTemplate) {
  return inOffice("open " + name, [&] {
    const std::array<css::beans::PropertyValue, 4> settings = {
        property("AsTemplate", uno::Any(asTemplate)), property("Hidden", uno::Any(true)),
        property("MacroExecutionMode", uno::Any(css::document::MacroExecMode::NEVER_EXECUTE)),
        property("UpdateDocMode", uno::Any(css::document::UpdateDocMode::NO_UPDATE))};
    const auto desktop = css::frame::Desktop::create(context_);
    const auto component = desktop->loadComponentFromURL(
        url, "_blank", 0, uno::Sequence<css::beans::PropertyValue>(settings.data(), settings.size()));
    const uno::Reference<css::frame::XModel> model(component, uno::UNO_QUERY);
    if (!model.is())
      refuse("LibreOffice could not open " + name +
             ": it is damaged, protected by a password, or of no format that it knows.");
    const uno::Reference<css::sheet::XSpreadsheetDocument> sheets(model, uno::UNO_QUERY);
    if (sheets.is()) return model;
    close(model);
    refuse(name + " is no spreadsheet.");
  });
}

const std::filesystem::path& Office::folder() const {
  return process_->folder();
}

uno::Reference<css::frame::XModel> Office::create() {
  return load("private:factory/scalc", "a new spreadsheet");
}

uno::Reference<css::frame::XModel> Office::open(const std::filesystem::path& path) {
  const std::string name = "\"" + path.filename().string() + "\"";
  if (!std::filesystem::exists(path)) refuse("There is no file " + name + ".");
  return load(urlOf(path), name);
}

bool Office::canStore(const std::filesystem::path& path) {
  return formatOf(path) != nullptr;
}

std::string Office::storedEndings() {
  std::string text;
  for (std::size_t i = 0; i < formats.size(); ++i) {
    if (i > 0) text += i + 1 == formats.size() ? " and " : ", ";
    text += formats[i].ending;
  }
  return text;
}

void Office::store(const uno::Reference<css::frame::XModel>& document, const std::filesystem::path& path) {
  const std::string name = "\"" + path.string() + "\"";
  const Format* format = formatOf(path);
  if (format == nullptr) refuse("The name " + name + " ends in no format to store; use " + storedEndings() + ".");
  inOffice("store " + name, [&] {
    const auto filter = property("FilterName", uno::Any(rtl::OUString::createFromAscii(format->filter)));
    const uno::Reference<css::frame::XStorable> storable(document, uno::UNO_QUERY_THROW);
    storable->storeToURL(urlOf(path), uno::Sequence<css::beans::PropertyValue>(&filter, 1));
  });
}

void Office::close(const uno::Reference<css::frame::XModel>& document) noexcept {
  try {
    const uno::Reference<css::util::XCloseable> closeable(document, uno::UNO_QUERY);
    if (closeable.is()) closeable->close(true);
  } catch (const uno::Exception&) {  // it is closed already, or its office has gone
  }
}

}  // namespace mervane::calc
