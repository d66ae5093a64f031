#include "tests/conformance/member_walk.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "mervane/failure.h"
#include "spreadsheet/member_table.h"
#include "tests/support/object_decorator.h"

namespace mervane::tests {

namespace {

constexpr std::string_view enumeratorOf = "Enumerator of ";

std::size_t argumentCount(const sheet::MemberUse& use) {
  if (use.arguments.empty()) return 0;
  return static_cast<std::size_t>(std::count(use.arguments.begin(), use.arguments.end(), ',')) + 1;
}

std::optional<std::size_t> rowOf(std::string_view object, sheet::Access access, sheet::member::Id member,
                                 std::size_t arguments) {
  const auto table = sheet::memberTable();
  const std::string_view name = object.starts_with(enumeratorOf) ? enumeratorOf.substr(0, 10) : object;
  for (std::size_t i = 0; i < table.size(); ++i) {
    const sheet::MemberUse& use = table[i];
    if (use.object == name && use.access == access && use.member == member && argumentCount(use) == arguments) {
      return i;
    }
  }
  return std::nullopt;
}

std::string words(std::string_view object, sheet::Access access, sheet::member::Id member, std::size_t arguments) {
  const char* verb = access == sheet::Access::get ? "get " : access == sheet::Access::put ? "put " : "call ";
  return verb + std::string(object) + "." + std::string(sheet::nameOf(member)) + " with " + std::to_string(arguments) +
         " arguments";
}

bool isPromised(const sheet::MemberUse& use, const Variant& answer) {
  if (use.result == "Boolean") return answer.kind() == Variant::Kind::boolean;
  if (use.result == "Long") return answer.kind() == Variant::Kind::int32;
  if (use.result == "Double") return answer.kind() == Variant::Kind::real;
  if (use.result == "String") return answer.isText();
  // The next element, or nothing behind the last one.
  if (use.member == sheet::member::Next) return answer.isObject() || answer.isEmpty();
  if (use.result == "Variant") return !answer.isObject();
  // Where an application answers something to a method without a result, nobody looks at it.
  if (use.result.empty()) return use.access == sheet::Access::call || answer.isEmpty();
  if (use.member == sheet::member::ActiveChart && answer.isEmpty()) return true;
  return answer.isObject() && (answer.object() != nullptr || use.member == sheet::member::ActiveChart);
}

}  // namespace

class MemberWalk::Followed final : public ObjectDecorator {
 public:
  Followed(sheet::ObjectRef inner, std::string className, std::shared_ptr<MemberRecord> record)
      : ObjectDecorator(std::move(inner)), className_(std::move(className)), record_(std::move(record)) {}

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) override {
    const std::optional<std::size_t> row = rowOf(className_, access, member, arguments.size());
    const auto deviates = [&](const char* how) {
      record_->deviations.push_back(words(className_, access, member, arguments.size()) + how);
    };
    if (!row) deviates(" is not in the table of members");
    try {
      Variant answer = forward(access, member, arguments);
      if (!row) return answer;
      const sheet::MemberUse& use = sheet::memberTable()[*row];
      record_->answered.insert(*row);
      if (!isPromised(use, answer)) deviates(" answers another kind of value than the table promises");
      if (!answer.isObject() || answer.object() == nullptr) return answer;
      // An answer that the table does not promise is nobody's class.
      std::string result(use.result);
      if (member == sheet::member::Next) result = className_.substr(enumeratorOf.size());
      return Variant(sheet::ObjectRef(std::make_shared<Followed>(answer.object(), std::move(result), record_)));
    } catch (const Failure&) {
      if (row) record_->refused.insert(*row);
      throw;
    }
  }

 private:
  std::string className_;
  std::shared_ptr<MemberRecord> record_;
};

MemberWalk::MemberWalk(const sheet::ObjectRef& application, std::shared_ptr<MemberRecord> record)
    : object_(std::make_shared<Followed>(application, "Application", std::move(record))) {}

sheet::ObjectRef MemberWalk::hostsOwn(const sheet::Proxy& object) {
  const auto followed = std::dynamic_pointer_cast<Followed>(object.object());
  return followed == nullptr ? object.object() : followed->inner();
}

}  // namespace mervane::tests
