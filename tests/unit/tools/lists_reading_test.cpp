// What the lists of other programs say, in every form that they are met in.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "base/number_text.h"
#include "tools/lists/cells.h"
#include "tools/lists/foreign_list.h"
#include "tools/lists/label_text.h"

namespace corvane::tools {
namespace {

using ::testing::ElementsAre;

std::string Sample(const std::string& name) {
  std::ifstream stream("tests/golden/lists/" + name, std::ios::binary);
  EXPECT_TRUE(stream.good()) << name;
  return {std::istreambuf_iterator<char>(stream), {}};
}

// "101 Fire north", or of a radio under a group "9001/5010 Control".
std::vector<std::string> Names(const ForeignList& list) {
  std::vector<std::string> names;
  for (const ForeignEntry& entry : list.entries) {
    const std::string group = entry.group == 0 ? "" : Decimal(entry.group) + "/";
    names.push_back(group + Decimal(entry.number) + " " + entry.label);
  }
  return names;
}

// "7: lots is no number".
std::vector<std::string> Skipped(const ForeignList& list) {
  std::vector<std::string> rows;
  for (const SkippedRow& row : list.skipped) {
    rows.push_back(Decimal(row.line) + ": " + row.reason);
  }
  return rows;
}

ForeignList Read(ListFormat format, const std::string& name) {
  ForeignList list = ReadForeignList(format, Sample(name));
  EXPECT_EQ(list.problem, "");
  return list;
}

TEST(ListsReading, TrunkRecorderWithItsHeader) {
  const ForeignList list = Read(ListFormat::kTrunkRecorder, "trunk-recorder.csv");
  EXPECT_THAT(Names(list), ElementsAre("101 Dispatch \"A\", north", "102 Only described",
                                       "103 Quiet \\\"one\\\"", "104 Padded", "101 The same again",
                                       "106 Caf\xE9, the \x80 one",
                                       "107 Exactly thirty letters \xE4\xF6\xFC plu"));
  EXPECT_THAT(Skipped(list),
              ElementsAre("7: \"lots\" is no number", "8: \"16777216\" is none of 0 to 16777215",
                          "9: 105 has no name"));
}

TEST(ListsReading, TrunkRecorderWithColumnsInAnyOrder) {
  const ForeignList list =
      ReadForeignList(ListFormat::kTrunkRecorder,
                      "Decimal,Mode,Description,Comment\n7,D,\"He said \\\"no\\\" to\",x\n");
  EXPECT_THAT(Names(list), ElementsAre("7 He said \"no\" to"));
  EXPECT_EQ(ReadForeignList(ListFormat::kTrunkRecorder, "Decimal,Mode\n7,D\n").problem,
            "has no column of names: neither Alpha Tag nor Description");
}

TEST(ListsReading, TrunkRecorderWithoutHeaderHasAnotherOrder) {
  EXPECT_THAT(Names(Read(ListFormat::kTrunkRecorder, "trunk-recorder-headerless.csv")),
              ElementsAre("101 Fire north", "102 Fire, south"));
}

TEST(ListsReading, UnitTagsWithPatterns) {
  const ForeignList list = Read(ListFormat::kTrunkRecorderUnits, "trunk-recorder-units.csv");
  EXPECT_THAT(Names(list),
              ElementsAre("5010 Fire control", "5011 Engine 1, north", "5013 Ladder 'B'"));
  EXPECT_THAT(Skipped(list), ElementsAre("4: \"/^72[0-9]+$/\" is a pattern of several numbers",
                                         "5: \"85.*\" is no number", "6: 5012 has no name"));
}

TEST(ListsReading, RadioReferenceWithEachSeparator) {
  EXPECT_THAT(Names(Read(ListFormat::kRadioReference, "radioreference.csv")),
              ElementsAre("101 Fire N", "102 Fire, S"))
      << "a byte order mark, DEC, Group, semicolons";
  EXPECT_THAT(Names(Read(ListFormat::kRadioReference, "radioreference-headerless.csv")),
              ElementsAre("101 Fire N", "102 Fire south"));
  EXPECT_THAT(Names(Read(ListFormat::kRadioReference, "radioreference-tab.csv")),
              ElementsAre("101 K\xF6ln S\xFC"
                          "d",
                          "102 Only described"))
      << "tabs, an empty cell, no UTF-8";
  EXPECT_THAT(Names(ReadForeignList(ListFormat::kRadioReference,
                                    "Decimal|Hex|Alpha Tag\n101|65|Fire, N\n")),
              ElementsAre("101 Fire, N"));
}

TEST(ListsReading, DsdPlusWithLearntNames) {
  const ForeignList groups = Read(ListFormat::kDsdPlusGroups, "DSDPlus.groups");
  EXPECT_THAT(Names(groups), ElementsAre("9001 Fire, north", "9002 Learnt", "9004 K\xF6ln, \x80"));
  EXPECT_THAT(Skipped(groups), ElementsAre("4: \"DMR\" is another protocol than TETRA",
                                           "6: 9005 has no name", "7: no number"));
  const ForeignList radios = Read(ListFormat::kDsdPlusRadios, "DSDPlus.radios");
  EXPECT_THAT(Names(radios),
              ElementsAre("9001/5010 Control", "9002/5010 Control S", "5011 Engine 1"));
  EXPECT_THAT(Skipped(radios), ElementsAre("5: \"x\" is no number"));
}

TEST(ListsReading, Op25CutsAtTheHash) {
  const ForeignList list = Read(ListFormat::kOp25, "op25.tsv");
  EXPECT_THAT(Names(list), ElementsAre("101 Fire north", "102 Engine",
                                       "104 Gr\xFCn, ?\xF3"
                                       "d?"));
  EXPECT_THAT(Skipped(list), ElementsAre("5: 103 has no name", "6: \"bad row\" is no number"));
}

TEST(ListsReading, TeliveWithOneBlank) {
  const ForeignList list = Read(ListFormat::kTelive, "telive.txt");
  EXPECT_THAT(Names(list), ElementsAre("9001 Fire north", "5010 Engine 1", "9001 The same again",
                                       "9003 Two blanks", "9004 " + std::string(30, '\x80')));
  EXPECT_THAT(Skipped(list), ElementsAre("4: 9002 has no name"));
}

TEST(ListsReading, DsdFmePassesOverEmptyCells) {
  const ForeignList list = Read(ListFormat::kDsdFme, "dsd-fme.csv");
  EXPECT_THAT(Names(list), ElementsAre("102 Fire north", "103 Blocked", "104 Encrypted", "105 x",
                                       "107 \"Quoted, kept\""));
  EXPECT_THAT(Skipped(list), ElementsAre("6: 106 has no name", "7: \"1200-1299\" is no number"));
}

TEST(ListsReading, NamesAreUntrusted) {
  EXPECT_EQ(LabelFrom("a\x01\x1B[2Jb\x7F"), "a[2Jb");
  EXPECT_EQ(LabelFrom(" a\tb;c "), "a b,c");
  EXPECT_EQ(LabelFrom("a\xC2\x85"
                      "b"),
            "ab")
      << "a control character in UTF-8";
  EXPECT_EQ(LabelFrom("\x81\x8D"), "");
  EXPECT_EQ(LabelFrom(std::string(29, 'a') + " b"), std::string(29, 'a')) << "no blank at the cut";
  EXPECT_EQ(LabelFrom(std::string(29, 'a') + "\xC3\xA4\xC3\xA4"), std::string(29, 'a') + "\xE4");
  const ForeignList list =
      ReadForeignList(ListFormat::kOp25, "\x1B[2J" + std::string(100, 'x') + "\tname\n");
  EXPECT_THAT(Skipped(list), ElementsAre("1: \"[2J" + std::string(37, 'x') + "...\" is no number"));
}

TEST(ListsReading, AnyBytesAndUtf16) {
  EXPECT_EQ(ReadForeignList(ListFormat::kOp25, "\xFF\xFE\x31").problem,
            "is UTF-16: save it as UTF-8");
  std::string rubbish;
  std::uint32_t state = 4711;
  for (int i = 0; i < 100'000; ++i) {
    state = state * 1664525U + 1013904223U;
    rubbish += static_cast<char>(state >> 24U);
  }
  for (int index = 0; index < kListFormats - 1; ++index) {
    const ForeignList list = ReadForeignList(static_cast<ListFormat>(index), rubbish);
    for (const ForeignEntry& entry : list.entries) {
      EXPECT_FALSE(entry.label.empty());
      EXPECT_LE(entry.label.size(), 30U);
    }
    EXPECT_FALSE(list.skipped.empty()) << NameOf(static_cast<ListFormat>(index));
  }
}

TEST(ListsReading, QuotationMarksThatAreNotClosedAreLetters) {
  const CellRules rules;
  EXPECT_THAT(CellsOf("\"a,b", rules), ElementsAre("\"a", "b"));
  EXPECT_THAT(CellsOf("\"a\" x,b", rules), ElementsAre("\"a\" x", "b"));
  EXPECT_THAT(CellsOf("\"a,\"\"b\"\"\" ,,\" c \"", rules), ElementsAre("a,\"b\"", "", " c "));
  EXPECT_THAT(CellsOf("\"a\\\"\",b\",\"c\\\"", {.backslash = true}), ElementsAre("a\\\",b", "c\\"));
}

TEST(ListsReading, LettersAreCutWhole) {
  EXPECT_EQ(CutLetters("a\xE2\x82\xAC", 3), "a");
  EXPECT_EQ(CutLetters("a\xE2\x82\xAC", 4), "a\xE2\x82\xAC");
  EXPECT_EQ(CutLetters("a b", 2), "a");
}

}  // namespace
}  // namespace corvane::tools
