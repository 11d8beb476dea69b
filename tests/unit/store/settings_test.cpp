#include "store/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "tests/unit/store/golden_files.h"
#include "tests/unit/store/store_world.h"

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

SettingsRecord Changed() {
  SettingsRecord record;
  record.Timeout = 12;
  record.MainWindowTop = -300;
  record.MainWindowLeft = 4500;
  record.BaseFrequencyIndex = 3;
  record.ParkCarrier = 1234;
  record.SuppressSomePduMessages = 1;
  record.SuppressLockoutMessages = 1;
  record.IgnorePriority = 1;
  record.CreateCcVcLog = 1;
  record.CreateEventLog = 1;
  record.CreateCallActivityCsvFile = 1;
  record.CompactMode = -1;
  record.OffsetIndex = 2;
  record.RecordModeIndex = 2;
  record.DeleteForcedCallEndFile = 1;
  record.VcVolume = 33;
  record.CheckedColour = 16777215;
  record.UncheckedColour = 0;
  record.PositionSdrSharps = 1;
  record.PositionSdrSharpCC = "1,2,3,4";
  return record;
}

class SettingsFileTest : public ::testing::Test {
 protected:
  SettingsFileTest() { run.flags.mblnFormLoaded = true; }
  // What ReadSettings does with this record.
  Load Read(const SettingsRecord& record) {
    files.Put(kSettingsPath, EncodeSettings(record));
    return run.settings.ReadSettings();
  }
  SettingsRecord Saved() {
    return DecodeSettings(files.Content(kSettingsPath).value(), SettingsRecord());
  }

  sim::SimFiles files;
  StoreRun run{files};
  Form1& form = run.form;
};

TEST_F(SettingsFileTest, WithoutAFileTheDefaultsAreShownAndNothingIsWritten) {
  form.txtTimeout.text = "?";
  form.cboBaseFrequency.list_index = 0;
  run.presets.FrequencyOffset = 0;
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  EXPECT_EQ(form.txtTimeout.text.get(), "5");
  EXPECT_EQ(run.presets.CallTimeoutSeconds, 5);
  EXPECT_EQ(form.cboBaseFrequency.list_index.get(), 7);
  EXPECT_EQ(run.presets.BaseFrequency, 800000000);
  EXPECT_EQ(form.txtParkCarrier.text.get(), "2604");
  EXPECT_EQ(run.presets.ParkCarrier, 2604);
  EXPECT_EQ(run.presets.FrequencyOffset, 12500);
  EXPECT_EQ(form.txtVcVolume.text.get(), "47");
  EXPECT_EQ(run.presets.VcAudioGain, 47);
  EXPECT_EQ(form.lblCheckedValue.caption.get(), "10580318");
  EXPECT_EQ(form.lblUnCheckedValue.caption.get(), "14934753");
  EXPECT_TRUE(form.optOffsets[3].value);
  EXPECT_FALSE(form.lstRecOnlyGSSI.enabled);
  EXPECT_FALSE(form.txtRecOnlyGSSI.enabled);
  EXPECT_TRUE(files.List(kFolder).empty());
  EXPECT_TRUE(run.prompts.boxes().empty());
}

TEST_F(SettingsFileTest, EveryFieldReachesItsControlAndItsVariable) {
  form.chkDeleteForcedCallEndFile.value = 1;
  EXPECT_EQ(Read(Changed()), Load::kOk);
  EXPECT_EQ(run.presets.CallTimeoutSeconds, 12);
  EXPECT_EQ(form.txtTimeout.text.get(), "12");
  EXPECT_EQ(form.bounds.get().top, -300);
  EXPECT_EQ(form.bounds.get().left, 4500);
  EXPECT_EQ(form.cboBaseFrequency.list_index.get(), 3);
  EXPECT_EQ(run.presets.BaseFrequency, 400000000);
  EXPECT_EQ(run.presets.ParkCarrier, 1234);
  EXPECT_EQ(form.txtParkCarrier.text.get(), "1234");
  EXPECT_TRUE(form.chkSuppressSomePduMessages.checked());
  EXPECT_TRUE(form.chkSuppressLockoutMessages.checked());
  EXPECT_TRUE(form.chkIgnorePriority.checked());
  EXPECT_TRUE(form.chkCreateCcVcLog.checked());
  EXPECT_TRUE(form.chkCreateEventLog.checked());
  EXPECT_TRUE(form.chkCreateCallActivityCvsFile.checked());
  EXPECT_TRUE(form.mnuCompactMode.checked);
  EXPECT_FALSE(form.optOffsets[3].value);
  EXPECT_TRUE(form.optOffsets[2].value);
  EXPECT_EQ(run.presets.FrequencyOffset, -6250);
  EXPECT_TRUE(form.optRecordMode[2].value);
  EXPECT_FALSE(form.optRecordMode[0].value);
  EXPECT_TRUE(form.lstRecOnlyGSSI.enabled);
  EXPECT_TRUE(form.txtRecOnlyGSSI.enabled);
  EXPECT_EQ(run.presets.VcAudioGain, 33);
  EXPECT_EQ(form.txtVcVolume.text.get(), "33");
  EXPECT_EQ(run.presets.CheckedColour, 16777215);
  EXPECT_EQ(form.lblCheckedValue.caption.get(), "16777215");
  EXPECT_EQ(run.presets.UnCheckedColour, 0);
  EXPECT_EQ(form.lblUnCheckedValue.caption.get(), "0");
  EXPECT_TRUE(form.chkPositionSDRsharps.checked());
  EXPECT_EQ(form.lblPositionSdrSharpCC.caption.get(), "1,2,3,4");
}

