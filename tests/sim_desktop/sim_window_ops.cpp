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
constexpr int kSelectorX = 38;
constexpr int kSelectorY = 13;
constexpr int kHangStepMs = 10;

ScreenRect RectOf(const standin::Box& box) {
  return {box.left, box.top, box.left + box.width, box.top + box.height};
}

const std::string& TextOf(const standin::Window& window) {
  return window.kind == standin::Kind::kMultiLine ? window.lines.text() : window.text;
}

}  // namespace

SimWindowOps::SimWindowOps(SimLoop& loop, standin::Model& model, std::function<void()> catch_up)
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
  const standin::Window* found = Know(window);
  return found == nullptr ? std::string() : found->class_name.substr(0, kMaxClassName);
}

WindowHandle SimWindowOps::Parent(WindowHandle window) {
  const standin::Window* found = Know(window);
  return found == nullptr ? 0 : HandleOf(found->parent);
}

// Each top-level window outside of SDR# is a program of its own.
ProgramId SimWindowOps::Program(WindowHandle window) {
  const standin::Window* found = Know(window);
  if (found == nullptr) return 0;
  return static_cast<ProgramId>(HandleOf(BelongsToSdr(*found) ? model_.ids().main : found->top));
}

std::string SimWindowOps::Title(WindowHandle window) {
  const standin::Window* found = Know(window);
  return found == nullptr || found->parent != 0 ? std::string() : found->text;
}

bool SimWindowOps::IsAlive(WindowHandle window) {
  return Know(window) != nullptr;
}

bool SimWindowOps::IsVisible(WindowHandle window) {
  if (Know(window) == nullptr) return false;
  return model_.tree().IsVisible(IdOf(window));
}

Answer<std::string> SimWindowOps::Text(WindowHandle window) {
  const standin::Window* found = nullptr;
  const Reply reply = Ask({window, Sent::kText, {}, 0}, found);
  if (found == nullptr) return {reply, {}};
  const std::string& text = TextOf(*found);
  if (text.empty()) return {reply, kNoWindowText};
  return {reply, text.substr(0, kLongestText)};
}

Answer<std::int32_t> SimWindowOps::LineCount(WindowHandle edit) {
  const standin::Window* found = nullptr;
  const Reply reply = Ask({edit, Sent::kLineCount, {}, 0}, found);
  if (found == nullptr) return {reply, 0};
  if (found->kind == standin::Kind::kMultiLine) return {reply, found->lines.LineCount()};
  return {reply, found->kind == standin::Kind::kTextBox ? 1 : 0};
}

Answer<std::string> SimWindowOps::Line(WindowHandle edit, std::int32_t index) {
  if (index < 0) return {Reply::kAnswered, {}};
  const standin::Window* found = nullptr;
  const Reply reply = Ask({edit, Sent::kLine, {}, index}, found);
  if (found == nullptr) return {reply, {}};
  std::string line = found->lines.Line(index);
  if (line.size() > kLongestText) line.resize(kLongestText);
  return {reply, std::move(line)};
}

Answer<std::int32_t> SimWindowOps::LineStart(WindowHandle edit, std::int32_t index) {
  if (index < 0) return {Reply::kAnswered, -1};
  const standin::Window* found = nullptr;
  const Reply reply = Ask({edit, Sent::kLineStart, {}, index}, found);
  return {reply, found == nullptr ? 0 : found->lines.LineIndex(index)};
}

Reply SimWindowOps::Press(WindowHandle button) {
  const Message message{button, Sent::kPress, {}, 0};
  const standin::Window* found = nullptr;
  const Reply reply = Ask(message, found);
  if (found != nullptr) CarryOut(message);
  return reply;
}

Reply SimWindowOps::SetText(WindowHandle window, const std::string& text) {
  const Message message{window, Sent::kSetText, text, 0};
  const standin::Window* found = nullptr;
  const Reply reply = Ask(message, found);
  if (found != nullptr) CarryOut(message);
  return reply;
}

Reply SimWindowOps::PressSelector(WindowHandle selector) {
  const Message message{selector, Sent::kPressSelector, {}, 0};
  const standin::Window* found = nullptr;
  const Reply reply = Ask(message, found);
  if (found != nullptr) CarryOut(message);
  return reply;
}

void SimWindowOps::CarryOut(const Message& message) {
  const standin::WindowId id = IdOf(message.window);
  standin::WindowTree& tree = model_.tree();
  if (message.sent == Sent::kPress) tree.Press(id);
  if (message.sent == Sent::kSetText) tree.EnterText(id, message.text);
  if (message.sent == Sent::kPressSelector) tree.MouseDown(id, kSelectorX, kSelectorY);
}

void SimWindowOps::CarryOutLate() {
  if (model_.now_ms() < model_.hung_until_ms()) return;
  for (const Message& message : std::exchange(late_, {})) CarryOut(message);
}

void SimWindowOps::SetSilent(WindowHandle window, bool silent) {
  if (silent) {
    silent_.insert(window);
  } else {
    silent_.erase(window);
  }
}

bool SimWindowOps::GetPlacement(WindowHandle window, Placement& placement) {
  const standin::Window* found = Know(window);
  if (found == nullptr) return false;
  placement = Placement{};
  placement.show_state =
      found->show_state == standin::ShowState::kNormal ? kShowNormal : kShownMinimised;
  if (show_state_ != kNoShowState) placement.show_state = show_state_;
  placement.normal_position = RectOf(found->box);
  return true;
}

