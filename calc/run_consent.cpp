#include "calc/run_consent.h"

#include "calc/texts.h"

namespace mervane::addin {

bool isAgreed(const std::optional<Objections>& objections, const Answering& answering) {
  if (!objections) {
    if (!answering.silent) return answering.ask(said(text::notLookedAt) + "\n\n" + said(text::goOn));
    answering.tell(said(text::notLookedAt));
    return false;
  }
  if (!objections->refusal.empty()) {
    answering.tell(objections->refusal);
    return false;
  }
  if (answering.silent) {
    if (answering.overwrites || objections->question.empty()) return true;
    answering.tell(objections->question.substr(0, objections->question.rfind("\n\n")) + "\n\n" +
                   said(text::giveOverwrite));
    return false;
  }
  const std::string& question = objections->question.empty() ? objections->tornApart : objections->question;
  return question.empty() || answering.ask(question);
}

}  // namespace mervane::addin
