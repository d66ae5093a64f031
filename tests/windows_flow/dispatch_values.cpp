#include "tests/windows_flow/dispatch_values.h"

#include "hosts/automation/automation_object.h"
#include "hosts/automation/variant_conversion.h"
#include "mervane/runtime_errors.h"
#include "platform/com/failure_conversion.h"
#include "platform/com/text.h"
#include "tests/windows_flow/host_dispatch.h"

namespace mervane::tests {
namespace {

Variant ownAgain(Variant value) {
  if (!value.isObject()) return value;
  const auto* foreign = dynamic_cast<const automation::AutomationObject*>(value.object().get());
  void* wrapped = nullptr;
  if (foreign == nullptr || FAILED(foreign->dispatch()->QueryInterface(hostDispatchId, &wrapped))) {
    raise(runtime::typeMismatch);
  }
  return Variant(*static_cast<const sheet::ObjectRef*>(wrapped));
}

}  // namespace

VARIANT toClient(const Variant& value) {
  VARIANT record;
  VariantInit(&record);
  if (value.isObject()) {
    record.pdispVal = HostDispatch::wrap(value.object());
    record.vt = VT_DISPATCH;
  } else {
    automation::toAutomation(value, record);
  }
  return record;
}

std::vector<Variant> fromClient(const DISPPARAMS& parameters) {
  std::vector<Variant> arguments;
  // The platform passes the last argument first.
  for (UINT i = parameters.cArgs; i > 0; --i) {
    arguments.push_back(ownAgain(automation::fromAutomation(parameters.rgvarg[i - 1])));
  }
  return arguments;
}

HRESULT tellClient(const Failure& failure, EXCEPINFO* exception) {
  if (failure.number() == runtime::memberNotSupported.number) return DISP_E_MEMBERNOTFOUND;
  if (exception == nullptr) return DISP_E_EXCEPTION;
  *exception = {};
  exception->scode = com::resultOf(failure);
  exception->bstrDescription = com::newBstr(failure.description());
  exception->bstrSource = com::newBstr(failure.source());
  return DISP_E_EXCEPTION;
}

}  // namespace mervane::tests
