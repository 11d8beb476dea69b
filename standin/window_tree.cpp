// The tree is a table by id; z-order is the order of the child lists, topmost first.
#include "standin/window_tree.h"

#include <algorithm>
#include <utility>

namespace corvane::standin {

namespace {

// Where minimised windows stand.
constexpr int kMinimisedPosition = -32000;
constexpr int kMinimisedWidth = 160;
constexpr int kMinimisedHeight = 31;
// The glyph of a drawn check box where the screen is not scaled.
constexpr int kGlyphFirst = 2;
constexpr int kGlyphSize = 12;

// `share` hundredths of the window's ground in the colour.
std::int32_t Blended(std::int32_t colour, int share) {
  std::int32_t blended = 0;
  for (const int shift : {0, 8, 16}) {
    const std::int32_t own = colour >> shift & 0xFF;
    const std::int32_t ground = kWindowColour >> shift & 0xFF;
    blended |= (own + (ground - own) * share / 100) << shift;
  }
  return blended;
}

bool Contains(const Box& box, int x, int y) {
  return x >= box.left && y >= box.top && x < box.left + box.width && y < box.top + box.height;
}

bool IsAlwaysAbove(Kind kind) {
  return kind == Kind::kCover || kind == Kind::kStranger;
}

bool IsPressable(Kind kind) {
  return kind == Kind::kButton || kind == Kind::kCheckBox || kind == Kind::kDrawnCheckBox ||
         kind == Kind::kSelector;
}

}  // namespace

Glyph GlyphAt(int scale) {
  const int share = (scale - 100) / 4;
  return {kGlyphFirst, kGlyphFirst + kGlyphSize * scale / 100 - 1, Blended(kCheckedColour, share),
          Blended(kUncheckedColour, share)};
}

WindowId WindowTree::Add(WindowId parent, WindowSpec wanted) {
  auto made = std::make_unique<Window>();
  Window& window = *made;
  window.id = ++last_id_;
  window.parent = parent;
  window.top = window.id;
  window.kind = wanted.kind;
  window.class_name = std::move(wanted.class_name);
  window.box = wanted.box;
  window.visible = wanted.visible;
  window.colour = wanted.colour;
  window.over = wanted.over;
  window.hang_ms = wanted.hang_ms;
  window.owner = wanted.owner;
  window.wrap = wanted.wrap;
  window.scale = wanted.scale;
  if (wanted.kind == Kind::kMultiLine) {
    window.lines.Set(wanted.text);
    Rewrap(window);
  } else {
    window.text = std::move(wanted.text);
  }
  if (parent == 0) {
    top_level_.insert(IsAlwaysAbove(wanted.kind) ? top_level_.begin() : BelowCovers(), window.id);
  } else {
    Window* holder = Get(parent);
    if (holder == nullptr) return 0;
    holder->children.push_back(window.id);
    window.top = holder->top;
  }
  windows_.resize(window.id + std::size_t{1});
  windows_[window.id] = std::move(made);
  if (observer_ != nullptr) observer_->Created(window);
  return window.id;
}

void WindowTree::Destroy(WindowId id) {
  const Window* window = Find(id);
  if (window == nullptr) return;
  const std::vector<WindowId> children = window->children;
  for (const WindowId child : children) Destroy(child);
  if (Window* parent = Get(Find(id)->parent)) {
    std::erase(parent->children, id);
  } else {
    std::erase(top_level_, id);
  }
  windows_[id].reset();
  if (observer_ != nullptr) observer_->Destroyed(id);
}

std::vector<WindowId> WindowTree::Descendants(WindowId id) const {
  std::vector<WindowId> result;
  const Window* window = Find(id);
  if (window == nullptr) return result;
  for (const WindowId child : window->children) {
    result.push_back(child);
    const std::vector<WindowId> below = Descendants(child);
    result.insert(result.end(), below.begin(), below.end());
  }
  return result;
}

void WindowTree::Cover(WindowId id, std::int32_t colour) {
  if (Find(id) == nullptr) return;
  Box box = ScreenBox(id);
  box.left -= kCoverMargin;
  box.top -= kCoverMargin;
  box.width += 2 * kCoverMargin;
  box.height += 2 * kCoverMargin;
  Add(0, {Kind::kCover, std::string(kCoverClass), "", box, true, colour, id});
}

void WindowTree::Uncover() {
  RemoveAll(Kind::kCover);
}

void WindowTree::RemoveStrangers() {
  RemoveAll(Kind::kStranger);
}

void WindowTree::RemoveAll(Kind kind) {
  const std::vector<WindowId> windows = top_level_;
  for (const WindowId id : windows) {
    if (Find(id)->kind == kind) Destroy(id);
  }
}

void WindowTree::SetText(WindowId id, std::string_view text) {
  Window* window = Get(id);
  if (window == nullptr) return;
  if (window->kind == Kind::kMultiLine) {
    if (window->lines.text() == text) return;
    window->lines.Set(text);
  } else {
    if (window->text == text) return;
    window->text = text;
  }
  Notify(*window, Aspect::kText);
}

void WindowTree::AppendText(WindowId id, std::string_view text, std::size_t keep_bytes) {
  Window* window = Get(id);
  if (window == nullptr || window->kind != Kind::kMultiLine || text.empty()) return;
  window->lines.Append(text);
  if (window->lines.text().size() > keep_bytes) {
    // Half at once: a box that is full would otherwise be moved up with every line.
    window->lines.KeepLast(keep_bytes / 2);
    Notify(*window, Aspect::kText);
  } else if (observer_ != nullptr) {
    observer_->Appended(*window, text);
  }
}

void WindowTree::SetVisible(WindowId id, bool visible) {
  Window* window = Get(id);
  if (window == nullptr || window->visible == visible) return;
  window->visible = visible;
  Notify(*window, Aspect::kVisible);
}

void WindowTree::SetChecked(WindowId id, bool checked) {
  Window* window = Get(id);
  if (window == nullptr || window->checked == checked) return;
  window->checked = checked;
  Notify(*window, Aspect::kChecked);
}

void WindowTree::SetShowState(WindowId id, ShowState state) {
  Window* window = Get(id);
  if (window == nullptr || window->show_state == state) return;
  window->show_state = state;
  Notify(*window, Aspect::kShowState);
  HideWithOwner(id, state == ShowState::kMinimised);
}

void WindowTree::HideWithOwner(WindowId owner, bool hide) {
  for (const WindowId id : std::vector<WindowId>(top_level_)) {
    Window* window = Get(id);
    if (window == nullptr || window->owner != owner) continue;
    if (hide ? !window->visible : !window->hidden_by_owner) continue;
    window->hidden_by_owner = hide;
    SetVisible(id, !hide);
  }
}

void WindowTree::Rewrap(Window& window) {
  if (window.wrap == Wrap::kNone) return;
  window.lines.SetWrap(window.wrap,
                       static_cast<std::size_t>(std::max(window.box.width / kColumnWidth, 1)));
}

void WindowTree::SetPaint(WindowId id, Paint paint) {
  Window* window = Get(id);
  if (window == nullptr || window->paint == paint) return;
  window->paint = paint;
  Notify(*window, Aspect::kPaint);
}

void WindowTree::SetBox(WindowId id, Box box) {
  Window* window = Get(id);
  if (window == nullptr || window->box == box) return;
  window->box = box;
  Rewrap(*window);
  Notify(*window, Aspect::kBox);
}

void WindowTree::SetItems(WindowId id, std::vector<std::string> items) {
  Window* window = Get(id);
  if (window == nullptr || window->items == items) return;
  window->items = std::move(items);
  Notify(*window, Aspect::kItems);
}

void WindowTree::AddItem(WindowId id, std::string_view item, std::size_t keep_items) {
  Window* window = Get(id);
  if (window == nullptr) return;
  const bool drop = window->items.size() >= keep_items;
  if (drop) window->items.erase(window->items.begin());
  window->items.emplace_back(item);
  if (observer_ != nullptr) observer_->ItemAdded(*window, drop);
}

void WindowTree::Raise(WindowId id) {
  const auto found = std::find(top_level_.begin(), top_level_.end(), id);
  const auto top = BelowCovers();
  if (found == top_level_.end() || found <= top) return;
  std::rotate(top, found, found + 1);
  Notify(*Get(id), Aspect::kOrder);
  // What it owns stays above it.
  for (const WindowId owned : std::vector<WindowId>(top_level_)) {
    if (Find(owned)->owner == id) Raise(owned);
  }
}

void WindowTree::OnPress(WindowId id, std::function<void()> action) {
  if (Window* window = Get(id)) window->on_press = std::move(action);
}

void WindowTree::OnMouseDown(WindowId id, std::function<void(int x, int y)> action) {
  if (Window* window = Get(id)) window->on_mouse_down = std::move(action);
}

void WindowTree::OnText(WindowId id, std::function<void()> action) {
  if (Window* window = Get(id)) window->on_text = std::move(action);
}

// The action is copied in each of the three: it may destroy the window that holds it.
bool WindowTree::Press(WindowId id) {
  const Window* window = Find(id);
  if (window == nullptr || !IsPressable(window->kind)) return false;
  if (window->kind == Kind::kSelector) return MouseDown(id, 0, 0);
  const std::function<void()> action = window->on_press;
  if (window->kind == Kind::kCheckBox || window->kind == Kind::kDrawnCheckBox) {
    SetChecked(id, !window->checked);
  }
  if (action) action();
  return true;
}

bool WindowTree::MouseDown(WindowId id, int x, int y) {
  const Window* window = Find(id);
  if (window == nullptr || window->kind != Kind::kSelector) return false;
  if (x < 0 || y < 0 || x >= window->box.width || y >= window->box.height) return false;
  const auto action = window->on_mouse_down;
  if (action) action(x, y);
  return true;
}

bool WindowTree::EnterText(WindowId id, std::string_view text) {
  const Window* window = Find(id);
  if (window == nullptr) return false;
  const std::function<void()> action = window->on_text;
  SetText(id, text);
  if (action) action();
  return true;
}

bool WindowTree::IsVisible(WindowId id) const {
  const Window* window = Find(id);
  if (window == nullptr) return false;
  for (; window != nullptr; window = Find(window->parent)) {
    if (!window->visible) return false;
  }
  return true;
}

bool WindowTree::IsWithin(WindowId id, WindowId outer) const {
  const Window* window = Find(id);
  while (window != nullptr && window->id != outer) window = Find(window->parent);
  return window != nullptr;
}

Box WindowTree::ScreenBox(WindowId id) const {
  const Window* window = Find(id);
  if (window == nullptr) return {};
  if (window->parent == 0) {
    if (window->show_state == ShowState::kNormal) return window->box;
    return {kMinimisedPosition, kMinimisedPosition, kMinimisedWidth, kMinimisedHeight};
  }
  const Box outer = ScreenBox(window->parent);
  Box box = window->box;
  box.left += outer.left;
  box.top += outer.top;
  if (Find(window->parent)->parent == 0) {
    box.left += kFrameLeft;
    box.top += kFrameTop;
  }
  return box;
}

WindowId WindowTree::WindowAt(int x, int y) const {
  WindowId found = 0;
  const std::vector<WindowId>* candidates = &top_level_;
  while (candidates != nullptr) {
    const auto inner = std::find_if(candidates->begin(), candidates->end(), [&](WindowId id) {
      return Find(id)->visible && Contains(ScreenBox(id), x, y);
    });
    if (inner == candidates->end()) break;
    found = *inner;
    candidates = &Find(found)->children;
  }
  return found;
}

std::int32_t WindowTree::PixelAt(int x, int y) const {
  if (x < 0 || y < 0 || x >= kScreenWidth || y >= kScreenHeight) return -1;
  const WindowId id = WindowAt(x, y);
  if (id == 0) return kDesktopColour;
  const Window& window = *Find(id);
  if (window.kind == Kind::kCover) return window.colour;
  const Box box = ScreenBox(id);
  const int inside_x = x - box.left;
  const int inside_y = y - box.top;
  const Glyph glyph = GlyphAt(window.scale);
  const bool in_glyph = inside_x >= glyph.first && inside_x <= glyph.last &&
                        inside_y >= glyph.first && inside_y <= glyph.last;
  if (window.kind != Kind::kDrawnCheckBox || !in_glyph) return kWindowColour;
  if (window.paint == Paint::kOther) return kOtherColour;
  return window.checked ? glyph.checked : glyph.unchecked;
}

std::vector<WindowId>::iterator WindowTree::BelowCovers() {
  return std::find_if(top_level_.begin(), top_level_.end(),
                      [this](WindowId id) { return !IsAlwaysAbove(Find(id)->kind); });
}

void WindowTree::Notify(const Window& window, Aspect aspect) {
  if (observer_ != nullptr) observer_->Changed(window, aspect);
}

}  // namespace corvane::standin
