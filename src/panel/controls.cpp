// What of the controls is more than values: options, window places, list lines and their scrolling.
#include "panel/controls.h"

#include <algorithm>

namespace corvane {

int SelectedOption(std::span<const OptionButton> options) {
  for (std::size_t index = 0; index < options.size(); ++index) {
    if (options[index].value) return static_cast<int>(index);
  }
  return -1;
}

void Window::MoveTo(int left, int top) {
  bounds = {left, top, bounds.get().width, bounds.get().height};
}

void Window::Resize(int width, int height) {
  bounds = {bounds.get().left, bounds.get().top, width, height};
}

ListBox::ListBox(ControlSink& sink, ControlKind kind, const char* name, int full_rows)
    : Control(sink, kind, name), full_rows_(full_rows) {
  back_colour.TakeFromUser(kWindowBackground);
}

std::string ListBox::Item(int index) const {
  if (!HasLine(index)) return {};
  return items_[static_cast<std::size_t>(index)];
}

void ListBox::Add(std::string text) {
  Add(std::move(text), false);
}

void ListBox::Add(std::string text, bool ticked) {
  items_.push_back(std::move(text));
  ticks_.push_back(ticked);
  sink().ListChanged(*this, ListChange::kAdded, items_.size() - 1);
}

void ListBox::Remove(int index) {
  if (!HasLine(index)) return;
  items_.erase(items_.begin() + index);
  ticks_.erase(ticks_.begin() + index);
  if (list_index_ == index) {
    list_index_ = -1;
  } else if (list_index_ > index) {
    --list_index_;
  }
  top_index_ = std::clamp(top_index_, 0, std::max(0, count() - full_rows_));
  sink().ListChanged(*this, ListChange::kRemoved, static_cast<std::size_t>(index));
}

void ListBox::Replace(int index, std::string text) {
  if (!HasLine(index)) return;
  items_[static_cast<std::size_t>(index)] = std::move(text);
  sink().ListChanged(*this, ListChange::kReplaced, static_cast<std::size_t>(index));
}

void ListBox::Clear() {
  if (items_.empty()) return;
  items_.clear();
  ticks_.clear();
  list_index_ = -1;
  top_index_ = 0;
  sink().ListChanged(*this, ListChange::kCleared, 0);
}

void ListBox::Select(int index) {
  if (index < -1 || index >= count()) return;
  list_index_ = index;
  if (index >= 0) ScrollIntoView(index);
  sink().Changed(*this, Field::kListIndex);
}

void ListBox::SelectLast() {
  if (count() > 0) Select(count() - 1);
}

bool CheckList::ticked(int index) const {
  return HasLine(index) && ticks_[static_cast<std::size_t>(index)];
}

void CheckList::Tick(int index, bool ticked) {
  if (!HasLine(index) || this->ticked(index) == ticked) return;
  ticks_[static_cast<std::size_t>(index)] = ticked;
  sink().ListChanged(*this, ListChange::kTicked, static_cast<std::size_t>(index));
}

void ListBox::ScrollIntoView(int index) {
  if (index < top_index_) {
    top_index_ = index;
  } else if (index >= top_index_ + full_rows_) {
    top_index_ = index - full_rows_ + 1;
  }
}

}  // namespace corvane
