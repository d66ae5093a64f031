#include <com/sun/star/deployment/PackageInformationProvider.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/DispatchResultState.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XNotifyingDispatch.hpp>
#include <com/sun/star/lang/XInitialization.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <cppuhelper/implbase4.hxx>
#include <cppuhelper/supportsservice.hxx>

#include "calc/border.h"
#include "calc/clusterize_session.h"
#include "calc/main_thread_call.h"
#include "calc/texts.h"
#include "mervane/letter_case.h"

namespace mervane::addin {
namespace {

constexpr const char* packageName = "org.mervane.calc";
constexpr const char* implementationName = "org.mervane.calc.ProtocolHandler";
constexpr const char* serviceName = "com.sun.star.frame.ProtocolHandler";
constexpr const char* command = "vnd.mervane:clusterize";

using Arguments = uno::Sequence<star::beans::PropertyValue>;
using ResultListener = uno::Reference<star::frame::XDispatchResultListener>;

Variant valueOf(const uno::Any& value) {
  rtl::OUString text;
  bool truth = false;
  double number = 0.0;
  if (value >>= text) return fromOffice(text);
  if (value >>= truth) return truth ? "true" : "false";
  if (value >>= number) return number;
  return std::string();
}

bool isOn(const Variant& value) {
  if (const double* number = value.getIf<double>()) return *number != 0.0;
  const std::string* text = value.getIf<std::string>();
  return text != nullptr && (lowered(*text) == "true" || *text == "1");
}

/// With options the run is silent, so that macros and scripts can cluster without anybody at the screen.
Request requestOf(const Arguments& arguments) {
  Request request;
  for (const star::beans::PropertyValue& argument : arguments) {
    const std::string name = fromOffice(argument.Name);
    // What the office's own dispatching adds.
    if (name == "SynchronMode" || name == "Referer" || name == "KeyModifier") continue;
    const std::string key = lowered(name);
    if (key == "overwrite" || key == "remember") {
      request.silent = true;
      (key == "overwrite" ? request.overwrites : request.remembers) = isOn(valueOf(argument.Value));
      continue;
    }
    request.options.emplace_back(name, valueOf(argument.Value));
  }
  request.silent = request.silent || !request.options.empty();
  return request;
}

class ProtocolHandler final
    : public cppu::WeakImplHelper4<star::frame::XDispatchProvider, star::frame::XNotifyingDispatch,
                                   star::lang::XInitialization, star::lang::XServiceInfo> {
 public:
  explicit ProtocolHandler(const uno::Reference<uno::XComponentContext>& context) : context_(context) {}

  void SAL_CALL initialize(const uno::Sequence<uno::Any>& arguments) override {
    if (arguments.hasElements()) arguments[0] >>= frame_;
  }

  uno::Reference<star::frame::XDispatch> SAL_CALL queryDispatch(const star::util::URL& url, const rtl::OUString&,
                                                                sal_Int32) override {
    if (!url.Complete.equalsAscii(command)) return {};
    return this;
  }
  uno::Sequence<uno::Reference<star::frame::XDispatch>> SAL_CALL
  queryDispatches(const uno::Sequence<star::frame::DispatchDescriptor>& requests) override {
    uno::Sequence<uno::Reference<star::frame::XDispatch>> answers(requests.getLength());
    for (sal_Int32 i = 0; i < requests.getLength(); ++i) {
      answers[i] = queryDispatch(requests[i].FeatureURL, requests[i].FrameName, requests[i].SearchFlags);
    }
    return answers;
  }

  void SAL_CALL dispatch(const star::util::URL& url, const Arguments& arguments) override {
    dispatchWithNotification(url, arguments, {});
  }
  void SAL_CALL dispatchWithNotification(const star::util::URL&, const Arguments& arguments,
                                         const ResultListener& listener) override {
    const rtl::Reference<ProtocolHandler> self(this);
    const auto start = [self, request = requestOf(arguments), listener] { self->clusterize(request, listener); };
    callOnMainThread(context_, start);
  }

  void SAL_CALL addStatusListener(const uno::Reference<star::frame::XStatusListener>& listener,
                                  const star::util::URL& url) override {
    star::frame::FeatureStateEvent state;
    state.FeatureURL = url;
    state.Source = static_cast<cppu::OWeakObject*>(this);
    state.IsEnabled = true;
    state.Requery = false;
    if (listener.is()) listener->statusChanged(state);
  }
  void SAL_CALL removeStatusListener(const uno::Reference<star::frame::XStatusListener>&,
                                     const star::util::URL&) override {}

  rtl::OUString SAL_CALL getImplementationName() override { return rtl::OUString::createFromAscii(implementationName); }
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override { return cppu::supportsService(this, name); }
  uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
    uno::Sequence<rtl::OUString> names(1);
    names[0] = rtl::OUString::createFromAscii(serviceName);
    return names;
  }

 private:
  void clusterize(const Request& request, const ResultListener& listener) {
    uno::Reference<star::frame::XFrame> frame = frame_;
    if (!frame.is()) frame = star::frame::Desktop::create(context_)->getCurrentFrame();
    const auto tell = [self = rtl::Reference<ProtocolHandler>(this), listener](const Outcome& outcome) {
      if (!listener.is()) return;
      star::frame::DispatchResultEvent result;
      result.Source = static_cast<cppu::OWeakObject*>(self.get());
      result.State =
          outcome.done ? star::frame::DispatchResultState::SUCCESS : star::frame::DispatchResultState::FAILURE;
      result.Result <<= toOffice(outcome.message);
      listener->dispatchFinished(result);
    };
    if (!frame.is()) return tell({.done = false, .message = said(text::noDocument)});
    const rtl::OUString place = folder();
    Office office{context_, {}, {}};
    if (!place.isEmpty()) office = {context_, place + "/pictures", place + "/help"};
    ClusterizeSession::start(office, frame, request, tell);
  }

  /// Where the extension was unpacked; empty where nobody knows.
  [[nodiscard]] rtl::OUString folder() const {
    rtl::OUString place;
    atBorder([&] {
      place = star::deployment::PackageInformationProvider::get(context_)->getPackageLocation(
          rtl::OUString::createFromAscii(packageName));
    });
    return place;
  }

  uno::Reference<uno::XComponentContext> context_;
  uno::Reference<star::frame::XFrame> frame_;
};

}  // namespace
}  // namespace mervane::addin

/// Called by the office for each new frame that asks for the protocol.
extern "C" __attribute__((visibility("default"))) com::sun::star::uno::XInterface* mervane_calc_ProtocolHandler(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
  com::sun::star::uno::XInterface* handler = nullptr;
  mervane::addin::atBorder([&] {
    const rtl::Reference<mervane::addin::ProtocolHandler> made(new mervane::addin::ProtocolHandler(context));
    made->acquire();
    handler = static_cast<cppu::OWeakObject*>(made.get());
  });
  return handler;
}
