// The windows' controls as plain state. The state here is the truth; a ControlSink mirrors it.
//
// Logic reads and writes `lblCallID.caption` and the like. Assigning a different value tells the
// sink; assigning the same value does nothing. No handler runs when code sets a value.
#pragma once

#include <cassert>
#include <cstddef>
#include <span>
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

// What a control is. Each class below has its own.
enum class ControlKind {
  kLabel,
  kButton,
  kTextBox,
  kListBox,
  kCheckList,
  kComboBox,
  kCheckBox,
  kOption,
  kShape,
  kFrame,
  kMenuItem,
  kWindow,
};

// What every control has. `name` is the control's own name, array members with their index as in
// "optOffsets_0"; it is a string literal. Boxes, lists and shapes show no caption; theirs is empty.
class Control {
 public:
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] ControlKind kind() const { return kind_; }
  [[nodiscard]] const char* name() const { return name_; }
  [[nodiscard]] ControlSink& sink() const { return sink_; }

  Property<std::string> caption;
  Property<std::string> tool_tip;
  Property<std::string> tag;
  Property<bool> visible;
  Property<bool> enabled;
  Property<Colour> fore_colour;
  Property<Colour> back_colour;
  Property<bool> bold;

 protected:
  Control(ControlSink& sink, ControlKind kind, const char* name, std::string initial = {})
      : caption(*this, Field::kCaption, std::move(initial)),
        tool_tip(*this, Field::kToolTip, {}),
        tag(*this, Field::kTag, {}),
        visible(*this, Field::kVisible, true),
        enabled(*this, Field::kEnabled, true),
        fore_colour(*this, Field::kForeColour, kButtonText),
        back_colour(*this, Field::kBackColour, kButtonFace),
        bold(*this, Field::kBold, false),
        sink_(sink),
        name_(name),
        kind_(kind) {}
  ~Control() = default;

 private:
  ControlSink& sink_;
  const char* name_;
  ControlKind kind_;
};

template <typename Value>
Property<Value>& Property<Value>::operator=(Value value) {
  if (value_ == value) return *this;
  value_ = std::move(value);
  owner_.sink().Changed(owner_, field_);
  return *this;
}

// A list with ticks is a list, too.
[[nodiscard]] constexpr bool IsList(ControlKind kind) {
  return kind == ControlKind::kListBox || kind == ControlKind::kCheckList;
}
[[nodiscard]] constexpr bool Is(ControlKind kind, ControlKind wanted) {
  return kind == wanted || (wanted == ControlKind::kListBox && IsList(kind));
}

// `control` as what its kind says it is.
template <typename Kind>
[[nodiscard]] Kind& As(Control& control) {
  assert(Is(control.kind(), Kind::kKind));
  return static_cast<Kind&>(control);
}
template <typename Kind>
[[nodiscard]] const Kind& As(const Control& control) {
  assert(Is(control.kind(), Kind::kKind));
  return static_cast<const Kind&>(control);
}

class Label : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kLabel;
  Label(ControlSink& sink, const char* name, std::string initial = {})
      : Control(sink, kKind, name, std::move(initial)) {}
};

class Button : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kButton;
  Button(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, kKind, name, std::move(initial)) {}
};

class TextBox : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kTextBox;
  TextBox(ControlSink& sink, const char* name)
      : Control(sink, kKind, name), text(*this, Field::kText, {}) {
    back_colour.TakeFromUser(kWindowBackground);
  }
  Property<std::string> text;
};

// 0 unchecked, 1 checked, 2 grey. "Checked" everywhere means 1.
class CheckBox : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kCheckBox;
  CheckBox(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, kKind, name, std::move(initial)), value(*this, Field::kValue, 0) {}
  [[nodiscard]] bool checked() const { return value == 1; }
  Property<int> value;
};

class OptionButton : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kOption;
  OptionButton(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, kKind, name, std::move(initial)), value(*this, Field::kValue, false) {}
  Property<bool> value;
};

// The index of the first button that is selected; -1 when none is.
[[nodiscard]] int SelectedOption(std::span<const OptionButton> options);

class Frame : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kFrame;
  struct Corner {
    int left = 0;  // twips, like the next
    int top = 0;
    bool operator==(const Corner&) const = default;
  };
  Frame(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, kKind, name, std::move(initial)), corner(*this, Field::kBounds, {}) {}
  // Where it stands in its window, for a frame that is moved; the layout has the place of others.
  Property<Corner> corner;
};

class Shape : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kShape;
  Shape(ControlSink& sink, const char* name)
      : Control(sink, kKind, name),
        fill_colour(*this, Field::kFillColour, kButtonFace),
        border_colour(*this, Field::kBorderColour, kWindowText),
        border_width(*this, Field::kBorderWidth, 1) {}
  Property<Colour> fill_colour;
  Property<Colour> border_colour;
  Property<int> border_width;  // pixels at 96 dpi
};

class MenuItem : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kMenuItem;
  MenuItem(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, kKind, name, std::move(initial)), checked(*this, Field::kChecked, false) {}
  Property<bool> checked;
};

// A top-level window. Its place changes as a whole: nobody sees a new width with an old height.
class Window : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kWindow;
  // Of the restored window. The corner counts 15 twips per physical pixel; the outer size is in
  // twips of the window's own resolution, 0 while nobody has given one.
  struct Bounds {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Bounds&) const = default;
  };
  Window(ControlSink& sink, const char* name, std::string initial)
      : Control(sink, kKind, name, std::move(initial)), bounds(*this, Field::kBounds, {}) {}

  void MoveTo(int left, int top);
  void Resize(int width, int height);

  Property<Bounds> bounds;
};

// A list of text lines. list_index is -1 when nothing is selected.
class ListBox : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kListBox;
  // `full_rows` is how many whole rows fit: selecting a line beyond them scrolls it into view.
  ListBox(ControlSink& sink, const char* name, int full_rows)
      : ListBox(sink, kKind, name, full_rows) {}

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

 protected:
  ListBox(ControlSink& sink, ControlKind kind, const char* name, int full_rows);
  void Add(std::string text, bool ticked);
  [[nodiscard]] bool HasLine(int index) const { return index >= 0 && index < count(); }

  std::vector<bool> ticks_;  // one for each line

 private:
  void ScrollIntoView(int index);

  std::vector<std::string> items_;
  int list_index_ = -1;
  int top_index_ = 0;
  int full_rows_;
};

// A list with a tick on each line, which the program alone sets: a click selects the line. A
// replaced line keeps its tick.
class CheckList : public ListBox {
 public:
  static constexpr ControlKind kKind = ControlKind::kCheckList;
  CheckList(ControlSink& sink, const char* name, int full_rows)
      : ListBox(sink, kKind, name, full_rows) {}

  // False when there is no such line.
  [[nodiscard]] bool ticked(int index) const;

  void Add(std::string text, bool ticked) { ListBox::Add(std::move(text), ticked); }
  void Tick(int index, bool ticked);
};

// A drop-down list. Each entry carries a number of the program's own.
class ComboBox : public Control {
 public:
  static constexpr ControlKind kKind = ControlKind::kComboBox;
  struct Entry {
    std::string text;
    int item_data = 0;
    bool operator==(const Entry&) const = default;
  };
  ComboBox(ControlSink& sink, const char* name)
      : Control(sink, kKind, name),
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
