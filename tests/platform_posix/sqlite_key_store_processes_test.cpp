#include <time.h>  // NOLINT(modernize-deprecated-headers): nanosleep is POSIX.

#include "tests/platform_posix/child_process.h"
#include "tests/platform_posix/sqlite_key_store_fixture.h"

namespace mervane::tests {

/// One store used by several processes at once.
using StoreProcesses = StoreTest;

TEST_F(StoreProcesses, TwoWritersLoseNothingOfEachOther) {
  constexpr int count = 15;
  const auto writer = [&](const std::string& name) {
    return [this, name] {
      auto store = openStore(std::chrono::seconds(60));
      for (int i = 0; i < count; ++i) {
        const std::string own = name + std::to_string(i);
        if (setText(*store, R"(Software\Tarvik)", own, own) != Store::success) return 1;
        if (setText(*store, R"(Software\Tarvik)", "shared", own) != Store::success) return 2;
      }
      return troubles.empty() ? 0 : 3;
    };
  };
  // Both begin without a file, so they make it at the same time as well.
  ChildProcess first(writer("first"));
  ChildProcess second(writer("second"));
  EXPECT_EQ(first.wait(), 0);
  EXPECT_EQ(second.wait(), 0);
  auto store = openStore();
  for (int i = 0; i < count; ++i) {
    for (const char* name : {"first", "second"}) {
      const std::string own = name + std::to_string(i);
      EXPECT_EQ(text(*store, R"(Software\Tarvik)", own), own);
    }
  }
  const auto last = text(*store, R"(Software\Tarvik)", "shared");
  EXPECT_TRUE(last == "first14" || last == "second14") << last.value_or("none");
}

TEST_F(StoreProcesses, AReaderSeesWholeValuesWhileAnotherProcessWrites) {
  ASSERT_EQ(setText(*openStore(), "Software", "value", std::string(3000, 'a')), Store::success);
  ChildProcess writer([this] {
    auto store = openStore(std::chrono::seconds(60));
    for (int i = 0; i < 40; ++i) {
      const char letter = i % 2 == 0 ? 'b' : 'a';
      if (setText(*store, "Software", "value", std::string(3000, letter)) != Store::success) return 1;
    }
    return 0;
  });
  auto store = openStore(std::chrono::seconds(60));
  for (int i = 0; i < 200; ++i) {
    const std::string seen = text(*store, "Software", "value").value();
    ASSERT_EQ(seen.size(), 3000U);
    EXPECT_EQ(seen.find_first_not_of(seen[0]), std::string::npos);
  }
  EXPECT_EQ(writer.wait(), 0);
}

TEST_F(StoreProcesses, AWriterThatIsKilledLeavesAStoreThatWorks) {
  ASSERT_EQ(setText(*openStore(), "Software", "kept", "for ever"), Store::success);
  for (long pause = 1; pause <= 20; ++pause) {
    ChildProcess writer([this] {
      auto store = openStore(std::chrono::seconds(60));
      for (int i = 0;; ++i) {
        if (setText(*store, "Software", "count", std::to_string(i) + std::string(3000, '.')) != Store::success)
          return 1;
      }
    });
    const timespec moment{0, pause * 700000L};
    nanosleep(&moment, nullptr);
    writer.killNow();
    EXPECT_EQ(writer.wait(), -SIGKILL);
    auto store = openStore();
    EXPECT_EQ(text(*store, "Software", "kept"), "for ever");
    const auto count = text(*store, "Software", "count");
    if (count) {
      EXPECT_EQ(count->find_first_of('.') + 3000, count->size());
    }
    EXPECT_EQ(setText(*store, "Software", "after", std::to_string(pause)), Store::success);
  }
  EXPECT_TRUE(troubles.empty());
}

TEST_F(StoreProcesses, AnotherProcessSeesAValueAtOnce) {
  auto store = openStore();
  ASSERT_EQ(setText(*store, "Software", "a", "mine"), Store::success);
  ChildProcess other([this] {
    auto own = openStore();
    if (text(*own, "Software", "a") != "mine") return 1;
    return setText(*own, "Software", "a", "theirs") == Store::success ? 0 : 2;
  });
  EXPECT_EQ(other.wait(), 0);
  EXPECT_EQ(text(*store, "Software", "a"), "theirs");
}

}  // namespace mervane::tests
