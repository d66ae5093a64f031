#pragma once

#include <memory>

#include "guard/facts.h"
#include "hosts/calc/session.h"

namespace mervane::calc {

[[nodiscard]] std::vector<guard::PivotTable> pivotTablesOf(const Session& session, std::int32_t sheet);

/// What stands in the sheets of a document, asked of the office.
class CalcFacts final : public guard::BookFacts {
 public:
  explicit CalcFacts(std::shared_ptr<Session> session) : session_(std::move(session)) {}

  [[nodiscard]] guard::SheetFacts sheetFacts(std::string_view sheet) override;
  [[nodiscard]] guard::AreaFacts areaFacts(std::string_view sheet, const CellArea& area) override;
  [[nodiscard]] guard::SortingFacts sortingFacts(std::string_view sheet, const CellArea& rows) override;

 private:
  [[nodiscard]] std::int32_t position(std::string_view sheet) const;

  std::shared_ptr<Session> session_;
};

}  // namespace mervane::calc
