#include "calc/undo_step.h"

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/document/XUndoAction.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <cppuhelper/implbase1.hxx>
#include <functional>
#include <utility>

#include "calc/border.h"
#include "calc/sheet_memory.h"
#include "calc/texts.h"
#include "calc/window/message.h"

namespace mervane::addin {

namespace {

using Document = uno::Reference<star::frame::XModel>;

/// The office forgets all its steps by this. Locking its undo manager would not do: the first change ends such a lock.
void recordChanges(const Document& document, bool on) {
  set(uno::Reference<star::beans::XPropertySet>(document, uno::UNO_QUERY_THROW), "IsUndoEnabled", uno::Any(on));
}

using Memory = std::shared_ptr<const SheetMemory>;

uno::Reference<star::document::XUndoManager> managerOf(const Document& document) {
  const uno::Reference<star::document::XUndoManagerSupplier> supplier(document, uno::UNO_QUERY_THROW);
  return {supplier->getUndoManager(), uno::UNO_SET_THROW};
}

/// The line above the sheet goes on showing what the cell held before, until another cell has been selected.
void showCurrentCell(const Document& document) {
  const uno::Reference<star::view::XSelectionSupplier> view(document->getCurrentController(), uno::UNO_QUERY);
  if (!view.is()) return;
  const uno::Any selected = view->getSelection();
  const uno::Reference<star::sheet::XSheetCellRange> cells(selected, uno::UNO_QUERY);
  const uno::Reference<star::sheet::XCellRangeAddressable> place(selected, uno::UNO_QUERY);
  if (!cells.is() || !place.is()) return;
  const auto at = place->getRangeAddress();
  const sal_Int32 beside = at.StartColumn > 0 ? at.StartColumn - 1 : at.EndColumn + 1;
  view->select(uno::Any(cells->getSpreadsheet()->getCellRangeByPosition(beside, at.StartRow, beside, at.StartRow)));
  view->select(selected);
}

/// One step, done or undone. The office keeps it in its list.
class Step final : public cppu::WeakImplHelper1<star::document::XUndoAction> {
 public:
  Step(const Office& office, Document document, std::shared_ptr<const SheetMemory> before, rtl::OUString title)
      : office_(office), document_(std::move(document)), before_(std::move(before)), title_(std::move(title)) {}
  /// The same as it stands behind an undo.
  Step(const Step& done, Memory after)
      : office_(done.office_),
        document_(done.document_),
        before_(done.before_),
        after_(std::move(after)),
        title_(done.title_) {}

  rtl::OUString SAL_CALL getTitle() override { return title_; }
  void SAL_CALL undo() override {
    // The office lets a step come behind an undo only by undoing it.
    if (after_) return;
    later([](const Step& step) { step.putBefore(); });
  }
  void SAL_CALL redo() override {
    later([](const Step& step) { step.putAfter(); });
  }

 private:
  using Work = std::function<void(const Step&)>;

  /// Work is done when the office is done with its own part of undoing: what is changed within that part is recorded as
  /// a new step, which destroys the one that is being undone.
  class Call final : public cppu::WeakImplHelper1<awt::XCallback> {
   public:
    Call(const rtl::Reference<Step>& step, Work work) : step_(step), work_(std::move(work)) {}
    void SAL_CALL notify(const uno::Any&) override {
      atBorder([&] { work_(*step_); });
    }

   private:
    rtl::Reference<Step> step_;
    Work work_;
  };
  void later(const Work& work) {
    atBorder([&] {
      const rtl::Reference<Call> call(new Call(this, work));
      awt::AsyncCallback::create(office_.context)->addCallback(call.get(), {});
    });
  }

  void put(const SheetMemory& memory) const {
    bool isWhole = false;
    atBorder([&] { recordChanges(document_, false); });
    atBorder([&] {
      memory.restore();
      isWhole = true;
    });
    atBorder([&] { recordChanges(document_, true); });
    atBorder([&] { showCurrentCell(document_); });
    if (!isWhole) atBorder([&] { tellOfHalf(); });
  }
  void tellOfHalf() const {
    const uno::Reference<star::frame::XController> view(document_->getCurrentController(), uno::UNO_SET_THROW);
    const uno::Reference<star::frame::XFrame> frame(view->getFrame(), uno::UNO_SET_THROW);
    const uno::Reference<awt::XWindow2> window(frame->getContainerWindow(), uno::UNO_QUERY_THROW);
    // Nobody would find the message of a document that is not shown.
    if (!window->isVisible()) return;
    const uno::Reference<awt::XWindowPeer> parent(window, uno::UNO_QUERY_THROW);
    showMessage(office_, parent, awt::MessageBoxType_ERRORBOX, said(text::undoneByHalf));
  }
  void putBefore() const {
    Memory after;
    atBorder([&] { after = before_->ofNow(); });
    put(*before_);
    if (!after) return;
    const auto manager = managerOf(document_);
    manager->addUndoAction(new Step(*this, after));
    manager->undo();
  }
  void putAfter() const {
    put(*after_);
    managerOf(document_)->addUndoAction(new Step(office_, document_, before_, title_));
  }

  Office office_;
  Document document_;
  Memory before_;
  /// Of a step that stands behind an undo.
  Memory after_;
  rtl::OUString title_;
};

}  // namespace

UndoStep::UndoStep(const Office& office, const Document& document,
                   const std::vector<star::table::CellRangeAddress>& written, const char* title)
    : office_(office), document_(document), title_(rtl::OUString::createFromAscii(title)) {
  before_ = std::make_shared<SheetMemory>(office, document, written);
  recordChanges(document_, false);
}

UndoStep::~UndoStep() {
  atBorder([&] { recordChanges(document_, true); });
  atBorder([&] { managerOf(document_)->addUndoAction(new Step(office_, document_, before_, title_)); });
}

void UndoStep::mayHaveSorted(const star::table::CellRangeAddress& cells, const std::vector<std::int32_t>& keys) {
  before_->mayHaveBeenSorted(cells, keys);
}

}  // namespace mervane::addin
