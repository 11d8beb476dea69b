// The numbers of the controls: complete, unique, and given to the controls of that name.
#include "ui/control_ids.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <string>

#include "base/number_text.h"
#include "base/text.h"
#include "sim/no_sink.h"
#include "ui/editor_layout.h"
#include "ui/main_layout.h"

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

TEST(ControlIds, EveryNumberIsGivenOnce) {
  const auto numbers = NumbersInHeader();
  EXPECT_GT(numbers.size(), 80U);
  std::map<int, std::string> names;
  for (const auto& [name, number] : numbers) {
    EXPECT_TRUE(names.emplace(number, name).second) << name << " and " << names[number];
  }
}

template <typename Form>
class ControlIdsOf : public testing::Test {
 protected:
  static WindowTable TableOf(Form1& form) { return MainWindowTable(form); }
  static WindowTable TableOf(Dialog& dialog) { return EditorWindowTable(dialog); }

  sim::NoSink sink_;
  Form form_{sink_};
  const WindowTable table_ = TableOf(form_);
};

using BothWindows = testing::Types<Form1, Dialog>;
TYPED_TEST_SUITE(ControlIdsOf, BothWindows);

TYPED_TEST(ControlIdsOf, TheWindowsControlsHaveTheNumberOfTheirName) {
  const auto numbers = NumbersInHeader();
  const auto expect_number = [&](const Control& control, ControlId id) {
    ASSERT_TRUE(numbers.contains(control.name())) << control.name();
    EXPECT_EQ(Number(id), numbers.at(control.name())) << control.name();
  };
  for (const ControlRow& row : this->table_.controls) expect_number(row.control, row.id);
  for (const MenuRow& row : this->table_.menu) expect_number(row.item, row.id);
}

TEST(ControlIds, EveryNumberHasItsControlInTheWindowThatItBelongsTo) {
  constexpr int kFirstOfTheEditor = Number(ControlId::cboCountry);
  sim::NoSink sink;
  Form1 form(sink);
  Dialog dialog(sink);
  std::set<std::string> main_window;
  std::set<std::string> editor;
  for (const Control* control : MainWindowTable(form).AllControls()) {
    EXPECT_TRUE(main_window.insert(control->name()).second) << control->name() << " twice";
  }
  for (const Control* control : EditorWindowTable(dialog).AllControls()) {
    EXPECT_TRUE(editor.insert(control->name()).second) << control->name() << " twice";
  }
  for (const auto& [name, number] : NumbersInHeader()) {
    EXPECT_EQ(main_window.contains(name), number < kFirstOfTheEditor) << name;
    EXPECT_EQ(editor.contains(name), number >= kFirstOfTheEditor) << name;
  }
}

TEST(ControlIds, NumbersStayClearOfTheSystemsOwn) {
  for (const auto& [name, number] : NumbersInHeader()) {
    EXPECT_GT(number, 100) << name;
    EXPECT_LT(number, 0x8000) << name;
  }
}

}  // namespace

}  // namespace corvane
