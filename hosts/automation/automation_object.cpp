#include "hosts/automation/automation_object.h"

#include <string>
#include <vector>

#include "hosts/automation/variant_conversion.h"
#include "platform/com/failure_conversion.h"
#include "platform/com/text.h"

using Microsoft::WRL::ComPtr;

namespace mervane::automation {
namespace {

constexpr LCID englishUnitedStates = 1033;

/// The platform's enumerator behind the two members that the port knows of one.
class Enumerator : public sheet::Object {
 public:
  explicit Enumerator(ComPtr<IEnumVARIANT> elements) : elements_(std::move(elements)) {}

  Variant invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> /*arguments*/) override {
    if (access != sheet::Access::call || member != sheet::member::Next) raise(runtime::memberNotSupported);
    OwnedVariant element;
    ULONG fetched = 0;
    const HRESULT result = elements_->Next(1, element.get(), &fetched);
    if (FAILED(result)) throw com::failureOf(result, elements_.Get(), IID_IEnumVARIANT);
    return fetched == 1 ? fromAutomation(element.value()) : Variant();
  }

 private:
  ComPtr<IEnumVARIANT> elements_;
};

/// Arguments in the platform's order, last one first.
class Arguments {
 public:
  explicit Arguments(std::span<const Variant> arguments) : records_(arguments.size()) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      toAutomation(arguments[i], *records_[arguments.size() - 1 - i].get());
    }
    plain_.reserve(records_.size());
    for (OwnedVariant& record : records_) plain_.push_back(record.value());
  }
  [[nodiscard]] DISPPARAMS parameters() { return {plain_.data(), nullptr, static_cast<UINT>(plain_.size()), 0}; }

 private:
  std::vector<OwnedVariant> records_;
  std::vector<VARIANT> plain_;  ///< the same values without ownership, in one block
};

WORD flagsOf(sheet::Access access, std::span<const Variant> arguments) {
  switch (access) {
    case sheet::Access::get:
      // The application declares some indexed properties as methods, and some methods as properties.
      return DISPATCH_PROPERTYGET | DISPATCH_METHOD;
    case sheet::Access::put:
      return !arguments.empty() && arguments.back().isObject() ? DISPATCH_PROPERTYPUTREF | DISPATCH_PROPERTYPUT
                                                               : DISPATCH_PROPERTYPUT;
    case sheet::Access::call:
      return DISPATCH_METHOD;
  }
  return DISPATCH_METHOD;
}

}  // namespace

DISPID AutomationObject::idOf(sheet::member::Id member) {
  if (member == sheet::member::NewEnum) return DISPID_NEWENUM;
  const auto known = ids_.find(member);
  if (known != ids_.end()) return known->second;
  std::wstring name = com::toWide(sheet::nameOf(member));
  OLECHAR* names = name.data();
  DISPID id = DISPID_UNKNOWN;
  const HRESULT result = dispatch_->GetIDsOfNames(IID_NULL, &names, 1, englishUnitedStates, &id);
  if (FAILED(result)) throw com::failureOf(result, nullptr, IID_NULL);
  ids_.emplace(member, id);
  return id;
}

Variant AutomationObject::invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) {
  if (dispatch_ == nullptr) raise(runtime::objectNotSet);
  const DISPID id = idOf(member);
  Arguments records(arguments);
  DISPPARAMS parameters = records.parameters();
  DISPID putId = DISPID_PROPERTYPUT;
  if (access == sheet::Access::put) {
    parameters.cNamedArgs = 1;
    parameters.rgdispidNamedArgs = &putId;
  }
  const LCID locale = sheet::usesEnglishLocale(member) ? englishUnitedStates : LOCALE_USER_DEFAULT;
  OwnedVariant answer;
  EXCEPINFO exception{};
  UINT badArgument = 0;
  const HRESULT result =
      dispatch_->Invoke(id, IID_NULL, locale, flagsOf(access, arguments), &parameters,
                        access == sheet::Access::put ? nullptr : answer.get(), &exception, &badArgument);
  if (FAILED(result)) throw com::failureOf(result, exception);
  if (member != sheet::member::NewEnum) return fromAutomation(answer.value());

  ComPtr<IEnumVARIANT> elements;
  const bool holdsObject = answer.value().vt == VT_UNKNOWN || answer.value().vt == VT_DISPATCH;
  if (!holdsObject || answer.value().punkVal == nullptr ||
      FAILED(answer.value().punkVal->QueryInterface(IID_PPV_ARGS(&elements)))) {
    raise(runtime::memberNotSupported);
  }
  return Variant(sheet::ObjectRef(std::make_shared<Enumerator>(std::move(elements))));
}

}  // namespace mervane::automation
