// Reading the box, re-finding, opening and minimising its window.
#include "link/network_info.h"

#include <utility>

#include "panel/logs.h"

namespace corvane {

namespace {

constexpr std::int32_t kLineEnd = 2;  // CR LF

}  // namespace

std::uintptr_t NetworkInfo::Identity() const {
  return Box();
}

std::int32_t NetworkInfo::LineCount() {
  const std::int32_t count = context_.windows.LineCount(Box()).value;
  if (Box() != wrapping_box_ || count <= 0) return count;
  const std::int32_t last = count - 1 + shift_;
  const bool begins_anew = !next_line_ || last < *next_line_;
  Answer<std::int32_t> start;
  if (begins_anew) {
    start = context_.windows.LineStart(Box(), count - 1);
    if (!start.answered()) return 0;
  }
  // Counted in another width than that of the lines before: the next cycle takes note of it.
  if (WrapWidth() != wrap_width_) return 0;
  if (begins_anew) {
    next_line_ = last;
    next_start_ = start.value;
  }
  return last + 1;
}

std::optional<std::string> NetworkInfo::Line(std::int32_t index) {
  if (Box() == 0 || index < 0) return std::string{};
  if (Box() == wrapping_box_) return WrappedLine(index - shift_);
  Answer<std::string> line = context_.windows.Line(Box(), index);
  if (!line.answered()) return std::nullopt;
  return std::move(line.value);
}

std::optional<NetworkInfo::Piece> NetworkInfo::ReadPiece(std::int32_t index) {
  WindowOps& windows = context_.windows;
  Answer<std::string> text = windows.Line(Box(), index);
  const Answer<std::int32_t> start = windows.LineStart(Box(), index);
  const Answer<std::int32_t> next = windows.LineStart(Box(), index + 1);
  if (!text.answered() || !start.answered() || !next.answered()) return std::nullopt;
  const std::int32_t gap = next.value - start.value - static_cast<std::int32_t>(text.value.size());
  const Break what_follows = gap == kLineEnd ? Break::kLineEnds
                             : gap == 0      ? Break::kLineGoesOn
                                             : Break::kUnknown;
  return Piece{std::move(text.value), what_follows, next.value};
}

std::optional<std::string> NetworkInfo::WrappedLine(std::int32_t index) {
  std::optional<Piece> piece = ReadPiece(index);
  if (!piece) return std::nullopt;
  const std::int32_t end = piece->end;
  std::string line;
  if (piece->what_follows != Break::kLineGoesOn) {
    if (piece->what_follows == Break::kUnknown) ReportUnknownBreak();
    line = std::move(piece->text);
    for (std::int32_t above = index - 1; above >= 0 && index - above < kMostPieces; --above) {
      piece = ReadPiece(above);
      if (!piece) return std::nullopt;
      if (piece->what_follows != Break::kLineGoesOn) break;
      line.insert(0, piece->text);
    }
  }
  // Broken anew in between: it is read again when that was taken note of.
  if (WrapWidth() != wrap_width_) return std::nullopt;
  next_line_ = index + shift_ + 1;
  next_start_ = end;
  return line;
}

void NetworkInfo::ReportUnknownBreak() {
  if (std::exchange(reported_box_, Box()) == Box()) return;
  AddStatusLineInView(
      context_.form, "'Network Info' wraps long lines - switch its word wrap off or make it wider");
}

std::int32_t NetworkInfo::WrapWidth() const {
  ScreenRect rect;
  return context_.windows.GetRect(Box(), rect) ? rect.right - rect.left : 0;
}

std::optional<std::int32_t> NetworkInfo::LineOnScreen(std::int32_t character) {
  const Answer<std::int32_t> count = context_.windows.LineCount(Box());
  if (!count.answered()) return std::nullopt;
  std::int32_t low = 0;
  std::int32_t high = count.value - 1;
  while (low < high) {
    const std::int32_t middle = low + (high - low + 1) / 2;
    const Answer<std::int32_t> start = context_.windows.LineStart(Box(), middle);
    if (!start.answered()) return std::nullopt;
    // -1: the box has fewer lines by now.
    if (start.value < 0 || start.value > character) {
      high = middle - 1;
    } else {
      low = middle;
    }
  }
  return low;
}

void NetworkInfo::NoteWidth() {
  const bool wraps = Box() != 0 && context_.windows.WrapsLines(Box());
  if (!wraps || Box() != wrapping_box_) {
    wrapping_box_ = wraps ? Box() : 0;
    wrap_width_ = WrapWidth();
    shift_ = 0;
    next_line_.reset();
    return;
  }
  const std::int32_t width = WrapWidth();
  if (width == wrap_width_) return;
  if (next_line_) {
    const std::optional<std::int32_t> line = LineOnScreen(next_start_);
    if (!line) return;
    shift_ = *next_line_ - *line;
  }
  wrap_width_ = width;
}

void NetworkInfo::Clear() {
  context_.windows.SetText(Box(), {});
}

bool NetworkInfo::IsThere() {
  return context_.windows.IsAlive(context_.handles[SdrRole::kNetworkInfoWindow]) &&
         context_.windows.IsAlive(Box());
}

void NetworkInfo::PressNetInfo() {
  // A press per cycle would open window after window in a plug-in that makes a new one each time.
  const std::int64_t now_ms = context_.loop.TickMs();
  const int pause_ms = presses_in_vain_ < kPressesInVain ? kPressPauseMs : kLongPressPauseMs;
  if (pressed_at_ms_ && now_ms - *pressed_at_ms_ < pause_ms) return;
  pressed_at_ms_ = now_ms;
  const WindowHandle button = context_.handles[SdrRole::kNetInfoButton];
  if (press_unanswered_) {
    // That press comes late; on a button that turns the window over a second one would undo it.
    // Whoever answers a question has dealt with what was sent before: then it shows what became.
    press_unanswered_ = context_.windows.Text(button).reply == Reply::kNoAnswer;
    return;
  }
  press_unanswered_ = context_.windows.Press(button) == Reply::kNoAnswer;
  if (!press_unanswered_) ++presses_in_vain_;
}

// A window that another one owns is hidden by the system while that is minimised.
bool NetworkInfo::IsHiddenWithSdr() {
  const WindowHandle sdr = context_.handles[SdrRole::kMainWindow];
  Placement placement;
  if (!context_.windows.GetPlacement(sdr, placement)) return false;
  return placement.show_state == kShownMinimised || !context_.windows.IsVisible(sdr);
}

void NetworkInfo::KeepOpen() {
  if (!IsThere()) {
    if (!discovery_.FindNetworkInfo()) {
      PressNetInfo();
      discovery_.FindNetworkInfo();
    }
  } else if (context_.windows.IsVisible(context_.handles[SdrRole::kNetworkInfoWindow])) {
    presses_in_vain_ = 0;
    press_unanswered_ = false;
  } else if (!IsHiddenWithSdr()) {
    PressNetInfo();
  }
  NoteWidth();
  if (context_.windows.IsVisible(context_.handles[SdrRole::kNetworkInfoWindow])) Minimise();
}

void NetworkInfo::Minimise() {
  const WindowHandle window = context_.handles[SdrRole::kNetworkInfoWindow];
  Placement placement;
  if (window == 0 || !context_.windows.GetPlacement(window, placement)) return;
  if (placement.show_state != kShowNormal) return;
  placement.show_state = kShowMinimised;
  context_.windows.SetPlacement(window, placement);
}

}  // namespace corvane
