#pragma once

#include <optional>
#include <string>

#include "hosts/calc/session.h"

namespace mervane::calc {

/// Cells as the office's charts refer to them, in the notation that the user has chosen for formulas: "$'My
/// Sheet'.$A$1:$B$7", "'My Sheet'!$A$1:$B$7" or "'My Sheet'!R1C1:R7C2".
[[nodiscard]] rtl::OUString chartReference(const Session& session, const SheetArea& area);
/// The other way round; nothing for a text that is no plain reference to cells of this document.
[[nodiscard]] std::optional<SheetArea> areaOfChartReference(const Session& session, std::string_view text);

/// A text in quotes, which a chart takes for the text itself.
[[nodiscard]] rtl::OUString quotedText(const std::string& text);

}  // namespace mervane::calc
