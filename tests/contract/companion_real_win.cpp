// What the companion asks of Windows: files that it reads and that stay everybody's, one that it
// keeps for itself, and notices beside the clock.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>

#include "archive/shared_file.h"
#include "base/files_win.h"
#include "contract/real_program_win.h"
#include "tools/system.h"
#include "tools/watch/notifier.h"

namespace corvane::contract {
namespace {

using tools::SharedFile;

TEST(SharedFileWin, WhatIsReadIsAppendedToRenamedAndDeleted) {
  const TemporaryFolder folder;
  FilesWin files;
  const std::string path = folder.path() + "\\a.txt";
  const std::string other = folder.path() + "\\b.txt";
  ASSERT_EQ(files.WriteAll(path, "one"), kFileOk);
  SharedFile reader;
  ASSERT_TRUE(reader.Open(path));
  EXPECT_EQ(files.Append(path, " two"), kFileOk);
  std::string text(7, ' ');
  EXPECT_EQ(reader.Read(text.data(), text.size()), 7U);
  EXPECT_EQ(text, "one two");
  EXPECT_EQ(files.Rename(path, other), kFileOk);
  // Not every system replaces a file that anybody has open, shared or not: the program tries again
  // for a quarter of a second, and whoever reads a list is done with it in less.
  reader.Close();
  EXPECT_EQ(ReplaceContent(files, other, "three"), kFileOk);
  SharedFile second;
  ASSERT_TRUE(second.Open(other));
  EXPECT_EQ(files.Delete(other), kFileOk);
}

// Who does not share stands in the way: the case above would notice.
TEST(SharedFileWin, AReaderThatDoesNotShareWouldBeInTheWay) {
  const TemporaryFolder folder;
  FilesWin files;
  const std::string path = folder.path() + "\\a.txt";
  ASSERT_EQ(files.WriteAll(path, "one"), kFileOk);
  const HANDLE held = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_NE(files.Append(path, " two"), kFileOk);
  EXPECT_NE(files.Rename(path, folder.path() + "\\b.txt"), kFileOk);
  EXPECT_NE(files.Delete(path), kFileOk);
  CloseHandle(held);
}

TEST(FileClaimWin, OneHasItAtATimeAndEveryoneMayWrite) {
  const TemporaryFolder folder;
  FilesWin files;
  const std::string path = folder.path() + "\\shared.txt";
  auto first = tools::FileClaim::Take(path);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(tools::FileClaim::Take(path), nullptr);
  EXPECT_EQ(files.Append(path, "done"), kFileOk);
  std::string content;
  EXPECT_EQ(files.ReadAll(path, content), kFileOk);
  EXPECT_EQ(content, "done");
  first.reset();
  EXPECT_NE(tools::FileClaim::Take(path), nullptr);
}

TEST(NotifierWin, TheSystemTakesNoticesOneAfterTheOther) {
  const auto notifier = tools::SystemNotifier();
  ASSERT_NE(notifier, nullptr);
  EXPECT_TRUE(notifier->Show("deaf: nothing was received for 60 s"));
  notifier->Attend();
  EXPECT_TRUE(notifier->Show("something is received again"));
  EXPECT_TRUE(notifier->Show(std::string(1000, 'x'))) << "longer than there is room for";
  notifier->Attend();
}

}  // namespace
}  // namespace corvane::contract
