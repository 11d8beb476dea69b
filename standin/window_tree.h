// The windows of a desktop as plain state: what they are called, where they stand, what a press or
// a mouse-down on them does. The truth of which real windows are a mirror. Must not know any window
// system.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "standin/edit_text.h"

namespace corvane::standin {

using WindowId = std::uint32_t;  // 0: none. Never given twice.

// What a drawn check box shows at its pixel (7, 7), as the screen gives it, where the screen is not
// scaled.
inline constexpr std::int32_t kCheckedColour = 10580318;
inline constexpr std::int32_t kUncheckedColour = 14934753;
inline constexpr std::int32_t kOtherColour = 0x00404040;   // painted in another theme's colours
inline constexpr std::int32_t kWindowColour = 0x00F0F0F0;  // anything that is not a check box
inline constexpr std::int32_t kDesktopColour = 0x00604020;
// The class of a window that covers another.
inline constexpr char kCoverClass[] = "SdrStandin.Cover";
// The title of a stranger.
inline constexpr char kStrangerTitle[] = "Some other program";

// The glyph of a drawn check box at a screen scaling in percent: a square that grows with it, from
// pixel `first` to pixel `last` of the box on either side. Its (7, 7) lies nearer to the edge then,
// where the drawing blends into the ground.
struct Glyph {
  int first = 0;
  int last = 0;
  std::int32_t checked = 0;
  std::int32_t unchecked = 0;
};
[[nodiscard]] Glyph GlyphAt(int scale);

struct Box {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Box&) const = default;
};

enum class Kind {
  kFrame,          // top-level window
  kPanel,          // holds others
  kLabel,          // STATIC
  kButton,         // BUTTON
  kCheckBox,       // BUTTON that the system draws
  kDrawnCheckBox,  // BUTTON that draws itself in the two reference colours
  kSelector,       // BUTTON that reacts to the mouse-down
  kTextBox,        // EDIT, one line
  kMultiLine,      // EDIT, many lines, read only for the user
  kListBox,        // LISTBOX
  kCover,          // top-level window of another program, always above SDR#'s, of one colour
  kStranger,       // likewise, of SDR#'s kind of class, whose program hangs at first
};

enum class ShowState { kNormal, kMinimised };
enum class Paint {
  kNormal,
  kOther,   // a drawn check box in another theme's colours
  kHeader,  // a label on a coloured ground
};

struct WindowSpec {
  Kind kind = Kind::kPanel;
  std::string class_name;
  std::string text;
  Box box;  // of a top-level window on the screen, else in the parent's client area; pixels
  bool visible = true;
  // Of a kCover:
  std::int32_t colour = 0;
  WindowId over = 0;  // what it covers
  // Of a kStranger:
  std::int64_t hang_ms = 0;  // from its making
  // Of a kFrame:
  WindowId owner = 0;  // 0: none
  // Of a kMultiLine:
  Wrap wrap = Wrap::kNone;
  // Of a kDrawnCheckBox:
  int scale = 100;  // of the screen, percent
};

struct Window {
  WindowId id = 0;
  WindowId parent = 0;
  WindowId top = 0;                // the top-level window that it is, or stands in
  std::vector<WindowId> children;  // topmost first, which is the order of their making
  Kind kind = Kind::kPanel;
  std::string class_name;
  std::string text;  // of everything but kMultiLine
  Box box;
  bool visible = true;  // its own flag: an ancestor may be hidden all the same
  bool checked = false;
  ShowState show_state = ShowState::kNormal;
  Paint paint = Paint::kNormal;
  int scale = 100;                 // kDrawnCheckBox
  std::int32_t colour = 0;         // kCover
  WindowId over = 0;               // kCover
  std::int64_t hang_ms = 0;        // kStranger
  WindowId owner = 0;              // kFrame
  bool hidden_by_owner = false;    // kFrame: its owner is minimised
  Wrap wrap = Wrap::kNone;         // kMultiLine
  EditText lines;                  // kMultiLine
  std::vector<std::string> items;  // kListBox
  std::function<void()> on_press;
  std::function<void(int x, int y)> on_mouse_down;
  std::function<void()> on_text;
};

enum class Aspect { kText, kBox, kVisible, kChecked, kShowState, kPaint, kItems, kOrder };

