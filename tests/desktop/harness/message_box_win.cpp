// Message boxes by their child windows, their icons by comparing pictures.
#include "desktop/harness/message_box.h"

#include <windows.h>

#include <array>
#include <cstdlib>
#include <utility>
#include <vector>

#include "desktop/harness/handles_win.h"

namespace corvane::desktop {

namespace {

constexpr std::string_view kBoxClass = "#32770";
// The mean difference of a colour channel up to which two pictures are of the same icon.
constexpr int kSameIconDifference = 24;

// A picture of its own in memory, with what is drawn on it.
class Canvas {
 public:
  Canvas(int width, int height) : width_(width), height_(height) {
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    dc_ = CreateCompatibleDC(nullptr);
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    pixels_ = static_cast<const unsigned char*>(pixels);
    before_ = SelectObject(dc_, bitmap_);
  }
  ~Canvas() {
    SelectObject(dc_, before_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  [[nodiscard]] HDC dc() const { return dc_; }
  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }

  [[nodiscard]] int MeanDifference(const Canvas& other) const {
    long long sum = 0;
    const int pixels = width_ * height_;
    for (int i = 0; i < pixels * 4; ++i) {
      if (i % 4 != 3) sum += std::abs(int{pixels_[i]} - int{other.pixels_[i]});
    }
    return static_cast<int>(sum / (pixels * 3));
  }

 private:
  int width_;
  int height_;
  HDC dc_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  const unsigned char* pixels_ = nullptr;
};

ShownIcon IconOn(HWND control) {
  DWORD_PTR set = 0;
  if (SendMessageTimeoutA(control, STM_GETICON, 0, 0, SMTO_NORMAL, kAnswerLimit_ms, &set) == 0) {
    return ShownIcon::kUnknown;
  }
  if (set == 0) return ShownIcon::kNone;
  RECT place{};
  GetWindowRect(control, &place);
  if (place.right <= place.left || place.bottom <= place.top) return ShownIcon::kUnknown;
  const HDC screen = GetDC(nullptr);
  Canvas seen(place.right - place.left, place.bottom - place.top);
  BitBlt(seen.dc(), 0, 0, seen.width(), seen.height(), screen, place.left, place.top, SRCCOPY);
  const COLORREF background = GetPixel(screen, place.left - 2, place.top - 2);
  ReleaseDC(nullptr, screen);

  const std::array<std::pair<LPCSTR, ShownIcon>, 4> known = {
      {{reinterpret_cast<LPCSTR>(IDI_HAND), ShownIcon::kError},
       {reinterpret_cast<LPCSTR>(IDI_EXCLAMATION), ShownIcon::kWarning},
       {reinterpret_cast<LPCSTR>(IDI_ASTERISK), ShownIcon::kInformation},
       {reinterpret_cast<LPCSTR>(IDI_QUESTION), ShownIcon::kQuestion}}};
  ShownIcon nearest = ShownIcon::kUnknown;
  int least = kSameIconDifference;
  for (const auto& [name, icon] : known) {
    Canvas drawn(seen.width(), seen.height());
    const RECT all = {0, 0, seen.width(), seen.height()};
    const HBRUSH brush = CreateSolidBrush(background);
    FillRect(drawn.dc(), &all, brush);
    DeleteObject(brush);
    DrawIconEx(drawn.dc(), 0, 0, LoadIconA(nullptr, name), seen.width(), seen.height(), 0, nullptr,
               DI_NORMAL);
    const int difference = seen.MeanDifference(drawn);
    if (difference >= least) continue;
    least = difference;
    nearest = icon;
  }
  return nearest;
}

}  // namespace

WindowHandle FindMessageBox(unsigned process_id) {
  for (const WindowHandle window : TopLevelWindows(process_id)) {
    if (ClassOf(window) == kBoxClass && Visible(window)) return window;
  }
  return 0;
}

std::optional<ShownBox> LookAtBox(WindowHandle box) {
  ShownBox shown;
  shown.title = TextOf(box);
  for (const WindowHandle child : Descendants(box)) {
    if (!Visible(child)) continue;
    const std::string kind = ClassOf(child);
    const auto style = static_cast<unsigned>(GetWindowLongA(Hwnd(child), GWL_STYLE));
    if (kind == "Button") {
      ++shown.buttons;
    } else if (kind == "Static" && (style & SS_TYPEMASK) == SS_ICON) {
      shown.icon = IconOn(Hwnd(child));
    } else {
      shown.text += TextOf(child);
    }
  }
  if (!Alive(box)) return std::nullopt;
  return shown;
}

void AnswerBox(WindowHandle box) {
  if (box != 0) PostMessageA(Hwnd(box), WM_COMMAND, IDOK, 0);
}

}  // namespace corvane::desktop
