#include "store/settings_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

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
  // What ReadSettings does with this record.
  Load Read(const SettingsRecord& record) {
    files.content[kSettingsPath] = EncodeSettings(record);
    return run.settings.ReadSettings();
  }
  SettingsRecord Saved() {
    return DecodeSettings(files.content.at(kSettingsPath), SettingsRecord());
  }

  MemoryFiles files;
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
  EXPECT_TRUE(files.content.empty());
  EXPECT_TRUE(run.prompts.boxes.empty());
}

TEST_F(SettingsFileTest, EveryFieldReachesItsControlAndItsVariable) {
  form.chkDeleteForcedCallEndFile.value = 1;
  EXPECT_EQ(Read(Changed()), Load::kOk);
  EXPECT_EQ(run.presets.CallTimeoutSeconds, 12);
  EXPECT_EQ(form.txtTimeout.text.get(), "12");
  EXPECT_EQ(form.top.get(), -300);
  EXPECT_EQ(form.left.get(), 4500);
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
  run.sink.changed.clear();
  EXPECT_EQ(Read(Changed()), Load::kOk);
  const auto at = [this](const std::string& name) {
    const auto& all = run.sink.changed;
    const auto found = std::find(all.begin(), all.end(), name);
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
    MemoryFiles disk;
    StoreRun other(disk);
    disk.content[kSettingsPath] = EncodeSettings(record);
    other.numbers.Open(1, "somewhere");
    EXPECT_EQ(other.settings.ReadSettings(), Load::kEnded);
    EXPECT_FALSE(disk.content.contains(kSettingsPath));
    ASSERT_EQ(other.prompts.boxes, std::vector{VersionChangeBox()});
    EXPECT_EQ(other.prompts.ended, 1);
    EXPECT_EQ(other.numbers.PathOf(1), "");
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
  run.prompts.while_open = [this] {
    EXPECT_FALSE(files.content.contains(kSettingsPath));
    EXPECT_EQ(run.prompts.ended, 0);
  };
  EXPECT_EQ(Read(record), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes.size(), 1U);
}

TEST_F(SettingsFileTest, ARefusedFileThatCannotBeDeletedIsReportedAsAnAccessError) {
  SettingsRecord record;
  record.OffsetIndex = 4;
  files.fail_at = 2;
  files.fail_with = kPermissionDenied;
  EXPECT_EQ(Read(record), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes, std::vector{FileAccessBox(70)});
  EXPECT_TRUE(files.content.contains(kSettingsPath));
}

TEST_F(SettingsFileTest, AnEmptyFileIsReportedThenDeleted) {
  files.content[kSettingsPath] = "";
  run.prompts.while_open = [this] { EXPECT_TRUE(files.content.contains(kSettingsPath)); };
  EXPECT_EQ(run.settings.ReadSettings(), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes, std::vector{CorruptBox()});
  EXPECT_EQ(run.prompts.ended, 1);
  EXPECT_FALSE(files.content.contains(kSettingsPath));
}

TEST_F(SettingsFileTest, AnEmptyFileThatCannotBeDeletedStaysWithAnAccessError) {
  files.content[kSettingsPath] = "";
  files.fail_at = 2;
  files.fail_with = kPermissionDenied;
  EXPECT_EQ(run.settings.ReadSettings(), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes, (std::vector{CorruptBox(), FileAccessBox(70)}));
  EXPECT_EQ(run.prompts.ended, 1);
  EXPECT_TRUE(files.content.contains(kSettingsPath));
}

TEST_F(SettingsFileTest, AFileThatCannotBeReadIsLeftAlone) {
  files.content[kSettingsPath] = EncodeSettings(Changed());
  files.fail_at = 1;
  files.fail_with = kPermissionDenied;
  EXPECT_EQ(run.settings.ReadSettings(), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes, std::vector{FileAccessBox(70)});
  EXPECT_EQ(run.prompts.ended, 1);
  EXPECT_EQ(files.content[kSettingsPath], EncodeSettings(Changed()));
}

TEST_F(SettingsFileTest, AShortFileTakesTheDefaultsForWhatIsMissing) {
  form.top = 1500;
  form.left = 3000;
  files.content[kSettingsPath] = EncodeSettings(Changed()).substr(0, 12);
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  EXPECT_EQ(form.txtTimeout.text.get(), "12");
  EXPECT_EQ(form.top.get(), -300);
  EXPECT_EQ(form.cboBaseFrequency.list_index.get(), 3);
  EXPECT_EQ(form.txtParkCarrier.text.get(), "2604");
  EXPECT_EQ(run.presets.FrequencyOffset, 12500);
  EXPECT_TRUE(form.optOffsets[3].value);
  EXPECT_EQ(run.presets.VcAudioGain, 47);
  EXPECT_EQ(form.lblPositionSdrSharpCC.caption.get(), "");
  EXPECT_TRUE(run.prompts.boxes.empty());
  files.content[kSettingsPath] = "\x07";
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  EXPECT_EQ(form.top.get(), -300) << "the window stays where it is";
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
  files.content.clear();
  run.settings.SaveSettings();
  expected.DeleteForcedCallEndFile = 0;
  EXPECT_EQ(Saved(), expected);
}

TEST_F(SettingsFileTest, TheFirstSaveCreatesTheFile) {
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  run.settings.SaveSettings();
  EXPECT_EQ(files.content.at(kSettingsPath), EncodeSettings(SettingsRecord()));
  EXPECT_EQ(files.content.size(), 1U) << "no temporary file is left";
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
  EXPECT_EQ(files.content.at(kSettingsPath).substr(37),
            std::string("\x07\0", 2) + "1,2,3,4" + ",1300,900");
  form.lblPositionSdrSharpCC.caption = "";
  EXPECT_EQ(run.settings.ReadSettings(), Load::kOk);
  EXPECT_EQ(form.lblPositionSdrSharpCC.caption.get(), "1,2,3,4");
}

TEST_F(SettingsFileTest, AFailedSaveIsOneStatusLineAndLeavesTheOldFile) {
  run.settings.SaveSettings();
  const auto before = files.content;
  form.mnuCompactMode.checked = true;
  files.room = 10;
  run.settings.SaveSettings();
  EXPECT_EQ(files.content, before);
  EXPECT_EQ(form.lstStatusLog.items(),
            std::vector<std::string>{"Error saving settings [61] - " + kNow});
  EXPECT_TRUE(run.prompts.boxes.empty());
  files.room.reset();
  run.settings.SaveSettings();
  EXPECT_EQ(Saved().CompactMode, -1);
}

TEST_F(SettingsFileTest, AnUnreadableFileIsNotReplaced) {
  run.settings.SaveSettings();
  files.locked[kSettingsPath] = kPermissionDenied;
  const auto before = files.content;
  run.settings.SaveSettings();
  EXPECT_EQ(files.content, before);
  EXPECT_EQ(form.lstStatusLog.Item(0), "Error saving settings [70] - " + kNow);
}

}  // namespace
}  // namespace corvane