TEST_F(SettingsFileTest, DeletingForcedRecordingsAlwaysStartsOffThoughItIsSaved) {
  form.chkDeleteForcedCallEndFile.value = 1;
  run.settings.SaveSettings();
  EXPECT_EQ(Saved().DeleteForcedCallEndFile, 1);
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  EXPECT_FALSE(form.chkDeleteForcedCallEndFile.checked());
}

TEST_F(SettingsFileTest, ValuesAreAppliedInTheOrderOfTheRecord) {
  static_cast<void>(run.sink.Take());
  EXPECT_EQ(Read(Changed()), Load::kOk);
  const std::vector<std::string> all = run.sink.Take();
  const auto at = [&all](const std::string& name) {
    const auto found = std::ranges::find_if(
        all, [&name](const std::string& line) { return line.starts_with(name + "."); });
    EXPECT_NE(found, all.end()) << name;
    return found - all.begin();
  };
  const char* const order[] = {"txtTimeout",
                               form.Window::name(),
                               "cboBaseFrequency",
                               "txtParkCarrier",
                               "chkSuppressSomePduMessages",
                               "chkSuppressLockoutMessages",
                               "chkIgnorePriority",
                               "chkCreateCcVcLog",
                               "chkCreateEventLog",
                               "chkCreateCallActivityCvsFile",
                               "mnuCompactMode",
                               "optOffsets_2",
                               "optRecordMode_0",
                               "txtVcVolume",
                               "lblCheckedValue",
                               "lblUnCheckedValue",
                               "chkPositionSDRsharps",
                               "lblPositionSdrSharpCC"};
  for (std::size_t i = 1; i < std::size(order); ++i) {
    EXPECT_LT(at(order[i - 1]), at(order[i])) << order[i];
  }
}

TEST_F(SettingsFileTest, EachOffsetButtonGivesItsOffset) {
  const std::int32_t offsets[] = {0, 6250, -6250, 12500};
  for (std::int16_t i = 0; i < 4; ++i) {
    SettingsRecord record;
    record.OffsetIndex = i;
    EXPECT_EQ(Read(record), Load::kOk);
    EXPECT_EQ(run.presets.FrequencyOffset, offsets[i]);
  }
}

TEST_F(SettingsFileTest, EachBandGivesItsBaseFrequency) {
  for (std::int16_t i = 0; i < 9; ++i) {
    SettingsRecord record;
    record.BaseFrequencyIndex = i;
    EXPECT_EQ(Read(record), Load::kOk);
    EXPECT_EQ(run.presets.BaseFrequency, (i + 1) * 100000000);
  }
}

TEST_F(SettingsFileTest, ARefusedValueDeletesTheFileAndEndsTheProgram) {
  std::vector<SettingsRecord> refused;
  const auto with = [&refused](auto SettingsRecord::*field, int value) {
    SettingsRecord record;
    record.*field = static_cast<std::remove_reference_t<decltype(record.*field)>>(value);
    refused.push_back(record);
  };
  with(&SettingsRecord::BaseFrequencyIndex, 9);
  with(&SettingsRecord::BaseFrequencyIndex, -1);
  with(&SettingsRecord::BaseFrequencyIndex, 32767);
  with(&SettingsRecord::OffsetIndex, 4);
  with(&SettingsRecord::OffsetIndex, -1);
  with(&SettingsRecord::RecordModeIndex, 3);
  with(&SettingsRecord::RecordModeIndex, -1);
  with(&SettingsRecord::SuppressSomePduMessages, 3);
  with(&SettingsRecord::SuppressLockoutMessages, 255);
  with(&SettingsRecord::IgnorePriority, 3);
  with(&SettingsRecord::CreateCcVcLog, 3);
  with(&SettingsRecord::CreateEventLog, 3);
  with(&SettingsRecord::CreateCallActivityCsvFile, 3);
  with(&SettingsRecord::PositionSdrSharps, 3);
  for (const SettingsRecord& record : refused) {
    sim::SimFiles disk;
    StoreRun other(disk);
    disk.Put(kSettingsPath, EncodeSettings(record));
    EXPECT_EQ(other.settings.ReadSettings(), Load::kEnded);
    EXPECT_FALSE(Has(disk, kSettingsPath));
    ASSERT_EQ(other.prompts.boxes(), std::vector{VersionChangeBox()});
    EXPECT_EQ(other.prompts.times_ended(), 1);
  }
}

