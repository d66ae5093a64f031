#pragma once

#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XRangeSelection.hpp>
#include <com/sun/star/sheet/XRangeSelectionListener.hpp>
#include <com/sun/star/util/XCloseListener.hpp>
#include <cppuhelper/implbase3.hxx>
#include <functional>
#include <memory>
#include <rtl/ref.hxx>
#include <string>

#include "calc/office.h"
#include "calc/office_services.h"
#include "calc/silent_run.h"
#include "platform/option_item.h"

namespace mervane {
class Classifier3;
namespace calc {
class CalcHost;
}
}  // namespace mervane

namespace mervane::addin {

class PickKeys;
class RunWatch;

/// What a clustering is asked to do.
struct Request {
  /// Options by their keys in the dialog, in any case, with numbers or the texts that a user would type; for a check
  /// box or a radio item true or false.
  EnteredOptions options;
  /// Nobody is asked and nothing is shown: the options are entered, "Clusterize" is pressed, and the first failure
  /// ends the run.
  bool silent = false;
  /// A silent run's options are remembered for the next dialog.
  bool remembers = false;
  /// A silent run may remove and overwrite what stands on the sheets.
  bool overwrites = false;
};

/// How it ended.
struct Outcome {
  bool done = false;
  /// What was refused, or empty.
  std::string message;
};

/// One clustering in one document, from the menu entry to the results: the host's loop around the component's dialog.
///
/// While the user picks a range on the sheet the session waits for the office to call it back, so nothing of ours is
/// on the stack then. One session is on at a time in the whole office. It belongs to the office's main thread.
class ClusterizeSession final
    : public cppu::WeakImplHelper3<star::sheet::XRangeSelectionListener, star::util::XCloseListener, awt::XCallback> {
 public:
  using Finished = std::function<void(const Outcome&)>;

  /// Begins; `finished` is called once, before or after this returns.
  static void start(const Office& office, const uno::Reference<star::frame::XFrame>& frame, const Request& request,
                    Finished finished);

  void SAL_CALL done(const star::sheet::RangeSelectionEvent& event) override;
  void SAL_CALL aborted(const star::sheet::RangeSelectionEvent& event) override;
  void SAL_CALL queryClosing(const star::lang::EventObject& source, sal_Bool getsOwnership) override;
  void SAL_CALL notifyClosing(const star::lang::EventObject& source) override;
  void SAL_CALL notify(const uno::Any& data) override;
  void SAL_CALL disposing(const star::lang::EventObject& source) override;

 private:
  ClusterizeSession(const Office& office, const uno::Reference<star::frame::XFrame>& frame, const Request& request,
                    Finished finished);
  ~ClusterizeSession() override;

  void guarded(const std::function<void()>& work);
  void tell(const std::string& text);
  [[nodiscard]] OfficeDesk desk();
  void open();
  void propose();
  [[nodiscard]] bool mayRun(const platform::OptionItems& options);
  [[nodiscard]] sal_Int16 ask(const std::string& text, sal_Int32 buttons);
  void show(const std::string& sheet);
  [[nodiscard]] std::string why(const std::string& message) const;
  void showUntilPick();
  [[nodiscard]] std::string showOnce();
  void beginPick(const std::string& what);
  void take(bool inputs, const std::string& picked);
  void comeToFront();
  void pickedByKeys(const uno::Any& range);
  void endPick();
  void later(const uno::Any& data);
  void finish(const Outcome& outcome);

  Office office_;
  uno::Reference<star::frame::XFrame> frame_;
  uno::Reference<star::frame::XModel> document_;
  Request request_;
  Finished finished_;
  std::shared_ptr<DialogCloser> closer_;
  std::shared_ptr<platform::Services> services_;
  std::unique_ptr<calc::CalcHost> host_;
  std::shared_ptr<Classifier3> classifier_;
  std::unique_ptr<RunWatch> watch_;
  uno::Reference<star::sheet::XRangeSelection> picker_;
  std::unique_ptr<PickKeys> pickKeys_;
  /// "INPUTS" or "OUTPUTS" while the user picks.
  std::string picking_;
  /// The range that has just been picked is one of another document.
  bool pickedElsewhere_ = false;
  /// What a silent run was told.
  std::string report_;
  bool hasRun_ = false;
};

}  // namespace mervane::addin
