// Lists for other programs: rows as their readers want them, and the same names when they come
// back.
#include <gmock/gmock.h>

#include <filesystem>

#include "base/text.h"
#include "tools/lists/foreign_list.h"
#include "unit/tools/tools_fixture.h"

namespace corvane::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class ListsExportTest : public ToolsTest {
 protected:
  // What is printed for a folder with these lists.
  Run Export(const std::string& format, const std::string& groups, const std::string& radios = "") {
    Put("from/TETRA_GSSI.txt", groups);
    Put("from/TETRA_SSI.txt", radios);
    const Run run =
        Tools({"lists", "export", format, "--folder", Path("from"), "--network", "262/42"});
    EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
    return run;
  }
  // The lists that an import of `list` into an empty folder gives, as "number;label".
  std::vector<std::string> Imported(const std::string& format, const std::string& list) {
    std::filesystem::remove_all(Path("to"));
    std::filesystem::create_directories(Path("to"));
    const Run run = Tools({"lists", "import", format, Put("list", list), "--folder", Path("to"),
                           "--network", "262/42", "--write"});
    EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
    EXPECT_THAT(run.out, HasSubstr(" 0 rows skipped"));
    std::vector<std::string> named;
    for (const char* name : {"to/TETRA_GSSI.txt", "to/TETRA_SSI.txt"}) {
      for (const std::string& line : FileLines(Content(name))) {
        const std::vector<std::string> fields = Split(line, ';');
        const bool group = std::string(name).ends_with("GSSI.txt");
        named.push_back(fields[0] + ";" + fields[group ? 3 : 4]);
      }
    }
    return named;
  }
  // "1;262;42;label;0;True" and so on.
  static std::string GroupList(const std::vector<std::string>& labels) {
    std::string text;
    for (std::size_t i = 0; i < labels.size(); ++i) {
      text += std::to_string(i + 1) + ";262;42;" + labels[i] + ";0;True\r\n";
    }
    return text;
  }
  static std::string RadioList(const std::vector<std::string>& labels) {
    std::string text;
    for (std::size_t i = 0; i < labels.size(); ++i) {
      text += std::to_string(i + 1) + ";9001;262;42;" + labels[i] + ";2026-11-15 14:23:05\r\n";
    }
    return text;
  }
  static std::vector<std::string> Numbered(const std::vector<std::string>& labels) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < labels.size(); ++i) {
      lines.push_back(std::to_string(i + 1) + ";" + labels[i]);
    }
    return lines;
  }
};

const std::vector<std::string> kLabels = {"Fire north",
                                          "K\xF6ln, S\xFC"
                                          "d",
                                          "\"Quoted\", \"\"",
                                          "a\\\",b\\",
                                          "=1+1",
                                          "-2",
                                          "+x",
                                          "@y",
                                          "'t is",
                                          "</script> & <b>",
                                          "\x80\x84\x99\xFF",
                                          "123456789012345678901234567890",
                                          "a  b",
                                          "/x/",
                                          "#1"};

TEST_F(ListsExportTest, TheSameNamesComeBackFromEveryFormat) {
  for (const char* format :
       {"trunk-recorder", "radioreference", "dsd-fme", "telive", "dsdplus-groups", "op25"}) {
    const bool plain = std::string(format) == "dsdplus-groups";
    std::vector<std::string> expected = Numbered(kLabels);
    if (plain) {
      for (std::string& line : expected) line = ReplaceAll(line, "\"", "'");
    }
    if (std::string(format) == "op25") expected.back() = "15;No1";
    EXPECT_EQ(Imported(format, Export(format, GroupList(kLabels)).out), expected) << format;
  }
  for (const char* format : {"trunk-recorder-units", "dsdplus-radios"}) {
    const bool plain = std::string(format) == "dsdplus-radios";
    std::vector<std::string> expected = Numbered(kLabels);
    if (plain) {
      for (std::string& line : expected) line = ReplaceAll(line, "\"", "'");
    }
    EXPECT_EQ(Imported(format, Export(format, GroupList({"x"}), RadioList(kLabels)).out), expected)
        << format;
  }
}

