// Files that nobody wrote so, put in place before a start of the real program: the boxes have the
// text, title and icon that they must have, each is shown once; the program ends by itself; and the
// files are left alone or deleted. The contents are those of tests/corpus. All of them are judged
// in the same way without Windows by the tests under tests/unit/store; here each kind of outcome is
// shown once per file.
#include <iostream>
#include <set>

#include "base/wall_clock_win.h"
#include "desktop/harness/held_file.h"
#include "desktop/persistence_fixture.h"
#include "unit/store/corpus.h"

namespace corvane::desktop {
namespace {

using Boxes = std::vector<ShownBox>;

constexpr int kInUse = 70;
constexpr int kNoFile = 75;  // a folder of that name
constexpr int kThereAlready = 58;

struct StartFile {
  std::string corpus;
  std::string name;
  std::string loaded;  // the end of the status line behind "Loaded n"
  bool reports_none;   // also for n = 0
  std::size_t errors;  // as many different ones there are
};

const std::vector<StartFile> kListFiles = {
    {"group_list", "TETRA_GSSI.txt", " saved GSSIs", true, 3},
    {"subscriber_list", "TETRA_SSI.txt", " saved SSIs", true, 3},
    {"network_labels", "TETRA_mnc.txt", " network labels", false, 1},
    {"location_area_labels", "TETRA_la.txt", " location area labels", false, 1},
    {"country_labels", "TETRA_mcc.txt", " country code labels", false, 0},
    {"rec_only_list", "TETRA_rec_gssi.txt", " REC GSSIs", false, 0}};

void PrintTo(const StartFile& file, std::ostream* stream) {
  *stream << file.name;
}

// A good file for each name, so that it is the one bad file that ends the start.
void PutGoodFiles(ProgramFolder& folder) {
  folder.Write("corvane_simple.dat", SettingsFile({}));
  folder.Write("TETRA_GSSI.txt", "9001;262;1;Fire;0;True\r\n");
  folder.Write("TETRA_SSI.txt", "5010;9001;262;1;Car;2026-11-15 14:23:05\r\n");
  folder.Write("TETRA_mcc.txt", "262;Land\r\n");
  folder.Write("TETRA_mnc.txt", "262;1;Net\r\n");
  folder.Write("TETRA_la.txt", "262;1;100;Area\r\n");
  folder.Write("TETRA_rec_gssi.txt", "9001\r\n");
}

class MalformedFileTest : public PersistenceTest {
 protected:
  void SetUp() override { PutGoodFiles(Folder()); }
  // The start ends with these boxes and changes no file.
  void ExpectEndsUnchanged(const Boxes& boxes) {
    const FolderContent before = ContentOf(Folder());
    ExpectStartEnds(boxes);
    EXPECT_TRUE(ContentOf(Folder()) == before) << "a file was changed";
  }
};

// The last one announced is where an exception came from.
void Announce(const CorpusCase& one) {
  std::cout << "  " << one.name << std::endl;
}

class CorpusTest : public MalformedFileTest, public ::testing::WithParamInterface<StartFile> {};

// Dates are read by the settings of the machine, which take more than the one form that the cases
// of the corpus are judged by.
bool DateIsReadHere(const CorpusCase& one) {
  if (!one.name.starts_with("date_")) return false;
  const std::vector<std::string> lines = FileLines(one.content);
  const std::string date = lines.at(0).substr(lines.at(0).rfind(';') + 1);
  return WallClockWin().ParseGeneralDate(date).has_value();
}

// Countries and the record-only list have no error: what is wrong there is passed over.
class CorpusErrorTest : public CorpusTest {};

TEST_P(CorpusErrorTest, AListFileWithAnErrorEndsTheStartWithItsNumber) {
  std::set<std::string> errors;
  for (const CorpusCase& one : ReadCorpus(GetParam().corpus)) {
    if (!one.outcome.starts_with("error") || DateIsReadHere(one)) continue;
    if (!errors.insert(one.outcome).second) continue;
    Announce(one);
    SCOPED_TRACE(one.name);
    Folder().Write(GetParam().name, one.content);
    ExpectEndsUnchanged({FileAccessBox(std::stoi(one.outcome.substr(6)))});
  }
  EXPECT_EQ(errors.size(), GetParam().errors);
}

TEST_P(CorpusTest, AnyOtherListFileLoadsWithItsCount) {
  std::set<std::string> loaded;
  for (const CorpusCase& one : ReadCorpus(GetParam().corpus)) {
    if (one.outcome.starts_with("error") || !loaded.insert(one.outcome).second) continue;
    Announce(one);
    SCOPED_TRACE(one.name);
    Folder().Write(GetParam().name, one.content);
    Start();
    const std::string count = one.outcome.substr(one.outcome.find(' ') + 1);
    const bool reported = count != "0" || GetParam().reports_none;
    EXPECT_EQ(Program().InStatusLog("Loaded " + count + GetParam().loaded), reported);
    if (GetParam().corpus != "group_list") {
      Program().Kill();
      continue;
    }
    CloseAndWait();
    EXPECT_TRUE(Folder().Read(GetParam().name) == (count == "0" ? one.content : *one.after));
  }
  EXPECT_GE(loaded.size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Files, CorpusTest, ::testing::ValuesIn(kListFiles),
                         [](const auto& info) { return info.param.corpus; });
INSTANTIATE_TEST_SUITE_P(Files, CorpusErrorTest,
                         ::testing::ValuesIn(kListFiles.begin(), kListFiles.begin() + 4),
                         [](const auto& info) { return info.param.corpus; });

// What is wrong with settings, as their cases are called: "cut", "box".
std::string WhatIsWrong(const CorpusCase& one) {
  return one.name.substr(0, one.name.find('_'));
}

TEST_F(MalformedFileTest, SettingsThatAControlRefusesAreDeletedWithTheVersionBox) {
  std::set<std::string> refused;
  for (const CorpusCase& one : ReadCorpus("settings")) {
    if (one.outcome != "refused" || !refused.insert(WhatIsWrong(one)).second) continue;
    Announce(one);
    SCOPED_TRACE(one.name);
    Folder().Write("corvane_simple.dat", one.content);
    ExpectStartEnds({VersionChangeBox()});
    EXPECT_FALSE(Folder().Has("corvane_simple.dat"));
  }
  EXPECT_GE(refused.size(), 7U);
  StartAndClose();  // the start after that begins from the defaults
  EXPECT_TRUE(Folder().Has("corvane_simple.dat"));
}

TEST_F(MalformedFileTest, EmptySettingsFileIsDeletedWithItsBox) {
  Folder().Write("corvane_simple.dat", "");
  ExpectStartEnds({CorruptBox()});
  EXPECT_FALSE(Folder().Has("corvane_simple.dat"));
  StartAndClose();
}

TEST_F(MalformedFileTest, EmptySettingsFileThatCannotBeDeletedEndsWithTheFileAccessBox) {
  Folder().Write("corvane_simple.dat", "");
  const HeldFile held(Folder().Path() / "corvane_simple.dat", HeldFile::Sharing::kReadOnly);
  ExpectStartEnds({CorruptBox(), FileAccessBox(kInUse)});
  EXPECT_TRUE(Folder().Has("corvane_simple.dat"));
}

TEST_F(MalformedFileTest, RefusedSettingsFileThatCannotBeDeletedEndsWithTheFileAccessBox) {
  Settings settings;
  settings.offset_index = 4;
  Folder().Write("corvane_simple.dat", SettingsFile(settings));
  const HeldFile held(Folder().Path() / "corvane_simple.dat", HeldFile::Sharing::kReadOnly);
  ExpectEndsUnchanged({FileAccessBox(kInUse)});
}

// What no control refuses is replaced by its default without a word, also where the file is short.
TEST_F(MalformedFileTest, SettingsThatAreShortOrOutOfRangeStartWithDefaultsInTheirPlace) {
  std::set<std::string> still_wanted = {"cut", "timeout", "volume", "park"};
  for (const CorpusCase& one : ReadCorpus("settings")) {
    if (one.outcome != "applied" || still_wanted.erase(WhatIsWrong(one)) == 0) continue;
    Announce(one);
    SCOPED_TRACE(one.name);
    Folder().Write("corvane_simple.dat", one.content);
    Start();
    EXPECT_EQ(Folder().Read("corvane_simple.dat"), one.content) << "reading changed the file";
    CloseAndWait();
    // The window's place is not the case's matter: it may have been off the screen.
    EXPECT_EQ(Folder().Read("corvane_simple.dat").erase(2, 8), std::string(*one.after).erase(2, 8));
  }
  EXPECT_TRUE(still_wanted.empty());
}

TEST_F(MalformedFileTest, FolderInPlaceOfAFileEndsTheStart) {
  for (const char* name : {"corvane_simple.dat", "TETRA_GSSI.txt", "TETRA_SSI.txt", "TETRA_mcc.txt",
                           "TETRA_mnc.txt", "TETRA_la.txt", "TETRA_rec_gssi.txt"}) {
    SCOPED_TRACE(name);
    PutGoodFiles(Folder());
    std::filesystem::remove(Folder().Path() / name);
    std::filesystem::create_directory(Folder().Path() / name);
    ExpectEndsUnchanged({FileAccessBox(kNoFile)});
    EXPECT_TRUE(std::filesystem::is_directory(Folder().Path() / name));
    std::filesystem::remove(Folder().Path() / name);
  }
}

TEST_F(MalformedFileTest, FileThatAnotherProgramHoldsEndsTheStart) {
  for (const char* name : {"corvane_simple.dat", "TETRA_GSSI.txt", "TETRA_SSI.txt", "TETRA_mcc.txt",
                           "TETRA_mnc.txt", "TETRA_la.txt", "TETRA_rec_gssi.txt"}) {
    SCOPED_TRACE(name);
    const HeldFile held(Folder().Path() / name, HeldFile::Sharing::kNone);
    ExpectStartEnds({FileAccessBox(kInUse)});
  }
  StartAndClose();  // and all is as it was once nobody holds them
}

TEST_F(MalformedFileTest, ReadOnlyFilesAreReadAndAFullSetOfThemStarts) {
  for (const auto& [name, content] : ContentOf(Folder())) {
    SetReadOnly(Folder().Path() / name, true);
  }
  Start();
  EXPECT_TRUE(Program().InStatusLog("Loaded 1 saved GSSIs"));
  Program().Kill();
  for (const auto& [name, content] : ContentOf(Folder())) {
    SetReadOnly(Folder().Path() / name, false);
  }
}

TEST_F(MalformedFileTest, OldNetworkFileIsRenamedWithANotice) {
  std::filesystem::remove(Folder().Path() / "TETRA_mnc.txt");
  Folder().Write("TETRA_network.txt", "262;1;Old\r\n262;2;Two\r\n");
  Program().Launch();
  ExpectBox(RenamedBox());
  Await("the window", [&] { return Program().Window() != 0; });
  EXPECT_EQ(Program().Box(), 0U);
  EXPECT_TRUE(Program().InStatusLog("Loaded 2 network labels"));
  EXPECT_FALSE(Folder().Has("TETRA_network.txt"));
  EXPECT_EQ(Folder().Read("TETRA_mnc.txt"), "262;1;Old\r\n262;2;Two\r\n");
  CloseAndWait();
  Start();  // no second notice
  CloseAndWait();
}

TEST_F(MalformedFileTest, OldNetworkFileWithAnErrorIsRenamedBeforeItsErrorIsShown) {
  std::filesystem::remove(Folder().Path() / "TETRA_mnc.txt");
  Folder().Write("TETRA_network.txt", "262\r\n");
  ExpectStartEnds({RenamedBox(), FileAccessBox(9)});
  EXPECT_EQ(Folder().Read("TETRA_mnc.txt"), "262\r\n");
}

TEST_F(MalformedFileTest, OldNetworkFileBesideTheNewOneEndsTheStart) {
  Folder().Write("TETRA_network.txt", "262;1;Old\r\n");
  ExpectEndsUnchanged({FileAccessBox(kThereAlready)});
}

TEST_F(MalformedFileTest, OldNetworkFileThatAnotherProgramHoldsEndsTheStartWithoutTheNotice) {
  std::filesystem::remove(Folder().Path() / "TETRA_mnc.txt");
  Folder().Write("TETRA_network.txt", "262;1;Old\r\n");
  const HeldFile held(Folder().Path() / "TETRA_network.txt", HeldFile::Sharing::kNone);
  ExpectStartEnds({FileAccessBox(kInUse)});
  EXPECT_TRUE(Folder().Has("TETRA_network.txt"));
  EXPECT_FALSE(Folder().Has("TETRA_mnc.txt"));
}

TEST_F(MalformedFileTest, FileInPlaceOfTheFolderOfDaysIsReportedAndTheProgramRuns) {
  Folder().Write("Daily", "no folder");
  Start();
  EXPECT_TRUE(Program().InStatusLog("Error creating folder "));
  EXPECT_TRUE(Program().InStatusLog("\\Daily [75]"));
  CloseAndWait();
  EXPECT_EQ(Folder().Read("Daily"), "no folder");
}

TEST_F(MalformedFileTest, FirstBadFileInTheOrderOfLoadingIsTheOneReported) {
  Folder().Write("TETRA_SSI.txt", "x;9001;262;1;Car;2026-11-15 14:23:05\r\n");  // 13
  Folder().Write("TETRA_GSSI.txt", "99999999999;262;1;Fire;0;True\r\n");        // 6
  Folder().Write("TETRA_la.txt", "262;1\r\n");                                  // 9
  ExpectEndsUnchanged({FileAccessBox(9)});
  Folder().Write("TETRA_la.txt", "");
  ExpectEndsUnchanged({FileAccessBox(6)});
  Folder().Write("TETRA_GSSI.txt", "");
  ExpectEndsUnchanged({FileAccessBox(13)});
}

}  // namespace
}  // namespace corvane::desktop
