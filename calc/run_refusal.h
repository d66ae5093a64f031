#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <optional>

#include "calc/office.h"
#include "calc/window/option_window.h"
#include "platform/option_item.h"

namespace mervane::addin {

/// What keeps a run from beginning that the component itself would not refuse: more clusters than there are rows or
/// than a chart has room for. Nothing where it may begin, or where the component says itself what is wrong.
[[nodiscard]] std::optional<Refusal> runRefusal(const uno::Reference<star::frame::XModel>& document,
                                                const platform::OptionItems& items);

}  // namespace mervane::addin
