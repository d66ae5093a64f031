#include "tests/support/recorder.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "mervane/convert.h"
#include "mervane/failure.h"

namespace mervane::tests {

class Recorder::Recorded final : public ObjectDecorator {
 public:
  Recorded(sheet::ObjectRef inner, std::string name, std::shared_ptr<Log> log)
      : ObjectDecorator(std::move(inner)), name_(std::move(name)), log_(std::move(log)) {}

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
    const bool put = access == sheet::Access::put;
    const std::string use = name_ + (name_.empty() ? "" : ".") + std::string(sheet::nameOf(member)) +
                            listed(put ? arguments.first(arguments.size() - 1) : arguments);
    const char* verb = put ? "put " : access == sheet::Access::get ? "get " : "call ";
    log_->calls.push_back(verb + use + (put ? " = " + text(arguments.back()) : ""));
    const std::size_t entry = log_->calls.size() - 1;
    try {
      Variant result = forward(access, member, arguments);
      if (!result.isObject() || result.object() == nullptr) return result;
      std::string name = log_->namer ? log_->namer(*result.object()) : std::string();
      return Variant(
          sheet::ObjectRef(std::make_shared<Recorded>(result.object(), name.empty() ? use : std::move(name), log_)));
    } catch (const Failure&) {
      log_->calls[entry] += " fails";
      throw;
    }
  }

 private:
  static std::string listed(std::span<const Variant> arguments) {
    if (arguments.empty()) return {};
    std::string list;
    for (const Variant& argument : arguments) list += (list.empty() ? "" : ", ") + text(argument);
    return "(" + list + ")";
  }
  static std::string text(const Variant& value) {
    if (value.isText()) return '"' + *value.getIf<std::string>() + '"';
    if (value.isEmpty()) return "Empty";
    if (!value.isObject()) return toText(value, englishLocale());
    const auto recorded = std::dynamic_pointer_cast<Recorded>(value.object());
    return recorded ? recorded->name_ : "an object";
  }

  std::string name_;
  std::shared_ptr<Log> log_;
};

Recorder::Recorder(const sheet::ObjectRef& host, Namer namer)
    : log_(std::make_shared<Log>(Log{std::move(namer), {}})), object_(std::make_shared<Recorded>(host, "", log_)) {}

const std::vector<std::string>& Recorder::calls() const noexcept {
  return log_->calls;
}

std::vector<std::string> Recorder::callsWith(const std::string& part) const {
  std::vector<std::string> found;
  std::copy_if(log_->calls.begin(), log_->calls.end(), std::back_inserter(found),
               [&](const std::string& call) { return call.find(part) != std::string::npos; });
  return found;
}

void Recorder::clear() {
  log_->calls.clear();
}

}  // namespace mervane::tests
