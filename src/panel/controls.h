// The windows' controls as plain state. The state here is the truth; a ControlSink mirrors it.
//
// Logic reads and writes `lblCallID.caption` and the like. Assigning a different value tells the
// sink; assigning the same value does nothing. No handler runs when code sets a value.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "panel/colour.h"
#include "panel/control_sink.h"

namespace corvane {

class Control;

// One value of a control that is mirrored by the sink.
template <typename Value>
class Property {
 public:
  Property(Control& owner, Field field, Value initial)
      : owner_(owner), field_(field), value_(std::move(initial)) {}
  Property(const Property&) = delete;
  Property& operator=(const Property&) = delete;

  Property& operator=(Value value);
  [[nodiscard]] const Value& get() const { return value_; }
  operator const Value&() const { return value_; }  // NOLINT: reads as the plain value
  friend bool operator==(const Property& property, const Value& value) {
    return property.value_ == value;
  }

  // Takes over what the user did in the window, without telling the sink.
  void TakeFromUser(Value value) { value_ = std::move(value); }

 private:
  Control& owner_;
  Field field_;
  Value value_;
};

// What every control has. `name` is the control's own name, array members with their index as in
// "optOffsets_0"; it is a string literal.
class Control {
 public:
  Control(ControlSink& sink, const char* name)
      : tool_tip(*this, Field::kToolTip, {}),
        tag(*this, Field::kTag, {}),
        visible(*this, Field::kVisible, true),
        enabled(*this, Field::kEnabled, true),
        fore_colour(*this, Field::kForeColour, kButtonText),
        back_colour(*this, Field::kBackColour, kButtonFace),
        bold(*this, Field::kBold, false),
        sink_(sink),
        name_(name) {}
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] const char* name() const { return name_; }
  [[nodiscard]] ControlSink& sink() const { return sink_; }

  Property<std::string> tool_tip;
  Property<std::string> tag;
  Property<bool> visible;
  Property<bool> enabled;
  Property<Colour> fore_colour;
  Property<Colour> back_colour;
  Property<bool> bold;

 private:
  ControlSink& sink_;
  const char* name_;
};

template <typename Value>
Property<Value>& Property<Value>::operator=(Value value) {
  if (value_ == value) return *this;
  value_ = std::move(value);
  owner_.sink().Changed(owner_, field_);
  return *this;
}

class Label : public Control {
 public:
  Label(ControlSink& sink, const char* name, std::string initial = {})
      : Control(sink, name), caption(*this, Field::kCaption, std::move(initial)) {}
  Property<std::string> caption;
};

class Button : public Control {
 public:
  Button(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, name), caption(*this, Field::kCaption, std::move(initial)) {}
  Property<std::string> caption;
};

class TextBox : public Control {
 public:
  TextBox(ControlSink& sink, const char* name)
      : Control(sink, name), text(*this, Field::kText, {}) {
    back_colour.TakeFromUser(kWindowBackground);
  }
  Property<std::string> text;
};

// 0 unchecked, 1 checked, 2 grey. "Checked" everywhere means 1.
class CheckBox : public Control {
 public:
  CheckBox(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, name),
        caption(*this, Field::kCaption, std::move(initial)),
        value(*this, Field::kValue, 0) {}
  [[nodiscard]] bool checked() const { return value.get() == 1; }
  Property<std::string> caption;
  Property<int> value;
};

class OptionButton : public Control {
 public:
  OptionButton(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, name),
        caption(*this, Field::kCaption, std::move(initial)),
        value(*this, Field::kValue, false) {}
  Property<std::string> caption;
  Property<bool> value;
};

class Frame : public Control {
 public:
  Frame(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, name),
        caption(*this, Field::kCaption, std::move(initial)),
        left(*this, Field::kBounds, 0),
        top(*this, Field::kBounds, 0) {}
  Property<std::string> caption;
  Property<int> left;  // twips
  Property<int> top;   // twips
};

class Shape : public Control {
 public:
  Shape(ControlSink& sink, const char* name)
      : Control(sink, name),
        fill_colour(*this, Field::kFillColour, kButtonFace),
        border_colour(*this, Field::kBorderColour, kWindowText),
        border_width(*this, Field::kBorderWidth, 1) {}
  Property<Colour> fill_colour;
  Property<Colour> border_colour;
  Property<int> border_width;  // pixels at 96 dpi
};

class MenuItem : public Control {
 public:
  MenuItem(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, name),
        caption(*this, Field::kCaption, std::move(initial)),
        checked(*this, Field::kChecked, false) {}
  Property<std::string> caption;
  Property<bool> checked;
};

// A top-level window. Positions are of the restored window and count 15 twips per physical pixel;
// sizes are outer sizes in twips of the window's own resolution.
class Window : public Control {
 public:
  Window(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, name),
        caption(*this, Field::kCaption, std::move(initial)),
        left(*this, Field::kBounds, 0),
        top(*this, Field::kBounds, 0),
        width(*this, Field::kBounds, 0),
        height(*this, Field::kBounds, 0) {}
  Property<std::string> caption;
  Property<int> left;
  Property<int> top;
  Property<int> width;
  Property<int> height;
};

// A list of text lines. list_index is -1 when nothing is selected.
class ListBox : public Control {
 public:
  // `full_rows` is how many whole rows fit: selecting a line beyond them scrolls it into view.
  ListBox(ControlSink& sink, const char* name, int full_rows);

  [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
  [[nodiscard]] const std::vector<std::string>& items() const { return items_; }
  // "" when there is no such line.
  [[nodiscard]] std::string Item(int index) const;
  [[nodiscard]] int list_index() const { return list_index_; }
  [[nodiscard]] int top_index() const { return top_index_; }
  [[nodiscard]] int full_rows() const { return full_rows_; }

  void Add(std::string text);
  void Remove(int index);  // nothing when there is no such line
  void Replace(int index, std::string text);
  void Clear();
  void Select(int index);  // -1 selects nothing; scrolls the line into view
  void SelectLast();       // nothing on an empty list

  // Takes over what the user selected in the window, without telling the sink.
  void SelectFromUser(int index) { list_index_ = index; }
  // Takes over where the window is scrolled to, as the real list reports it.
  void ReportTopIndex(int index) { top_index_ = index; }

 private:
  void ScrollIntoView(int index);

  std::vector<std::string> items_;
  int list_index_ = -1;
  int top_index_ = 0;
  int full_rows_;
};

// A drop-down list. Each entry carries a number of the program's own.
class ComboBox : public Control {
 public:
  struct Entry {
    std::string text;
    int item_data = 0;
    bool operator==(const Entry&) const = default;
  };
  ComboBox(ControlSink& sink, const char* name)
      : Control(sink, name),
        entries(*this, Field::kItems, {}),
        list_index(*this, Field::kListIndex, -1),
        text(*this, Field::kText, {}) {
    back_colour.TakeFromUser(kWindowBackground);
  }
  Property<std::vector<Entry>> entries;
  Property<int> list_index;    // -1 when nothing is selected
  Property<std::string> text;  // shown while nothing is selected
};

}  // namespace corvane
