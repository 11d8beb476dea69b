// Day folders in every state, and the records that come of them.
#include "archive/day_reader.h"

#include <gmock/gmock.h>

#include "archive/call_text.h"
#include "archive/instant.h"
#include "unit/archive/folder_fixture.h"
#include "unit/archive/wav_bytes.h"

namespace corvane::tools {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string Sound(double seconds) {
  return WavBytes(std::vector<int>(static_cast<std::size_t>(seconds * 1000), 4000), 1000);
}

class DayReaderTest : public FolderTest {
 protected:
  DayResult Read(const std::vector<std::string>& names, const UserLists* lists = nullptr) {
    DayRequest request;
    for (const std::string& name : names) {
      const auto day = OpenDayFolder(Path(name));
      EXPECT_TRUE(day) << name;
      if (day) request.days.push_back(*day);
    }
    request.lists = lists;
    return ReadDays(request);
  }
  std::vector<std::string> Json(const DayResult& result) {
    std::vector<std::string> lines;
    for (const CallRecord& call : result.calls) lines.push_back(CallJson(call));
    return lines;
  }
  // A call of group 9001 from 14:23:05 to 14:23:20.
  void PutEvents(const std::string& day = "20261115") {
    Put(day + "/TETRA_event.log",
        "15/11/2026 14:00:00 - MCC:262  MNC:42  LA:101\r\n\r\n"
        "15/11/2026 14:23:05 - Call ID: 7 - On carrier: 2610 - Group: 9001 [Fire & \"rescue\"]\r\n"
        "15/11/2026 14:23:05 - Call ID: 7 - Calling SSI: 5010 [K\xF6ln]\r\n"
        "15/11/2026 14:23:11 - Call ID: 7 - VC D-TX-Ceased SSI: 5010 [K\xF6ln]\r\n"
        "15/11/2026 14:23:12 - Call ID: 7 - VC D-TX-Granted SSI: 5011\r\n"
        "15/11/2026 14:23:20 - Call ID: 7 - VC D-Released\r\n\r\n");
  }
};

TEST_F(DayReaderTest, ACallOfAllTheFiles) {
  PutEvents();
  Put("20261115/TETRA_cc.log",
      "SSI:9001 D_Setup Transmission Granted Call ID:7 Basic_service:Point_to_multipoint "
      "Party_SSI:5010 TimeSlot:2 Carrier:2610 \r\n");
  Put("20261115/Record/142306_7_9001.wav", Sound(14.5));
  const DayResult result = Read({"20261115"});
  EXPECT_THAT(
      Json(result),
      ElementsAre(R"({"start":"2026-11-15T14:23:05","length_s":15,"mcc":262,"mnc":42,"gssi":9001,)"
                  R"("label":"Fire & \"rescue\"","call_id":7,"carrier":2610,"slot":2,)"
                  R"("talkers":[{"ssi":5010,"label":"K)"
                  "\xC3\xB6"
                  R"(ln","pos_s":0},{"ssi":5011,"label":null,"pos_s":7}],)"
                  R"("recording":"Record/142306_7_9001.wav","end":"released"})"));
  EXPECT_THAT(result.notices, IsEmpty());
}

TEST_F(DayReaderTest, EveryEndOfACall) {
  std::string log;
  int second = 10;
  for (const char* end : {"Call ID: 7 - VC D-Released", "Call ID: 7 - VC D-Disconnect",
                          "Call timeout occured - Did not see D-Release for Call ID: 7",
                          "Manual D-Release occured and UI reset", "Call ID: 8 - VC D-Released"}) {
    const std::string stamp = "15/11/2026 14:00:" + std::to_string(second++) + " - ";
    log += stamp + "Call ID: 7 - On carrier: 2610 - Group: 9001 \r\n" + stamp +
           "Call ID: 7 - Calling SSI: 5010\r\n" + stamp + end + "\r\n";
  }
  Put("20261115/TETRA_event.log", log);
  std::vector<std::string> ends;
  for (const CallRecord& call : Read({"20261115"}).calls) ends.emplace_back(NameOf(call.end));
  EXPECT_THAT(ends, ElementsAre("released", "disconnected", "timed_out", "forced", "unknown"));
}

TEST_F(DayReaderTest, ACallWithABadTimeslotIsNone) {
  Put("20261115/TETRA_event.log",
      "15/11/2026 14:00:00 - Call ID: 7 - On carrier: 2610 - Group: 9001 \r\n"
      "15/11/2026 14:00:00 - Call ID: 7 - Calling SSI: 5010\r\n"
      "15/11/2026 14:00:00 - Timeslot is not valid - call setup aborted\r\n");
  EXPECT_THAT(Read({"20261115"}).calls, IsEmpty());
}

TEST_F(DayReaderTest, CountedCallsStandInTwoFilesAndAreOne) {
  Put("20261115/TETRA_event.log",
      "15/11/2026 14:00:01 - Call ID: 7 - On carrier: 2610 - Group: 9001 \r\n");
  Put("20261115/DailyCallActivity_15-11-2026.csv",
      "14:00:00;9001;7;D-Setup Transmission Granted\r\n"
      "14:00:30;9001;8;D-Setup Transmission Granted\r\n"
      "14:00:40;9001;9;D-Setup Transmission Not_granted\r\n"
      "nonsense\r\n25:00:00;1;1;D-Setup Transmission Granted\r\n");
  const DayResult result = Read({"20261115"});
  ASSERT_EQ(result.calls.size(), 2U);
  EXPECT_EQ(result.calls[0].carrier, 2610);
  EXPECT_EQ(result.calls[1].call_id, 8);
  EXPECT_FALSE(result.calls[1].followed);
}

