#include "archive/recordings.h"

#include <gmock/gmock.h>

#include <fstream>
#include <regex>

#include "base/text.h"
#include "unit/archive/folder_fixture.h"
#include "unit/archive/wav_bytes.h"

namespace corvane::tools {
namespace {

TEST(ParseRecordingName, AsTheProgramNamesThem) {
  const auto name = ParseRecordingName("142305_1207_9001.wav");
  ASSERT_TRUE(name);
  EXPECT_EQ(name->second_of_day, 14 * 3600 + 23 * 60 + 5);
  EXPECT_EQ(name->call_id, 1207);
  EXPECT_EQ(name->gssi, 9001);
  EXPECT_FALSE(name->forced);
  EXPECT_FALSE(name->renamed);
  EXPECT_TRUE(ParseRecordingName("142305_1207_9001_call_forced_end.WAV")->forced);
}

TEST(ParseRecordingName, TextBehindItIsTheUsers) {
  const auto name = ParseRecordingName("142305_1207_9001 the long one.wav");
  ASSERT_TRUE(name);
  EXPECT_EQ(name->gssi, 9001);
  EXPECT_TRUE(name->renamed);
  EXPECT_EQ(name->size, std::string("142305_1207_9001").size());
}

TEST(ParseRecordingName, OtherNames) {
  for (const char* name : {"", ".wav", "142305_1207_9001", "142305_1207_.wav", "142305_1207.wav",
                           "14230_1207_9001.wav", "242305_1207_9001.wav", "146005_1207_9001.wav",
                           "142305_99999_9001.wav", "142305_1_99999999999.wav", "a.wav",
                           "142305__9001.wav", "142305-1207-9001.wav", "142305_1207_9001.mp3"}) {
    EXPECT_FALSE(ParseRecordingName(name)) << name;
  }
}

// The manual says by which mask other programs read names; they compile it as this is compiled.
TEST(RecordingNames, TheMaskOfTheManualReadsThem) {
  std::ifstream page("docs/manual/phone.md", std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(page), {}};
  const std::string row = "| file mask | `";
  const std::size_t at = text.find(row);
  ASSERT_NE(at, std::string::npos);
  std::string mask = text.substr(at + row.size());
  mask.resize(mask.find('`'));
  mask = ReplaceAll(ReplaceAll(mask, "#TIME", "([0-9]{6})"), "#TG", "([0-9]+)");
  const std::regex reader(mask);
  for (const char* name : {"142305_1207_9001.wav", "142305_1207_9001_call_forced_end.wav",
                           "142305_1207_9001 the long one.wav"}) {
    std::cmatch found;
    ASSERT_TRUE(std::regex_search(name, found, reader)) << name;
    EXPECT_EQ(found.str(1), "142305");
    EXPECT_EQ(found.str(2), "9001");
  }
  EXPECT_FALSE(std::regex_search("newTmp.wav", reader));
}

class FindRecordingsTest : public FolderTest {};

TEST_F(FindRecordingsTest, EveryWavFileButTheOneUnderWay) {
  bool under_way = true;
  EXPECT_TRUE(FindRecordings(Path(""), under_way).empty());
  EXPECT_FALSE(under_way);
  Put("Record/newTmp.wav", "x");
  Put("Record/142305_7_9001.wav", WavBytes(std::vector<int>(500, 1), 1000));
  Put("Record/120000_7_9001.wav", "RIFF");
  Put("Record/mine.WAV", "");
  Put("Record/142305_7_9001.txt", "a");
  Put("Record/folder.wav/142305_7_9001.wav", "");
  const auto found = FindRecordings(Path(""), under_way);
  EXPECT_TRUE(under_way);
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(RelativePath(found[0].file, Path("")), "Record/120000_7_9001.wav");
  EXPECT_EQ(found[0].seconds, 0);
  EXPECT_EQ(found[0].bytes, 4U);
  EXPECT_EQ(found[1].seconds, 0.5);
  EXPECT_FALSE(found[2].name);
}

}  // namespace
}  // namespace corvane::tools
