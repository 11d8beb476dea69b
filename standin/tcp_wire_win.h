// The Net Remote server's sockets: Winsock on the local machine alone, without Nagle's delay. One
// hidden window takes the news of all of them.
#pragma once

#include <windows.h>
#include <winsock2.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "standin/net_remote_server.h"

namespace corvane::standin {

class TcpWire final : public NetRemoteServer::Wire {
 public:
  // `before_input` brings the model to the present time.
  TcpWire(NetRemoteServer& server, std::function<void()> before_input);
  ~TcpWire() override;
  TcpWire(const TcpWire&) = delete;
  TcpWire& operator=(const TcpWire&) = delete;

  void Send(ClientId client, std::string_view bytes) override;
  void Close(ClientId client, bool reset) override;
  bool Listen(std::uint16_t port) override;

 private:
  struct Client {
    SOCKET socket = INVALID_SOCKET;
    std::string unsent;
  };

  static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM w_param, LPARAM l_param);
  void CloseListener();
  void OnSocket(SOCKET socket, int event);
  void Accept();
  void Read(ClientId id);
  static void Flush(Client& client);

  NetRemoteServer& server_;
  std::function<void()> before_input_;
  HWND window_ = nullptr;
  bool started_ = false;
  SOCKET listener_ = INVALID_SOCKET;
  std::map<ClientId, Client> clients_;
};

}  // namespace corvane::standin
