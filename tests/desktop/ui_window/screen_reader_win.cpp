// Questions by the accessibility interface.
#include "desktop/ui_window/screen_reader_win.h"

#include <oleacc.h>

namespace corvane::ui_test {

namespace {

std::string Take(BSTR text) {
  std::string narrow;
  for (const wchar_t* letter = text; letter != nullptr && *letter != L'\0'; ++letter) {
    narrow += static_cast<char>(*letter);
  }
  SysFreeString(text);
  return narrow;
}

VARIANT Child(long number) {
  VARIANT child{};
  child.vt = VT_I4;
  child.lVal = number;
  return child;
}

}  // namespace

Spoken SpokenOf(HWND control) {
  Spoken spoken;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  void* found = nullptr;
  if (FAILED(AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT),
                                        __uuidof(IAccessible), &found))) {
    return spoken;
  }
  auto* object = static_cast<IAccessible*>(found);
  spoken.found = true;
  BSTR text = nullptr;
  if (SUCCEEDED(object->get_accName(Child(CHILDID_SELF), &text))) spoken.name = Take(text);
  text = nullptr;
  if (SUCCEEDED(object->get_accValue(Child(CHILDID_SELF), &text))) spoken.value = Take(text);
  long count = 0;
  if (SUCCEEDED(object->get_accChildCount(&count))) {
    for (long number = 1; number <= count; ++number) {
      Spoken::Line line;
      text = nullptr;
      if (SUCCEEDED(object->get_accName(Child(number), &text))) line.name = Take(text);
      VARIANT state{};
      if (SUCCEEDED(object->get_accState(Child(number), &state)) && state.vt == VT_I4) {
        line.ticked = (state.lVal & STATE_SYSTEM_CHECKED) != 0;
        line.selected = (state.lVal & STATE_SYSTEM_SELECTED) != 0;
      }
      spoken.lines.push_back(line);
    }
  }
  object->Release();
  return spoken;
}

}  // namespace corvane::ui_test
