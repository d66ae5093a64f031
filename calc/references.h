#pragma once

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <optional>
#include <string>

#include "calc/office.h"

namespace mervane::addin {

[[nodiscard]] std::string sheetName(const uno::Reference<star::frame::XModel>& document, sal_Int16 position);
/// A reference text as the component reads it, such as Sheet1!B2:E151 or 'My data'!B2, whatever notation the office is
/// set to.
[[nodiscard]] std::string referenceText(const uno::Reference<star::frame::XModel>& document,
                                        const star::table::CellRangeAddress& range);

/// The range that a text of the office's range picker, or of the dialog, names; empty where it names none.
[[nodiscard]] std::optional<star::table::CellRangeAddress> rangeOf(const uno::Reference<star::frame::XModel>& document,
                                                                   const std::string& text);
/// What the user has typed or picked, as the component reads it: the office's own notation, such as $Iris.$B$2:$E$151,
/// dollar signs, names of ranges, and whole columns or rows, which end with the used cells. A reference of the
/// component's, and a text that names no range, stay as they are.
[[nodiscard]] std::string componentReference(const uno::Reference<star::frame::XModel>& document,
                                             const std::string& text);
/// The range as the office's range picker writes it.
[[nodiscard]] std::string pickerText(const uno::Reference<star::frame::XModel>& document,
                                     const star::table::CellRangeAddress& range);

}  // namespace mervane::addin