TEST_F(SettingsFileTest, GreyBoxesAreKept) {
  SettingsRecord record;
  record.CreateEventLog = 2;
  EXPECT_EQ(Read(record), Load::kOk);
  EXPECT_EQ(form.chkCreateEventLog.value.get(), 2);
  EXPECT_FALSE(form.chkCreateEventLog.checked());
  run.settings.SaveSettings();
  EXPECT_EQ(Saved().CreateEventLog, 2);
}

TEST_F(SettingsFileTest, TheFileIsDeletedBeforeTheBoxIsAnswered) {
  SettingsRecord record;
  record.OffsetIndex = 4;
  run.prompts.SetWhileOpen([this](const Box&) {
    EXPECT_FALSE(Has(files, kSettingsPath));
    EXPECT_EQ(run.prompts.times_ended(), 0);
  });
  EXPECT_EQ(Read(record), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes().size(), 1U);
}

TEST_F(SettingsFileTest, ARefusedFileThatCannotBeDeletedIsReportedAsAnAccessError) {
  SettingsRecord record;
  record.OffsetIndex = 4;
  files.FailAtStep(2, kPermissionDenied);
  EXPECT_EQ(Read(record), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes(), std::vector{FileAccessBox(70)});
  EXPECT_TRUE(Has(files, kSettingsPath));
}

TEST_F(SettingsFileTest, AnEmptyFileIsReportedThenDeleted) {
  files.Put(kSettingsPath, "");
  run.prompts.SetWhileOpen([this](const Box&) { EXPECT_TRUE(Has(files, kSettingsPath)); });
  EXPECT_EQ(run.settings.ReadSettings(), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes(), std::vector{CorruptBox()});
  EXPECT_EQ(run.prompts.times_ended(), 1);
  EXPECT_FALSE(Has(files, kSettingsPath));
}

TEST_F(SettingsFileTest, AnEmptyFileThatCannotBeDeletedStaysWithAnAccessError) {
  files.Put(kSettingsPath, "");
  files.FailAtStep(2, kPermissionDenied);
  EXPECT_EQ(run.settings.ReadSettings(), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes(), (std::vector{CorruptBox(), FileAccessBox(70)}));
  EXPECT_EQ(run.prompts.times_ended(), 1);
  EXPECT_TRUE(Has(files, kSettingsPath));
}

TEST_F(SettingsFileTest, AFileThatCannotBeReadIsLeftAlone) {
  files.Put(kSettingsPath, EncodeSettings(Changed()));
  files.FailAtStep(1, kPermissionDenied);
  EXPECT_EQ(run.settings.ReadSettings(), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes(), std::vector{FileAccessBox(70)});
  EXPECT_EQ(run.prompts.times_ended(), 1);
  EXPECT_EQ(files.Content(kSettingsPath), EncodeSettings(Changed()));
}

TEST_F(SettingsFileTest, AShortFileTakesTheDefaultsForWhatIsMissing) {
  form.MoveTo(3000, 1500);
  files.Put(kSettingsPath, EncodeSettings(Changed()).substr(0, 12));
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  EXPECT_EQ(form.txtTimeout.text.get(), "12");
  EXPECT_EQ(form.bounds.get().top, -300);
  EXPECT_EQ(form.cboBaseFrequency.list_index.get(), 3);
  EXPECT_EQ(form.txtParkCarrier.text.get(), "2604");
  EXPECT_EQ(run.presets.FrequencyOffset, 12500);
  EXPECT_TRUE(form.optOffsets[3].value);
  EXPECT_EQ(run.presets.VcAudioGain, 47);
  EXPECT_EQ(form.lblPositionSdrSharpCC.caption.get(), "");
  EXPECT_TRUE(run.prompts.boxes().empty());
  files.Put(kSettingsPath, "\x07");
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  EXPECT_EQ(form.bounds.get().top, -300) << "the window stays where it is";
}

