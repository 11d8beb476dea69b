// Values of controls as text.
#include "sim/trace_sink.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

#include "base/number_text.h"
#include "panel/controls.h"

namespace corvane::sim {

namespace {

std::string Quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string Bool(bool value) {
  return value ? "True" : "False";
}

std::string Hex(Colour colour) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%06X", static_cast<unsigned>(colour));
  return text.data();
}

std::string TextOf(const Control& control) {
  if (control.kind() == ControlKind::kTextBox) return As<TextBox>(control).text;
  return As<ComboBox>(control).text;
}

std::string ValueOf(const Control& control) {
  if (control.kind() == ControlKind::kCheckBox) return Decimal(As<CheckBox>(control).value.get());
  return Bool(As<OptionButton>(control).value);
}

int ListIndexOf(const Control& control) {
  if (IsList(control.kind())) return As<ListBox>(control).list_index();
  return As<ComboBox>(control).list_index;
}

std::string ItemsOf(const Control& control) {
  std::string text;
  for (const ComboBox::Entry& entry : As<ComboBox>(control).entries.get()) {
    if (!text.empty()) text += ", ";
    text += Quoted(entry.text) + " (" + Decimal(entry.item_data) + ")";
  }
  return text;
}

std::string BoundsOf(const Control& control) {
  if (control.kind() == ControlKind::kFrame) {
    const Frame::Corner& corner = As<Frame>(control).corner;
    return Decimal(corner.left) + ", " + Decimal(corner.top);
  }
  const Window::Bounds& bounds = As<Window>(control).bounds;
  return Decimal(bounds.left) + ", " + Decimal(bounds.top) + ", " + Decimal(bounds.width) + ", " +
         Decimal(bounds.height);
}

const Shape& ShapeOf(const Control& control) {
  return As<Shape>(control);
}

std::string Line(const Control& control, Field field) {
  switch (field) {
    case Field::kCaption:
      return "caption = " + Quoted(control.caption);
    case Field::kText:
      return "text = " + Quoted(TextOf(control));
    case Field::kVisible:
      return "visible = " + Bool(control.visible);
    case Field::kEnabled:
      return "enabled = " + Bool(control.enabled);
    case Field::kToolTip:
      return "tool_tip = " + Quoted(control.tool_tip);
    case Field::kForeColour:
      return "fore_colour = " + Hex(control.fore_colour);
    case Field::kBackColour:
      return "back_colour = " + Hex(control.back_colour);
    case Field::kBold:
      return "bold = " + Bool(control.bold);
    case Field::kTag:
      return "tag = " + Quoted(control.tag);
    case Field::kValue:
      return "value = " + ValueOf(control);
    case Field::kChecked:
      return "checked = " + Bool(As<MenuItem>(control).checked);
    case Field::kListIndex:
      return "list_index = " + Decimal(ListIndexOf(control));
    case Field::kItems:
      return "items = " + ItemsOf(control);
    case Field::kFillColour:
      return "fill_colour = " + Hex(ShapeOf(control).fill_colour);
    case Field::kBorderColour:
      return "border_colour = " + Hex(ShapeOf(control).border_colour);
    case Field::kBorderWidth:
      return "border_width = " + Decimal(ShapeOf(control).border_width.get());
    case Field::kBounds:
      return "bounds = " + BoundsOf(control);
  }
  throw std::logic_error("unknown field");
}

}  // namespace

void TraceSink::Add(std::string line) {
  ++changes_;
  if (recording_) lines_.push_back(std::move(line));
}

void TraceSink::Changed(const Control& control, Field field) {
  if (!recording_) {
    ++changes_;
    return;
  }
  Add(std::string(control.name()) + "." + Line(control, field));
}

void TraceSink::ListChanged(ListBox& list, ListChange change, std::size_t index) {
  const int last_top = std::max(0, list.count() - list.full_rows());
  list.ReportTopIndex(std::min(list.top_index(), last_top));
  const std::string name = list.name();
  const std::string at = Decimal(index);
  switch (change) {
    case ListChange::kAdded:
      return Add(name + ".add " + at + " " + Quoted(list.Item(static_cast<int>(index))));
    case ListChange::kRemoved:
      return Add(name + ".remove " + at);
    case ListChange::kCleared:
      return Add(name + ".clear");
    case ListChange::kReplaced:
      return Add(name + ".replace " + at + " " + Quoted(list.Item(static_cast<int>(index))));
    case ListChange::kTicked:
      return Add(name + ".tick " + at + " " +
                 (As<CheckList>(list).ticked(static_cast<int>(index)) ? "True" : "False"));
  }
}

void TraceSink::FocusWanted(const Control& control) {
  focus_ = control.name();
  Add("focus " + focus_);
}

}  // namespace corvane::sim
