#include "core/pdu_fields.h"

#include <string>

#include <gtest/gtest.h>

namespace corvane {
namespace {

const std::string kSetup =
    "SSI:9001 D_Setup Transmission Granted Call ID:1207 Basic_service:Point_to_multipoint "
    "Party_SSI:5010 TimeSlot:2 Carrier:2610 ";

TEST(PduFields, EveryFieldOfASetupLineIsRead) {
  EXPECT_EQ(BasicService(kSetup), "Point_to_multipoint");
  EXPECT_EQ(CallId(kSetup), 1207);
  EXPECT_EQ(CallingParty(kSetup), 5010);
  EXPECT_EQ(SetupStatus(kSetup), "Transmission Granted");
  EXPECT_EQ(Group(kSetup), 9001);
  EXPECT_EQ(TimeSlot(kSetup), 2);
  EXPECT_EQ(Carrier(kSetup), 2610);
}

TEST(PduFields, TheTwoWordsOfAStatusAreTakenWhole) {
  EXPECT_EQ(SetupStatus("D_Setup Transmission Not_granted Call ID:1 "), "Transmission Not_granted");
  EXPECT_EQ(SetupStatus("D_Setup Transmission Request_queued x"), "Transmission Request_queued");
}

TEST(PduFields, TheFirstSsiKeyCountsEvenInsideAnotherWord) {
  EXPECT_EQ(Group("Party_SSI:5010 D_Setup SSI:9001 "), 5010);
}

TEST(PduFields, KeysAreCaseSensitive) {
  EXPECT_FALSE(CallId("call id:5 "));
  EXPECT_FALSE(Group("ssi:5 "));
  EXPECT_FALSE(Carrier("carrier:5 "));
}

TEST(PduFields, AValueWithoutClosingBlankIsMissing) {
  EXPECT_FALSE(CallId("Call ID:1207"));
  EXPECT_FALSE(Group("SSI:9001"));
  EXPECT_FALSE(Carrier("TimeSlot:2 Carrier:2610"));
  EXPECT_FALSE(BasicService("Basic_service:Individual"));
  EXPECT_FALSE(SetupStatus("D_Setup Transmission Granted"));
  EXPECT_FALSE(SetupStatus("D_Setup"));
}

TEST(PduFields, ABlankBehindTheKeyMeansAnEmptyValue) {
  EXPECT_FALSE(CallId("Call ID: 1207 "));
  EXPECT_FALSE(Group("SSI: 9001 "));
}

TEST(PduFields, NumbersMustFitTheirTypes) {
  EXPECT_EQ(CallId("Call ID:32767 "), 32767);
  EXPECT_FALSE(CallId("Call ID:32768 "));
  EXPECT_FALSE(CallId("Call ID:40000 "));
  EXPECT_EQ(Carrier("Carrier:99999 "), 99999);
  EXPECT_FALSE(Carrier("Carrier:2147483648 "));
  EXPECT_FALSE(TimeSlot("TimeSlot:x "));
  EXPECT_FALSE(TimeSlot("TimeSlot:-1 "));
  EXPECT_FALSE(Group("SSI:99999999999999999999 "));
  EXPECT_FALSE(Group("SSI:90x1 "));
}

TEST(PduFields, TheGrantedPartyRunsToTheEndOfTheLine) {
  EXPECT_EQ(GrantedParty("D_TX_Granted Call ID:1 Party_SSI:5011"), 5011);
  EXPECT_EQ(GrantedParty("D_TX_Granted Call ID:1 Party_SSI:5011  "), 5011);
}

TEST(PduFields, TextBehindTheGrantedPartyIsSurvived) {
  EXPECT_EQ(GrantedParty("D_TX_Granted Call ID:1 Party_SSI:5011 Carrier:2610 "), 5011);
  EXPECT_FALSE(GrantedParty("D_TX_Granted Call ID:1 Party_SSI:x 5011"));
  EXPECT_FALSE(GrantedParty("D_TX_Granted Call ID:1 Party_SSI:"));
  EXPECT_FALSE(GrantedParty("D_TX_Granted Call ID:1"));
}

TEST(PduFields, ASetupNeedsItsNameAndItsService) {
  EXPECT_TRUE(IsSetup(kSetup));
  EXPECT_FALSE(IsSetup("SSI:9001 D_Setup Transmission Granted Call ID:1207 "));
  EXPECT_FALSE(IsSetup("Basic_service:Individual "));
}

TEST(PduFields, AnyCutOffLineIsSurvived) {
  for (std::size_t size = 0; size <= kSetup.size(); ++size) {
    const std::string line = kSetup.substr(0, size);
    static_cast<void>(BasicService(line));
    static_cast<void>(SetupStatus(line));
    static_cast<void>(GrantedParty(line));
    EXPECT_EQ(Carrier(line).has_value(), size == kSetup.size());
  }
}

}  // namespace
}  // namespace corvane
