// The real program on a disk without room. CORVANE_SMALL_DISK names a folder on a file system of a
// few megabytes, which these cases fill to the last byte; without it they fail.
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "desktop/persistence_fixture.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

constexpr std::uintmax_t kLargestSmallDisk = 64ULL * 1024 * 1024;
const std::string kUnsorted = "70;262;1;B;0;True\r\n5;262;1;A;0;False\r\n";
const std::string kSorted = "5;262;1;A;0;False\r\n70;262;1;B;0;True\r\n";

// New program folders lie on the small disk from here on. The disk is not filled when it is large:
// it would not be the one made for this.
std::filesystem::path UseSmallDisk() {
  const char* folder = std::getenv("CORVANE_SMALL_DISK");
  if (folder == nullptr) throw std::runtime_error("CORVANE_SMALL_DISK is not set");
  const std::filesystem::path disk(folder);
  // The library asks for the folder above the one that is named.
  if (std::filesystem::space(disk / "filler").capacity > kLargestSmallDisk) {
    throw std::runtime_error(disk.string() + " is no small disk");
  }
  for (const char* variable : {"TMP", "TEMP"}) _putenv_s(variable, folder);
  return disk;
}

class FullDiskTest : public ::testing::Test {
 protected:
  FullDiskTest() : disk_(UseSmallDisk()), filler_(disk_ / "filler"), cases_(new Cases) {}
  ~FullDiskTest() override {
    Free();
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

  // Not one byte is left.
  void Fill() {
    std::ofstream file(filler_, std::ios::binary | std::ios::app);
    for (const std::size_t piece : {65'536U, 4'096U, 512U, 1U}) {
      const std::string zeros(piece, '\0');
      while (file.write(zeros.data(), static_cast<std::streamsize>(piece)).flush()) {
      }
      file.clear();
    }
  }
  void Free() const {
    std::error_code error;
    std::filesystem::remove(filler_, error);
  }
  void PutFiles() const {
    Settings settings;
    settings.record_mode_index = 2;
    cases_->Folder().Write("corvane_simple.dat", SettingsFile(settings));
    cases_->Folder().Write("TETRA_GSSI.txt", kUnsorted);
    cases_->Folder().Write("TETRA_SSI.txt", "5010;70;262;1;Car;2026-11-15 14:23:05\r\n");
    cases_->Folder().Write("TETRA_rec_gssi.txt", "7\r\n");
  }

  std::filesystem::path disk_;
  std::filesystem::path filler_;
  Cases* cases_;
};

TEST_F(FullDiskTest, EverySaveIsReportedEveryOldFileStaysAndTheNextSavesCatchUp) {
  PutFiles();
  cases_->Start();
  const auto in_log = [&](std::string_view part) { return cases_->Program().InStatusLog(part); };
  Fill();
  const FolderContent before = ContentOf(cases_->Folder());
  ASSERT_TRUE(EnterAtOnce(cases_->Control(txtRecOnlyGSSI), "8"));
  EXPECT_TRUE(in_log("Error saving REC GSSI list. - "));
  ASSERT_TRUE(LeaveAtOnce(cases_->Control(txtTimeout), "9"));
  EXPECT_TRUE(in_log("Error saving settings [61] - "));
  EXPECT_TRUE(ContentOf(cases_->Folder()) == before) << "changed, or an unfinished file is left";

  Free();
  ASSERT_TRUE(EnterAtOnce(cases_->Control(txtRecOnlyGSSI), "9"));
  EXPECT_EQ(cases_->Folder().Read("TETRA_rec_gssi.txt"), "7\r\n8\r\n9\r\n");
  cases_->CloseAndWait();
  EXPECT_EQ(cases_->Folder().Read("TETRA_GSSI.txt"), kSorted);
  EXPECT_EQ(ReadAsAStartDoes(cases_->Folder().Path()).settings.Timeout, 9);
}

TEST_F(FullDiskTest, ClosingReportsBothListsAndEverythingLoadsAfterwards) {
  PutFiles();
  cases_->Start();
  Fill();
  const FolderContent before = ContentOf(cases_->Folder());
  Close(cases_->Program().Window());
  cases_->ExpectBox(SavingErrorBox("Error saving SSI list."));
  cases_->ExpectBox(SavingErrorBox("Error saving GSSI list."));
  cases_->AwaitEnd(cases_->Program());
  EXPECT_TRUE(ContentOf(cases_->Folder()) == before);
  cases_->Start();  // still without room
  EXPECT_TRUE(cases_->Program().InStatusLog("Loaded 2 saved GSSIs"));
  Free();
  cases_->CloseAndWait();
  EXPECT_EQ(cases_->Folder().Read("TETRA_GSSI.txt"), kSorted);
}

}  // namespace
}  // namespace corvane::desktop
