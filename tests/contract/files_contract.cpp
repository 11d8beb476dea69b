// Files: what each operation leaves behind and which number its failure has.
#include <gtest/gtest.h>

#include <string>

#include "base/patient_files.h"
#include "contract/factories.h"

namespace corvane::contract {
namespace {

class FilesContract : public ::testing::Test {
 protected:
  std::string Read(const std::string& path) {
    std::string content = "not read";
    EXPECT_EQ(files_.ReadAll(path, content), kFileOk) << path;
    return content;
  }
  void Write(const std::string& path, const std::string& content) {
    ASSERT_EQ(files_.WriteAll(path, content), kFileOk) << path;
  }

  std::unique_ptr<FilesUnderTest> world_ = MakeFiles();
  Files& files_ = world_->files();
  const std::string folder_ = world_->folder();
  const std::string a_ = folder_ + "\\a.txt";
  const std::string b_ = folder_ + "\\b.txt";
  const std::string missing_ = folder_ + "\\missing.txt";
  const std::string nowhere_ = folder_ + "\\no folder\\a.txt";
};

TEST_F(FilesContract, WritesAndReadsEveryByte) {
  std::string bytes;
  for (int i = 0; i < 70'000; ++i) bytes += static_cast<char>(i * 31 + i / 256);
  bytes += std::string("\r\n\n\r\0\x1A end", 10);
  Write(a_, bytes);
  EXPECT_EQ(Read(a_), bytes);
  Write(a_, "shorter");
  EXPECT_EQ(Read(a_), "shorter");
  Write(a_, "");
  EXPECT_EQ(Read(a_), "");
}

TEST_F(FilesContract, ReadingLeavesTheContentAloneWhenItFails) {
  std::string content = "before";
  EXPECT_EQ(files_.ReadAll(missing_, content), kFileNotFound);
  EXPECT_EQ(files_.ReadAll(nowhere_, content), kPathNotFound);
  EXPECT_EQ(files_.ReadAll(folder_, content), kPathAccess);
  EXPECT_EQ(content, "before");
}

TEST_F(FilesContract, ExistsCountsFoldersAndIsDirectoryOnlyThem) {
  Write(a_, "x");
  EXPECT_TRUE(files_.Exists(a_));
  EXPECT_TRUE(files_.Exists(folder_));
  EXPECT_FALSE(files_.Exists(missing_));
  EXPECT_FALSE(files_.Exists(nowhere_));
  EXPECT_TRUE(files_.IsDirectory(folder_));
  EXPECT_FALSE(files_.IsDirectory(a_));
  EXPECT_FALSE(files_.IsDirectory(missing_));
}

TEST_F(FilesContract, NamesAreFoundInWhateverCase) {
  Write(folder_ + "\\TETRA_mcc.txt", "x");
  EXPECT_TRUE(files_.Exists(folder_ + "\\tetra_MCC.TXT"));
  Write(folder_ + "\\tetra_MCC.TXT", "y");
  EXPECT_EQ(Read(folder_ + "\\TETRA_mcc.txt"), "y");
}

TEST_F(FilesContract, MakesOneFolderAtATime) {
  const std::string daily = folder_ + "\\Daily";
  EXPECT_EQ(files_.MakeDirectory(daily + "\\20261115"), kPathNotFound);
  EXPECT_EQ(files_.MakeDirectory(daily), kFileOk);
  EXPECT_EQ(files_.MakeDirectory(daily + "\\20261115"), kFileOk);
  EXPECT_TRUE(files_.IsDirectory(daily + "\\20261115"));
  EXPECT_EQ(files_.MakeDirectory(daily), kPathAccess);
  Write(a_, "x");
  EXPECT_EQ(files_.MakeDirectory(a_), kPathAccess);
}

TEST_F(FilesContract, DeletesFilesOnly) {
  Write(a_, "x");
  EXPECT_EQ(files_.Delete(a_), kFileOk);
  EXPECT_FALSE(files_.Exists(a_));
  EXPECT_EQ(files_.Delete(a_), kFileNotFound);
  EXPECT_EQ(files_.Delete(nowhere_), kPathNotFound);
  EXPECT_EQ(files_.Delete(folder_), kPathAccess);
  EXPECT_TRUE(files_.Exists(folder_));
}

TEST_F(FilesContract, RenameNeverReplaces) {
  Write(a_, "a");
  Write(b_, "b");
  EXPECT_EQ(files_.Rename(a_, b_), kFileExists);
  EXPECT_EQ(Read(a_), "a");
  EXPECT_EQ(Read(b_), "b");
  EXPECT_EQ(files_.Rename(a_, missing_), kFileOk);
  EXPECT_EQ(Read(missing_), "a");
  EXPECT_FALSE(files_.Exists(a_));
}

TEST_F(FilesContract, RenameNeedsItsFileAndFolder) {
  EXPECT_EQ(files_.Rename(missing_, a_), kFileNotFound);
  Write(a_, "a");
  EXPECT_EQ(files_.Rename(a_, nowhere_), kPathNotFound);
  EXPECT_EQ(Read(a_), "a");
}

TEST_F(FilesContract, MoveOverReplacesAndMoves) {
  Write(a_, "new");
  Write(b_, "old and longer");
  EXPECT_EQ(files_.MoveOver(a_, b_), kFileOk);
  EXPECT_EQ(Read(b_), "new");
  EXPECT_FALSE(files_.Exists(a_));
  EXPECT_EQ(files_.MoveOver(b_, a_), kFileOk);
  EXPECT_EQ(Read(a_), "new");
  EXPECT_EQ(files_.MoveOver(missing_, a_), kFileNotFound);
  EXPECT_EQ(files_.MoveOver(a_, nowhere_), kPathNotFound);
  EXPECT_EQ(Read(a_), "new");
}

TEST_F(FilesContract, MoveOverDoesNotReplaceAFolder) {
  Write(a_, "a");
  ASSERT_EQ(files_.MakeDirectory(folder_ + "\\sub"), kFileOk);
  EXPECT_EQ(files_.MoveOver(a_, folder_ + "\\sub"), kPathAccess);
  EXPECT_EQ(Read(a_), "a");
}

TEST_F(FilesContract, AppendsAndCreates) {
  EXPECT_EQ(files_.Append(a_, "one\r\n"), kFileOk);
  EXPECT_EQ(files_.Append(a_, "two\r\n"), kFileOk);
  EXPECT_EQ(Read(a_), "one\r\ntwo\r\n");
  EXPECT_EQ(files_.Append(nowhere_, "x"), kPathNotFound);
  EXPECT_EQ(files_.Append(folder_, "x"), kPathAccess);
}

TEST_F(FilesContract, WritingIntoNoFolderFails) {
  EXPECT_EQ(files_.WriteAll(nowhere_, "x"), kPathNotFound);
  EXPECT_EQ(files_.WriteAll(folder_, "x"), kPathAccess);
  EXPECT_EQ(files_.Patch(nowhere_, 0, "x"), kPathNotFound);
  EXPECT_FALSE(files_.Exists(nowhere_));
}

TEST_F(FilesContract, PatchChangesBytesInPlace) {
  Write(a_, "0123456789");
  EXPECT_EQ(files_.Patch(a_, 3, "abc"), kFileOk);
  EXPECT_EQ(Read(a_), "012abc6789");
  EXPECT_EQ(files_.Patch(a_, 9, "xyz"), kFileOk);
  EXPECT_EQ(Read(a_), "012abc678xyz");
}

TEST_F(FilesContract, PatchCreatesAndFillsTheGapWithZeros) {
  EXPECT_EQ(files_.Patch(a_, 28, "\x44\xAC"), kFileOk);
  EXPECT_EQ(Read(a_), std::string(28, '\0') + "\x44\xAC");
}

TEST_F(FilesContract, AFileThatAnotherProgramKeepsToItselfIsRefused) {
  Write(a_, "held");
  Write(b_, "b");
  world_->Hold(a_, FilesUnderTest::Sharing::kNone);
  std::string content = "before";
  EXPECT_EQ(files_.ReadAll(a_, content), kPermissionDenied);
  EXPECT_EQ(files_.WriteAll(a_, "x"), kPermissionDenied);
  EXPECT_EQ(files_.Append(a_, "x"), kPermissionDenied);
  EXPECT_EQ(files_.Patch(a_, 0, "x"), kPermissionDenied);
  EXPECT_EQ(files_.Delete(a_), kPermissionDenied);
  EXPECT_EQ(files_.Rename(a_, missing_), kPermissionDenied);
  EXPECT_EQ(files_.MoveOver(b_, a_), kPermissionDenied);
  EXPECT_EQ(content, "before");
  EXPECT_TRUE(files_.Exists(a_));
  world_->Release();
  EXPECT_EQ(Read(a_), "held");
  EXPECT_EQ(files_.Append(a_, "!"), kFileOk);
  EXPECT_EQ(Read(a_), "held!");
}

TEST_F(FilesContract, AFileThatAnotherProgramWritesCanBeRead) {
  Write(a_, "held");
  world_->Hold(a_, FilesUnderTest::Sharing::kRead);
  EXPECT_EQ(Read(a_), "held");
  EXPECT_EQ(files_.Append(a_, "x"), kPermissionDenied);
  EXPECT_EQ(files_.Delete(a_), kPermissionDenied);
  world_->Release();
  EXPECT_EQ(Read(a_), "held");
}

TEST_F(FilesContract, AReadOnlyFileIsNotWritten) {
  Write(a_, "kept");
  Write(b_, "b");
  const bool held_to_it = world_->SetReadOnly(a_, true);
  const FileError expected = held_to_it ? kPermissionDenied : kFileOk;
  EXPECT_EQ(files_.Delete(a_), kPermissionDenied);
  EXPECT_EQ(files_.WriteAll(a_, "new"), expected);
  EXPECT_EQ(files_.Append(a_, "+"), expected);
  EXPECT_EQ(files_.Patch(a_, 0, "N"), expected);
  EXPECT_EQ(Read(a_), held_to_it ? "kept" : "New+");
  world_->SetReadOnly(a_, false);
  Write(a_, "x");
}

TEST_F(FilesContract, AReadOnlyFileIsKnownAsOne) {
  Write(a_, "x");
  EXPECT_FALSE(files_.IsReadOnly(a_));
  world_->SetReadOnly(a_, true);
  EXPECT_TRUE(files_.IsReadOnly(a_));
  world_->SetReadOnly(a_, false);
  EXPECT_FALSE(files_.IsReadOnly(a_));
  EXPECT_FALSE(files_.IsReadOnly(missing_));
  EXPECT_FALSE(files_.IsReadOnly(folder_));
  world_->Hold(a_, FilesUnderTest::Sharing::kNone);
  EXPECT_FALSE(files_.IsReadOnly(a_)) << "held is not read-only";
  world_->Release();
}

TEST_F(FilesContract, ReadsAPart) {
  Write(a_, "0123456789");
  std::string part = "before";
  EXPECT_EQ(files_.ReadPart(missing_, 0, 4, part), kFileNotFound);
  EXPECT_EQ(part, "before");
  EXPECT_EQ(files_.ReadPart(a_, 3, 4, part), kFileOk);
  EXPECT_EQ(part, "3456");
  EXPECT_EQ(files_.ReadPart(a_, 8, 4, part), kFileOk);
  EXPECT_EQ(part, "89");
  EXPECT_EQ(files_.ReadPart(a_, 10, 4, part), kFileOk);
  EXPECT_EQ(part, "");
  EXPECT_EQ(files_.ReadPart(a_, 1'000'000, 4, part), kFileOk);
  EXPECT_EQ(part, "");
}

TEST_F(FilesContract, Utf8BecomesTheCodePageAndQuestionMarks) {
  EXPECT_EQ(files_.FromUtf8(""), "");
  EXPECT_EQ(files_.FromUtf8("plain;1\r\n"), "plain;1\r\n");
  EXPECT_EQ(files_.FromUtf8("x\xFFy").front(), 'x');
  EXPECT_EQ(files_.FromUtf8("x\xFFy").back(), 'y');
  if (world_->western()) {
    EXPECT_EQ(files_.FromUtf8("f\xC3\xBCr"), "f\xFCr");
    EXPECT_EQ(files_.FromUtf8("\xE4\xB8\xAD\xD5\xA1"), "??");
    // A Polish l with a stroke looks like an l and is none.
    EXPECT_EQ(files_.FromUtf8("\xC5\x82"), "?");
  }
}

TEST_F(FilesContract, AFileThatIsHeldForAMomentIsWaitedFor) {
  const auto loop = MakeLoop();
  PatientFiles patient(files_, loop->loop());
  Write(a_, "old");
  for (const auto sharing : {FilesUnderTest::Sharing::kNone, FilesUnderTest::Sharing::kRead}) {
    world_->HoldFor(loop->loop(), a_, sharing, PatientFiles::kPatience_ms / 2);
    EXPECT_EQ(ReplaceContent(patient, a_, "new"), kFileOk);
    EXPECT_EQ(Read(a_), "new");
    EXPECT_FALSE(files_.Exists(a_ + ".new"));
    world_->Release();
  }
  world_->HoldFor(loop->loop(), a_, FilesUnderTest::Sharing::kNone, PatientFiles::kPatience_ms / 2);
  EXPECT_EQ(patient.Rename(a_, b_), kFileOk);
  world_->Release();
}

// A scanner shares everything; it asks for the right to delete as well.
TEST_F(FilesContract, WhoSharesEverythingIsInNobodysWay) {
  Write(a_, "old");
  world_->Hold(a_, FilesUnderTest::Sharing::kAll);
  EXPECT_EQ(Read(a_), "old");
  EXPECT_EQ(files_.Append(a_, "+"), kFileOk);
  EXPECT_EQ(files_.Patch(a_, 0, "O"), kFileOk);
  world_->Release();
  EXPECT_EQ(Read(a_), "Old+");
}

TEST_F(FilesContract, NamesThatCannotBeAreRefused) {
  for (const std::string name : {"a|b", "a?b", "a*b", "a<b", "a\"b"}) {
    const std::string path = folder_ + "\\" + name;
    EXPECT_NE(files_.WriteAll(path, "x"), kFileOk) << name;
    EXPECT_FALSE(files_.Exists(path)) << name;
  }
  const std::string cut = folder_ + std::string("\\cut\0.txt", 9);
  EXPECT_NE(files_.WriteAll(cut, "x"), kFileOk);
  EXPECT_FALSE(files_.Exists(folder_ + "\\cut"));
}

TEST_F(FilesContract, ReplaceContentLeavesNoTemporaryFile) {
  EXPECT_EQ(ReplaceContent(files_, a_, "one"), kFileOk);
  EXPECT_EQ(ReplaceContent(files_, a_, "two"), kFileOk);
  EXPECT_EQ(Read(a_), "two");
  EXPECT_FALSE(files_.Exists(a_ + ".new"));
  world_->Hold(a_, FilesUnderTest::Sharing::kNone);
  EXPECT_EQ(ReplaceContent(files_, a_, "three"), kPermissionDenied);
  world_->Release();
  EXPECT_EQ(Read(a_), "two");
  EXPECT_FALSE(files_.Exists(a_ + ".new"));
}

}  // namespace
}  // namespace corvane::contract
