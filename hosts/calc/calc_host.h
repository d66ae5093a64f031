#pragma once

#include <memory>

#include "spreadsheet/object.h"

namespace com::sun::star {
namespace uno {
class XComponentContext;
template <class interface_type>
class Reference;
}  // namespace uno
namespace frame {
class XModel;
}
}  // namespace com::sun::star

namespace mervane::guard {
class BookCells;
class BookFacts;
}  // namespace mervane::guard

namespace mervane::calc {

class Session;

/// LibreOffice Calc as a spreadsheet, by its own interfaces, in the office's process or over a connection to it.
///
/// One document is the active workbook; other open documents are not touched. Objects that were handed out stay
/// safe after the host, or the document, is gone: they raise then. All failures are raised as Failure; no exception
/// of the office comes through. One thread at a time may use it.
class CalcHost {
 public:
  /// @param context the component context of the office: the own one in process, the remote one over a connection
  /// @param document the spreadsheet document to work in; anything else raises
  CalcHost(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
           const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& document);
  CalcHost(const CalcHost&) = delete;
  CalcHost& operator=(const CalcHost&) = delete;
  /// Writes what is still waiting, without a word if that fails, and lets the office show changes again.
  ~CalcHost();

  /// The Application object of the object model.
  [[nodiscard]] sheet::ObjectRef application() const;

  /// The document's sheets, to look at; what waits is written first where it matters.
  [[nodiscard]] std::unique_ptr<guard::BookCells> cells() const;
  /// What stands in the sheets, for the rules of what a run may harm.
  [[nodiscard]] std::unique_ptr<guard::BookFacts> facts() const;

  /// Brings every waiting write into the document; raises what the office refused. To be called before anybody else
  /// looks at the document: before it is stored, and when the host's control goes back to the user.
  void flush();

 private:
  std::shared_ptr<Session> session_;
  sheet::ObjectRef application_;
};

}  // namespace mervane::calc
