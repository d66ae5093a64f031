#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <filesystem>
#include <memory>
#include <string>

#include "hosts/calc/office_call.h"

namespace mervane::calc {

class OfficeProcess;

/// A LibreOffice of one's own without windows, with a profile of its own, reached over a pipe. It ends with the object,
/// and also when this program ends in whatever way.
class Office {
 public:
  /// Starts it, which takes a few seconds. Raises where there is none or it does not answer.
  Office();
  Office(const Office&) = delete;
  Office& operator=(const Office&) = delete;
  ~Office();

  /// Whether there is a LibreOffice to start.
  [[nodiscard]] static bool isInstalled();

  [[nodiscard]] const uno::Reference<uno::XComponentContext>& context() const { return context_; }
  /// A folder for files that go with the office.
  [[nodiscard]] const std::filesystem::path& folder() const;
  /// A new spreadsheet with one sheet, "Sheet1".
  [[nodiscard]] uno::Reference<css::frame::XModel> create();
  /// Macros are not run and links not followed. Raises where the file is missing or no spreadsheet.
  [[nodiscard]] uno::Reference<css::frame::XModel> open(const std::filesystem::path& path);
  /// Writes the document in the format that the name ends in; the document stays the file that it is.
  static void store(const uno::Reference<css::frame::XModel>& document, const std::filesystem::path& path);
  static void close(const uno::Reference<css::frame::XModel>& document) noexcept;
  /// Whether `store` knows a format for the name, such as .ods, .xlsx or .xls.
  [[nodiscard]] static bool canStore(const std::filesystem::path& path);
  /// The endings that it knows, for people: ".fods, .ods, .xls, .xlsm and .xlsx".
  [[nodiscard]] static std::string storedEndings();

 private:
  [[nodiscard]] uno::Reference<css::frame::XModel> load(const rtl::OUString& url, const std::string& name);
  [[nodiscard]] uno::Reference<css::frame::XModel> load(const rtl::OUString& url, const std::string& name,
                                                        bool asTemplate);
  void connect(const std::string& pipe);

  std::unique_ptr<OfficeProcess> process_;
  uno::Reference<uno::XComponentContext> local_;
  uno::Reference<uno::XComponentContext> context_;
};

}  // namespace mervane::calc
