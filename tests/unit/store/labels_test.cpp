#include "store/labels.h"

#include <gtest/gtest.h>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

TEST(LabelLines, KeepsLinesAsTheyAre) {
  LabelLines labels(2);
  EXPECT_EQ(labels.size(), 0U);
  labels.Append("262;1; Blue net ;extra");
  EXPECT_EQ(labels.size(), 1U);
  EXPECT_EQ(labels[0], "262;1; Blue net ;extra");
}

TEST(LabelLines, ALabelIsTheFieldBehindTheKey) {
  LabelLines labels(2);
  labels.Append("262;1;Blue net;extra");
  labels.Append("262;2;");
  labels.Append("262;3");
  EXPECT_EQ(labels.Find("262;1"), "Blue net");
  EXPECT_EQ(labels.Find("262;2"), "");
  EXPECT_EQ(labels.Find("262;3"), "") << "a line without a label has an empty one";
  EXPECT_EQ(labels.Find("262;4"), std::nullopt);
}

TEST(LabelLines, AnEmptyKeyIsAKey) {
  LabelLines lines(1);
  lines.Append(";Name");
  EXPECT_EQ(lines.Find(""), "Name");
  EXPECT_EQ(lines.Find(";Name"), std::nullopt);
}

TEST(LabelLines, NumbersAreComparedAsText) {
  LabelLines labels(1);
  labels.Append("0262;Zero");
  labels.Append(" 262;Blank");
  EXPECT_EQ(labels.Find("262"), std::nullopt);
  EXPECT_EQ(labels.Find("0262"), "Zero");
}

TEST(LabelLines, TheFirstOfSeveralLinesWins) {
  LabelLines labels(3);
  labels.Append("262;1;100;First");
  labels.Append("262;1;100;Second");
  EXPECT_EQ(labels.Find("262;1;100"), "First");
}

TEST(LabelLines, ResetForgetsEverything) {
  LabelLines labels(1);
  labels.Append("262;Land");
  labels.Reset();
  EXPECT_EQ(labels.size(), 0U);
  EXPECT_EQ(labels.Find("262"), std::nullopt);
  labels.Append("262;Other");
  EXPECT_EQ(labels.Find("262"), "Other");
}

TEST(LabelLines, AKeyIsNeverAPartOfAField) {
  LabelLines labels(2);
  labels.Append("26;21;Wrong");
  EXPECT_EQ(labels.Find("26;2"), std::nullopt);
  EXPECT_EQ(labels.Find("26"), std::nullopt);
  EXPECT_EQ(labels.Find(""), std::nullopt);
}

class LabelFilesTest : public ::testing::Test {
 protected:
  const std::vector<std::string>& Status() const { return run.form.lstStatusLog.items(); }

  sim::SimFiles files;
  StoreRun run{files};
};

TEST_F(LabelFilesTest, AMissingFileIsNoErrorAndLoadsNothing) {
  EXPECT_EQ(run.labels.LoadNetworkLabels(), kNoError);
  EXPECT_EQ(run.labels.LoadLocationAreaLabels(), kNoError);
  EXPECT_EQ(run.labels.LoadCountryLabels(), kNoError);
  EXPECT_FALSE(run.names.NetworkLabels.loaded);
  EXPECT_FALSE(run.names.LocationAreaLabels.loaded);
  EXPECT_FALSE(run.names.CountryLabels.loaded);
  EXPECT_TRUE(Status().empty());
}

TEST_F(LabelFilesTest, EachFileSaysHowManyLabelsItHas) {
  files.Put(kNetworkPath, "262;1;Net\r\n262;2;Net two\r\n");
  files.Put(kAreaPath, "262;1;100;Area\r\n");
  files.Put(kCountryPath, "1;A\r\n2;B\r\n3;C\r\n");
  EXPECT_EQ(run.labels.LoadNetworkLabels(), kNoError);
  EXPECT_EQ(run.labels.LoadLocationAreaLabels(), kNoError);
  EXPECT_EQ(run.labels.LoadCountryLabels(), kNoError);
  EXPECT_EQ(Status(),
            (std::vector<std::string>{"Loaded 2 network labels", "Loaded 1 location area labels",
                                      "Loaded 3 country code labels"}));
  EXPECT_EQ(run.names.NetworkLabels.Find("262;2"), "Net two");
  EXPECT_EQ(run.names.LocationAreaLabels.Find("262;1;100"), "Area");
  EXPECT_EQ(run.names.CountryLabels.Find("3"), "C");
}