TEST_F(DayReaderTest, RecordingsAloneTellOfTheirCalls) {
  Put("20261115/Record/142305_7_9001_call_forced_end.wav", Sound(2));
  Put("20261115/Record/the best.wav", Sound(3));
  Put("20261115/Record/150000_8_9002.wav", "RIFF, and then the power failed");
  const DayResult result = Read({"20261115"});
  const std::string nothing = R"("carrier":null,"slot":null,"talkers":[],)";
  EXPECT_THAT(
      Json(result),
      ElementsAre(R"({"start":"2026-11-15T14:23:05","length_s":2,"mcc":null,"mnc":null,)"
                  R"("gssi":9001,"label":null,"call_id":7,)" +
                      nothing +
                      R"("recording":"Record/142305_7_9001_call_forced_end.wav","end":"forced"})",
                  R"({"start":"2026-11-15T15:00:00","length_s":null,"mcc":null,"mnc":null,)"
                  R"("gssi":9002,"label":null,"call_id":8,)" +
                      nothing + R"("recording":"Record/150000_8_9002.wav","end":"unknown"})",
                  R"({"start":null,"length_s":3,"mcc":null,"mnc":null,)"
                  R"("gssi":null,"label":null,"call_id":null,)" +
                      nothing + R"("recording":"Record/the best.wav","end":"unknown"})"));
  EXPECT_THAT(result.notices, Contains(HasSubstr("1 recordings were renamed")));
  EXPECT_THAT(result.notices, Contains(HasSubstr("1 recordings hold no sound")));
  EXPECT_THAT(result.notices, Contains(HasSubstr("no TETRA_event.log")));
  EXPECT_THAT(result.notices, Contains(HasSubstr("no TETRA_cc.log")));
}

TEST_F(DayReaderTest, ACallAcrossMidnightHasItsRecordingOnTheNextDay) {
  Put("20261115/TETRA_event.log",
      "15/11/2026 23:59:50 - Call ID: 7 - On carrier: 2610 - Group: 9001 \r\n"
      "15/11/2026 23:59:50 - Call ID: 7 - Calling SSI: 5010\r\n");
  Put("20261116/TETRA_event.log", "16/11/2026 00:00:10 - Call ID: 7 - VC D-Released\r\n");
  Put("20261116/Record/235951_7_9001.wav", Sound(19));
  const DayResult both = Read({"20261115", "20261116"});
  ASSERT_EQ(both.calls.size(), 1U);
  EXPECT_EQ(both.calls[0].length_s, 20);
  EXPECT_EQ(both.calls[0].end, EndOfCall::kReleased);
  ASSERT_TRUE(both.calls[0].recording);
  EXPECT_EQ(both.calls[0].recording->relative, "../20261116/Record/235951_7_9001.wav");
  const DayResult second = Read({"20261116"});
  ASSERT_EQ(second.calls.size(), 1U);
  EXPECT_EQ(second.calls[0].start, SecondsOf({2026, 11, 15, 23, 59, 51}));
}

TEST_F(DayReaderTest, TheUsersNamesStandOverThoseOfTheLog) {
  PutEvents();
  Put("lists/TETRA_GSSI.txt", "9001;262;42;Now;0;True\r\n9001;262;43;Other;0;True\r\n");
  Put("lists/TETRA_SSI.txt", "5011;9001;262;42;Engine;some day, long ago\r\n");
  UserLists lists;
  bool found = false;
  EXPECT_EQ(LoadGroups(Path("lists"), lists.groups, found), "");
  EXPECT_EQ(LoadSubscribers(Path("lists"), lists.subscribers, found), "");
  const DayResult result = Read({"20261115"}, &lists);
  ASSERT_EQ(result.calls.size(), 1U);
  EXPECT_EQ(result.calls[0].label, "Now");
  EXPECT_EQ(result.calls[0].talkers[0].label, "K\xC3\xB6ln");
  EXPECT_EQ(result.calls[0].talkers[1].label, "Engine");
}

TEST_F(DayReaderTest, AnyBytesGiveAResult) {
  std::string bytes;
  std::uint32_t state = 1;
  for (int i = 0; i < 200'000; ++i) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>(state >> 24U);
  }
  for (const char* name : {"TETRA_event.log", "TETRA_cc.log", "DailyCallActivity_15-11-2026.csv",
                           "Record/142305_7_9001.wav", "Record/newTmp.wav"}) {
    Put(std::string("20261115/") + name, bytes);
  }
  const DayResult result = Read({"20261115"});
  EXPECT_EQ(result.calls.size(), 1U);
  EXPECT_THAT(result.notices, Contains(HasSubstr("have no time that can be read")));
  EXPECT_THAT(result.notices, Contains(HasSubstr("newTmp.wav")));
}

TEST_F(DayReaderTest, HalfAnHourWithoutALineIsAGap) {
  Put("20261115/TETRA_event.log",
      "15/11/2026 14:00:00 - LOG mode active\r\n15/11/2026 14:29:59 - LOG mode active\r\n"
      "15/11/2026 15:00:00 - LOG mode active\r\n");
  const DayResult result = Read({"20261115"});
  ASSERT_EQ(result.gaps.size(), 1U);
  EXPECT_EQ(result.gaps[0].from, SecondsOf({2026, 11, 15, 14, 29, 59}));
}

}  // namespace
}  // namespace corvane::tools
