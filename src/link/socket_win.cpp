// A Winsock connection that reports by messages to the loop's socket window.
//
// Each connection has a message number of its own, because the system gives the handle of a closed
// socket out again while messages about the old one may still be in the queue.
#include "link/socket_win.h"

#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "base/loop_win.h"

namespace corvane {

namespace {

constexpr unsigned kSocketMessages = LoopWin::kLastSocketMessage - LoopWin::kFirstSocketMessage + 1;

std::string SystemText(int number) {
  std::array<char, 1024> text{};
  const DWORD size = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                    nullptr, static_cast<DWORD>(number), 0, text.data(),
                                    static_cast<DWORD>(text.size()), nullptr);
  std::string description(text.data(), size);
  while (!description.empty() && static_cast<unsigned char>(description.back()) <= ' ') {
    description.pop_back();
  }
  return description.empty() ? "Error " + std::to_string(number) : description;
}

// The address of this machine that `host` names, in network order; INADDR_NONE for any other.
u_long LoopBackAddress(const std::string& host) {
  IN_ADDR address{};
  if (host == "localhost") return htonl(INADDR_LOOPBACK);
  if (inet_pton(AF_INET, host.c_str(), &address) != 1) return INADDR_NONE;
  return (ntohl(address.s_addr) >> 24) == 127 ? address.s_addr : INADDR_NONE;
}

}  // namespace

SocketWin::SocketWin(LoopWin& loop) : loop_(loop) {
  WSADATA data{};
  startup_error_ = WSAStartup(MAKEWORD(2, 2), &data);
  loop.SetSocketHandler([weak = std::weak_ptr<SocketWin*>(self_)](
                            unsigned message, std::uintptr_t w, std::intptr_t l) {
    if (const auto self = weak.lock()) (*self)->OnMessage(message, w, l);
  });
}

SocketWin::~SocketWin() {
  Close();
  if (startup_error_ == 0) WSACleanup();
}

void SocketWin::SetEvents(Events events) {
  events_ = std::move(events);
}

void SocketWin::SetRemote(const std::string& host, std::uint16_t port) {
  host_ = host;
  port_ = port;
}

SocketState SocketWin::State() const {
  return state_;
}

unsigned SocketWin::MessageNumber() const {
  return LoopWin::kFirstSocketMessage + static_cast<unsigned>(connection_ % kSocketMessages);
}

int SocketWin::Open() {
  if (startup_error_ != 0) return startup_error_;
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port_);
  address.sin_addr.s_addr = LoopBackAddress(host_);
  if (address.sin_addr.s_addr == INADDR_NONE) return WSAEADDRNOTAVAIL;
  socket_ = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  if (socket_ == INVALID_SOCKET) return WSAGetLastError();
  const BOOL no_delay = TRUE;
  setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&no_delay),
             sizeof no_delay);
  // This makes the socket non-blocking as well.
  if (WSAAsyncSelect(socket_, static_cast<HWND>(loop_.socket_window()), MessageNumber(),
                     FD_CONNECT | FD_READ | FD_CLOSE) != 0) {
    return WSAGetLastError();
  }
  if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    return 0;
  }
  const int error = WSAGetLastError();
  return error == WSAEWOULDBLOCK ? 0 : error;
}

void SocketWin::Connect() {
  if (state_ != SocketState::kClosed) return;
  ++connection_;
  state_ = SocketState::kConnecting;
  if (const int error = Open()) {
    CloseSocket();
    state_ = SocketState::kError;
    PostForThisConnection([this, error] { Fail(error); });
  }
}

void SocketWin::CloseSocket() {
  if (socket_ == INVALID_SOCKET) return;
  WSAAsyncSelect(socket_, static_cast<HWND>(loop_.socket_window()), 0, 0);
  closesocket(socket_);
  socket_ = INVALID_SOCKET;
}

void SocketWin::Close() {
  ++connection_;
  CloseSocket();
  inbox_.clear();
  state_ = SocketState::kClosed;
}

void SocketWin::Fail(int number) {
  CloseSocket();
  state_ = SocketState::kError;
  // A copy: the handler may set others.
  const auto handler = events_.error;
  if (handler) handler(number, SystemText(number));
}

// Dropped when the socket is closed, connects anew or is destroyed before its turn comes.
void SocketWin::PostForThisConnection(std::function<void()> event) {
  loop_.Post(EventSource::kSocket,
             [weak = std::weak_ptr<SocketWin*>(self_), at = connection_, event = std::move(event)] {
               const auto self = weak.lock();
               if (self && (*self)->connection_ == at) event();
             });
}

bool SocketWin::SendData(std::string_view data) {
  if (state_ != SocketState::kConnected) return false;
  if (data.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return false;
  const int sent = ::send(socket_, data.data(), static_cast<int>(data.size()), 0);
  return sent >= 0 && static_cast<std::size_t>(sent) == data.size();
}

// Takes what the system holds, as far as there is room. 0, or the error that ended the connection.
int SocketWin::Receive() {
  if (socket_ == INVALID_SOCKET) return 0;
  std::array<char, 4096> piece{};
  while (inbox_.size() < kInboxLimit) {
    const auto room = std::min(piece.size(), kInboxLimit - inbox_.size());
    const int got = ::recv(socket_, piece.data(), static_cast<int>(room), 0);
    if (got == 0) return 0;  // the message of the close follows
    if (got < 0) {
      const int error = WSAGetLastError();
      return error == WSAEWOULDBLOCK ? 0 : error;
    }
    inbox_.append(piece.data(), static_cast<std::size_t>(got));
  }
  return 0;
}

std::string SocketWin::GetData() {
  Receive();  // an error is reported by the message of the close
  std::string data = std::exchange(inbox_, {});
  // The system reports again only what is read after it: when the room had run out, that is now.
  if (data.size() >= kInboxLimit) {
    PostForThisConnection([this] { OnReadable(); });
  }
  return data;
}

void SocketWin::OnConnected(int error) {
  if (state_ != SocketState::kConnecting) return;
  if (error != 0) {
    Fail(error);
  } else {
    state_ = SocketState::kConnected;
  }
}

void SocketWin::OnReadable() {
  if (state_ != SocketState::kConnected && state_ != SocketState::kClosing) return;
  const int error = Receive();
  const std::uint64_t connection = connection_;
  const auto handler = events_.data_arrival;
  if (!inbox_.empty() && handler) handler(inbox_.size());
  if (error != 0 && connection == connection_) Fail(error);
}

void SocketWin::OnPeerClosed(int error) {
  if (state_ == SocketState::kConnecting) {
    Fail(error != 0 ? error : WSAECONNABORTED);
    return;
  }
  const std::uint64_t connection = connection_;
  OnReadable();  // what arrived just before
  if (connection != connection_ || state_ != SocketState::kConnected) return;
  if (error != 0) {
    Fail(error);
  } else {
    state_ = SocketState::kClosing;
  }
}

void SocketWin::OnMessage(unsigned message, std::uintptr_t w, std::intptr_t l) {
  if (message != MessageNumber() || w != socket_ || socket_ == INVALID_SOCKET) return;
  const int error = WSAGETSELECTERROR(l);
  switch (WSAGETSELECTEVENT(l)) {
    case FD_CONNECT:
      return OnConnected(error);
    case FD_READ:
      return error != 0 ? Fail(error) : OnReadable();
    case FD_CLOSE:
      return OnPeerClosed(error);
    default:
      return;
  }
}

}  // namespace corvane