TEST_F(LabelFilesTest, AFileWithoutAnAcceptedLineIsLoadedWithoutAMessage) {
  files.Put(kCountryPath, "# nothing\r\n999;Nowhere\r\n");
  EXPECT_EQ(run.labels.LoadCountryLabels(), kNoError);
  EXPECT_TRUE(run.names.CountryLabels.loaded);
  EXPECT_EQ(run.names.CountryLabels.size(), 0U);
  EXPECT_TRUE(Status().empty());
}

TEST_F(LabelFilesTest, LoadingAgainBeginsAnew) {
  files.Put(kCountryPath, "1;A\r\n2;B\r\n");
  EXPECT_EQ(run.labels.LoadCountryLabels(), kNoError);
  EXPECT_EQ(run.labels.LoadCountryLabels(), kNoError);
  EXPECT_EQ(run.names.CountryLabels.size(), 2U);
}

TEST(ParseLabelFile, CountriesEndBelow999AndNetworksBelow1024) {
  LabelLines country(1);
  EXPECT_EQ(ParseLabelFile("998;In\n999;Out\n1000;Out\n-1;In\n", kCountryLimits, country), 0);
  EXPECT_EQ(country.size(), 2U);
  LabelLines network(2);
  EXPECT_EQ(ParseLabelFile("1000;1;In\n1023;16383;In\n1024;1;Out\n1;16384;Out\n", kNetworkLimits,
                           network),
            0);
  EXPECT_EQ(network.size(), 2U);
  LabelLines area(3);
  EXPECT_EQ(ParseLabelFile("1023;16383;16383;In\n1;1;16384;Out\n1024;1;1;Out\n1;16384;1;Out\n",
                           kLocationAreaLimits, area),
            0);
  EXPECT_EQ(area.size(), 1U);
}

TEST(ParseLabelFile, TooFewFieldsAreAnErrorEvenWhenTheyAreNotNumeric) {
  LabelLines network(2);
  EXPECT_EQ(ParseLabelFile("abc", kNetworkLimits, network), kTooFewFields);
  EXPECT_EQ(ParseLabelFile("262", kNetworkLimits, network), kTooFewFields);
  LabelLines area(3);
  EXPECT_EQ(ParseLabelFile("262;1", kLocationAreaLimits, area), kTooFewFields);
  LabelLines country(1);
  EXPECT_EQ(ParseLabelFile("abc", kCountryLimits, country), kNoError);
  EXPECT_EQ(country.size(), 0U);
}

TEST(ParseLabelFile, CommentsAndEmptyLinesArePassedOver) {
  LabelLines area(3);
  EXPECT_EQ(ParseLabelFile("# a\r\n'b\r\n\r\n1;1;1;A\r\n", kLocationAreaLimits, area), kNoError);
  EXPECT_EQ(area.size(), 1U);
}

TEST_F(LabelFilesTest, TheOldNetworkFileIsRenamedWithANotice) {
  files.Put(kOldNetworkPath, "262;1;Net\r\n");
  run.prompts.SetWhileOpen([this](const Box&) { EXPECT_TRUE(Has(files, kNetworkPath)); });
  EXPECT_EQ(run.labels.RenameOldNetworkFile(), kNoError);
  EXPECT_EQ(run.prompts.boxes(),
            (std::vector<Box>{{"This version changes file name for network label file.\r\n"
                               "'TETRA_network.txt' renamed to 'TETRA_mnc.txt'",
                               "Notice", BoxIcon::kCritical}}));
  EXPECT_FALSE(Has(files, kOldNetworkPath));
  EXPECT_EQ(files.Content(kNetworkPath), "262;1;Net\r\n");
  EXPECT_EQ(run.prompts.times_ended(), 0);
}

TEST_F(LabelFilesTest, WithBothNetworkFilesTheRenamingFailsWithoutTheNotice) {
  files.Put(kOldNetworkPath, "262;1;Old\r\n");
  files.Put(kNetworkPath, "262;1;New\r\n");
  EXPECT_EQ(run.labels.RenameOldNetworkFile(), kFileExists);
  EXPECT_TRUE(run.prompts.boxes().empty());
  EXPECT_EQ(files.Content(kNetworkPath), "262;1;New\r\n");
}

TEST_F(LabelFilesTest, WithoutAnOldFileNothingIsRenamed) {
  EXPECT_EQ(run.labels.RenameOldNetworkFile(), kNoError);
  EXPECT_TRUE(run.prompts.boxes().empty());
}

}  // namespace
}  // namespace corvane
