#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/regular_expressions.h"
#include "spreadsheet/application.h"

namespace mervane::tests {

/// What a cell of a made sheet holds. A date gets a date format of its own; an error is the error itself.
struct MadeCell {
  template <class T>
  MadeCell(T content) : value(std::move(content)) {}  // NOLINT(google-explicit-constructor)
  MadeCell() = default;
  /// @param asFormula with its equals sign
  /// @param result what it comes to, for a host that does not compute
  MadeCell(std::string asFormula, Variant result) : value(std::move(result)), formula(std::move(asFormula)) {}

  Variant value;
  std::string formula;
};

/// A worksheet and the rows of its cells, from A1 on.
struct MadeSheet {
  std::string name;
  std::vector<std::vector<MadeCell>> rows;
};

/// One host with a workbook of made sheets open in it, the first sheet being the active one.
///
/// Beside the object model it answers what the system never asks and a test has to know.
class HostUnderTest {
 public:
  virtual ~HostUnderTest() = default;

  [[nodiscard]] virtual sheet::ObjectRef application() = 0;

  /// Saves the workbook and opens it again; objects of before are not to be used any more. Only asked of a host
  /// whose kind saves.
  virtual void reopen() = 0;

  /// What a property that the system only writes holds now. An object may answer that itself, and most do.
  [[nodiscard]] virtual Variant shown(const sheet::ObjectRef& object, sheet::member::Id member) {
    return object->invoke(sheet::Access::get, member, {});
  }
  /// The selected cells of the active sheet, such as "B2:C3".
  [[nodiscard]] virtual std::string selection() = 0;
  /// Whether the one chart of the active sheet shows the values beside its points.
  [[nodiscard]] virtual bool showsDataLabels() = 0;
  /// Has references written in R1C1 notation from now on.
  virtual void useR1C1() {
    const Variant style(sheet::referenceStyleR1C1);
    static_cast<void>(application()->invoke(sheet::Access::put, sheet::member::ReferenceStyle, {&style, 1}));
  }
  /// Whether the application has no such thing, so that the host must refuse it. The system passes over the refusal.
  /// @param object a class of the table of members, such as "ChartTitle"
  [[nodiscard]] virtual bool lacks(std::string_view /*object*/, sheet::member::Id /*member*/) const { return false; }
};

/// A kind of host, with all that a test needs to put it to work.
struct HostKind {
  std::string name;  ///< such as "Workbook"
  std::unique_ptr<HostUnderTest> (*make)(const std::vector<MadeSheet>& sheets);
  /// Those of the machine that the host runs on.
  std::shared_ptr<platform::RegularExpressions> (*regularExpressions)();
  bool saves = true;  ///< whether a workbook can be saved and opened again
  /// How far a length that is read back may be off, in points.
  double tolerance = 0.5;
};

}  // namespace mervane::tests
