#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <optional>
#include <string>

#include "calc/office.h"

namespace mervane::addin {

/// The two references of a run.
struct Ranges {
  std::string inputs;
  std::string outputs;
};

/// Keeps the references of the last run in a document for as long as the office runs. What the dialog remembers
/// beyond that may be ranges of another document.
void rememberRanges(const uno::Reference<star::frame::XModel>& document, Ranges ranges);
[[nodiscard]] std::optional<Ranges> rememberedRanges(const uno::Reference<star::frame::XModel>& document);

}  // namespace mervane::addin
