#include "calc/main_thread_call.h"

#include <unistd.h>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <cppuhelper/implbase1.hxx>

#include "calc/border.h"

namespace mervane::addin {

namespace {

class Later final : public cppu::WeakImplHelper1<awt::XCallback> {
 public:
  explicit Later(std::function<void()> work) : work_(std::move(work)) {}
  void SAL_CALL notify(const uno::Any&) override { atBorder(work_); }

 private:
  std::function<void()> work_;
};

/// The office's event loop runs on the thread that its process began with.
bool isMainThread() {
  return gettid() == getpid();
}

}  // namespace

void callOnMainThread(const uno::Reference<uno::XComponentContext>& context, std::function<void()> work) {
  if (isMainThread()) return atBorder(work);
  atBorder([&] { awt::AsyncCallback::create(context)->addCallback(new Later(std::move(work)), {}); });
}

}  // namespace mervane::addin
