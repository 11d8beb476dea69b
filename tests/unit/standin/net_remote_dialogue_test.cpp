// Commands and their replies, byte for byte.
#include "standin/net_remote_dialogue.h"

#include <gtest/gtest.h>

#include <random>

namespace corvane::standin {
namespace {

constexpr const char* kOk = "{\"Result\":\"OK\"}\r\n";

class NetRemoteDialogueTest : public ::testing::Test {
 protected:
  std::string Answer(std::string_view text) { return AnswerCommand(receiver_, text); }
  std::string Set(const std::string& method, const std::string& value) {
    return Answer("{\"Command\": \"Set\", \"Method\": \"" + method + "\", \"Value\": " + value +
                  "}");
  }
  std::string Get(const std::string& method) {
    return Answer("{\"Command\": \"Get\", \"Method\": \"" + method + "\"}");
  }
  std::string Exe(const std::string& method) {
    return Answer("{\"Command\": \"Exe\", \"Method\": \"" + method + "\"}");
  }
  static std::string Error(const std::string& type, const std::string& message) {
    return "{\"Result\":\"Error\",\"Type\":\"" + type + "\",\"Message\":\"" + message + "\"}\r\n";
  }

  Air air_;
  Receiver receiver_{air_, [] { return std::int64_t{0}; }, [] {}};
};

TEST_F(NetRemoteDialogueTest, GreetsWithNameAndVersion) {
  EXPECT_EQ(kGreeting, "{\"Name\":\"Net Remote\",\"Version\":\"1.0.5282.28765\"}\r\n");
}

TEST_F(NetRemoteDialogueTest, SetsAndGetsEverySetting) {
  const struct {
    const char* method;
    const char* value;
  } settings[] = {
      {"AudioGain", "33"},         {"AudioIsMuted", "true"},     {"CenterFrequency", "365000000"},
      {"DetectorType", "\"WFM\""}, {"FilterBandwidth", "26000"}, {"Frequency", "365112500"},
      {"SquelchEnabled", "true"},  {"SquelchThreshold", "7"}};
  for (const auto& [method, value] : settings) {
    EXPECT_EQ(Set(method, value), kOk) << method;
    EXPECT_EQ(Get(method), "{\"Result\":\"OK\",\"Method\":\"" + std::string(method) +
                               "\",\"Value\":" + value + "}\r\n");
  }
}

TEST_F(NetRemoteDialogueTest, StartsAndStops) {
  EXPECT_EQ(Get("IsPlaying"), "{\"Result\":\"OK\",\"Method\":\"IsPlaying\",\"Value\":false}\r\n");
  EXPECT_EQ(Exe("Start"), kOk);
  EXPECT_EQ(Get("IsPlaying"), "{\"Result\":\"OK\",\"Method\":\"IsPlaying\",\"Value\":true}\r\n");
  EXPECT_EQ(Exe("Stop"), kOk);
  EXPECT_FALSE(receiver_.state().playing);
}

TEST_F(NetRemoteDialogueTest, CaresForNoCaseOfLetters) {
  EXPECT_EQ(Answer("{\"command\":\"SET\",\"METHOD\":\"audiogain\",\"value\":26}"), kOk);
  EXPECT_EQ(receiver_.state().audio_gain, 26);
  EXPECT_EQ(Set("DetectorType", "\"wfm\""), kOk);
  EXPECT_EQ(receiver_.state().detector, "WFM");
}

TEST_F(NetRemoteDialogueTest, KeepsTheRanges) {
  const struct {
    const char* method;
    const char* low;
    const char* high;
    const char* below;
    const char* above;
  } ranges[] = {{"AudioGain", "25", "60", "24", "61"},
                {"FilterBandwidth", "10", "250000", "9", "250001"},
                {"Frequency", "1", "999999999999", "0", "1000000000000"},
                {"SquelchThreshold", "0", "100", "-1", "101"}};
  for (const auto& range : ranges) {
    EXPECT_EQ(Set(range.method, range.low), kOk);
    EXPECT_EQ(Set(range.method, range.high), kOk);
    EXPECT_EQ(Set(range.method, range.below),
              Error("Value error", "Less than " + std::string(range.low)));
    EXPECT_EQ(Set(range.method, range.above),
              Error("Value error", "Greater than " + std::string(range.high)));
    EXPECT_EQ(Set(range.method, "99999999999999999999999"),
              Error("Value error", "Greater than " + std::string(range.high)));
    EXPECT_EQ(Set(range.method, "-99999999999999999999999"),
              Error("Value error", "Less than " + std::string(range.low)));
  }
  EXPECT_EQ(receiver_.state().audio_gain, 60);
}

TEST_F(NetRemoteDialogueTest, RefusesValuesOfTheWrongKind) {
  EXPECT_EQ(Set("AudioGain", "\"30\""), Error("Value error", "Expected a whole number"));
  EXPECT_EQ(Set("AudioGain", "30.5"), Error("Value error", "Expected a whole number"));
  EXPECT_EQ(Set("SquelchEnabled", "1"), Error("Value error", "Expected true or false"));
  EXPECT_EQ(Set("DetectorType", "\"FM\""),
            Error("Value error", "Expected one of NFM, AM, LSB, USB, WFM, DSB, CW, RAW"));
  EXPECT_EQ(Answer("{\"Command\":\"Set\",\"Method\":\"AudioGain\"}"),
            Error("Value error", "Expected a value"));
}

TEST_F(NetRemoteDialogueTest, RefusesUnknownCommandsAndMethods) {
  EXPECT_EQ(Answer("{\"Command\":\"Put\",\"Method\":\"AudioGain\"}"),
            Error("Command error", "Expected one of Get, Set, Exe"));
  EXPECT_EQ(Answer("{\"Method\":\"AudioGain\"}"), Error("Command error", "Expected a command"));
  EXPECT_EQ(Answer("{\"Command\":\"Get\"}"), Error("Method error", "Expected a method"));
  EXPECT_EQ(Get("Volume"), Error("Method error", "Unknown method"));
  EXPECT_EQ(Set("IsPlaying", "true"), Error("Method error", "Cannot be set"));
  EXPECT_EQ(Exe("Restart"), Error("Method error", "Expected one of Start, Stop"));
}

TEST_F(NetRemoteDialogueTest, TakesTwoCommandsInOneReadForASyntaxError) {
  const std::string command = "{\"Command\": \"Get\", \"Method\": \"IsPlaying\"}";
  EXPECT_EQ(Answer(command + command), Error("Syntax error", "Expected one command"));
  EXPECT_EQ(Answer(command.substr(0, 20)), Error("Syntax error", "Expected one command"));
  EXPECT_EQ(Answer("{\"Command\": \"Set\", \"Method\": \"DetectorType\", \"Value\": WFM}"),
            Error("Syntax error", "Expected one command"));
}

TEST_F(NetRemoteDialogueTest, ReportsASourceThatCannotBeTuned) {
  receiver_.Change([](ReceiverState& state) { state.source_works = false; });
  EXPECT_EQ(Set("Frequency", "365112500"), Error("Source error", "The source is not tunable"));
  EXPECT_EQ(Exe("Start"), Error("Source error", "The source cannot be started"));
  EXPECT_EQ(Set("AudioGain", "25"), kOk);
  EXPECT_EQ(Get("SourceIsTunable"),
            "{\"Result\":\"OK\",\"Method\":\"SourceIsTunable\",\"Value\":false}\r\n");
}

TEST_F(NetRemoteDialogueTest, SetsByHandWithTheSameChecks) {
  EXPECT_EQ(SetByHand(receiver_, "audiogain", "31"), "");
  EXPECT_EQ(receiver_.state().audio_gain, 31);
  EXPECT_EQ(SetByHand(receiver_, "DetectorType", "AM"), "");
  EXPECT_EQ(SetByHand(receiver_, "SquelchEnabled", "true"), "");
  EXPECT_EQ(SetByHand(receiver_, "AudioGain", "99"), "Greater than 60");
  EXPECT_NE(SetByHand(receiver_, "IsPlaying", "true"), "");
}

TEST_F(NetRemoteDialogueTest, ReadsTextsWithEscapesAndBlanksAnywhere) {
  EXPECT_EQ(Answer(" {\"\\u0043ommand\" : \"S\\u0065t\",\"Method\":\"DetectorType\", "
                   "\"other\": null,\"Value\"\t:\"\\u0057FM\" } \r\n"),
            kOk);
  EXPECT_EQ(receiver_.state().detector, "WFM");
  EXPECT_EQ(Set("DetectorType", "\"W\\/FM\""),
            Error("Value error", "Expected one of NFM, AM, LSB, USB, WFM, DSB, CW, RAW"));
}

class NoCommandTest : public NetRemoteDialogueTest,
                      public ::testing::WithParamInterface<const char*> {};

TEST_P(NoCommandTest, IsASyntaxError) {
  EXPECT_EQ(Answer(GetParam()), Error("Syntax error", "Expected one command"));
}

INSTANTIATE_TEST_SUITE_P(All, NoCommandTest,
                         ::testing::Values("", " ", "{", "}", "{}{}", "{\"a\"}", "{\"a\":}",
                                           "{\"a\":1,}", "{\"a\":1", "{\"a\":WFM}", "{a:1}",
                                           "{\"a\":{\"b\":1}}", "{\"a\":[1]}", "{\"a\":1}x",
                                           "{\"a\":\"x}", "{\"a\":\"\\q\"}", "{\"a\":\"\\u12\"}",
                                           "{\"a\":-}", "{\"a\":1.}", "{\"a\":\"\n\"}",
                                           "{\"a\":1}{\"b\":2}", "[]", "1", "\"a\""));

TEST_F(NetRemoteDialogueTest, SurvivesAnyBytes) {
  constexpr unsigned kSeed = 20261115;
  std::mt19937 random(kSeed);
  constexpr std::string_view kAlphabet = "{}\":,\\u0aAtruefalsn -1.e\r\n\x01\xff";
  int objects = 0;
  for (int i = 0; i < 50000; ++i) {
    std::string text = i % 2 == 0 ? "{" : "";
    for (auto left = random() % 24; left > 0; --left) {
      text += kAlphabet[random() % kAlphabet.size()];
    }
    const std::string reply = Answer(text);
    if (reply == Error("Command error", "Expected a command")) {
      ++objects;
    } else {
      ASSERT_EQ(reply, Error("Syntax error", "Expected one command"))
          << text << " seed " << kSeed << " round " << i;
    }
  }
  EXPECT_GT(objects, 0);
}

}  // namespace
}  // namespace corvane::standin
