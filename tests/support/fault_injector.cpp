#include "tests/support/fault_injector.h"

#include <utility>

#include "mervane/runtime_errors.h"

namespace mervane::tests {

class FaultInjector::Faulty final : public ObjectDecorator {
 public:
  Faulty(sheet::ObjectRef inner, std::shared_ptr<Count> count)
      : ObjectDecorator(std::move(inner)), count_(std::move(count)) {}

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
    if (++count_->calls == count_->failing || (count_->refusal && count_->refusal(access, member))) {
      count_->triggered = true;
      raise(runtime::applicationDefined);
    }
    Variant result = forward(access, member, arguments);
    if (!result.isObject() || result.object() == nullptr) return result;
    return Variant(sheet::ObjectRef(std::make_shared<Faulty>(result.object(), count_)));
  }

 private:
  std::shared_ptr<Count> count_;
};

FaultInjector::FaultInjector(const sheet::ObjectRef& host, int failingCall)
    : count_(std::make_shared<Count>(Count{.failing = failingCall})), object_(std::make_shared<Faulty>(host, count_)) {}

FaultInjector::FaultInjector(const sheet::ObjectRef& host, Refusal refusal)
    : count_(std::make_shared<Count>(Count{.refusal = std::move(refusal)})),
      object_(std::make_shared<Faulty>(host, count_)) {}

void FaultInjector::failCall(int failingCall) {
  *count_ = {.failing = failingCall};
}

bool FaultInjector::triggered() const noexcept {
  return count_->triggered;
}

int FaultInjector::calls() const noexcept {
  return count_->calls;
}

}  // namespace mervane::tests