TEST_F(ListsExportTest, RowsAsTheirReadersWantThem) {
  const std::string groups =
      "9001;262;42;Fire, K\xF6ln #1;0;True\r\n"
      "9002;262;42;\x80\x93 \"south\";0;False\r\n"
      "9003;262;42;;0;True\r\n"
      "7;1;1;Another network;0;True\r\n";
  const std::string name1 = "Fire, K\xC3\xB6ln #1";
  const std::string name2 = "\xE2\x82\xAC\xE2\x80\x9C \"south\"";
  EXPECT_EQ(Export("trunk-recorder", groups).out,
            "Decimal,Hex,Alpha Tag,Mode,Description,Tag,Category,Priority\n"
            "9001,2329,\"" +
                name1 + "\",T,\"" + name1 +
                "\",TETRA,262-42,1\n"
                "9002,232a,\"" +
                ReplaceAll(name2, "\"", "\"\"") + "\",T,\"" + ReplaceAll(name2, "\"", "\"\"") +
                "\",TETRA,262-42,-1\n");
  EXPECT_THAT(FileLines(Export("radioreference", groups).out),
              ElementsAre("Decimal,Hex,Alpha Tag,Mode,Description,Tag,Category",
                          HasSubstr("9001,2329,\"Fire, "), HasSubstr("9002,232a,")));
  EXPECT_EQ(Export("op25", groups).out, "9001\tFire, K\xC3\xB6ln No1\n9002\t" + name2 + "\n");
  EXPECT_EQ(Export("dsd-fme", groups).out,
            "id,mode,name,tag\n9001,A,Fire; K\xC3\xB6ln #1,TETRA\n"
            "9002,B," +
                name2 + ",TETRA\n");
  EXPECT_EQ(Export("rdio-scanner", groups).out,
            "9001,2329,Fire; K\xF6ln #1,T,Fire; K\xF6ln #1,TETRA,262-42\n"
            "9002,232a,E\" \"south\",T,E\" \"south\",TETRA,262-42\n")
      << "Latin-1, and no comma but those between the cells";
  EXPECT_EQ(Export("dsdplus-groups", groups).out,
            "; protocol, networkID, group, priority, override, hits, timestamp, \"alias\"\r\n"
            "TETRA, 262-42, 9001, 50, Normal, 0, 0001/01/01  0:00, \"Fire, K\xF6ln #1\"\r\n"
            "TETRA, 262-42, 9002, 50, Normal, 0, 0001/01/01  0:00, \"\x80\x93 'south'\"\r\n");
  EXPECT_THAT(Export("op25", groups).err, HasSubstr("2 rows written, 1 without a name left out\n"));
}

TEST_F(ListsExportTest, RadiosOnceOrUnderEachGroup) {
  const std::string radios =
      "5010;9001;262;42;;2026-11-15 14:23:05\r\n"
      "5010;9002;262;42;Control;2026-11-15 14:23:05\r\n"
      "5010;9003;262;42;Control 3;2026-11-15 14:23:05\r\n"
      "5011;9001;262;42;$1;2026-11-15 14:23:05\r\n"
      "9001;9001;262;42;Number of a group;2026-11-15 14:23:05\r\n";
  const Run units = Export("trunk-recorder-units", GroupList({"x"}), radios);
  EXPECT_EQ(units.out, "9001,Number of a group\n5010,Control\n");
  EXPECT_THAT(units.err,
              HasSubstr("2 rows written, 1 skipped\nradio 5011 has a \"$\" in its name"));
  EXPECT_THAT(
      FileLines(Export("dsdplus-radios", GroupList({"x"}), radios).out),
      ElementsAre(HasSubstr("; protocol"), HasSubstr("9001, 5011, "), HasSubstr("9001, 9001, "),
                  HasSubstr("9002, 5010, 50, Normal, "), HasSubstr("\"Control 3\"")));
  const Run both = Export("telive", "9001;262;42;Fire;0;True\r\n", radios);
  EXPECT_EQ(both.out, "9001 Fire\n5011 $1\n5010 Control\n");
  EXPECT_THAT(both.err, HasSubstr("radio 9001 has the number of a group\n"));
}

TEST_F(ListsExportTest, WithinTheLimitsOfTheReaders) {
  const std::string euros(30, '\x80');
  const std::string groups =
      "16777215;262;42;" + euros + ";0;True\r\n-5;262;42;Negative;0;True\r\n";
  const Run telive = Export("telive", groups);
  EXPECT_EQ(telive.out.size(), 9U + 29 * 3 + 1) << "under 99 bytes, whole letters, LF alone";
  EXPECT_THAT(telive.err, HasSubstr("group -5 is none of 0 to 16777215\n"));
  const std::vector<std::string> fme = Split(FileLines(Export("dsd-fme", groups).out).back(), ',');
  EXPECT_EQ(fme[2].size(), 16U * 3) << "under 50 bytes";
  const Run many = Export("dsd-fme", GroupList(std::vector<std::string>(1025, "x")));
  EXPECT_EQ(FileLines(many.out).size(), 1U + 1023);
  EXPECT_THAT(many.err, HasSubstr("1023 rows written, 2 skipped\ngroup 1024 is one too many"));
}

TEST_F(ListsExportTest, IntoAFile) {
  Put("from/TETRA_GSSI.txt", GroupList({"x"}));
  const Run run = Tools({"lists", "export", "op25", "--folder", Path("from"), "-o", Path("out")});
  EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(Content("out"), "1\tx\n");
}

}  // namespace
}  // namespace corvane::tools
