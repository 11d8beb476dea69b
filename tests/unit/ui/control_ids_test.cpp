// The numbers of the controls: complete, unique, and found by name.
#include "ui/control_ids.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>

#include "base/number_text.h"
#include "base/text.h"
#include "panel/form1.h"
#include "sim/trace_sink.h"

namespace corvane {

namespace {

// As other programs read the header.
std::map<std::string, int> NumbersInHeader() {
  std::ifstream header("src/ui/control_ids.h");
  EXPECT_TRUE(header.is_open());
  std::map<std::string, int> numbers;
  for (std::string line; std::getline(header, line);) {
    const std::size_t equals = line.find(" = ");
    if (equals == std::string::npos || !line.ends_with(',')) continue;
    const std::string name(Trim(std::string_view(line).substr(0, equals)));
    const auto number =
        ParseShown<int>(std::string_view(line).substr(equals + 3, line.size() - equals - 4));
    EXPECT_TRUE(number) << line;
    EXPECT_TRUE(numbers.emplace(name, number.value_or(0)).second) << line;
  }
  return numbers;
}

TEST(ControlIds, EveryNumberOfTheHeaderIsFoundByItsName) {
  const auto numbers = NumbersInHeader();
  EXPECT_GT(numbers.size(), 80U);
  std::map<int, std::string> names;
  for (const auto& [name, number] : numbers) {
    const auto id = FindControlId(name);
    ASSERT_TRUE(id) << name;
    EXPECT_EQ(Number(*id), number) << name;
    EXPECT_TRUE(names.emplace(number, name).second) << name << " and " << names[number];
  }
}

TEST(ControlIds, EveryControlOfTheMainWindowHasANumber) {
  sim::TraceSink sink;
  Form1 form(sink);
  for (const Control* control : form.Controls()) {
    EXPECT_TRUE(FindControlId(control->name())) << control->name();
  }
}

TEST(ControlIds, NumbersStayClearOfTheSystemsOwn) {
  for (const auto& [name, number] : NumbersInHeader()) {
    EXPECT_GT(number, 100) << name;
    EXPECT_LT(number, 0x8000) << name;
  }
}

TEST(ControlIds, StrangeNamesHaveNone) {
  EXPECT_FALSE(FindControlId(""));
  EXPECT_FALSE(FindControlId("lblgrouphold"));
  EXPECT_FALSE(FindControlId("Form1"));
}

}  // namespace

}  // namespace corvane
