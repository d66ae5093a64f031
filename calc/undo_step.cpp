#include "calc/undo_step.h"

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/document/XUndoAction.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

#include "calc/border.h"
#include "calc/sheet_memory.h"

namespace mervane::addin {

namespace {

using Document = uno::Reference<star::frame::XModel>;

/// The office forgets all its steps by this. Locking its undo manager would not do: the first change ends such a lock.
void recordChanges(const Document& document, bool on) {
  set(uno::Reference<star::beans::XPropertySet>(document, uno::UNO_QUERY_THROW), "IsUndoEnabled", uno::Any(on));
}

/// Puts a document back as it was, when the office is done with its own part of undoing: what is changed within that
/// part is recorded as a new step, which destroys the one that is being undone.
class PuttingBack final : public cppu::WeakImplHelper1<awt::XCallback> {
 public:
  PuttingBack(Document document, std::shared_ptr<const SheetMemory> before)
      : document_(std::move(document)), before_(std::move(before)) {}
  void SAL_CALL notify(const uno::Any&) override {
    atBorder([&] { recordChanges(document_, false); });
    atBorder([&] { before_->restore(); });
    atBorder([&] { recordChanges(document_, true); });
  }

 private:
  Document document_;
  std::shared_ptr<const SheetMemory> before_;
};

/// The office keeps this in its list.
class Step final : public cppu::WeakImplHelper1<star::document::XUndoAction> {
 public:
  Step(uno::Reference<uno::XComponentContext> context, Document document, std::shared_ptr<const SheetMemory> before,
       rtl::OUString title)
      : context_(std::move(context)),
        document_(std::move(document)),
        before_(std::move(before)),
        title_(std::move(title)) {}

  rtl::OUString SAL_CALL getTitle() override { return title_; }
  void SAL_CALL undo() override {
    atBorder([&] { awt::AsyncCallback::create(context_)->addCallback(new PuttingBack(document_, before_), {}); });
  }
  /// Not reached: nothing is left in the office's list behind an undo.
  void SAL_CALL redo() override {}

 private:
  uno::Reference<uno::XComponentContext> context_;
  Document document_;
  std::shared_ptr<const SheetMemory> before_;
  rtl::OUString title_;
};

}  // namespace

UndoStep::UndoStep(const Office& office, const Document& document,
                   const std::vector<star::table::CellRangeAddress>& written, const char* title)
    : office_(office), document_(document), title_(rtl::OUString::createFromAscii(title)) {
  before_ = std::make_shared<SheetMemory>(document, written);
  recordChanges(document_, false);
}

UndoStep::~UndoStep() {
  atBorder([&] { recordChanges(document_, true); });
  atBorder([&] {
    const uno::Reference<star::document::XUndoManagerSupplier> supplier(document_, uno::UNO_QUERY_THROW);
    const uno::Reference<star::document::XUndoManager> manager(supplier->getUndoManager(), uno::UNO_SET_THROW);
    manager->addUndoAction(new Step(office_.context, document_, before_, title_));
  });
}

}  // namespace mervane::addin
