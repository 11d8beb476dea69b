// Foreign windows by messages with a time limit.
#include "desktop/harness/foreign_windows.h"

#include <windows.h>

#include <algorithm>
#include <optional>

#include "base/wide_text_win.h"
#include "desktop/harness/handles_win.h"

namespace corvane::desktop {

namespace {

constexpr std::size_t kLongestText = 1'000'000;

std::optional<LRESULT> Ask(WindowHandle window, UINT message, WPARAM w_param = 0,
                           LPARAM l_param = 0, int limit_ms = kAnswerLimit_ms) {
  DWORD_PTR answer = 0;
  if (window == 0 || SendMessageTimeoutW(Hwnd(window), message, w_param, l_param, SMTO_NORMAL,
                                         static_cast<UINT>(limit_ms), &answer) == 0) {
    return std::nullopt;
  }
  return static_cast<LRESULT>(answer);
}

int AskNumber(WindowHandle window, UINT message, WPARAM w_param = 0) {
  return static_cast<int>(Ask(window, message, w_param).value_or(-1));
}

void Post(WindowHandle window, UINT message, WPARAM w_param = 0, LPARAM l_param = 0) {
  if (window != 0) PostMessageW(Hwnd(window), message, w_param, l_param);
}

// A text by a message that gives its length and one that copies it. Room is left for a text that
// grows in between. The wide forms are used because a narrow length request from another process
// harms the asked program under some systems.
std::string ReadText(WindowHandle window, UINT length_message, UINT text_message, WPARAM index,
                     bool size_is_w_param) {
  const auto length = Ask(window, length_message, index);
  if (!length || *length < 0 || static_cast<std::size_t>(*length) > kLongestText) return {};
  std::wstring buffer(static_cast<std::size_t>(*length) * 2 + 4'096, L'\0');
  const WPARAM w_param = size_is_w_param ? buffer.size() : index;
  const auto copied = Ask(window, text_message, w_param, reinterpret_cast<LPARAM>(buffer.data()));
  if (!copied || *copied < 0) return {};
  buffer.resize(wcsnlen(buffer.data(), buffer.size()));
  return Narrow(buffer);
}

std::string ItemOf(WindowHandle list, std::size_t index) {
  return ReadText(list, LB_GETTEXTLEN, LB_GETTEXT, index, false);
}

DWORD OwnerOf(WindowHandle window) {
  DWORD owner = 0;
  GetWindowThreadProcessId(Hwnd(window), &owner);
  return owner;
}

bool Replace(WindowHandle control, std::string_view text) {
  const std::wstring wide = Wide(text);
  return Ask(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str())).has_value();
}

LPARAM MiddleOf(WindowHandle control) {
  RECT client{};
  GetClientRect(Hwnd(control), &client);
  return MAKELPARAM(client.right / 2, client.bottom / 2);
}

BOOL CALLBACK Collect(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<WindowHandle>*>(list)->push_back(Handle(window));
  return TRUE;
}

}  // namespace

std::vector<WindowHandle> TopLevelWindows(unsigned process_id) {
  std::vector<WindowHandle> all;
  EnumWindows(Collect, reinterpret_cast<LPARAM>(&all));
  std::erase_if(all, [process_id](WindowHandle window) { return OwnerOf(window) != process_id; });
  return all;
}

WindowHandle FindTopLevelAgain(WindowHandle known, unsigned process_id, std::string_view title) {
  const bool is_it = known != 0 && Alive(known) && OwnerOf(known) == process_id;
  return is_it ? known : FindTopLevel(process_id, title);
}

WindowHandle FindTopLevel(unsigned process_id, std::string_view title) {
  for (const WindowHandle window : TopLevelWindows(process_id)) {
    if (TextOf(window).starts_with(title)) return window;
  }
  return 0;
}

std::vector<WindowHandle> Descendants(WindowHandle parent) {
  std::vector<WindowHandle> all;
  if (parent != 0) EnumChildWindows(Hwnd(parent), Collect, reinterpret_cast<LPARAM>(&all));
  return all;
}

WindowHandle Child(WindowHandle parent, int control_id) {
  if (parent == 0) return 0;
  if (const HWND direct = GetDlgItem(Hwnd(parent), control_id)) return Handle(direct);
  for (const WindowHandle child : Descendants(parent)) {
    if (GetDlgCtrlID(Hwnd(child)) == control_id) return child;
  }
  return 0;
}

WindowHandle ChildByText(WindowHandle parent, std::string_view class_part, std::string_view text) {
  for (const WindowHandle child : Descendants(parent)) {
    if (ClassOf(child).find(class_part) != std::string::npos && TextOf(child) == text) {
      return child;
    }
  }
  return 0;
}

WindowHandle ForegroundWindow() {
  return Handle(GetForegroundWindow());
}

bool Alive(WindowHandle window) {
  return IsWindow(Hwnd(window)) != FALSE;
}
bool Visible(WindowHandle window) {
  return IsWindowVisible(Hwnd(window)) != FALSE;
}
bool Enabled(WindowHandle window) {
  return IsWindowEnabled(Hwnd(window)) != FALSE;
}

std::string ClassOf(WindowHandle window) {
  wchar_t name[256] = {};
  GetClassNameW(Hwnd(window), name, 256);
  return Narrow(name);
}

std::string TextOf(WindowHandle window) {
  return ReadText(window, WM_GETTEXTLENGTH, WM_GETTEXT, 0, true);
}

bool Checked(WindowHandle button) {
  return AskNumber(button, BM_GETCHECK) == BST_CHECKED;
}

std::vector<std::string> ItemsOf(WindowHandle list) {
  const int count = AskNumber(list, LB_GETCOUNT);
  std::vector<std::string> items;
  for (int index = 0; index < count; ++index) {
    items.push_back(ItemOf(list, static_cast<std::size_t>(index)));
  }
  return items;
}

const std::vector<std::string>& LogLines::Of(WindowHandle list) {
  const auto count = static_cast<std::size_t>(std::max(0, AskNumber(list, LB_GETCOUNT)));
  const bool went_on = list == list_ && lines_.size() <= count &&
                       (lines_.empty() || ItemOf(list, lines_.size() - 1) == lines_.back());
  if (!went_on) lines_.clear();
  list_ = list;
  while (lines_.size() < count) lines_.push_back(ItemOf(list, lines_.size()));
  return lines_;
}

int TopIndexOf(WindowHandle list) {
  return AskNumber(list, LB_GETTOPINDEX);
}
int SelectedIn(WindowHandle list) {
  return AskNumber(list, LB_GETCURSEL);
}
int LineCountOf(WindowHandle edit) {
  return AskNumber(edit, EM_GETLINECOUNT);
}

bool Responds(WindowHandle window, int limit_ms) {
  return Ask(window, WM_NULL, 0, 0, limit_ms).has_value();
}

WindowPlace PlaceOf(WindowHandle window) {
  RECT rect{};
  GetWindowRect(Hwnd(window), &rect);
  return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

WindowPlace ScreenPlace() {
  RECT rect{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &rect, 0);
  return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

void Click(WindowHandle button) {
  Post(button, BM_CLICK);
}

void MouseClick(WindowHandle control) {
  Post(control, WM_LBUTTONDOWN, MK_LBUTTON, MiddleOf(control));
  Post(control, WM_LBUTTONUP, 0, MiddleOf(control));
}

void RightClick(WindowHandle control) {
  Post(control, WM_RBUTTONDOWN, MK_RBUTTON, MiddleOf(control));
  Post(control, WM_RBUTTONUP, 0, MiddleOf(control));
}

void DoubleClick(WindowHandle control) {
  MouseClick(control);
  Post(control, WM_LBUTTONDBLCLK, MK_LBUTTON, MiddleOf(control));
  Post(control, WM_LBUTTONUP, 0, MiddleOf(control));
}

void DoubleClickItem(WindowHandle list, int index) {
  RECT item{};
  Ask(list, LB_SETTOPINDEX, static_cast<WPARAM>(index));
  Ask(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
  const LPARAM place = MAKELPARAM(item.left + 4, (item.top + item.bottom) / 2);
  Post(list, WM_LBUTTONDOWN, MK_LBUTTON, place);
  Post(list, WM_LBUTTONUP, 0, place);
  Post(list, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
  Post(list, WM_LBUTTONUP, 0, place);
}

void Type(WindowHandle edit, std::string_view text) {
  MouseClick(edit);
  Post(edit, EM_SETSEL, 0, -1);
  Post(edit, WM_CLEAR);
  for (const char character : text) Post(edit, WM_CHAR, static_cast<unsigned char>(character));
}

void TypeAndEnter(WindowHandle edit, std::string_view text) {
  Type(edit, text);
  Post(edit, WM_CHAR, VK_RETURN);
}

bool EnterAtOnce(WindowHandle edit, std::string_view text) {
  return Replace(edit, text) && Ask(edit, WM_CHAR, VK_RETURN).has_value();
}

bool LeaveAtOnce(WindowHandle edit, std::string_view text) {
  if (!Replace(edit, text)) return false;
  const int id = GetDlgCtrlID(Hwnd(edit));
  // Frames lie beside the controls, not around them: the parent is the window that is told.
  return Ask(Handle(GetParent(Hwnd(edit))), WM_COMMAND, MAKEWPARAM(id, EN_KILLFOCUS),
             static_cast<LPARAM>(edit))
      .has_value();
}

void PressKey(WindowHandle control, int virtual_key) {
  Post(control, WM_KEYDOWN, static_cast<WPARAM>(virtual_key), 1);
  Post(control, WM_KEYUP, static_cast<WPARAM>(virtual_key), static_cast<LPARAM>(0xC0000001));
}

void ChooseInCombo(WindowHandle combo, int index) {
  Ask(combo, CB_SETCURSEL, static_cast<WPARAM>(index));
  const HWND parent = GetParent(Hwnd(combo));
  const int id = GetDlgCtrlID(Hwnd(combo));
  Post(Handle(parent), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), static_cast<LPARAM>(combo));
}

void ChooseMenuItem(WindowHandle window, int command) {
  Post(window, WM_COMMAND, MAKEWPARAM(command, 0));
}

void SelectByPost(WindowHandle list, int index) {
  Post(list, LB_SETCURSEL, static_cast<WPARAM>(index));
}

void Close(WindowHandle window) {
  Post(window, WM_CLOSE);
}
bool EndSession(WindowHandle window) {
  if (Ask(window, WM_QUERYENDSESSION).value_or(FALSE) == FALSE) return false;
  // The program may end while it handles the message, and then does not answer.
  return Ask(window, WM_ENDSESSION, TRUE).has_value() || !Alive(window);
}
void Minimise(WindowHandle window) {
  ShowWindowAsync(Hwnd(window), SW_MINIMIZE);
}
void BringToFront(WindowHandle window) {
  SetForegroundWindow(Hwnd(window));
  // Without a window manager it would stay below a maximised one.
  SetWindowPos(Hwnd(window), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_ASYNCWINDOWPOS);
}

void MoveWindowTo(WindowHandle window, int left, int top) {
  SetWindowPos(Hwnd(window), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SetText(WindowHandle control, std::string_view text) {
  (void)Replace(control, text);
}

std::intptr_t SendData(WindowHandle window, std::uint32_t kind, std::string_view data) {
  COPYDATASTRUCT block{};
  block.dwData = kind;
  block.cbData = static_cast<DWORD>(data.size());
  block.lpData = const_cast<char*>(data.data());
  return Ask(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&block)).value_or(0);
}

std::string DescribeMessageBox(WindowHandle box) {
  std::string description = TextOf(box) + ":";
  for (const WindowHandle child : Descendants(box)) {
    const std::string text = TextOf(child);
    if (ClassOf(child) == "Static" && !text.empty()) description += " " + text;
  }
  return description;
}

}  // namespace corvane::desktop
