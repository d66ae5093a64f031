#pragma once

#include <string>

#include "mervane/variant.h"
#include "spreadsheet/application.h"

/// Functions without state that deal with worksheets: reference texts, and cells into arrays.
///
/// A reference text is an optional sheet part closed by "!", then a cell, then optionally ":" and a second cell; a
/// cell is one or two letters followed by digits. The sheet part may stand in apostrophes, an apostrophe inside
/// it doubled. There are no dollar signs.
namespace mervane::mTools {

/// Takes a reference text apart and tests it against the active workbook.
/// @param sheet the sheet part in the spelling of the reference; the active sheet's name where there is none.
/// @param firstCell, lastCell such as "B2", in the case they were written in; lastCell is empty for a single cell.
/// @return whether the reference is good. Where it is malformed or a row lies outside 1 to 65535, the out
///   arguments keep what they held; where it names no worksheet, all three come back empty.
/// Raises "mTools component failure" for anything else, such as a workbook that cannot be asked.
[[nodiscard]] bool SplitRangeReference(const sheet::Application& application, const std::string& reference,
                                       std::string& sheet, std::string& firstCell, std::string& lastCell);

/// A reference in A1 notation and without a workbook in brackets, where the application works in R1C1 notation;
/// otherwise the text as it stands. Never fails: what cannot be converted comes back unchanged.
[[nodiscard]] std::string ReferenceToA1(const sheet::Application& application, const std::string& reference);

/// All matches of a regular expression, either case, replaced. Nothing in the pattern is escaped.
/// Raises "mTools component failure".
[[nodiscard]] std::string mReplace(const std::string& source, const std::string& pattern,
                                   const std::string& replacement);

/// The cells of a range as a two-dimensional array of 32-bit floats, both lower bounds 1, rows first. An
/// empty cell gives 0.
/// @param range a value that holds a range.
/// Raises "mTools component failure" for a cell that is not numeric or does not fit a 32-bit float.
[[nodiscard]] Variant Range2ArraySingle(const Variant& range);

/// Whether every cell is numeric. Failures on the way are passed over.
/// @param reference replaced by its A1 form.
[[nodiscard]] bool AllCellsNumeric(const sheet::Application& application, std::string& reference);

/// Whether the first column of the range holds one value throughout; the other columns are not looked at.
/// @param reference replaced by its A1 form.
/// Raises "mTools component failure".
[[nodiscard]] bool RepeatedInputs(const sheet::Application& application, std::string& reference);

}  // namespace mervane::mTools