class WindowTree {
 public:
  // The mirror. Told after the change; must not change the tree.
  class Observer {
   public:
    virtual ~Observer() = default;
    virtual void Created(const Window& window) = 0;
    // Of the window and, before it, of each of its descendants.
    virtual void Destroyed(WindowId id) = 0;
    virtual void Changed(const Window& window, Aspect aspect) = 0;
    // Instead of Changed(kText) when text was added at the end of a kMultiLine.
    virtual void Appended(const Window& window, std::string_view text) = 0;
    // Instead of Changed(kItems) when one item was added at the end; `dropped`: the first one went.
    virtual void ItemAdded(const Window& window, bool dropped) = 0;
  };
  void SetObserver(Observer* observer) { observer_ = observer; }

  // A new top-level window (`parent` 0) is the topmost below the covers, a new cover above them; a
  // new child is the last of its siblings.
  WindowId Add(WindowId parent, WindowSpec wanted);
  // With all its descendants.
  void Destroy(WindowId id);
  // nullptr when there is no such window. The pointer is good until a window is added or destroyed.
  [[nodiscard]] const Window* Find(WindowId id) const {
    return id < windows_.size() ? windows_[id].get() : nullptr;
  }
  [[nodiscard]] const std::vector<WindowId>& top_level() const { return top_level_; }  // in z-order
  // All descendants, each before its own children.
  [[nodiscard]] std::vector<WindowId> Descendants(WindowId id) const;
  // Lays a window of another program over this one, `colour` all over.
  void Cover(WindowId id, std::int32_t colour);
  void Uncover();  // takes all covers away
  void RemoveStrangers();

  // Each does nothing when there is no such window or nothing would change.
  void SetText(WindowId id, std::string_view text);
  void AppendText(WindowId id, std::string_view text, std::size_t keep_bytes);
  void SetVisible(WindowId id, bool visible);
  void SetChecked(WindowId id, bool checked);
  // Minimising a window hides those that it owns; restoring it shows them again.
  void SetShowState(WindowId id, ShowState state);
  void SetPaint(WindowId id, Paint paint);
  void SetBox(WindowId id, Box box);
  void SetItems(WindowId id, std::vector<std::string> items);
  void AddItem(WindowId id, std::string_view item, std::size_t keep_items);
  void Raise(WindowId id);  // brings a top-level window to the top, but for the covers

  void OnPress(WindowId id, std::function<void()> action);
  void OnMouseDown(WindowId id, std::function<void(int x, int y)> action);
  void OnText(WindowId id, std::function<void()> action);

  // What a user or another program does. False when there is no such window or it is not that kind.
  bool Press(WindowId id);  // a button or check box, which toggles first; a selector as MouseDown
  bool MouseDown(WindowId id, int x, int y);           // a selector, inside its rectangle
  bool EnterText(WindowId id, std::string_view text);  // any window; the mirror is told too

  [[nodiscard]] bool IsVisible(WindowId id) const;  // itself and all its ancestors
  // Whether it is there and is `outer` or a descendant of it.
  [[nodiscard]] bool IsWithin(WindowId id, WindowId outer) const;
  // On the screen; a minimised top-level window stands far outside.
  [[nodiscard]] Box ScreenBox(WindowId id) const;
  // What a look at the screen shows: the topmost window there decides. -1 outside of the screen.
  [[nodiscard]] std::int32_t PixelAt(int x, int y) const;
  [[nodiscard]] WindowId WindowAt(int x, int y) const;

  static constexpr int kScreenWidth = 1920;
  static constexpr int kScreenHeight = 1080;
  static constexpr int kColumnWidth = 7;  // of a character in a box that wraps its lines
  static constexpr int kCoverMargin = 4;  // a cover reaches so far over the edges of what it covers
  static constexpr int kFrameLeft = 8;    // a top-level window's client area inside its frame
  static constexpr int kFrameTop = 31;

 private:
  Window* Get(WindowId id) { return id < windows_.size() ? windows_[id].get() : nullptr; }
  [[nodiscard]] std::vector<WindowId>::iterator BelowCovers();
  void HideWithOwner(WindowId owner, bool hide);
  void Rewrap(Window& window);
  void RemoveAll(Kind kind);
  void Notify(const Window& window, Aspect aspect);

  std::vector<std::unique_ptr<Window>> windows_;  // by id
  std::vector<WindowId> top_level_;
  WindowId last_id_ = 0;
  Observer* observer_ = nullptr;
};

}  // namespace corvane::standin
