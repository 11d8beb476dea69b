// Answers as the system gives them about another program's windows: what the system itself knows
// (class, place, visible) at once, what the window must answer only while it does not hang.
#include "sim_desktop/sim_window_ops.h"

#include <algorithm>
#include <utility>

namespace corvane::sim {

namespace {

constexpr WindowHandle kFirstHandle = 0x10000;
constexpr WindowHandle kHandleStep = 2;
constexpr std::size_t kMaxClassName = 49;
constexpr std::uint32_t kShowMinimisedState = 2;
constexpr int kMouseWordBits = 16;
constexpr std::int32_t kMouseWordMask = 0xFFFF;
constexpr int kHangStepMs = 10;

ScreenRect RectOf(const standin::Box& box) {
  return {box.left, box.top, box.left + box.width, box.top + box.height};
}

std::string TextOf(const standin::Window& window) {
  return window.kind == standin::Kind::kMultiLine ? window.lines.text() : window.text;
}

}  // namespace

SimWindowOps::SimWindowOps(Loop& loop, standin::Model& model, std::function<void()> catch_up)
    : loop_(loop), model_(model), catch_up_(std::move(catch_up)) {}

WindowHandle SimWindowOps::HandleOf(standin::WindowId id) {
  return id == 0 ? 0 : kFirstHandle + id * kHandleStep;
}

standin::WindowId SimWindowOps::IdOf(WindowHandle handle) {
  if (handle <= kFirstHandle || (handle - kFirstHandle) % kHandleStep != 0) return 0;
  return static_cast<standin::WindowId>((handle - kFirstHandle) / kHandleStep);
}

void SimWindowOps::EnumTopLevel(const std::function<bool(WindowHandle)>& visit) {
  catch_up_();
  const std::vector<standin::WindowId> windows = model_.tree().top_level();
  for (const standin::WindowId id : windows) {
    if (!visit(HandleOf(id))) return;
  }
}

void SimWindowOps::EnumChildren(WindowHandle parent,
                                const std::function<bool(WindowHandle)>& visit) {
  catch_up_();
  for (const standin::WindowId id : model_.tree().Descendants(IdOf(parent))) {
    if (model_.tree().Find(id) != nullptr && !visit(HandleOf(id))) return;
  }
}

std::string SimWindowOps::ClassName(WindowHandle window) {
  const standin::Window* found = Look(window);
  return found == nullptr ? std::string() : found->class_name.substr(0, kMaxClassName);
}

WindowHandle SimWindowOps::Parent(WindowHandle window) {
  const standin::Window* found = Look(window);
  return found == nullptr ? 0 : HandleOf(found->parent);
}

bool SimWindowOps::IsAlive(WindowHandle window) {
  return Look(window) != nullptr;
}

bool SimWindowOps::IsVisible(WindowHandle window) {
  catch_up_();
  return model_.tree().IsVisible(IdOf(window));
}

Answer SimWindowOps::Send(WindowHandle window, unsigned message, std::uintptr_t w_param,
                          std::intptr_t l_param) {
  const standin::Window* found = Ask(window);
  if (found == nullptr) return {};
  const bool edit = found->kind == standin::Kind::kMultiLine;
  switch (message) {
    case kWmGetTextLength:
      return {true, static_cast<std::intptr_t>(TextOf(*found).size())};
    case kEmGetLineCount:
      if (edit) return {true, found->lines.LineCount()};
      return {true, found->kind == standin::Kind::kTextBox ? 1 : 0};
    case kEmLineIndex:
      return {true, edit ? found->lines.LineIndex(static_cast<std::int32_t>(w_param)) : 0};
    case kEmLineLength:
      return {true, edit ? found->lines.LineLength(static_cast<std::int32_t>(w_param)) : 0};
    case kBmClick:
      model_.tree().Press(found->id);
      return {true, 0};
    case kWmLButtonDown: {
      const auto point = static_cast<std::int32_t>(l_param);
      model_.tree().MouseDown(found->id, point & kMouseWordMask, point >> kMouseWordBits);
      return {true, 0};
    }
    default:
      return {true, 0};
  }
}

Answer SimWindowOps::SetText(WindowHandle window, const std::string& text) {
  const standin::Window* found = Ask(window);
  if (found == nullptr) return {};
  model_.tree().EnterText(found->id, text);
  return {true, 1};
}

TextAnswer SimWindowOps::GetText(WindowHandle window, std::size_t size) {
  const standin::Window* found = Ask(window);
  if (found == nullptr) return {};
  std::string text = size == 0 ? std::string() : TextOf(*found).substr(0, size - 1);
  const auto value = static_cast<std::intptr_t>(text.size());
  return {true, value, std::move(text)};
}

TextAnswer SimWindowOps::GetLine(WindowHandle window, std::int32_t line, std::size_t size) {
  const standin::Window* found = Ask(window);
  if (found == nullptr) return {};
  std::string text = found->lines.Line(line).substr(0, size);
  const auto value = static_cast<std::intptr_t>(text.size());
  return {true, value, std::move(text)};
}

bool SimWindowOps::GetPlacement(WindowHandle window, Placement& placement) {
  const standin::Window* found = Look(window);
  if (found == nullptr) return false;
  placement = Placement{};
  placement.show_state =
      found->show_state == standin::ShowState::kNormal ? kShowNormal : kShowMinimisedState;
  placement.normal_position = RectOf(found->box);
  return true;
}

void SimWindowOps::SetPlacement(WindowHandle window, const Placement& placement) {
  if (Look(window) == nullptr) return;
  const ScreenRect& rect = placement.normal_position;
  const standin::WindowId id = IdOf(window);
  standin::WindowTree& tree = model_.tree();
  tree.SetBox(id, {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top});
  const bool minimised =
      placement.show_state == kShowMinimised || placement.show_state == kShowMinimisedState;
  tree.SetShowState(id, minimised ? standin::ShowState::kMinimised : standin::ShowState::kNormal);
  tree.SetVisible(id, true);
}

bool SimWindowOps::GetRect(WindowHandle window, ScreenRect& rect) {
  if (Look(window) == nullptr) return false;
  rect = RectOf(model_.tree().ScreenBox(IdOf(window)));
  return true;
}

void SimWindowOps::SetForeground(WindowHandle window) {
  if (Look(window) == nullptr) return;
  foregrounds_.push_back(window);
  if (foregrounds_.size() > kMaxForegrounds) foregrounds_.erase(foregrounds_.begin());
  model_.tree().Raise(IdOf(window));
}

std::int32_t SimWindowOps::ScreenPixel(WindowHandle, std::int32_t x, std::int32_t y) {
  catch_up_();
  return model_.tree().PixelAt(x, y);
}

const standin::Window* SimWindowOps::Ask(WindowHandle window) {
  ++send_count_;
  const standin::Window* found = Look(window);
  if (found == nullptr) return nullptr;
  if (fail_sends_ > 0) {
    --fail_sends_;
    return nullptr;
  }
  if (!BelongsToSdr(*found)) return found;
  for (int waited = 0; model_.now_ms() < model_.hung_until_ms(); waited += kHangStepMs) {
    const bool known_as_hung = model_.now_ms() - model_.hung_since_ms() >= kHungAfterMs;
    if (known_as_hung || waited >= kSendLimitMs) return nullptr;
    loop_.Sleep(kHangStepMs);
    catch_up_();
  }
  return Look(window);
}

const standin::Window* SimWindowOps::Look(WindowHandle window) {
  catch_up_();
  return model_.tree().Find(IdOf(window));
}

bool SimWindowOps::BelongsToSdr(const standin::Window& window) const {
  const standin::Window* top = &window;
  while (top->parent != 0) top = model_.tree().Find(top->parent);
  return top->id == model_.ids().main || top->id == model_.ids().info_window;
}

}  // namespace corvane::sim
