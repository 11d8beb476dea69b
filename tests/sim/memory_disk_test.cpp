#include "sim/memory_disk.h"

#include <gtest/gtest.h>

namespace corvane::sim {
namespace {

using Names = std::vector<std::string>;

class MemoryDiskTest : public ::testing::Test {
 protected:
  MemoryDiskTest() { disk_.MakeDirectories("C:\\Corvane\\Daily"); }

  MemoryDisk disk_;
};

TEST_F(MemoryDiskTest, PathsAreTheSameInAnyCaseAndNamesStayAsTheyWereMade) {
  disk_.Create("C:\\Corvane\\Daily\\First.TXT") = "1";
  disk_.Create("c:\\CORVANE\\daily\\first.txt") = "2";
  EXPECT_EQ(*disk_.Content("C:\\corvane\\Daily\\FIRST.txt"), "2");
  EXPECT_EQ(disk_.List("C:\\"), Names{"Corvane\\Daily\\First.TXT"});
}

TEST_F(MemoryDiskTest, FoldersAndFilesAreToldApart) {
  disk_.Create("C:\\Corvane\\a.txt");
  EXPECT_TRUE(disk_.IsDirectory("C:\\Corvane\\Daily\\"));
  EXPECT_FALSE(disk_.IsDirectory("C:\\Corvane\\a.txt"));
  EXPECT_EQ(disk_.Content("C:\\Corvane\\Daily"), nullptr);
  EXPECT_FALSE(disk_.HasParent("C:\\Corvane\\a.txt\\below"));
  EXPECT_FALSE(disk_.HasParent("D:\\a.txt"));
  EXPECT_TRUE(disk_.HasParent("C:\\Corvane\\new.txt"));
}

TEST_F(MemoryDiskTest, NamesThatTheSystemRefusesLeadNowhere) {
  for (const char* name : {"a?b", "a*b", "a:b", "..", "a/b", "a\tb"}) {
    const std::string path = std::string("C:\\Corvane\\") + name;
    EXPECT_FALSE(disk_.HasParent(path)) << name;
    EXPECT_FALSE(disk_.Exists(path)) << name;
    EXPECT_THROW(disk_.Create(path), std::runtime_error) << name;
  }
}

TEST_F(MemoryDiskTest, AFolderIsMovedAndRemovedWithAllBelowItAndNothingBesideIt) {
  disk_.Create("C:\\Corvane\\Daily\\a.txt") = "a";
  disk_.Create("C:\\Corvane\\Daily2.txt") = "beside";
  disk_.Move("C:\\Corvane\\Daily", "C:\\Corvane\\Old");
  EXPECT_EQ(disk_.List("C:\\Corvane"), (Names{"Daily2.txt", "Old\\a.txt"}));
  EXPECT_TRUE(disk_.Remove("C:\\Corvane\\Old"));
  EXPECT_FALSE(disk_.Remove("C:\\Corvane\\Old"));
  EXPECT_EQ(disk_.List("C:\\Corvane"), Names{"Daily2.txt"});
}

TEST_F(MemoryDiskTest, AMovedFileTakesTheNameOfTheOneItReplaces) {
  disk_.Create("C:\\Corvane\\List.txt") = "old";
  disk_.Create("C:\\Corvane\\list.txt.new") = "new";
  disk_.Move("C:\\Corvane\\list.txt.new", "C:\\Corvane\\LIST.TXT");
  EXPECT_EQ(disk_.List("C:\\Corvane"), Names{"List.txt"});
  EXPECT_EQ(*disk_.Content("C:\\Corvane\\List.txt"), "new");
  disk_.Move("C:\\Corvane\\List.txt", "C:\\Corvane\\list.TXT");
  EXPECT_EQ(*disk_.Content("C:\\Corvane\\List.txt"), "new");
}

}  // namespace
}  // namespace corvane::sim
