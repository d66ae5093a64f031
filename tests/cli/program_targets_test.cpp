// What a run does to the file that it replaces, and to those beside it.

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "hosts/workbook/workbook_host.h"
#include "tests/cli/made_book.h"
#include "tests/cli/program_run.h"

namespace mervane::cli {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr const char* officeLock = "Anna,anna,desk,22.11.2026 10:00,file:///home/anna;";

class ProgramTargets : public testing::Test {
 protected:
  ProgramTargets() { MadeBook{{{"1.5", "1"}, {"9", "9"}, {"1", "1.25"}, {"9.5", "9"}}, {}}.write(book); }

  [[nodiscard]] std::vector<std::string> command(const std::vector<std::string>& more) const {
    std::vector<std::string> all{"cluster", book, "--inputs", "Data!A1:B4", "--outputs",
                                 "Data!F2", "-k", "2",        "--overwrite"};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }
  [[nodiscard]] Outcome cluster(const std::vector<std::string>& more) const { return runProgram(command(more)); }

  /// Runs with a training that lasts, does that meanwhile, and lets the run write.
  [[nodiscard]] Outcome clusterWhile(const std::vector<std::string>& arguments,
                                     const std::function<void()>& meanwhile) {
    Start start;
    start.arguments = arguments;
    start.arguments.insert(start.arguments.end(), {"--epochs", "99998"});
    start.errOnTerminal = true;
    ProgramRun program(start);
    EXPECT_TRUE(program.waitForError("epoch"));
    meanwhile();
    program.send(SIGINT);
    return program.finish();
  }

  TestFolder folder;
  const std::string book = folder.file("book.xlsx");
};

TEST_F(ProgramTargets, EachCopyOfARunInPlaceHasANameOfItsOwn) {
  const std::string first = folder.get("book.xlsx");
  const Outcome once = cluster({"--in-place=.bak"});
  EXPECT_NE(once.err.find("the old file is kept as " + book + ".bak\n"), std::string::npos) << once.err;
  const std::string second = folder.get("book.xlsx");
  ASSERT_NE(second, first);
  const Outcome twice = cluster({"--in-place=.bak"});
  EXPECT_NE(twice.err.find("the old file is kept as " + book + ".bak.2\n"), std::string::npos) << twice.err;
  EXPECT_EQ(cluster({"--in-place=.bak"}).status, 0);
  EXPECT_EQ(folder.entries(), (Names{"book.xlsx", "book.xlsx.bak", "book.xlsx.bak.2", "book.xlsx.bak.3"}));
  EXPECT_EQ(folder.get("book.xlsx.bak"), first);
  EXPECT_EQ(folder.get("book.xlsx.bak.2"), second);
}

TEST_F(ProgramTargets, NobodyMayReadTheCopyWhoMayNotReadTheBook) {
  constexpr auto mine = fs::perms::owner_read | fs::perms::owner_write;
  fs::permissions(book, mine);
  EXPECT_EQ(cluster({"--in-place=.bak"}).status, 0);
  EXPECT_EQ(fs::status(book + ".bak").permissions(), mine);
  EXPECT_EQ(fs::status(book).permissions(), mine);
}

TEST_F(ProgramTargets, WhatAnotherProgramSavedDuringTheRunStays) {
  const Outcome outcome = clusterWhile(command({"--in-place=.bak"}), [&] { folder.put("book.xlsx", "saved by hand"); });
  EXPECT_EQ(outcome.status, 3);
  EXPECT_NE(outcome.err.find("another program has written it since this run began"), std::string::npos) << outcome.err;
  EXPECT_EQ(folder.get("book.xlsx"), "saved by hand");
  EXPECT_EQ(folder.entries(), Names{"book.xlsx"}) << "no copy of a run that changed nothing";
}

TEST_F(ProgramTargets, AnOutputThatCameToBeDuringTheRunStays) {
  const std::string out = folder.file("out.xlsx");
  const Outcome outcome = clusterWhile(command({"-o", out}), [&] { folder.put("out.xlsx", "new"); });
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(folder.get("out.xlsx"), "new");
}

TEST_F(ProgramTargets, OfDataFilesAreWatchedAsWell) {
  folder.put("data.csv", countTo(20));
  const std::string data = folder.file("data.csv");
  const Outcome outcome =
      clusterWhile({"cluster", data, "-k", "2", "-o", data}, [&] { folder.put("data.csv", "saved by hand\n"); });
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(folder.get("data.csv"), "saved by hand\n");
  EXPECT_EQ(folder.entries(), (Names{"book.xlsx", "data.csv"}));
}

TEST_F(ProgramTargets, AnOfficesLockIsRespectedUnlessForced) {
  for (const char* lock : {".~lock.book.xlsx#", "~$book.xlsx"}) {
    const std::string before = folder.get("book.xlsx");
    folder.put(lock, officeLock);
    const Outcome refused = cluster({"--in-place"});
    EXPECT_EQ(refused.status, 3) << lock;
    EXPECT_NE(refused.err.find(lock), std::string::npos) << refused.err;
    EXPECT_NE(refused.err.find("give --force"), std::string::npos) << refused.err;
    EXPECT_EQ(folder.get("book.xlsx"), before);
    EXPECT_EQ(cluster({"--in-place", "--dry-run"}).status, 0) << "nothing is written";
    EXPECT_EQ(cluster({"-o", folder.file("out.xlsx")}).status, 0) << "an open book may be read";
    EXPECT_EQ(cluster({"--in-place", "--force"}).status, 0);
    EXPECT_NE(folder.get("book.xlsx"), before);
    fs::remove(folder.file(lock));
  }
}

TEST_F(ProgramTargets, ALockThatComesDuringTheRunIsRespected) {
  const std::string before = folder.get("book.xlsx");
  const Outcome outcome = clusterWhile(command({"--in-place"}), [&] { folder.put(".~lock.book.xlsx#", officeLock); });
  EXPECT_EQ(outcome.status, 3);
  EXPECT_NE(outcome.err.find("Anna on desk has it open"), std::string::npos) << outcome.err;
  EXPECT_EQ(folder.get("book.xlsx"), before);
}

TEST_F(ProgramTargets, ALockOnADataFileIsRespectedUnlessForced) {
  folder.put("data.csv", countTo(20));
  folder.put(".~lock.data.csv#", officeLock);
  const std::string data = folder.file("data.csv");
  EXPECT_EQ(runProgram({"cluster", data, "-k", "2", "-o", data}).status, 3);
  EXPECT_EQ(folder.get("data.csv"), countTo(20));
  EXPECT_EQ(runProgram({"cluster", data, "-k", "2", "-o", data, "--force"}).status, 0);
  EXPECT_NE(folder.get("data.csv"), countTo(20));
}

}  // namespace
}  // namespace mervane::cli
