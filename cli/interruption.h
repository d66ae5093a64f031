#pragma once

#include <string>

/// Ctrl-C and the other ways in which the program is asked to end.
///
/// Until `beginLearning` an interruption ends the program at once with the status 130. After it the first one is only
/// noted, for the training to be stopped and the results to be written; a second one ends the program with the status
/// 130, and so does any while the user is asked a question. Either way an unfinished output file is removed first. One
/// process has one state.
namespace mervane::cli::interruption {

/// Takes over the signals. A signal that the program was started with as ignored stays ignored.
void watch();
void beginLearning();
/// Whether an interruption has been noted since `beginLearning`.
[[nodiscard]] bool requested() noexcept;

/// The user is asked something as long as this lives.
class Question {
 public:
  Question() noexcept;
  ~Question();
  Question(const Question&) = delete;
  Question& operator=(const Question&) = delete;
};

/// Counts an interruption, for the handlers of the machine. False where the program is to end at once.
[[nodiscard]] bool note() noexcept;

/// The unfinished file to remove when the program is ended; only one at a time.
void guardFile(const std::string& path);
void releaseFile() noexcept;

/// The reader of standard output has gone: ends the program as such programs end, without a word.
[[noreturn]] void endByBrokenPipe();

}  // namespace mervane::cli::interruption
