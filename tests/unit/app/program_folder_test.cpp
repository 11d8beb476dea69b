#include "app/program_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "sim/sim_files.h"

namespace corvane {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string kShort = "C:\\CORVA~1";

TEST(ProgramFolder, ThePlainPathIsUsedWhereItCan) {
  for (const std::string path : {"C:\\Corvane", "C:", "\\\\server\\share", "D:\\My radio\\\xE4"}) {
    const ProgramFolder folder = ChooseFolder({path, kShort});
    EXPECT_EQ(folder.path, path);
    EXPECT_EQ(folder.problem, "");
  }
}

TEST(ProgramFolder, TheShortFormStandsInForWhatCannotBeUsed) {
  const std::string longest = "C:\\" + std::string(kLongestProgramFolder - 3, 'a');
  EXPECT_EQ(ChooseFolder({longest, kShort}).path, longest);
  EXPECT_EQ(ChooseFolder({longest + "a", kShort}).path, kShort);
  EXPECT_EQ(ChooseFolder({"C:\\C++", kShort}).path, kShort);
  const ProgramFolder folder = ChooseFolder({std::nullopt, kShort});
  EXPECT_EQ(folder.path, kShort);
  EXPECT_EQ(folder.problem, "");
}

TEST(ProgramFolder, TheLongestFolderLeavesRoomForTheRecorder) {
  const std::string longest(kLongestProgramFolder, 'a');
  EXPECT_LT((longest + "\\Daily\\20261115\\Record\\newTmp.wav").size(), 128U);
}

TEST(ProgramFolder, WithoutAUsableFormTheProblemSaysWhy) {
  const std::string too_long = "C:\\" + std::string(kLongestProgramFolder, 'a');
  EXPECT_THAT(ChooseFolder({std::nullopt, std::nullopt}).problem, HasSubstr("code page"));
  EXPECT_THAT(ChooseFolder({std::nullopt, too_long}).problem, HasSubstr("code page"));
  EXPECT_THAT(ChooseFolder({"C:\\C++", "C:\\C++"}).problem, HasSubstr("\"+\""));
  EXPECT_THAT(ChooseFolder({too_long, too_long}).problem, StartsWith("Its path is longer than 94"));
}

TEST(ProgramFolder, AFolderThatMayNotBeWrittenIsAProblemAndAFullDiskIsNone) {
  const std::string folder = "C:\\Corvane";
  sim::SimFiles files;
  EXPECT_EQ(WritingProblem(files, folder), "");
  EXPECT_TRUE(files.List(folder).empty());
  files.SetRoom(0);
  EXPECT_EQ(WritingProblem(files, folder), "");
  files.FailPath("c:\\corvane\\", kDiskFull);
  EXPECT_EQ(WritingProblem(files, folder), "");
  files.FailPath("c:\\corvane\\", kPermissionDenied);
  EXPECT_EQ(WritingProblem(files, folder), "No file can be written there [70].");
}

}  // namespace
}  // namespace corvane
