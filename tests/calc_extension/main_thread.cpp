#include "tests/calc_extension/main_thread.h"

#include <atomic>
#include <chrono>
#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <cppuhelper/implbase1.hxx>
#include <future>
#include <memory>
#include <thread>

#include "calc/border.h"

namespace mervane::tests {

namespace uno = com::sun::star::uno;
namespace awt = com::sun::star::awt;

namespace {

class Work final : public cppu::WeakImplHelper1<awt::XCallback> {
 public:
  explicit Work(std::function<void()> work) : work_(std::move(work)) {}
  void SAL_CALL notify(const uno::Any&) override {
    addin::atBorder(work_);
    done_.set_value();
  }
  [[nodiscard]] std::future<void> done() { return done_.get_future(); }

 private:
  std::function<void()> work_;
  std::promise<void> done_;
};

void post(const addin::Office& office, const std::function<void()>& work) {
  const rtl::Reference<Work> callback(new Work(work));
  std::future<void> done = callback->done();
  awt::AsyncCallback::create(office.context)->addCallback(callback.get(), {});
  // A dialog that hangs must not hang the tests for ever.
  if (done.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
    throw std::runtime_error("the office's main thread does not answer");
  }
}

}  // namespace

void onMainThread(const addin::Office& office, const std::function<void()>& work) {
  post(office, work);
  // What the work has set off, such as a dialog that ends its showing, comes before a second call of ours.
  for (int i = 0; i < 3; ++i) {
    post(office, [] {});
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
}

struct BesideMainThread::Shared {
  std::atomic<bool> done{false};
  std::thread thread;
};

BesideMainThread::BesideMainThread(const addin::Office& office, std::function<void()> work)
    : office_(office), shared_(std::make_shared<Shared>()) {
  shared_->thread = std::thread([shared = shared_.get(), work = std::move(work)] {
    addin::atBorder(work);
    shared->done = true;
  });
}

BesideMainThread::~BesideMainThread() {
  addin::atBorder([&] {
    const auto toolkit = office_.create<awt::XToolkitExperimental>("com.sun.star.awt.Toolkit");
    while (!shared_->done) toolkit->processEventsToIdle();
  });
  shared_->thread.join();
}

}  // namespace mervane::tests
