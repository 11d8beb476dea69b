// In which order the real files reach the disk. No later look at a file can tell whether it was
// flushed, so the system's own functions are watched: the linker leads the calls here first.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include "base/files_win.h"
#include "contract/real_program_win.h"

extern "C" {
extern decltype(&FlushFileBuffers) __real___imp_FlushFileBuffers;
extern decltype(&MoveFileExA) __real___imp_MoveFileExA;
extern decltype(&FlushFileBuffers) __wrap___imp_FlushFileBuffers;
extern decltype(&MoveFileExA) __wrap___imp_MoveFileExA;
}

namespace {

std::vector<std::string>& Calls() {
  static std::vector<std::string> calls;
  return calls;
}

BOOL WINAPI WatchedFlush(HANDLE file) {
  LARGE_INTEGER size{};
  GetFileSizeEx(file, &size);
  Calls().push_back("flush " + std::to_string(size.QuadPart));
  return __real___imp_FlushFileBuffers(file);
}

BOOL WINAPI WatchedMove(LPCSTR from, LPCSTR to, DWORD flags) {
  Calls().push_back((flags & MOVEFILE_REPLACE_EXISTING) != 0 ? "move over" : "move");
  return __real___imp_MoveFileExA(from, to, flags);
}

}  // namespace

decltype(&FlushFileBuffers) __wrap___imp_FlushFileBuffers = &WatchedFlush;
decltype(&MoveFileExA) __wrap___imp_MoveFileExA = &WatchedMove;

namespace corvane::contract {
namespace {

TEST(FilesWin, ContentIsWholeAndFlushedBeforeItReplacesTheOld) {
  const TemporaryFolder folder;
  FilesWin files;
  const std::string path = folder.path() + "\\a.txt";
  Calls().clear();
  ASSERT_EQ(ReplaceContent(files, path, std::string(70'000, 'x')), kFileOk);
  EXPECT_EQ(Calls(), (std::vector<std::string>{"flush 70000", "move over"}));
  std::string content;
  EXPECT_EQ(files.ReadAll(path, content), kFileOk);
  EXPECT_EQ(content.size(), 70'000U);
}

}  // namespace
}  // namespace corvane::contract
