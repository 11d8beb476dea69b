// A client's bytes that the system does not take yet wait until it does.
#include "standin/tcp_wire_win.h"

#include <utility>

#include "standin/wine_win.h"

namespace corvane::standin {

namespace {

constexpr char kSocketClass[] = "SdrStandinSockets";
constexpr UINT kSocketMessage = WM_APP + 1;
constexpr int kBacklog = 8;
constexpr std::size_t kReadBytes = 4096;
// What a client that reads nothing may have waiting before it is cut off.
constexpr std::size_t kMaxUnsentBytes = 1 << 20;

}  // namespace

TcpWire::TcpWire(NetRemoteServer& server, std::function<void()> before_input)
    : server_(server), before_input_(std::move(before_input)) {
  WSADATA data;
  started_ = WSAStartup(MAKEWORD(2, 2), &data) == 0;
  WNDCLASSA window_class{};
  window_class.lpfnWndProc = Proc;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = kSocketClass;
  RegisterClassA(&window_class);
  window_ = CreateWindowExA(0, kSocketClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            window_class.hInstance, nullptr);
  SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

TcpWire::~TcpWire() {
  CloseListener();
  while (!clients_.empty()) Close(clients_.begin()->first, false);
  DestroyWindow(window_);
  if (started_) WSACleanup();
}

bool TcpWire::Listen(std::uint16_t port) {
  CloseListener();
  if (port == 0) return true;
  listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  if (listener_ == INVALID_SOCKET) return false;
  const BOOL on = TRUE;
  // Another system's TCP keeps a closed connection's port for minutes; this is how it is told
  // that the port may be opened again. On Windows that would let two programs share the port.
  setsockopt(listener_, SOL_SOCKET, IsWine() ? SO_REUSEADDR : SO_EXCLUSIVEADDRUSE,
             reinterpret_cast<const char*>(&on), sizeof on);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener_, kBacklog) != 0 ||
      WSAAsyncSelect(listener_, window_, kSocketMessage, FD_ACCEPT) != 0) {
    CloseListener();
    return false;
  }
  return true;
}

void TcpWire::Send(ClientId id, std::string_view bytes) {
  const auto found = clients_.find(id);
  if (found == clients_.end()) return;
  found->second.unsent += bytes;
  Flush(found->second);
  if (found->second.unsent.size() > kMaxUnsentBytes) {
    Close(id, true);
    server_.Gone(id);
  }
}

void TcpWire::Close(ClientId id, bool reset) {
  const auto found = clients_.find(id);
  if (found == clients_.end()) return;
  if (reset) {
    const linger at_once{1, 0};
    setsockopt(found->second.socket, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&at_once),
               sizeof at_once);
  }
  closesocket(found->second.socket);
  clients_.erase(found);
}

LRESULT CALLBACK TcpWire::Proc(HWND window, UINT message, WPARAM w_param, LPARAM l_param) {
  auto* self = reinterpret_cast<TcpWire*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (message == kSocketMessage && self != nullptr) {
    self->before_input_();
    self->OnSocket(static_cast<SOCKET>(w_param), WSAGETSELECTEVENT(l_param));
    return 0;
  }
  return DefWindowProcA(window, message, w_param, l_param);
}

void TcpWire::CloseListener() {
  if (listener_ != INVALID_SOCKET) closesocket(listener_);
  listener_ = INVALID_SOCKET;
}

void TcpWire::OnSocket(SOCKET socket, int event) {
  if (event == FD_ACCEPT) {
    if (socket == listener_) Accept();
    return;
  }
  for (auto& [id, client] : clients_) {
    if (client.socket != socket) continue;
    const ClientId client_id = id;
    if (event == FD_WRITE) Flush(client);
    if (event == FD_READ || event == FD_CLOSE) Read(client_id);
    if (event == FD_CLOSE) {
      Close(client_id, false);
      server_.Gone(client_id);
    }
    return;
  }
}

void TcpWire::Accept() {
  const SOCKET socket = accept(listener_, nullptr, nullptr);
  if (socket == INVALID_SOCKET) return;
  const ClientId id = server_.Accepted();
  const BOOL on = TRUE;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&on), sizeof on);
  if (id == 0 ||
      WSAAsyncSelect(socket, window_, kSocketMessage, FD_READ | FD_WRITE | FD_CLOSE) != 0) {
    closesocket(socket);
    if (id != 0) server_.Gone(id);
    return;
  }
  clients_[id].socket = socket;
}

void TcpWire::Read(ClientId id) {
  char buffer[kReadBytes];
  for (;;) {
    const auto found = clients_.find(id);
    if (found == clients_.end()) return;
    const int got = recv(found->second.socket, buffer, sizeof buffer, 0);
    if (got <= 0) return;
    server_.Received(id, {buffer, static_cast<std::size_t>(got)});
  }
}

void TcpWire::Flush(Client& client) {
  while (!client.unsent.empty()) {
    const int sent =
        send(client.socket, client.unsent.data(), static_cast<int>(client.unsent.size()), 0);
    if (sent <= 0) return;  // FD_WRITE or FD_CLOSE follows
    client.unsent.erase(0, static_cast<std::size_t>(sent));
  }
}

}  // namespace corvane::standin
