#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "hosts/calc/calc_host.h"
#include "tests/conformance/host_under_test.h"
#include "tests/hosts_calc/shared_office.h"

namespace mervane::tests {

/// The Calc host with a document of made sheets, looked at through the office's own interfaces.
class CalcUnderTest final : public HostUnderTest {
 public:
  /// @param ending of the file that `reopen` saves into
  explicit CalcUnderTest(const std::vector<MadeSheet>& sheets, std::string ending = ".ods");
  /// A document that is open already; it is closed with this object.
  explicit CalcUnderTest(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& document);
  ~CalcUnderTest() override;

  [[nodiscard]] sheet::ObjectRef application() override { return host_->application(); }
  void reopen() override;
  [[nodiscard]] std::string selection() override;
  [[nodiscard]] bool showsDataLabels() override;

  [[nodiscard]] calc::CalcHost& host() { return *host_; }
  [[nodiscard]] const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& document() { return document_; }
  [[nodiscard]] com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet> sheet(std::int32_t position);
  /// Cells of the first sheet, such as "B2:C3", past the host.
  [[nodiscard]] com::sun::star::uno::Reference<com::sun::star::table::XCellRange> cells(const std::string& area);
  void reopenAs(const std::string& ending);

 private:
  com::sun::star::uno::Reference<com::sun::star::frame::XModel> document_;
  std::unique_ptr<calc::CalcHost> host_;
  std::string ending_ = ".ods";
};

[[nodiscard]] const HostKind& calcKind();

}  // namespace mervane::tests
