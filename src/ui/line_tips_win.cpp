// The first tip comes when the pointer rests; from line to line it follows at once.
#include "ui/line_tips_win.h"

#include "ui/list_update_win.h"

namespace corvane {

namespace {

// Where the text of the line would stand if there were room; empty when it is all in view.
RECT CutText(HWND list, int line, const std::string& text) {
  RECT row{};
  RECT client{};
  SendMessageA(list, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&row));
  GetClientRect(list, &client);
  const HDC dc = GetDC(list);
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageA(list, WM_GETFONT, 0, 0));
  const HGDIOBJ before = SelectObject(dc, font);
  SIZE size{};
  GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size);
  SelectObject(dc, before);
  ReleaseDC(list, dc);
  const int left = kLineMargin - GetScrollPos(list, SB_HORZ);
  if (left >= 0 && left + size.cx <= client.right) return {};
  return {kLineMargin, row.top, kLineMargin + size.cx, row.bottom};
}

}  // namespace

void LineTips::Hide(HWND list) {
  if (list_ != list) return;
  list_ = nullptr;
  line_ = -1;
  tips_.HidePlaced();
}

void LineTips::ShowFor(HWND list, POINT pointer) {
  const int line = LineUnder(list, pointer);
  if (list_ == list && line_ == line) return;
  Hide(list);
  const std::string text = line < 0 ? std::string{} : LineText(list, line);
  if (text.empty()) return;
  RECT place = CutText(list, line, text);
  if (IsRectEmpty(&place)) return;
  MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&place), 2);
  tips_.ShowPlaced(text, place);
  list_ = list;
  line_ = line;
}

void LineTips::Note(HWND list, UINT message, LPARAM l_param) {
  const POINT pointer{static_cast<short>(LOWORD(l_param)), static_cast<short>(HIWORD(l_param))};
  switch (message) {
    case WM_MOUSEMOVE: {
      TRACKMOUSEEVENT wanted{sizeof wanted, TME_HOVER | TME_LEAVE, list, HOVER_DEFAULT};
      TrackMouseEvent(&wanted);
      if (list_ == list) ShowFor(list, pointer);
      break;
    }
    case WM_MOUSEHOVER:
      ShowFor(list, pointer);
      break;
    case WM_MOUSELEAVE:
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_MOUSEWHEEL:
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_KEYDOWN:
    case WM_SHOWWINDOW:
    case WM_SIZE:
      Hide(list);
      break;
    default:
      break;
  }
}

}  // namespace corvane