Reply SimWindowOps::SetPlacement(WindowHandle window, const Placement& placement) {
  const standin::Window* found = Know(window);
  if (found == nullptr) return Reply::kGone;
  if (model_.elevated() && BelongsToSdr(*found)) return Reply::kRefused;
  const bool answers = WaitForAnswer(*found);
  Keep(placed_, window);
  const ScreenRect& rect = placement.normal_position;
  const standin::WindowId id = IdOf(window);
  standin::WindowTree& tree = model_.tree();
  tree.SetBox(id, {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top});
  const bool minimised =
      placement.show_state == kShowMinimised || placement.show_state == kShownMinimised;
  tree.SetShowState(id, minimised ? standin::ShowState::kMinimised : standin::ShowState::kNormal);
  tree.SetVisible(id, true);
  return answers ? Reply::kAnswered : Reply::kNoAnswer;
}

bool SimWindowOps::GetRect(WindowHandle window, ScreenRect& rect) {
  if (Know(window) == nullptr) return false;
  rect = RectOf(model_.tree().ScreenBox(IdOf(window)));
  return true;
}

WindowHandle SimWindowOps::SetForeground(WindowHandle window) {
  if (Know(window) == nullptr) return 0;
  for (const WindowHandle asked : {window, Foreground()}) {
    if (!Answers(asked)) return asked;
  }
  Keep(foregrounds_, window);
  if (!model_.front_kept()) model_.tree().Raise(IdOf(window));
  return 0;
}

// The topmost that the keyboard can be given to.
WindowHandle SimWindowOps::Foreground() {
  catch_up_();
  for (const standin::WindowId id : model_.tree().top_level()) {
    const standin::Window& window = *model_.tree().Find(id);
    if (window.visible && window.kind == standin::Kind::kFrame) return HandleOf(id);
  }
  return 0;
}

bool SimWindowOps::WrapsLines(WindowHandle edit) {
  const standin::Window* found = Know(edit);
  return found != nullptr && found->lines.wraps();
}

std::int32_t SimWindowOps::ScreenPixel(WindowHandle, std::int32_t x, std::int32_t y) {
  catch_up_();
  if (missing_ && missing_()) return -1;
  return model_.tree().PixelAt(x, y);
}

bool SimWindowOps::IsSeenAt(WindowHandle window, std::int32_t x, std::int32_t y) {
  if (Know(window) == nullptr) return false;
  const standin::WindowTree& tree = model_.tree();
  const standin::WindowId seen = tree.WindowAt(x, y);
  const standin::WindowId wanted = IdOf(window);
  return tree.IsWithin(seen, wanted) || tree.IsWithin(wanted, seen);
}

void SimWindowOps::Keep(std::vector<WindowHandle>& windows, WindowHandle window) {
  windows.push_back(window);
  if (windows.size() > kMaxForegrounds) windows.erase(windows.begin());
}

void SimWindowOps::KeepMessage(const Message& message) {
  messages_.push_back(message);
  if (messages_.size() > kKeptMessages) {
    messages_.erase(messages_.begin(), messages_.begin() + kKeptMessages / 2);
  }
}

// A look in between is needed only where something may have happened since the last one.
Reply SimWindowOps::Ask(const Message& message, const standin::Window*& window) {
  const standin::Window* found = Look(message.window);
  if (found == nullptr) return Reply::kGone;
  ++send_count_;
  if (keeps_messages_) KeepMessage(message);
  if (on_message_) on_message_(message);
  if (on_message_ || acts_late_) found = Look(message.window);
  if (found == nullptr) return Reply::kGone;
  if (fail_sends_ > 0) {
    --fail_sends_;
    return Reply::kNoAnswer;
  }
  if (!silent_.empty() && silent_.contains(message.window)) return Reply::kNoAnswer;
  if (model_.elevated() && BelongsToSdr(*found) && message.sent != Sent::kText) {
    return Reply::kRefused;
  }
  if (!acts_late_ && model_.now_ms() >= HungUntilMs(*found)) {
    window = found;
    return Reply::kAnswered;
  }
  if (!WaitForAnswer(*found)) {
    if (acts_late_) late_.push_back(message);
    return Reply::kNoAnswer;
  }
  window = Look(message.window);
  return window == nullptr ? Reply::kGone : Reply::kAnswered;
}

std::int64_t SimWindowOps::HungUntilMs(const standin::Window& window) const {
  return BelongsToSdr(window) ? model_.hung_until_ms() : model_.stranger_hung_until_ms(window.top);
}

// False when the window's program hangs for longer than is waited.
bool SimWindowOps::WaitForAnswer(const standin::Window& window) {
  const bool sdr = BelongsToSdr(window);
  const standin::WindowId stranger = sdr ? 0 : window.top;
  const auto hung_until_ms = [&] {
    return sdr ? model_.hung_until_ms() : model_.stranger_hung_until_ms(stranger);
  };
  for (int waited = 0; model_.now_ms() < hung_until_ms(); waited += kHangStepMs) {
    const bool known_as_hung = sdr && model_.now_ms() - model_.hung_since_ms() >= kHungAfterMs;
    if (known_as_hung || waited >= send_limit_ms_) return false;
    loop_.Sleep(kHangStepMs);
    catch_up_();
  }
  return true;
}

const standin::Window* SimWindowOps::Look(WindowHandle window) {
  catch_up_();
  if (!late_.empty()) CarryOutLate();
  return model_.tree().Find(IdOf(window));
}

}  // namespace corvane::sim
