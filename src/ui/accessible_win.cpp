// An accessible object in front of the system's own, which does all that is not told otherwise.
#include "ui/accessible_win.h"

#include <oleacc.h>

#include <atomic>
#include <string>

#include "ui/spoken_names.h"

namespace corvane {

namespace {

BSTR ToBstr(const std::string& text) {
  const int size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
  const BSTR made = SysAllocStringLen(nullptr, static_cast<UINT>(length));
  if (made != nullptr) MultiByteToWideChar(CP_ACP, 0, text.data(), size, made, length);
  return made;
}

std::string WindowText(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

// The import library's own name for it is no data here, so its number is asked of the compiler.
const IID kAccessible = __uuidof(IAccessible);

// Lives as long as somebody holds it, so it knows the window and nothing of the program. Its
// children are the lines of a list, counted from 1.
class Accessible final : public IAccessible {
 public:
  // Takes over one reference to `system`.
  Accessible(HWND window, ControlKind kind, const char* name, IAccessible* system)
      : window_(window), kind_(kind), name_(name), system_(system) {}

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch && id != kAccessible) return E_NOINTERFACE;
    *object = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return system_->GetTypeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return system_->GetTypeInfo(index, locale, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    return system_->GetIDsOfNames(id, names, count, locale, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argument) override {
    return system_->Invoke(member, id, locale, flags, parameters, result, exception, argument);
  }

  // IAccessible, where it differs
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
    if (IsLine(child)) return Give(Line(child.lVal), name);
    if (name_ == nullptr) return system_->get_accName(child, name);
    return Give(name_, name);
  }
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override {
    if (IsLine(child)) return DISP_E_MEMBERNOTFOUND;
    if (kind_ != ControlKind::kLabel) return system_->get_accValue(child, value);
    return Give(WindowText(window_), value);
  }
  HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
    if (!IsList(kind_)) return system_->get_accChildCount(count);
    if (count == nullptr) return E_POINTER;
    *count = static_cast<long>(SendMessageA(window_, LB_GETCOUNT, 0, 0));
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override {
    if (!IsLine(child)) return system_->get_accChild(child, object);
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    return S_FALSE;  // a line has no object of its own
  }
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
    if (!IsLine(child)) return system_->get_accRole(child, role);
    return Give(kind_ == ControlKind::kCheckList ? ROLE_SYSTEM_CHECKBUTTON : ROLE_SYSTEM_LISTITEM,
                role);
  }
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
    if (!IsLine(child)) return system_->get_accState(child, state);
    const auto line = static_cast<WPARAM>(child.lVal - 1);
    long flags = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    if (SendMessageA(window_, LB_GETSEL, line, 0) > 0) flags |= STATE_SYSTEM_SELECTED;
    const bool ticked =
        kind_ == ControlKind::kCheckList && SendMessageA(window_, LB_GETITEMDATA, line, 0) == 1;
    if (ticked) flags |= STATE_SYSTEM_CHECKED;
    return Give(flags, state);
  }

  // IAccessible, as the system has it
  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
    return system_->get_accParent(parent);
  }
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* text) override {
    return system_->get_accDescription(child, text);
  }
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* text) override {
    return system_->get_accHelp(child, text);
  }
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override {
    return system_->get_accHelpTopic(file, child, topic);
  }
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* text) override {
    return system_->get_accKeyboardShortcut(child, text);
  }
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override {
    return system_->get_accFocus(child);
  }
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override {
    return system_->get_accSelection(children);
  }
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* text) override {
    return system_->get_accDefaultAction(child, text);
  }
  HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override {
    return system_->accSelect(flags, child);
  }
  HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                        VARIANT child) override {
    return system_->accLocation(left, top, width, height, child);
  }
  HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override {
    return system_->accNavigate(direction, start, end);
  }
  HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override {
    return system_->accHitTest(left, top, child);
  }
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
    return system_->accDoDefaultAction(child);
  }
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR text) override {
    return system_->put_accName(child, text);
  }
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR text) override {
    return system_->put_accValue(child, text);
  }

 private:
  ~Accessible() { system_->Release(); }

  [[nodiscard]] bool IsLine(const VARIANT& child) const {
    return IsList(kind_) && child.vt == VT_I4 && child.lVal != CHILDID_SELF;
  }
  [[nodiscard]] std::string Line(long child) const {
    const auto line = static_cast<WPARAM>(child - 1);
    const LRESULT length = SendMessageA(window_, LB_GETTEXTLEN, line, 0);
    if (length <= 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    SendMessageA(window_, LB_GETTEXT, line, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
  }
  static HRESULT Give(const std::string& text, BSTR* to) {
    if (to == nullptr) return E_POINTER;
    *to = ToBstr(text);
    return *to == nullptr ? E_OUTOFMEMORY : S_OK;
  }
  static HRESULT Give(long value, VARIANT* to) {
    if (to == nullptr) return E_POINTER;
    to->vt = VT_I4;
    to->lVal = value;
    return S_OK;
  }

  HWND window_;
  ControlKind kind_;
  const char* name_;
  IAccessible* system_;
  std::atomic<ULONG> references_{1};
};

}  // namespace

std::optional<LRESULT> AnswerAccessibility(const ChildWindow& child, WPARAM w_param,
                                           LPARAM l_param) {
  // The upper half of the number is not always filled.
  if (static_cast<LONG>(l_param) != OBJID_CLIENT) return std::nullopt;
  const char* name = SpokenName(child.row->id);
  if (name == nullptr && !IsList(child.kind())) return std::nullopt;
  static const HRESULT apartment = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  if (FAILED(apartment)) return std::nullopt;
  void* system = nullptr;
  if (FAILED(CreateStdAccessibleObject(child.window, OBJID_CLIENT, kAccessible, &system))) {
    return std::nullopt;
  }
  auto* object =
      new Accessible(child.window, child.kind(), name, static_cast<IAccessible*>(system));
  const LRESULT answer = LresultFromObject(kAccessible, w_param, object);
  object->Release();
  return answer;
}

}  // namespace corvane
