#include "platform/posix/desktop_mail.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <time.h>  // NOLINT(modernize-deprecated-headers): nanosleep is POSIX.

#include <sstream>

#include "mervane/failure.h"
#include "tests/platform_posix/temporary_folder.h"

namespace mervane::tests {

/// The desktop's opener is a script that notes its arguments, each on a line of its own.
class DesktopMail : public testing::Test {
 protected:
  DesktopMail() {
    TemporaryFolder::write(program, "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" > '" + notes + ".part'\nmv '" + notes +
                                        ".part' '" + notes + "'\n");
    chmod(program.c_str(), 0700);
  }

  /// What the script noted; it runs on its own, so it is waited for.
  std::string noted() const {
    for (int i = 0; i < 1000 && !std::filesystem::exists(notes); ++i) {
      const timespec pause{0, 10'000'000};
      nanosleep(&pause, nullptr);
    }
    return TemporaryFolder::contentOf(notes);
  }

  TemporaryFolder folder;
  std::string program = folder.file("opener");
  std::string notes = folder.file("notes");
};

TEST_F(DesktopMail, TheUrlReachesTheProgramAsOneArgumentThatNoShellHasSeen) {
  const std::string url = "mailto:a@b?subject=An error occurred in X&body=%0A$(touch " + folder.file("touched") +
                          ") `id` ; \"quoted\" 'quoted' *";
  posix::DesktopMail(program).open(url);
  EXPECT_EQ(noted(), "1\n" + url + "\n");
  EXPECT_FALSE(std::filesystem::exists(folder.file("touched")));
}

TEST_F(DesktopMail, AProgramThatIsNotThereIsAFailure) {
  try {
    posix::DesktopMail(folder.file("missing")).open("mailto:a@b");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_NE(failure.description().find("missing"), std::string::npos);
  }
}

TEST_F(DesktopMail, AnOverlongUrlIsAFailure) {
  EXPECT_THROW(posix::DesktopMail(program).open("mailto:a@b?body=" + std::string(10'000'000, 'x')), Failure);
}

TEST_F(DesktopMail, OpeningDoesNotWaitForTheProgramToEnd) {
  TemporaryFolder::write(program, "#!/bin/sh\nsleep 30\n");
  const auto begin = time(nullptr);
  posix::DesktopMail(program).open("mailto:a@b");
  EXPECT_LT(time(nullptr) - begin, 20);
}

}  // namespace mervane::tests
