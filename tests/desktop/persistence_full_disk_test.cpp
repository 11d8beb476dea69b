// The real program on a disk without room.
#include "desktop/harness/small_disk.h"
#include "desktop/persistence_fixture.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

class FullDiskTest : public ::testing::Test {
 protected:
  FullDiskTest() : cases_(new Cases) {}
  ~FullDiskTest() override {
    disk_.Free();
    delete cases_;
  }

  // Made after the disk was chosen.
  class Cases : public PersistenceTest {
   public:
    void TestBody() override {}
    using PersistenceTest::Await;
    using PersistenceTest::AwaitEnd;
    using PersistenceTest::CloseAndWait;
    using PersistenceTest::Control;
    using PersistenceTest::ExpectBox;
    using PersistenceTest::Folder;
    using PersistenceTest::Program;
    using PersistenceTest::Start;
  };

  void PutFiles() const {
    Settings settings;
    settings.record_mode_index = 2;
    cases_->Folder().Write("corvane_simple.dat", SettingsFile(settings));
    cases_->Folder().Write("TETRA_GSSI.txt", kUnsorted);
    cases_->Folder().Write("TETRA_SSI.txt", "5010;70;262;1;Car;2026-11-15 14:23:05\r\n");
    cases_->Folder().Write("TETRA_rec_gssi.txt", "7\r\n");
  }

  SmallDisk disk_;
  Cases* cases_;
};

TEST_F(FullDiskTest, EverySaveIsReportedEveryOldFileStaysAndTheNextSavesCatchUp) {
  PutFiles();
  cases_->Start();
  const auto in_log = [&](std::string_view part) { return cases_->Program().InStatusLog(part); };
  disk_.Fill();
  const FolderContent before = ContentOf(cases_->Folder());
  ASSERT_TRUE(EnterAtOnce(cases_->Control(txtRecOnlyGSSI), "8"));
  EXPECT_TRUE(in_log("Error saving REC GSSI list. - "));
  ASSERT_TRUE(LeaveAtOnce(cases_->Control(txtTimeout), "9"));
  EXPECT_TRUE(in_log("Error saving settings [61] - "));
  EXPECT_TRUE(ContentOf(cases_->Folder()) == before) << "changed, or an unfinished file is left";

  disk_.Free();
  ASSERT_TRUE(EnterAtOnce(cases_->Control(txtRecOnlyGSSI), "9"));
  EXPECT_EQ(cases_->Folder().Read("TETRA_rec_gssi.txt"), "7\r\n8\r\n9\r\n");
  cases_->CloseAndWait();
  EXPECT_EQ(cases_->Folder().Read("TETRA_GSSI.txt"), kSorted);
  EXPECT_EQ(ReadAsAStartDoes(cases_->Folder().Path()).settings.Timeout, 9);
}

TEST_F(FullDiskTest, ClosingReportsBothListsAndEverythingLoadsAfterwards) {
  PutFiles();
  cases_->Start();
  disk_.Fill();
  const FolderContent before = ContentOf(cases_->Folder());
  Close(cases_->Program().Window());
  cases_->ExpectBox(SavingErrorBox("Error saving SSI list."));
  cases_->ExpectBox(SavingErrorBox("Error saving GSSI list."));
  cases_->AwaitEnd(cases_->Program());
  EXPECT_TRUE(ContentOf(cases_->Folder()) == before);
  cases_->Start();  // still without room
  EXPECT_TRUE(cases_->Program().InStatusLog("Loaded 2 saved GSSIs"));
  disk_.Free();
  cases_->CloseAndWait();
  EXPECT_EQ(cases_->Folder().Read("TETRA_GSSI.txt"), kSorted);
}

}  // namespace
}  // namespace corvane::desktop
