#include "calc/clusterize_session.h"

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/MessageBoxButtons.hpp>
#include <com/sun/star/awt/MessageBoxResults.hpp>
#include <com/sun/star/awt/XExtendedToolkit.hpp>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/util/CloseVetoException.hpp>
#include <com/sun/star/util/XCloseBroadcaster.hpp>

#include "calc/border.h"
#include "calc/explained_messages.h"
#include "calc/guarded_window.h"
#include "calc/pick_keys.h"
#include "calc/proposal.h"
#include "calc/references.h"
#include "calc/remembered_ranges.h"
#include "calc/run_consent.h"
#include "calc/run_guard.h"
#include "calc/run_refusal.h"
#include "calc/run_watch.h"
#include "calc/silent_run.h"
#include "calc/texts.h"
#include "calc/window/dialog_closer.h"
#include "calc/window/message.h"
#include "engine/create_network_engine.h"
#include "guard/book_cells.h"
#include "guard/facts.h"
#include "guard/refusal.h"
#include "hosts/calc/calc_host.h"
#include "mervane/classifier3.h"
#include "mervane/letter_case.h"
#include "mervane/runtime_errors.h"
#include "spreadsheet/application.h"
#include "support/globals.h"

namespace mervane::addin {

namespace {

/// The session that is on, on the main thread alone; it keeps itself alive by being a listener of its document.
ClusterizeSession* running = nullptr;

star::beans::PropertyValue argument(const char* name, const uno::Any& value) {
  star::beans::PropertyValue property;
  property.Name = rtl::OUString::createFromAscii(name);
  property.Value = value;
  return property;
}

/// Macros may write references as the office does.
EnteredOptions withReadReferences(EnteredOptions options, const uno::Reference<star::frame::XModel>& document) {
  for (auto& [key, value] : options) {
    const std::string name = lowered(key);
    const auto* const text = value.getIf<std::string>();
    if (text != nullptr && (name == "inputs" || name == "outputs")) value = componentReference(document, *text);
  }
  return options;
}

}  // namespace

void ClusterizeSession::start(const Office& office, const uno::Reference<star::frame::XFrame>& frame,
                              const Request& request, Finished finished) {
  speak(languageOf(interfaceLocale(office)));
  if (running != nullptr) {
    const std::string refusal = said(text::alreadyOpen);
    if (!request.silent) {
      // While a range is picked, the menu can be used; an entry of it that did nothing would be a riddle.
      const uno::Reference<awt::XWindowPeer> parent(frame->getContainerWindow(), uno::UNO_QUERY);
      atBorder([&] { showMessage(office, parent, awt::MessageBoxType_ERRORBOX, refusal); });
    }
    finished({.done = false, .message = refusal});
    return;
  }
  const rtl::Reference<ClusterizeSession> session(new ClusterizeSession(office, frame, request, std::move(finished)));
  running = session.get();
  session->guarded([&] {
    session->open();
    session->showUntilPick();
  });
}

ClusterizeSession::ClusterizeSession(const Office& office, const uno::Reference<star::frame::XFrame>& frame,
                                     const Request& request, Finished finished)
    : office_(office),
      frame_(frame),
      request_(request),
      finished_(std::move(finished)),
      closer_(std::make_shared<DialogCloser>()) {}

ClusterizeSession::~ClusterizeSession() = default;

/// Whatever goes wrong ends the session with a message, and never the office.
void ClusterizeSession::guarded(const std::function<void()>& work) {
  const rtl::Reference<ClusterizeSession> self(this);
  std::string trouble;
  atBorder([&] {
    try {
      work();
    } catch (const Failure& failure) {
      trouble = failure.description();
      throw;
    } catch (const uno::Exception& refusal) {
      trouble = fromOffice(refusal.Message);
      if (trouble.empty()) trouble = said(text::refusedWithoutReason);
      throw;
    } catch (const std::exception& problem) {
      trouble = problem.what();
      throw;
    }
  });
  if (trouble.empty()) return;
  if (!request_.silent && !closer_->isClosed()) {
    atBorder([&] { tell(trouble); });
  }
  finish({.done = false, .message = trouble});
}

void ClusterizeSession::tell(const std::string& text) {
  const uno::Reference<awt::XWindowPeer> parent(frame_->getContainerWindow(), uno::UNO_QUERY);
  showMessage(office_, parent, awt::MessageBoxType_ERRORBOX, text);
}

OfficeDesk ClusterizeSession::desk() {
  OfficeDesk desk;
  desk.office = office_;
  desk.parent.set(frame_->getContainerWindow(), uno::UNO_QUERY);
  desk.runBegins = [this] {
    hasRun_ = true;
    if (watch_) watch_->begin();
  };
  desk.closer = closer_;
  desk.gate = {
      .readReference = [document = document_](const std::string& typed) { return componentReference(document, typed); },
      .refusalOf = [document = document_](const platform::OptionItems& items) { return runRefusal(document, items); }};
  return desk;
}

void ClusterizeSession::open() {
  const uno::Reference<star::frame::XController> controller(frame_->getController(), uno::UNO_SET_THROW);
  document_.set(controller->getModel(), uno::UNO_SET_THROW);
  const uno::Reference<star::util::XCloseBroadcaster> broadcaster(document_, uno::UNO_QUERY_THROW);
  broadcaster->addCloseListener(this);
  const uno::Reference<star::frame::XStorable> file(document_, uno::UNO_QUERY);
  if (file.is() && file->isReadonly()) {
    throw Failure(runtime::applicationDefined.number, said(text::forReadingOnly));
  }
  services_ = officeServices(desk());
  if (request_.silent) {
    makeSilent(*services_, withReadReferences(request_.options, document_),
               request_.remembers ? Memory::kept : Memory::leftAlone, report_, [this](const auto& items) {
                 const auto refusal = runRefusal(document_, items);
                 return refusal ? refusal->sentence : std::string();
               });
  }
  services_->createOptionWindow = [this, create = services_->createOptionWindow] {
    return guardedWindow(create(), [this](const platform::OptionItems& options) { return mayRun(options); });
  };
  services_->messageBox = explainedMessages(services_->messageBox, [this](const std::string& one) { return why(one); });
  globals::platform(services_);
  host_ = std::make_unique<calc::CalcHost>(office_.context, document_);
  // The dialog holds references in A1 notation, whichever one the office shows.
  const Variant notation[] = {Variant(sheet::referenceStyleA1)};
  static_cast<void>(host_->application()->invoke(sheet::Access::put, sheet::member::ReferenceStyle, notation));
  classifier_ = Classifier3::create({.createEngine = createNetworkEngine});
  classifier_->ExcelApplication(host_->application());
  watch_ = std::make_unique<RunWatch>(office_, frame_, document_, *classifier_);
  if (request_.silent) return;
  propose();
}

/// What the dialog remembers may name ranges of another document, so that a selection without numbers leaves the
/// references of this one's last run, or none.
void ClusterizeSession::propose() {
  Ranges ranges = rememberedRanges(document_).value_or(Ranges{});
  const auto facts = host_->facts();
  if (const auto proposal = proposeFromSelection(document_, *facts)) ranges = {proposal->inputs, proposal->outputs};
  classifier_->CellInputs(ranges.inputs);
  classifier_->CellOutputs(ranges.outputs);
}

/// Asked when "Clusterize" has been pressed.
bool ClusterizeSession::mayRun(const platform::OptionItems& options) {
  std::optional<Objections> objections;
  atBorder([&] {
    host_->flush();  // What was known of the document may have changed while the dialog was open.
    const auto cells = host_->cells();
    const auto facts = host_->facts();
    objections = objectionsTo(options, *cells, *facts, [this](const std::string& sheet) { show(sheet); });
  });
  const auto tell = [this](const std::string& refusal) {
    if (request_.silent) report_ = refusal;
    if (!request_.silent) static_cast<void>(ask(refusal, awt::MessageBoxButtons::BUTTONS_OK));
  };
  const auto askWhether = [this](const std::string& question) {
    const sal_Int32 buttons = awt::MessageBoxButtons::BUTTONS_YES_NO | awt::MessageBoxButtons::DEFAULT_BUTTON_NO;
    return ask(question, buttons) == awt::MessageBoxResults::YES;
  };
  return isAgreed(objections,
                  {.silent = request_.silent, .overwrites = request_.overwrites, .tell = tell, .ask = askWhether});
}

/// Before the dialog, which is open then.
sal_Int16 ClusterizeSession::ask(const std::string& text, sal_Int32 buttons) {
  sal_Int16 answer = awt::MessageBoxResults::CANCEL;
  const auto type =
      buttons == awt::MessageBoxButtons::BUTTONS_OK ? awt::MessageBoxType_WARNINGBOX : awt::MessageBoxType_QUERYBOX;
  atBorder([&] {
    const auto toolkit = office_.create<awt::XExtendedToolkit>("com.sun.star.awt.Toolkit");
    const uno::Reference<awt::XWindowPeer> dialog(toolkit->getActiveTopWindow(), uno::UNO_QUERY);
    const uno::Reference<awt::XWindowPeer> window(frame_->getContainerWindow(), uno::UNO_QUERY);
    answer = showMessage(office_, dialog.is() ? dialog : window, type, text, buttons);
  });
  return answer;
}

void ClusterizeSession::show(const std::string& sheet) {
  const uno::Reference<star::sheet::XSpreadsheetDocument> book(document_, uno::UNO_QUERY_THROW);
  const uno::Reference<star::sheet::XSpreadsheetView> view(frame_->getController(), uno::UNO_QUERY_THROW);
  const uno::Reference<star::sheet::XSpreadsheet> one(book->getSheets()->getByName(toOffice(sheet)),
                                                      uno::UNO_QUERY_THROW);
  if (one != view->getActiveSheet()) view->setActiveSheet(one);
}

/// Where the trouble lies that the component tells of.
std::string ClusterizeSession::why(const std::string& message) const {
  const auto cells = host_->cells();
  return guard::whyRefused(*cells, {.inputs = "Inputs", .outputs = "Outputs"}, message, classifier_->CellInputs(),
                           classifier_->CellOutputs());
}

/// The host's loop, as far as it goes without the user's picking a range.
void ClusterizeSession::showUntilPick() {
  for (;;) {
    report_.clear();
    const std::string answer = showOnce();
    if (closer_->isClosed()) return finish({.done = false, .message = said(text::documentClosed)});
    if (answer == "INPUTS" || answer == "OUTPUTS") return beginPick(answer);
    if (answer == "INVALIDDATA" && !request_.silent) continue;
    const bool done = hasRun_ && report_.empty() && answer == "CLOSE";
    return finish({.done = done, .message = report_});
  }
}

std::string ClusterizeSession::showOnce() {
  hasRun_ = false;
  struct Ending {
    ClusterizeSession& session;
    ~Ending() {
      if (session.watch_) atBorder([&] { session.watch_->end({}); });
    }
  };
  const Ending ending{*this};
  const std::string answer = classifier_->ShowMainForm();
  if (hasRun_ && !request_.silent) rememberRanges(document_, {classifier_->CellInputs(), classifier_->CellOutputs()});
  watch_->end([&] { host_->flush(); });
  return answer;
}

// --- Picking ------------------------------------------------------------------------------------------------------

void ClusterizeSession::beginPick(const std::string& what) {
  const bool inputs = what == "INPUTS";
  const std::string text = inputs ? classifier_->CellInputs() : classifier_->CellOutputs();
  const auto range = rangeOf(document_, text);
  picking_ = what;
  picker_.set(frame_->getController(), uno::UNO_QUERY_THROW);
  uno::Sequence<star::beans::PropertyValue> arguments(4);
  arguments[0] = argument("InitialValue", uno::Any(toOffice(range ? pickerText(document_, *range) : std::string())));
  arguments[1] = argument("Title", uno::Any(toOffice(said(inputs ? text::pickInputs : text::pickOutputs))));
  arguments[2] = argument("CloseOnMouseRelease", uno::Any(!inputs));
  arguments[3] = argument("SingleCellMode", uno::Any(!inputs));
  comeToFront();
  picker_->addRangeSelectionListener(this);
  pickKeys_ = std::make_unique<PickKeys>(
      office_, frame_, picker_,
      PickKeys::Ends{.entered = [this](const std::string& picked) { pickedByKeys(uno::Any(toOffice(picked))); },
                     .escaped = [this] { pickedByKeys({}); }});
  picker_->startRangeSelection(arguments);
}

/// Another document may have come to the front meanwhile; behind one the office neither opens nor closes a picker.
void ClusterizeSession::comeToFront() {
  frame_->activate();
  const uno::Reference<awt::XTopWindow> window(frame_->getContainerWindow(), uno::UNO_QUERY);
  if (window.is()) window->toFront();
}

void ClusterizeSession::done(const star::sheet::RangeSelectionEvent& event) {
  atBorder([&] {
    pickedElsewhere_ = pickKeys_ && pickKeys_->isOfAnotherDocument();
    // The picker is still on the stack; the dialog comes back when it has gone.
    later(uno::Any(event.RangeDescriptor));
  });
}

void ClusterizeSession::aborted(const star::sheet::RangeSelectionEvent&) {
  atBorder([&] { later({}); });
}

void ClusterizeSession::pickedByKeys(const uno::Any& range) {
  atBorder([&] {
    pickedElsewhere_ = pickKeys_->isOfAnotherDocument();
    picker_->removeRangeSelectionListener(this);
    comeToFront();
    picker_->abortRangeSelection();
    later(range);
  });
}

void ClusterizeSession::later(const uno::Any& data) {
  star::awt::AsyncCallback::create(office_.context)->addCallback(this, data);
}

void ClusterizeSession::notify(const uno::Any& data) {
  if (picking_.empty() || running != this) return;
  guarded([&] {
    const bool inputs = picking_ == "INPUTS";
    endPick();
    if (closer_->isClosed()) return finish({.done = false, .message = said(text::documentClosed)});
    rtl::OUString text;
    if (data >>= text) take(inputs, fromOffice(text));
    showUntilPick();
  });
}

void ClusterizeSession::take(bool inputs, const std::string& picked) {
  if (pickedElsewhere_) {
    return tell(said(text::pickedElsewhere, {picked}));
  }
  const std::string reference = componentReference(document_, picked);
  if (inputs) classifier_->CellInputs(reference);
  if (!inputs) classifier_->CellOutputs(reference);
}

void ClusterizeSession::endPick() {
  picking_.clear();
  pickKeys_.reset();
  if (picker_.is()) picker_->removeRangeSelectionListener(this);
  picker_.clear();
}

// --- The end ------------------------------------------------------------------------------------------------------

void ClusterizeSession::queryClosing(const star::lang::EventObject&, sal_Bool) {
  if (watch_ && watch_->isRunning()) {
    throw star::util::CloseVetoException(toOffice(said(text::isClustering)), static_cast<cppu::OWeakObject*>(this));
  }
}

/// May come on any thread. A shown dialog ends its showing on its own thread; a session that waits for a picked range
/// has nobody to do so and is called.
void ClusterizeSession::notifyClosing(const star::lang::EventObject&) {
  atBorder([&] {
    closer_->close();
    if (picking_.empty()) return;
    // The office keeps a picker whose document has gone for open, and opens no other one.
    if (picker_.is()) picker_->abortRangeSelection();
    later({});
  });
}

void ClusterizeSession::disposing(const star::lang::EventObject&) {}

void ClusterizeSession::finish(const Outcome& outcome) {
  if (running != this) return;
  const rtl::Reference<ClusterizeSession> self(this);
  running = nullptr;
  atBorder([&] { endPick(); });
  watch_.reset();
  if (classifier_) atBorder([&] { classifier_->UnloadfrmMain(); });
  classifier_.reset();
  host_.reset();
  // Nothing of the office may be held by the thread's module data when the office goes.
  globals::release();
  services_.reset();
  atBorder([&] {
    const uno::Reference<star::util::XCloseBroadcaster> broadcaster(document_, uno::UNO_QUERY);
    if (broadcaster.is()) broadcaster->removeCloseListener(this);
  });
  if (finished_) atBorder([&] { finished_(outcome); });
}

}  // namespace mervane::addin
