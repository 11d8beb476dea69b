#include "store/settings_record.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/unit/store/golden_files.h"

namespace corvane {
namespace {

SettingsRecord EveryFieldItsOwn() {
  SettingsRecord record;
  record.Timeout = 30;
  record.MainWindowTop = 0x01020304;
  record.MainWindowLeft = -15;
  record.BaseFrequencyIndex = 3;
  record.ParkCarrier = 3999;
  record.SuppressSomePduMessages = 1;
  record.SuppressLockoutMessages = 0;
  record.IgnorePriority = 1;
  record.CreateCcVcLog = 2;
  record.CreateEventLog = 0;
  record.CreateCallActivityCsvFile = 1;
  record.CompactMode = -1;
  record.OffsetIndex = 2;
  record.RecordModeIndex = 1;
  record.DeleteForcedCallEndFile = 1;
  record.VcVolume = 60;
  record.CheckedColour = 0x00A1715E;
  record.UncheckedColour = 0x00E3E2E1;
  record.PositionSdrSharps = 1;
  record.PositionSdrSharpCC = "10,20,1034,788";
  return record;
}

TEST(SettingsRecord, EveryByteStandsWhereItIsLaidDown) {
  const std::string bytes = EncodeSettings(EveryFieldItsOwn());
  const std::vector<int> expected = {30,   0,                         // Timeout
                                     4,    3,    2,    1,             // MainWindowTop
                                     0xF1, 0xFF, 0xFF, 0xFF,          // MainWindowLeft
                                     3,    0,                         // BaseFrequencyIndex
                                     0x9F, 0x0F,                      // ParkCarrier
                                     1,    0,    1,    2,    0,   1,  // six check boxes
                                     0xFF, 0xFF,                      // CompactMode
                                     2,    0,                         // OffsetIndex
                                     1,    0,                         // RecordModeIndex
                                     1,                               // DeleteForcedCallEndFile
                                     60,                              // VcVolume
                                     0x5E, 0x71, 0xA1, 0,             // CheckedColour
                                     0xE1, 0xE2, 0xE3, 0,             // UncheckedColour
                                     1,                               // PositionSdrSharps
                                     14,   0,  // length of PositionSdrSharpCC
                                     '1',  '0',  ',',  '2',  '0', ',', '1',
                                     '0',  '3',  '4',  ',',  '7', '8', '8'};
  ASSERT_EQ(bytes.size(), expected.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    EXPECT_EQ(static_cast<unsigned char>(bytes[i]), expected[i]) << "at offset " << i;
  }
}

TEST(SettingsRecord, GoldenFilesAreWrittenToTheByte) {
  EXPECT_EQ(EncodeSettings(EveryFieldItsOwn()), GoldenFile("corvane_simple_full.dat"));
  EXPECT_EQ(EncodeSettings(SettingsRecord()), GoldenFile("corvane_simple_defaults.dat"));
}

TEST(SettingsRecord, GoldenFilesAreRead) {
  SettingsRecord other;
  other.PositionSdrSharpCC = "other";
  EXPECT_EQ(DecodeSettings(GoldenFile("corvane_simple_full.dat"), other), EveryFieldItsOwn());
  EXPECT_EQ(DecodeSettings(GoldenFile("corvane_simple_defaults.dat"), EveryFieldItsOwn()),
            SettingsRecord());
}

TEST(SettingsRecord, AnEmptyPositionTakesThirtyNineBytes) {
  EXPECT_EQ(EncodeSettings(SettingsRecord()).size(), kFixedSettingsSize);
}

TEST(SettingsRecord, EveryRecordComesBackAsItWas) {
  std::mt19937 random(20261115);
  for (int round = 0; round < 2000; ++round) {
    SettingsRecord record;
    const auto number = [&random](auto& field) {
      field = static_cast<std::remove_reference_t<decltype(field)>>(random());
    };
    number(record.Timeout);
    number(record.MainWindowTop);
    number(record.MainWindowLeft);
    number(record.BaseFrequencyIndex);
    number(record.ParkCarrier);
    number(record.SuppressSomePduMessages);
    number(record.SuppressLockoutMessages);
    number(record.IgnorePriority);
    number(record.CreateCcVcLog);
    number(record.CreateEventLog);
    number(record.CreateCallActivityCsvFile);
    number(record.CompactMode);
    number(record.OffsetIndex);
    number(record.RecordModeIndex);
    number(record.DeleteForcedCallEndFile);
    number(record.VcVolume);
    number(record.CheckedColour);
    number(record.UncheckedColour);
    number(record.PositionSdrSharps);
    record.PositionSdrSharpCC.resize(random() % 300);
    for (char& c : record.PositionSdrSharpCC) number(c);
    const std::string tail(random() % 50, 'x');
    ASSERT_EQ(DecodeSettings(EncodeSettings(record) + tail, SettingsRecord()), record)
        << "round " << round;
  }
}

TEST(SettingsRecord, AFieldThatIsNotWhollyThereKeepsItsDefault) {
  const SettingsRecord full = EveryFieldItsOwn();
  const std::string bytes = EncodeSettings(full);
  SettingsRecord defaults;
  defaults.MainWindowTop = 1500;
  defaults.MainWindowLeft = 3000;
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    const SettingsRecord read = DecodeSettings(bytes.substr(0, size), defaults);
    EXPECT_EQ(read.Timeout, size >= 2 ? full.Timeout : 5) << size;
    EXPECT_EQ(read.MainWindowTop, size >= 6 ? full.MainWindowTop : 1500) << size;
    EXPECT_EQ(read.MainWindowLeft, size >= 10 ? full.MainWindowLeft : 3000) << size;
    EXPECT_EQ(read.BaseFrequencyIndex, size >= 12 ? 3 : 7) << size;
    EXPECT_EQ(read.ParkCarrier, size >= 14 ? 3999 : 2604) << size;
    EXPECT_EQ(read.SuppressSomePduMessages, size >= 15 ? 1 : 0) << size;
    EXPECT_EQ(read.IgnorePriority, size >= 17 ? 1 : 0) << size;
    EXPECT_EQ(read.CreateCcVcLog, size >= 18 ? 2 : 0) << size;
    EXPECT_EQ(read.CreateCallActivityCsvFile, size >= 20 ? 1 : 0) << size;
    EXPECT_EQ(read.CompactMode, size >= 22 ? -1 : 0) << size;
    EXPECT_EQ(read.OffsetIndex, size >= 24 ? 2 : 3) << size;
    EXPECT_EQ(read.RecordModeIndex, size >= 26 ? 1 : 0) << size;
    EXPECT_EQ(read.DeleteForcedCallEndFile, size >= 27 ? 1 : 0) << size;
    EXPECT_EQ(read.VcVolume, size >= 28 ? 60 : 47) << size;
    EXPECT_EQ(read.CheckedColour, 10580318) << size;
    EXPECT_EQ(read.UncheckedColour, 14934753) << size;
    EXPECT_EQ(read.PositionSdrSharps, size >= 37 ? 1 : 0) << size;
    EXPECT_EQ(read.PositionSdrSharpCC, "") << size;
  }
}

TEST(SettingsRecord, ATextTooLongForItsLengthIsCut) {
  SettingsRecord record;
  record.PositionSdrSharpCC.assign(70000, 'p');
  const std::string bytes = EncodeSettings(record);
  EXPECT_EQ(bytes.size(), kFixedSettingsSize + 65535);
  EXPECT_EQ(DecodeSettings(bytes, SettingsRecord()).PositionSdrSharpCC, std::string(65535, 'p'));
}

TEST(SettingsRecord, OnlyUnusableValuesAreReplaced) {
  for (const int timeout : {-5, 0, 31, 32767}) {
    SettingsRecord record;
    record.Timeout = static_cast<std::int16_t>(timeout);
    ReplaceUnusableValues(record);
    EXPECT_EQ(record.Timeout, 5) << timeout;
  }
  for (const int carrier : {-1, 4000, 9999}) {
    SettingsRecord record;
    record.ParkCarrier = static_cast<std::int16_t>(carrier);
    ReplaceUnusableValues(record);
    EXPECT_EQ(record.ParkCarrier, 2604) << carrier;
  }
  for (const int volume : {0, 24, 61, 255}) {
    SettingsRecord record;
    record.VcVolume = static_cast<std::uint8_t>(volume);
    ReplaceUnusableValues(record);
    EXPECT_EQ(record.VcVolume, 47) << volume;
  }
  SettingsRecord lowest;
  lowest.Timeout = 1;
  lowest.ParkCarrier = 0;
  lowest.VcVolume = 25;
  SettingsRecord same = lowest;
  ReplaceUnusableValues(same);
  EXPECT_EQ(same, lowest);
  SettingsRecord highest = EveryFieldItsOwn();
  ReplaceUnusableValues(highest);
  EXPECT_EQ(highest, EveryFieldItsOwn());
}

}  // namespace
}  // namespace corvane
