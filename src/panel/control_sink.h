// The seam between the controls' state and whatever shows it.
#pragma once

#include <cstddef>

namespace corvane {

class Control;
class ListBox;

// What of a control changed. The sink reads the new value from the control.
enum class Field {
  kCaption,
  kText,
  kVisible,
  kEnabled,
  kToolTip,
  kForeColour,
  kBackColour,
  kBold,
  kTag,
  kValue,       // CheckBox, OptionButton
  kChecked,     // MenuItem
  kListIndex,   // ListBox, ComboBox
  kItems,       // ComboBox: all entries
  kFillColour,  // Shape
  kBorderColour,
  kBorderWidth,
  kBounds,  // Window: place and size; Frame: place
};

enum class ListChange {
  kAdded,
  kRemoved,
  kCleared,
  kReplaced,
  kTicked,  // CheckList: the tick of a line, in either direction
};

class ControlSink {
 public:
  virtual ~ControlSink() = default;

  // The value of `field` of `control` differs from what it was.
  virtual void Changed(const Control& control, Field field) = 0;

  // An item was added at, removed from, replaced or ticked at `index`, or all were removed. A sink
  // that shows a real list writes its top index back with ListBox::ReportTopIndex once it has done
  // so.
  virtual void ListChanged(ListBox& list, ListChange change, std::size_t index) = 0;

  // The keyboard focus is to go to `control`.
  virtual void FocusWanted(const Control& control) = 0;
};

}  // namespace corvane
