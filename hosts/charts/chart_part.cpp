#include "hosts/charts/chart_part.h"

namespace mervane::charts {

Variant ChartPart::invoke(sheet::Access access, sheet::member::Id member, std::span<const Variant> arguments) {
  (void)book_->host();
  if (chart_->deleted) refuse("The chart has been deleted.");
  const Call call(access, member, arguments);
  if (call.isPut()) requireOwn();
  Variant result = answer(call);
  if (access != sheet::Access::get) book_->touched(*chart_);
  return result;
}

void ChartPart::requireOwn() const {
  if (chart_->foreign) refuse("A chart that came with the file can be moved and deleted, but not changed.");
}

}  // namespace mervane::charts
