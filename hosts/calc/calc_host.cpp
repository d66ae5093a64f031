#include "hosts/calc/calc_host.h"

#include "hosts/calc/book_facts.h"
#include "hosts/calc/calc_cells.h"
#include "hosts/calc/objects/application_object.h"
#include "hosts/calc/session.h"

namespace mervane::calc {

CalcHost::CalcHost(const uno::Reference<uno::XComponentContext>& context,
                   const uno::Reference<css::frame::XModel>& document)
    : session_(inOffice("open the document", [&] { return std::make_shared<Session>(context, document); })),
      application_(makeApplication(session_)) {}

CalcHost::~CalcHost() {
  session_->close();
}

sheet::ObjectRef CalcHost::application() const {
  return application_;
}

std::unique_ptr<guard::BookCells> CalcHost::cells() const {
  return std::make_unique<CalcCells>(session_);
}

std::unique_ptr<guard::BookFacts> CalcHost::facts() const {
  return std::make_unique<CalcFacts>(session_);
}

void CalcHost::flush() {
  session_->flush();
}

}  // namespace mervane::calc
