// Commands, word by word.
#include <gtest/gtest.h>

#include "standin/commands.h"

namespace corvane::standin {
namespace {

std::string Fault(std::string_view text) {
  std::vector<Word> words;
  std::string fault = SplitWords(text, words);
  Command command;
  return fault.empty() ? ParseCommand(words, command) : fault;
}

template <typename Wanted>
Wanted Read(std::string_view text) {
  std::vector<Word> words;
  EXPECT_EQ(SplitWords(text, words), "") << text;
  Command command;
  EXPECT_EQ(ParseCommand(words, command), "") << text;
  EXPECT_TRUE(std::holds_alternative<Wanted>(command)) << text;
  return std::holds_alternative<Wanted>(command) ? std::get<Wanted>(command) : Wanted{};
}

TEST(SplitWordsTest, ReadsNamesQuotesAndEscapes) {
  std::vector<Word> words;
  ASSERT_EQ(SplitWords("line \"a \\\"b\\\\\\t\\x41\" count=\"7\"\t# rest", words), "");
  ASSERT_EQ(words.size(), 3u);
  EXPECT_EQ(words[1].value, "a \"b\\\tA");
  EXPECT_TRUE(words[1].quoted);
  EXPECT_EQ(words[2].name, "count");
  EXPECT_EQ(words[2].value, "7");
}

TEST(SplitWordsTest, RefusesBrokenQuotesAndEndlessLines) {
  std::vector<Word> words;
  EXPECT_EQ(SplitWords("line \"abc", words), "the closing quote is missing");
  EXPECT_EQ(SplitWords("line \"abc\\", words), "the closing quote is missing");
  EXPECT_EQ(SplitWords("line \"a\"b", words), "a blank is missing behind the closing quote");
  EXPECT_EQ(SplitWords("line \"\\q\"", words), "unknown escape \\q");
  EXPECT_EQ(SplitWords("line \"\\x4\"", words), "\\x needs two hexadecimal digits");
  EXPECT_EQ(SplitWords(std::string(kMaxLineBytes + 1, 'x'), words),
            "the line is longer than 4096 characters");
}

TEST(ParseCommandTest, ReadsACall) {
  const auto command = Read<CallCommand>(
      "call id=1207 group=9001 party=5010 carrier=2610 slot=2 status=Request_queued "
      "service=Individual encrypted for=1:30 repeat=0.5 missed");
  EXPECT_EQ(command.call.id, 1207);
  EXPECT_EQ(command.call.group, 9001);
  EXPECT_EQ(command.call.party, 5010);
  EXPECT_EQ(command.call.carrier, 2610);
  EXPECT_EQ(command.call.slot, 2);
  EXPECT_EQ(command.call.status, "Request_queued");
  EXPECT_EQ(command.call.service, "Individual");
  EXPECT_TRUE(command.call.encrypted);
  EXPECT_TRUE(command.missed);
  EXPECT_EQ(command.for_ms, 90000);
  EXPECT_EQ(command.repeat_ms, 500);
}

TEST(ParseCommandTest, ReadsTraffic) {
  const auto command = Read<TrafficCommand>(
      "traffic calls-per-hour=120 groups=9001-9003,9010 parties=5010-5019 carriers=2610,2611 "
      "length=3-9 missed=5");
  EXPECT_EQ(command.settings.groups, (std::vector<std::int32_t>{9001, 9002, 9003, 9010}));
  EXPECT_EQ(command.settings.carriers, (std::vector<int>{2610, 2611}));
  EXPECT_EQ(command.settings.first_party, 5010);
  EXPECT_EQ(command.settings.last_party, 5019);
  EXPECT_EQ(command.settings.shortest_ms, 3000);
  EXPECT_EQ(command.settings.longest_ms, 9000);
  EXPECT_EQ(command.settings.missed, 5);
  EXPECT_EQ(Read<TrafficCommand>("traffic off").settings.calls_per_hour, 0);
}

TEST(ParseCommandTest, ReadsFaults) {
  EXPECT_EQ(Read<HangCommand>("hang 500").ms, 500);
  EXPECT_TRUE(Read<CutCommand>("cut reset").reset);
  EXPECT_FALSE(Read<CutCommand>("cut").reset);
  const auto split = Read<FaultCommand>("reply split 30 count=4");
  EXPECT_EQ(split.fault.kind, FaultKind::kSplit);
  EXPECT_EQ(split.fault.ms, 30);
  EXPECT_EQ(split.fault.count, 4);
  const auto text = Read<FaultCommand>("greeting text \"a\\r\\n\" count=all");
  EXPECT_TRUE(text.greeting);
  EXPECT_EQ(text.fault.text, "a\r\n");
  EXPECT_EQ(text.fault.count, kForAll);
  EXPECT_EQ(Read<WindowCommand>("window network-info minimise").action, WindowAction::kMinimise);
  EXPECT_FALSE(Read<PanelCommand>("panel tetra collapse").expand);
  EXPECT_FALSE(Read<SourceCommand>("source error").works);
  EXPECT_TRUE(Read<PaintCommand>("paint auto other").other);
  EXPECT_EQ(Read<LineCommand>("line \"x y\" on=carrier carrier=2610 count=3").carrier, 2610);
  EXPECT_FALSE(Read<LineCommand>("partial \"x\"").ended);
}

TEST(ParseCommandTest, SaysWhatIsWrong) {
  const struct {
    const char* text;
    const char* fault;
  } cases[] = {
      {"fly", "unknown command \"fly\""},
      {"id=5", "a command is missing"},
      {"pause", "id= is missing"},
      {"pause id=x", "id is a number from 0 to 65535, not \"x\""},
      {"pause id=99999", "id is a number from 0 to 65535, not \"99999\""},
      {"pause id=1 id=2", "\"id=\" does not belong here"},
      {"pause id=1 now", "\"now\" does not belong here"},
      {"call id=1 group=2 party=3 carrier=4", "slot= is missing"},
      {"call id=1 group=2 party=3 carrier=4 slot=1 status=Maybe",
       "status= is one of Granted, Request_queued, Not_granted"},
      {"call id=1 group=2 party=3 carrier=4 slot=1 for=soon",
       "for= is a time like 2.5 or 1:30, not \"soon\""},
      {"call id=1 group=2 party=3 carrier=4 slot=1 repeat=0", "repeat= is 0.01 or more"},
      {"hang", "ms is missing"},
      {"hang 0", "ms is a number from 1 to 3600000, not \"0\""},
      {"listen maybe", "the state is one of on, off, not \"maybe\""},
      {"reply explode",
       "the fault is one of normal, split, join, delay, garble, drop, text, not "
       "\"explode\""},
      {"reply drop count=many", "count is a number from 1 to 100000, not \"many\""},
      {"window main close", "the main window is neither closed nor opened: use die and revive"},
      {"traffic calls-per-hour=5 groups=9-1",
       "groups= holds a range that is backwards or too long"},
      {"traffic calls-per-hour=5 groups=1-1000000",
       "groups= holds a range that is backwards or too long"},
      {"traffic calls-per-hour=5 missed=101", "missed is a number from 0 to 100, not \"101\""},
      {"line \"x\" on=moon", "on= is one of any, control, carrier"},
      {"line \"x\" on=carrier", "carrier= is missing"},
      {"network 262 42", "the LA is missing"},
  };
  for (const auto& [text, fault] : cases) EXPECT_EQ(Fault(text), fault) << text;
}

}  // namespace
}  // namespace corvane::standin
