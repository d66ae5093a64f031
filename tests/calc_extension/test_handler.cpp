#include <gtest/gtest.h>

#include <algorithm>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/DispatchResultState.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XNotifyingDispatch.hpp>
#include <com/sun/star/lang/XInitialization.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase3.hxx>

#include "calc/border.h"
#include "calc/main_thread_call.h"
#include "tests/calc_extension/office_window_user.h"

/// The command `vnd.mervane-tests:run`: runs the tests that need an office around them, on its main thread, in front of
/// the current document. Its arguments are those of a test program; the result is the number of failed tests as text.
namespace mervane::tests {
namespace {

namespace star = com::sun::star;
namespace uno = com::sun::star::uno;
using Arguments = uno::Sequence<star::beans::PropertyValue>;

class TestHandler final : public cppu::WeakImplHelper3<star::frame::XDispatchProvider, star::frame::XNotifyingDispatch,
                                                       star::lang::XInitialization> {
 public:
  explicit TestHandler(const uno::Reference<uno::XComponentContext>& context) : context_(context) {}
  void SAL_CALL initialize(const uno::Sequence<uno::Any>& arguments) override {
    if (arguments.hasElements()) arguments[0] >>= frame_;
  }
  uno::Reference<star::frame::XDispatch> SAL_CALL queryDispatch(const star::util::URL&, const rtl::OUString&,
                                                                sal_Int32) override {
    return this;
  }
  uno::Sequence<uno::Reference<star::frame::XDispatch>> SAL_CALL
  queryDispatches(const uno::Sequence<star::frame::DispatchDescriptor>&) override {
    return {};
  }
  void SAL_CALL dispatch(const star::util::URL& url, const Arguments& arguments) override {
    dispatchWithNotification(url, arguments, {});
  }
  void SAL_CALL
  dispatchWithNotification(const star::util::URL&, const Arguments& arguments,
                           const uno::Reference<star::frame::XDispatchResultListener>& listener) override {
    const rtl::Reference<TestHandler> self(this);
    addin::callOnMainThread(context_, [self, arguments, listener] {
      star::frame::DispatchResultEvent result;
      result.Source = static_cast<cppu::OWeakObject*>(self.get());
      result.State = star::frame::DispatchResultState::SUCCESS;
      result.Result <<= rtl::OUString::number(self->run(arguments));
      if (listener.is()) listener->dispatchFinished(result);
    });
  }
  void SAL_CALL addStatusListener(const uno::Reference<star::frame::XStatusListener>&,
                                  const star::util::URL&) override {}
  void SAL_CALL removeStatusListener(const uno::Reference<star::frame::XStatusListener>&,
                                     const star::util::URL&) override {}

 private:
  int run(const Arguments& arguments) {
    testedOffice().office = {context_, {}, {}};
    testedOffice().parent.set(frame_->getContainerWindow(), uno::UNO_QUERY);
    std::vector<std::string> texts{"mervane_calc_tests"};
    for (const star::beans::PropertyValue& argument : arguments) {
      rtl::OUString value;
      if (!argument.Name.startsWith("gtest_") || !(argument.Value >>= value)) continue;
      texts.push_back("--" + addin::fromOffice(argument.Name) + "=" + addin::fromOffice(value));
    }
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    int count = static_cast<int>(pointers.size());
    testing::InitGoogleTest(&count, pointers.data());
    const int result = RUN_ALL_TESTS();
    testedOffice() = {};
    const testing::UnitTest& tests = *testing::UnitTest::GetInstance();
    // No test at all is a failure too.
    return tests.successful_test_count() == 0 ? 1 : std::max(tests.failed_test_count(), result);
  }

  uno::Reference<uno::XComponentContext> context_;
  uno::Reference<star::frame::XFrame> frame_;
};

}  // namespace
}  // namespace mervane::tests

extern "C" __attribute__((visibility("default"))) com::sun::star::uno::XInterface* mervane_calc_TestHandler(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
  com::sun::star::uno::XInterface* handler = nullptr;
  mervane::addin::atBorder([&] {
    const rtl::Reference<mervane::tests::TestHandler> made(new mervane::tests::TestHandler(context));
    made->acquire();
    handler = static_cast<cppu::OWeakObject*>(made.get());
  });
  return handler;
}
