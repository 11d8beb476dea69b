// The plug-in's Network Info window: its edit box as call following reads it, and keeping the
// window open and out of the user's way.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/ports.h"
#include "link/discovery.h"
#include "link/link_context.h"

namespace corvane {

// A box that wraps its lines gives those on the screen, whose number changes with its width. They
// are put together again here: a line is given with its last piece, the pieces before give "". What
// was given keeps its index when the width changes, and what came since follows it: where the next
// line begins is remembered in characters, which no width changes.
class NetworkInfo : public NetworkInfoBox {
 public:
  // "Net Info" is pressed no more often than this, and after kPressesInVain presses that did not
  // show the window no more often than that.
  static constexpr int kPressPauseMs = 1000;
  static constexpr int kPressesInVain = 3;
  static constexpr int kLongPressPauseMs = 30000;
  // What is longer than so many lines on the screen is not put together whole.
  static constexpr int kMostPieces = 64;

  NetworkInfo(LinkContext& context, Discovery& discovery)
      : context_(context), discovery_(discovery) {}

  [[nodiscard]] std::uintptr_t Identity() const override;
  [[nodiscard]] std::int32_t LineCount() override;
  [[nodiscard]] std::optional<std::string> Line(std::int32_t index) override;
  void Clear() override;

  // One step per cycle: finds the window again after it was closed or replaced, presses "Net Info"
  // while it is not to be seen, and minimises it when it is shown normally. While SDR# is minimised
  // or hidden the window, which the system may have hidden with it, is left as it is: the box can
  // be read all the same.
  void KeepOpen();

  // Minimises it when it is shown normally.
  void Minimise();

 private:
  // A line on the screen, and what follows it in the box.
  enum class Break { kLineEnds, kLineGoesOn, kUnknown };
  struct Piece {
    std::string text;
    Break what_follows = Break::kUnknown;
    std::int32_t end = 0;  // the character that the next one begins with
  };
  [[nodiscard]] std::optional<Piece> ReadPiece(std::int32_t index);
  [[nodiscard]] std::optional<std::string> WrappedLine(std::int32_t index);
  [[nodiscard]] std::int32_t WrapWidth() const;
  void NoteWidth();
  // The line on the screen that holds this character, 0 the first; nullopt without an answer.
  [[nodiscard]] std::optional<std::int32_t> LineOnScreen(std::int32_t character);
  void ReportUnknownBreak();
  [[nodiscard]] bool IsHiddenWithSdr();
  [[nodiscard]] WindowHandle Box() const { return context_.handles[SdrRole::kNetworkInfoEdit]; }
  [[nodiscard]] bool IsThere();
  void PressNetInfo();

  LinkContext& context_;
  Discovery& discovery_;
  std::optional<std::int64_t> pressed_at_ms_;
  int presses_in_vain_ = 0;
  bool press_unanswered_ = false;
  WindowHandle wrapping_box_ = 0;
  // Of wrapping_box_: the width that its lines were counted in, what is to be added to an index on
  // the screen, the line that is read next, and the character that it begins with.
  std::int32_t wrap_width_ = 0;
  std::int32_t shift_ = 0;
  std::optional<std::int32_t> next_line_;
  std::int32_t next_start_ = 0;
  WindowHandle reported_box_ = 0;
};

}  // namespace corvane
