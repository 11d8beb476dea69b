// The one connection to SDR#'s Net Remote plug-in: sends commands, keeps the connection, handles
// replies and errors.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/call_follower.h"
#include "core/ports.h"
#include "link/link_context.h"
#include "link/net_remote_reply.h"
#include "store/log_files.h"

namespace corvane {

class NetRemote : public SdrLink {
 public:
  // A command is under way until its answer was handled, but no longer than this.
  static constexpr int kAnswerLimitMs = 200;
  static constexpr int kSendingPollMs = 30;
  static constexpr int kConnectWaitMs = 250;

  // `program_folder` without "\" at its end; `save_timer_enabled` is asked for error reports.
  NetRemote(LinkContext& context, LogFiles& logs, std::string program_folder,
            CallFollower& follower, std::function<bool()> save_timer_enabled);
  ~NetRemote() override;

  // Tells the socket whom to talk to; once, before the first discovery.
  void SetEndpoint();

  // A Set or Get waits, serving socket events alone, while a command is under way; it gives the
  // waiting up when the socket is not connected, and does not wait while the program shuts down. It
  // is dropped when the program shuts down while another one is being sent. Without a connection:
  // one status line, NetRemoteLinkUp False, the command is lost. Lets events run once after a send.
  // `value` goes out as given: text needs its own quotes.
  void SendNetRemoteSet(const std::string& method, const std::string& value) override;
  void SendNetRemoteGet(const std::string& method) override;
  // Like the others, but waits for another sender also while shutting down, and lets no events run
  // afterwards.
  void SendNetRemoteExe(const std::string& method);

  [[nodiscard]] bool CommandUnderWay() const override;
  void AwaitAnswer() override;
  [[nodiscard]] bool SocketConnected() const override;
  void PressTimeslot(int timeslot) override;

  // Whether SDR# may have refused a command unheard: one was sent while another had been unanswered
  // for too long, and since then an error was dropped with the later lines of a read.
  [[nodiscard]] bool RefusalMayBeLost() const { return refusal_may_be_lost_; }
  void ForgetLostRefusal();

  // Looks at the socket's State: connects when closed, closes when the peer has closed or after an
  // error, and sets NetRemoteConnected and the indicator. Lets events run when it connects and
  // when it ends a call.
  void CheckNetRemoteConnection();

 private:
  enum class Sender { kSetOrGet, kExe };

  void SendCommand(const std::string& command, Sender sender);
  void Connect();
  void CloseConnection();
  void OnDataArrival();
  void Handle(const NetRemoteReply& reply);
  void DumpReply(const NetRemoteReply& reply);
  void ReportError(const NetRemoteReply& reply);
  void RequestReset();
  void OnError(int number, const std::string& description);

  LinkContext& context_;
  LogFiles& logs_;
  std::string program_folder_;
  CallFollower& follower_;
  std::function<bool()> save_timer_enabled_;
  bool command_sent_ = false;  // and not answered yet
  std::int64_t sent_at_ms_ = 0;
  bool answers_lag_ = false;  // a command was sent while another was unanswered
  bool refusal_may_be_lost_ = false;
};

}  // namespace corvane
