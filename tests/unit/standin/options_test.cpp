// The command line.
#include "standin/options.h"

#include <gtest/gtest.h>

namespace corvane::standin {
namespace {

TEST(OptionsTest, ReadsEveryOption) {
  Options options;
  EXPECT_EQ(ParseOptions({"--scenario",
                          "a.txt",
                          "--log",
                          "b.log",
                          "--seed",
                          "5",
                          "--speed",
                          "10",
                          "--class-tail",
                          "1a_r2.x",
                          "--port",
                          "1",
                          "--position",
                          "-5,60",
                          "--scale",
                          "150",
                          "--network-on",
                          "--network-plain",
                          "--labels-after-start",
                          "--playing",
                          "--demodulator-on",
                          "--auto-off",
                          "--info-open",
                          "--tetra-collapsed",
                          "--exit-when-done"},
                         options),
            "");
  EXPECT_EQ(options.scenario_file, "a.txt");
  EXPECT_EQ(options.log_file, "b.log");
  EXPECT_EQ(options.seed, 5u);
  EXPECT_EQ(options.speed, 10);
  EXPECT_EQ(options.class_tail, "1a_r2.x");
  EXPECT_EQ(options.port, "1");
  EXPECT_EQ(options.left, -5);
  EXPECT_EQ(options.top, 60);
  EXPECT_EQ(options.scale, 150);
  EXPECT_TRUE(options.network_on && options.network_plain && options.labels_after_start &&
              options.playing && options.demodulator_checked && options.info_open &&
              options.exit_when_done);
  EXPECT_FALSE(options.auto_checked);
  EXPECT_FALSE(options.tetra_expanded);
  EXPECT_EQ(ParseOptions({"--network-off"}, options), "");
  EXPECT_FALSE(options.network_on);
}

TEST(OptionsTest, NamesWhatIsWrong) {
  const struct {
    std::vector<std::string> arguments;
    const char* fault;
  } cases[] = {
      {{"--network"}, "unknown option \"--network\""},
      {{"scenario.txt"}, "unknown option \"scenario.txt\""},
      {{"--log"}, "--log: a value is missing"},
      {{"--seed", "0"}, "--seed: \"0\" is not a number above 0"},
      {{"--speed", "1001"}, "--speed: \"1001\" is not 1 to 1000"},
      {{"--scale", "99"}, "--scale: \"99\" is not 100 to 200"},
      {{"--scale", "201"}, "--scale: \"201\" is not 100 to 200"},
      {{"--position", "5"}, "--position: \"5\" is not x,y in pixels"},
      {{"--class-tail", "a b"}, "--class-tail: \"a b\" is not letters, digits, _ and ."},
      {{"--class-tail", "12345678901234567890123"},
       "--class-tail: \"12345678901234567890123\" is not 1 to 22 characters"},
  };
  for (const auto& [arguments, fault] : cases) {
    Options options;
    EXPECT_EQ(ParseOptions(arguments, options), fault);
  }
}

TEST(OptionsTest, ExplainsEveryOption) {
  for (const char* name : {"--scenario", "--log", "--seed", "--speed", "--class-tail", "--port",
                           "--position", "--network-on", "--network-off", "--network-plain",
                           "--labels-after-start", "--exit-when-done", "--help"}) {
    EXPECT_NE(OptionsHelp().find(name), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace corvane::standin
