#pragma once

#include <functional>
#include <memory>
#include <string>

#include "mervane/classifier3.h"

/// The composition for programs that cluster arrays of their own: a Classifier3 with the built-in network, ready to
/// use, without a window and without a spreadsheet.
///
/// The first call on a thread gives the thread services where it has none: the clock, English texts, and no options
/// dialog, so that ShowMainForm and the reference texts raise. A program that is itself a spreadsheet host sets the
/// services of its machine before, by `globals::platform`.
namespace mervane {

/// Makes the network object; called once, while the classifier is made.
using EngineFactory = std::function<std::shared_ptr<NetworkEngine>()>;

/// A new classifier with the built-in network. The last pointer to go calls UnloadfrmMain, so nothing is left behind;
/// a NextEpoch sink must not hold such a pointer itself. Use and drop it on the thread that made it.
[[nodiscard]] std::shared_ptr<Classifier3> createClassifier();
/// The same with a network of the program's own.
/// @param createEngine must be callable and return an object, otherwise its failure is reported and Run fails.
[[nodiscard]] std::shared_ptr<Classifier3> createClassifier(EngineFactory createEngine);

/// What becomes of the statement that failed: its procedure ends as if normally, it runs once more, or the next one
/// follows.
enum class FailureAnswer { abort, retry, ignore };
/// @param report when, what and where it failed, with the procedures that were running; lines end in CR LF.
using FailureReader = std::function<FailureAnswer(const std::string& report)>;

/// Who reads this thread's failure reports from now on. Run raises nothing, so this is where a program learns that
/// it gave up. An empty reader brings back the first one: reports go to standard error and are answered by abort.
/// The reader must not throw. Without effect on a thread whose services the program has set itself.
void readFailures(FailureReader reader);

}  // namespace mervane
