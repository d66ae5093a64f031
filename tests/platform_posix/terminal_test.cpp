#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): posix_openpt is POSIX.
#include <unistd.h>

#include <array>
#include <sstream>

#include "platform/posix/no_nt_version.h"
#include "platform/posix/terminal_message_box.h"
#include "platform/posix/terminal_screen.h"

namespace mervane::tests {

using Box = platform::MessageBox;

TEST(TerminalMessageBox, LettersAnswer) {
  struct Row {
    const char* typed;
    Box::Answer answer;
  };
  for (const Row& row : {Row{"a\n", Box::Answer::abort}, Row{"Abort\n", Box::Answer::abort},
                         Row{"R\n", Box::Answer::retry}, Row{"ignore\n", Box::Answer::ignore}}) {
    std::istringstream in(row.typed);
    std::ostringstream out;
    posix::TerminalMessageBox box(&in, out);
    EXPECT_EQ(box.show("text", Box::Buttons::abortRetryIgnore), row.answer) << row.typed;
    EXPECT_EQ(out.str(), "text\n[A]bort, [R]etry, [I]gnore? ");
  }
}

TEST(TerminalMessageBox, AnotherLetterIsAskedAgain) {
  std::istringstream in("x\n\nr\n");
  std::ostringstream out;
  EXPECT_EQ(posix::TerminalMessageBox(&in, out).show("text", Box::Buttons::abortRetryIgnore), Box::Answer::retry);
}

TEST(TerminalMessageBox, TheEndOfTheInputClosesTheBox) {
  std::istringstream in("x\n");
  std::ostringstream out;
  EXPECT_EQ(posix::TerminalMessageBox(&in, out).show("text", Box::Buttons::abortRetryIgnore), Box::Answer::ignore);
}

TEST(TerminalMessageBox, WithoutAnybodyTheTextIsShownAndNothingIsAsked) {
  std::ostringstream out;
  posix::TerminalMessageBox box(nullptr, out);
  EXPECT_EQ(box.show("text", Box::Buttons::abortRetryIgnore), Box::Answer::ignore);
  EXPECT_EQ(box.show("more", Box::Buttons::ok), Box::Answer::ok);
  EXPECT_EQ(out.str(), "text\nmore\n");
}

TEST(TerminalScreen, TheBellRingsOnATerminalAndNowhereElse) {
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_GE(master, 0);
  ASSERT_EQ(grantpt(master), 0);
  ASSERT_EQ(unlockpt(master), 0);
  const int terminal = open(ptsname(master), O_RDWR | O_NOCTTY);
  ASSERT_GE(terminal, 0);
  posix::TerminalScreen(terminal).beep();
  char heard = 0;
  EXPECT_EQ(read(master, &heard, 1), 1);
  EXPECT_EQ(heard, '\a');
  close(terminal);
  close(master);

  std::array<int, 2> pipeEnds{};
  ASSERT_EQ(pipe(pipeEnds.data()), 0);
  posix::TerminalScreen(pipeEnds[1]).beep();
  close(pipeEnds[1]);
  EXPECT_EQ(read(pipeEnds[0], &heard, 1), 0);
  close(pipeEnds[0]);
}

TEST(NoNtVersion, NeitherRecordIsAnswered) {
  posix::NoNtVersion version;
  EXPECT_FALSE(version.platformId(platform::SystemVersion::extendedRecord));
  EXPECT_FALSE(version.platformId(platform::SystemVersion::basicRecord));
}

}  // namespace mervane::tests
