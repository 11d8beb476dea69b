// The server's thread looks after its sockets every few milliseconds; all is under one lock.
#include "contract/tcp_peer.h"

#include <winsock2.h>

#include <ws2tcpip.h>

#include <windows.h>

#include <array>
#include <atomic>
#include <chrono>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

namespace corvane::contract {

namespace {

constexpr char kGreeting[] = "{\"Name\":\"Contract\"}\r\n";
constexpr int kPaceMs = 2;
constexpr int kSendLimitMs = 20'000;

void Pause() {
  std::this_thread::sleep_for(std::chrono::milliseconds(kPaceMs));
}

void SetBlocking(SOCKET socket, bool blocking) {
  u_long non_blocking = blocking ? 0 : 1;
  ioctlsocket(socket, static_cast<long>(FIONBIO), &non_blocking);
}

}  // namespace

class TcpPeer::Impl {
 public:
  Impl() {
    WSADATA data{};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) throw std::runtime_error("no Winsock");
    SetListening(true);  // finds the port
    SetListening(false);
    thread_ = std::thread([this] { Serve(); });
  }
  ~Impl() {
    ending_ = true;
    thread_.join();
    SetListening(false);
    for (const SOCKET client : clients_) closesocket(client);
    WSACleanup();
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  void SetListening(bool listening) {
    const std::lock_guard lock(mutex_);
    if (listening == (listener_ != INVALID_SOCKET)) return;
    if (!listening) {
      closesocket(listener_);
      listener_ = INVALID_SOCKET;
      return;
    }
    listener_ = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        listen(listener_, SOMAXCONN) != 0 ||
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
      throw std::runtime_error("cannot listen");
    }
    SetBlocking(listener_, false);
    port = ntohs(address.sin_port);
  }

  void Send(const std::string& bytes) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kSendLimitMs);
    std::size_t sent = 0;
    while (sent < bytes.size()) {
      if (std::chrono::steady_clock::now() > end) throw std::runtime_error("cannot send");
      {
        const std::lock_guard lock(mutex_);
        if (!clients_.empty()) {
          const int taken = ::send(clients_.back(), bytes.data() + sent,
                                   static_cast<int>(bytes.size() - sent), 0);
          if (taken > 0) sent += static_cast<std::size_t>(taken);
        }
      }
      if (sent < bytes.size()) Pause();
    }
  }

  void Close(bool reset) {
    const std::lock_guard lock(mutex_);
    if (clients_.empty()) throw std::runtime_error("no client to close");
    if (reset) {
      const linger at_once{1, 0};
      setsockopt(clients_.back(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&at_once),
                 sizeof at_once);
    }
    closesocket(clients_.back());
    clients_.pop_back();
  }

  std::string Received() {
    const std::lock_guard lock(mutex_);
    return received_;
  }

  std::uint16_t port = 0;

 private:
  void Serve() {
    while (!ending_) {
      {
        const std::lock_guard lock(mutex_);
        Accept();
        for (const SOCKET client : clients_) Receive(client);
      }
      Pause();
    }
  }
  void Accept() {
    if (listener_ == INVALID_SOCKET) return;
    const SOCKET client = accept(listener_, nullptr, nullptr);
    if (client == INVALID_SOCKET) return;
    SetBlocking(client, false);
    ::send(client, kGreeting, sizeof kGreeting - 1, 0);
    clients_.push_back(client);
  }
  void Receive(SOCKET client) {
    std::array<char, 4096> piece{};
    const int got = recv(client, piece.data(), static_cast<int>(piece.size()), 0);
    if (got > 0) received_.append(piece.data(), static_cast<std::size_t>(got));
  }

  std::mutex mutex_;
  std::atomic<bool> ending_ = false;
  SOCKET listener_ = INVALID_SOCKET;
  std::vector<SOCKET> clients_;
  std::string received_;
  std::thread thread_;
};

TcpPeer::TcpPeer() : impl_(std::make_unique<Impl>()) {}

TcpPeer::~TcpPeer() = default;

std::uint16_t TcpPeer::port() const {
  return impl_->port;
}

void TcpPeer::SetListening(bool listening) {
  impl_->SetListening(listening);
}

void TcpPeer::Send(const std::string& bytes) {
  impl_->Send(bytes);
}

void TcpPeer::Close(bool reset) {
  impl_->Close(reset);
}

std::string TcpPeer::Received() const {
  return impl_->Received();
}

}  // namespace corvane::contract
