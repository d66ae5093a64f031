#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "mervane/convert.h"
#include "mervane/letter_case.h"
#include "support/globals.h"
#include "support/procedures.h"
#include "tools/m_tools.h"

namespace mervane::mTools {

namespace {

constexpr const char* className = "mTools";
constexpr const char* keySplitRangeReference = "MervaneClass3.mTools.SplitRangeReference";
constexpr const char* keyReplace = "MervaneClass3.mTools.mReplace";

constexpr const char* referencePattern = R"(^((.+)\!)?([A-Z]{1,2})(\d+)(:([A-Z]{1,2})(\d+))?$)";
// What each group of the pattern holds, counted from 0.
constexpr std::size_t groupSheet = 1;
constexpr std::size_t groupFirstColumn = 2;
constexpr std::size_t groupFirstRow = 3;
constexpr std::size_t groupSecondPart = 4;
constexpr std::size_t groupLastColumn = 5;
constexpr std::size_t groupLastRow = 6;

// NB: row 65536 is refused although a worksheet has it.
constexpr std::int32_t rowLimit = 65535;

bool isRow(const std::string& digits) {
  const std::int32_t row = toInt32(Variant(digits), globals::platform().locale);
  return row >= 1 && row <= rowLimit;
}

/// The sheet part without its apostrophes.
std::string unquoted(const std::string& sheet) {
  if (sheet.front() != '\'' || sheet.back() != '\'') return sheet;
  // A single apostrophe is its own first and last character; nothing can be cut off it.
  if (sheet.size() < 2) raise(runtime::invalidProcedureCall);
  return mReplace(sheet.substr(1, sheet.size() - 2), "''", "'");
}

bool isWorksheet(const sheet::Application& application, const std::string& name) {
  const std::string wanted = lowered(name);
  const sheet::Worksheets sheets = application.ActiveWorkbook().Worksheets();
  const std::int32_t count = sheets.Count();
  for (std::int32_t position = 1; position <= count; ++position) {
    if (lowered(sheets.Item(position).Name()) == wanted) return true;
  }
  return false;
}

}  // namespace

bool SplitRangeReference(const sheet::Application& application, const std::string& reference, std::string& sheet,
                         std::string& firstCell, std::string& lastCell) {
  return wrapping(className, keySplitRangeReference, [&] {
    // 1. and 2. The reference in A1 notation against the pattern.
    const std::string text = ReferenceToA1(application, reference);
    const std::unique_ptr<platform::RegularExpression> expression = globals::platform().regularExpressions->create();
    expression->IgnoreCase(true);
    expression->Pattern(referencePattern);
    const std::vector<platform::RegularExpression::Match> matches = expression->Execute(text);
    // 3. The out arguments stay as they came.
    if (matches.empty()) return false;
    // 4. and 5. Both rows in bounds.
    const std::vector<std::string>& groups = matches.front().subMatches;
    if (!isRow(groups[groupFirstRow])) return false;
    if (!groups[groupSecondPart].empty() && !isRow(groups[groupLastRow])) return false;
    // 6. The parts, in the spelling of the reference.
    sheet = groups[groupSheet];
    firstCell = groups[groupFirstColumn] + groups[groupFirstRow];
    lastCell = groups[groupLastColumn] + groups[groupLastRow];
    // 8. No sheet part stands for the active sheet.
    if (sheet.empty()) {
      sheet = application.ActiveWorkbook().ActiveSheet().Name();
      return true;
    }
    // 7. A named sheet has to exist.
    sheet = unquoted(sheet);
    if (isWorksheet(application, sheet)) return true;
    sheet.clear();
    firstCell.clear();
    lastCell.clear();
    return false;
  });
}

std::string ReferenceToA1(const sheet::Application& application, const std::string& reference) {
  // 1. Whatever fails, the text as far as it has come is the result.
  std::string result = reference;
  attempt([&] {
    // 2. Only R1C1 notation is converted.
    if (application.ReferenceStyle() != sheet::referenceStyleR1C1) return;
    result = toText(application.ConvertFormula(reference, sheet::referenceStyleR1C1, sheet::referenceStyleA1),
                    globals::platform().locale);
    // NB: an apostrophe before the bracket goes with the workbook's name, the one behind the sheet's name stays.
    const std::size_t bracket = result.find(']');
    if (bracket != std::string::npos) result.erase(0, bracket + 1);
  });
  // 3.
  return result;
}

std::string mReplace(const std::string& source, const std::string& pattern, const std::string& replacement) {
  return wrapping(className, keyReplace, [&] {
    const std::unique_ptr<platform::RegularExpression> expression = globals::platform().regularExpressions->create();
    expression->Pattern(pattern);
    expression->IgnoreCase(true);
    expression->Global(true);
    return expression->Replace(source, replacement);
  });
}

}  // namespace mervane::mTools