TEST_F(SettingsFileTest, ValuesThatNoControlRefusesButNobodyCanUseTakeTheDefaults) {
  SettingsRecord record = Changed();
  record.Timeout = 0;
  record.ParkCarrier = 9999;
  record.VcVolume = 10;
  EXPECT_EQ(Read(record), Load::kOk);
  EXPECT_EQ(run.presets.CallTimeoutSeconds, 5);
  EXPECT_EQ(form.txtTimeout.text.get(), "5");
  EXPECT_EQ(run.presets.ParkCarrier, 2604);
  EXPECT_EQ(run.presets.VcAudioGain, 47);
  EXPECT_EQ(Saved(), record) << "the file is not touched by reading";
}

TEST_F(SettingsFileTest, EverythingSurvivesARestart) {
  SettingsRecord expected = Changed();
  EXPECT_EQ(Read(expected), Load::kOk);
  files.Remove(kSettingsPath);
  run.settings.SaveSettings();
  expected.DeleteForcedCallEndFile = 0;
  EXPECT_EQ(Saved(), expected);
}

TEST_F(SettingsFileTest, TheFirstSaveCreatesTheFile) {
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  run.settings.SaveSettings();
  EXPECT_EQ(files.Content(kSettingsPath).value(), EncodeSettings(SettingsRecord()));
  EXPECT_EQ(files.List(kFolder).size(), 1U) << "no temporary file is left";
}

TEST_F(SettingsFileTest, WithNoButtonSelectedTheIndexIsZero) {
  for (OptionButton& option : form.optOffsets) option.value = false;
  for (OptionButton& option : form.optRecordMode) option.value = false;
  run.settings.SaveSettings();
  EXPECT_EQ(Saved().OffsetIndex, 0);
  EXPECT_EQ(Saved().RecordModeIndex, 0);
}

TEST_F(SettingsFileTest, TheFirstOfSeveralSelectedButtonsWins) {
  form.optOffsets[1].value = true;
  form.optRecordMode[0].value = false;
  form.optRecordMode[1].value = true;
  form.optRecordMode[2].value = true;
  run.settings.SaveSettings();
  EXPECT_EQ(Saved().OffsetIndex, 1);
  EXPECT_EQ(Saved().RecordModeIndex, 1);
}

TEST_F(SettingsFileTest, ABoxThatIsBeingEditedDoesNotReachTheFile) {
  form.txtTimeout.text = "";
  form.txtVcVolume.text = "9";
  form.txtParkCarrier.text = "99999";
  run.settings.SaveSettings();
  EXPECT_EQ(Saved().Timeout, 5);
  EXPECT_EQ(Saved().VcVolume, 47);
  EXPECT_EQ(Saved().ParkCarrier, 2604);
}

TEST_F(SettingsFileTest, TheTailOfALongerRecordStaysBehindAndIsNotRead) {
  form.lblPositionSdrSharpCC.caption = "100,200,1300,900";
  run.settings.SaveSettings();
  form.lblPositionSdrSharpCC.caption = "1,2,3,4";
  run.settings.SaveSettings();
  EXPECT_EQ(files.Content(kSettingsPath).value().substr(37),
            std::string("\x07\0", 2) + "1,2,3,4" + ",1300,900");
  form.lblPositionSdrSharpCC.caption = "";
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  EXPECT_EQ(form.lblPositionSdrSharpCC.caption.get(), "1,2,3,4");
}

TEST_F(SettingsFileTest, AFailedSaveIsOneStatusLineAndLeavesTheOldFile) {
  run.settings.SaveSettings();
  const Contents before = AllFiles(files);
  form.mnuCompactMode.checked = true;
  files.SetRoom(10);
  run.settings.SaveSettings();
  EXPECT_EQ(AllFiles(files), before);
  EXPECT_EQ(form.lstStatusLog.items(),
            std::vector<std::string>{"Error saving settings [61] - " + kNow});
  EXPECT_TRUE(run.prompts.boxes().empty());
  files.SetRoom(std::nullopt);
  run.settings.SaveSettings();
  EXPECT_EQ(Saved().CompactMode, -1);
}

TEST_F(SettingsFileTest, NothingIsSavedBeforeTheProgramIsLoaded) {
  run.flags.mblnFormLoaded = false;
  run.settings.SaveSettings();
  EXPECT_FALSE(Has(files, kSettingsPath));
  files.Put(kSettingsPath, EncodeSettings(Changed()));
  run.settings.SaveSettings();
  EXPECT_EQ(Saved(), Changed());
  EXPECT_EQ(files.steps(), 0);
  EXPECT_TRUE(form.lstStatusLog.items().empty());
}

TEST_F(SettingsFileTest, AnUnreadableFileIsNotReplaced) {
  run.settings.SaveSettings();
  files.SetLocked(kSettingsPath, true);
  const Contents before = AllFiles(files);
  run.settings.SaveSettings();
  EXPECT_EQ(AllFiles(files), before);
  EXPECT_EQ(form.lstStatusLog.Item(0), "Error saving settings [70] - " + kNow);
}

}  // namespace
}  // namespace corvane
