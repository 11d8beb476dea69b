// Folders with names that the code page does not hold, with "+" and of great length: the short form
// of their paths leads to the same files.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>

#include "app/program_folder_win.h"
#include "base/files_win.h"
#include "contract/real_program_win.h"

namespace corvane::contract {
namespace {

std::wstring Widened(const std::string& text) {
  return {text.begin(), text.end()};
}

class ProgramFolderWin : public ::testing::Test {
 protected:
  // A folder of that name, and a file in it.
  std::wstring Make(const std::wstring& name) {
    const std::wstring folder = Widened(folder_.path()) + L"\\" + name;
    EXPECT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    const HANDLE file = CreateFileW((folder + L"\\a.txt").c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_NEW, 0, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
    return folder;
  }
  void ExpectUsable(const std::wstring& folder) {
    const FolderForms forms = FormsOf(folder);
    const ProgramFolder chosen = ChooseFolder(forms);
    // Short names can be switched off for a volume.
    if (!forms.short_form || forms.short_form == forms.plain) {
      EXPECT_NE(chosen.problem, "");
      return;
    }
    EXPECT_EQ(chosen.problem, "");
    EXPECT_TRUE(FilesWin().Exists(chosen.path + "\\a.txt")) << chosen.path;
    EXPECT_EQ(WritingProblem(files_, chosen.path), "");
  }
  TemporaryFolder folder_;
  FilesWin files_;
};

TEST_F(ProgramFolderWin, LettersOutsideTheCodePageAreReachedByTheShortForm) {
  const std::wstring folder = Make(L"Funk \x4E2D\x0561");
  EXPECT_EQ(FormsOf(folder).plain, std::nullopt);
  ExpectUsable(folder);
}

TEST_F(ProgramFolderWin, APlusIsReachedByTheShortForm) {
  const std::wstring folder = Make(L"C++ and radio");
  EXPECT_EQ(FormsOf(folder).plain, folder_.path() + "\\C++ and radio");
  ExpectUsable(folder);
}

TEST_F(ProgramFolderWin, ALongNameIsReachedByTheShortForm) {
  ExpectUsable(Make(std::wstring(120, L'a')));
}

TEST_F(ProgramFolderWin, APlainPathIsTakenAsItStands) {
  EXPECT_EQ(ChooseFolder(FormsOf(Widened(folder_.path()))).path, folder_.path());
}

TEST_F(ProgramFolderWin, TheFolderOfThisProgramIsKnown) {
  const FolderForms forms = FormsOf(FolderOfProgram());
  ASSERT_TRUE(forms.plain || forms.short_form);
  EXPECT_TRUE(FilesWin().IsDirectory(forms.plain ? *forms.plain : *forms.short_form));
}

}  // namespace
}  // namespace corvane::contract
