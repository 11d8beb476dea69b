// Commands out, replies in, one at a time.
#include "link/net_remote.h"

#include <utility>

#include "base/number_text.h"
#include "base/scoped_flag.h"
#include "panel/logs.h"

namespace corvane {

namespace {

constexpr const char* kRule = "==============";

const char* Word(bool value) {
  return value ? "True" : "False";
}

}  // namespace

NetRemote::NetRemote(LinkContext& context, LogFiles& logs, std::string program_folder,
                     CallFollower& follower, std::function<bool()> save_timer_enabled)
    : context_(context),
      logs_(logs),
      program_folder_(std::move(program_folder)),
      follower_(follower),
      save_timer_enabled_(std::move(save_timer_enabled)) {
  context_.socket.SetEvents(
      {[this](std::size_t) { OnDataArrival(); },
       [this](int number, const std::string& description) { OnError(number, description); }});
}

NetRemote::~NetRemote() {
  context_.socket.SetEvents({});
}

void NetRemote::SetEndpoint() {
  context_.socket.SetRemote(kNetRemoteHost, kNetRemotePort);
}

bool NetRemote::SocketConnected() const {
  return context_.socket.State() == SocketState::kConnected;
}

bool NetRemote::CommandUnderWay() const {
  return command_sent_ && context_.loop.TickMs() - sent_at_ms_ < kAnswerLimitMs;
}

void NetRemote::SendNetRemoteSet(const std::string& method, const std::string& value) {
  SendCommand(R"({"Command": "Set", "Method": ")" + method + R"(", "Value": )" + value + "}",
              Sender::kSetOrGet);
}

void NetRemote::SendNetRemoteGet(const std::string& method) {
  SendCommand(R"({"Command": "Get", "Method": ")" + method + R"("})", Sender::kSetOrGet);
}

void NetRemote::SendNetRemoteExe(const std::string& method) {
  SendCommand(R"({"Command": "Exe", "Method": ")" + method + R"("})", Sender::kExe);
}

// The server takes whatever one read brings for one command; what arrives together with an
// unread one is a syntax error, so the answer to that one is awaited first.
void NetRemote::AwaitAnswer() {
  while (CommandUnderWay() && SocketConnected()) {
    const std::int64_t left = sent_at_ms_ + kAnswerLimitMs - context_.loop.TickMs();
    context_.loop.WaitForSocketEvents(static_cast<int>(left));
  }
}

// Between setting and clearing mblnSending no event may run, or a nested sender would wait for
// ever.
void NetRemote::SendCommand(const std::string& command, Sender sender) {
  ProgramFlags& flags = context_.flags;
  while (flags.mblnSending) {
    if (sender == Sender::kSetOrGet && flags.mblnShuttingDown) return;
    context_.loop.Sleep(kSendingPollMs);
  }
  if (flags.NetRemoteConnected && !flags.mblnShuttingDown) AwaitAnswer();
  {
    const ScopedFlag sending(flags.mblnSending);
    if (!flags.NetRemoteConnected) {
      AddStatusLine(context_.form, "No SDR# NET connection");
      flags.NetRemoteLinkUp = false;
      return;
    }
    answers_lag_ = answers_lag_ || command_sent_;
    // A failed send shows in the socket's State; it is not reported twice.
    (void)context_.socket.SendData(command);
    command_sent_ = true;
    sent_at_ms_ = context_.loop.TickMs();
  }
  if (sender == Sender::kSetOrGet) context_.loop.DoEvents();
}

void NetRemote::PressTimeslot(int timeslot) {
  context_.windows.PressSelector(context_.handles.Timeslot(timeslot));
}

void NetRemote::ForgetLostRefusal() {
  answers_lag_ = false;
  refusal_may_be_lost_ = false;
}

void NetRemote::CloseConnection() {
  context_.socket.Close();
  command_sent_ = false;
  ForgetLostRefusal();
}

void NetRemote::CheckNetRemoteConnection() {
  ProgramFlags& flags = context_.flags;
  Form1& form = context_.form;
  flags.NetRemoteConnected = false;
  switch (context_.socket.State()) {
    case SocketState::kClosed:
      return Connect();
    case SocketState::kOpen:
      return AddStatusLine(form, "Open");
    case SocketState::kListening:
      return AddStatusLine(form, "Listening");
    case SocketState::kConnectionPending:
      return AddStatusLine(form, "Connection Pending");
    case SocketState::kResolvingHost:
      return AddStatusLine(form, "Resolving Host");
    case SocketState::kHostResolved:
      return AddStatusLine(form, "Host Resolved");
    case SocketState::kConnecting:
      return;
    case SocketState::kConnected:
      form.ShapeWinsock_state.fill_colour = kGreen;
      flags.NetRemoteConnected = true;
      return;
    case SocketState::kClosing:
      AddStatusLine(form, "Closing");
      form.ShapeWinsock_state.fill_colour = kButtonFace;
      CloseConnection();
      form.lstStatusLog.Clear();
      flags.NetRemoteLinkUp = false;
      return;
    case SocketState::kError:
      form.ShapeWinsock_state.fill_colour = kButtonFace;
      if (follower_.FollowingCall()) follower_.ResetCallDisplay();
      CloseConnection();
      flags.NetRemoteLinkUp = false;
      return;
  }
}

void NetRemote::Connect() {
  const ProgramFlags& flags = context_.flags;
  context_.form.ShapeWinsock_state.fill_colour = kButtonFace;
  command_sent_ = false;
  context_.socket.Connect();
  (void)SleepAndYield(context_.loop, kConnectWaitMs,
                      [&flags] { return bool{flags.mblnShuttingDown}; });
}

// Lets no event run: no code that waits ever meets mblnReceiving set.
void NetRemote::OnDataArrival() {
  const ScopedFlag receiving(context_.flags.mblnReceiving);
  const NetRemoteReply reply = ReadNetRemoteReply(context_.socket.GetData());
  Handle(reply);
  if (reply.is_result) command_sent_ = false;
  if (reply.error_dropped && answers_lag_) refusal_may_be_lost_ = true;
}

void NetRemote::Handle(const NetRemoteReply& reply) {
  switch (reply.kind) {
    case ReplyKind::kIgnored:
    case ReplyKind::kAcknowledged:
      return;
    case ReplyKind::kGreeting:
      return AddStatusLineInView(context_.form, reply.greeting);
    case ReplyKind::kAudioIsMuted:
      context_.flags.mblnAudioMuted = reply.value;
      return;
    case ReplyKind::kIsPlaying:
      context_.flags.mblnIsPlaying = reply.value;
      return;
    case ReplyKind::kUnexpected:
      return DumpReply(reply);
    case ReplyKind::kError:
      DumpReply(reply);
      if (reply.can_report) ReportError(reply);
      RequestReset();
      return;
  }
}

void NetRemote::DumpReply(const NetRemoteReply& reply) {
  Form1& form = context_.form;
  AddStatusLine(form, kRule);
  AddStatusLine(form, "Unknown ERROR[RAW]: " + NowText(context_.clock));
  AddStatusLine(form, reply.text);
  AddStatusLineInView(form, kRule);
}

void NetRemote::ReportError(const NetRemoteReply& reply) {
  Form1& form = context_.form;
  const char* call_seen = Word(follower_.FollowingCall());
  const char* save_timer = Word(save_timer_enabled_());
  AddStatusLine(form, kRule);
  if (reply.error_line) AddStatusLine(form, *reply.error_line);
  AddStatusLine(form, std::string("mblnCall_seen: ") + call_seen);
  AddStatusLine(form, std::string("tmrSaveTimed: ") + save_timer);
  AddStatusLine(form, kRule);

  std::string lines;
  const auto add = [&lines](std::string_view line) { lines.append(line).append("\r\n"); };
  add(kRule);
  add(NowText(context_.clock));
  add("Unknown ERROR[RAW]:");
  add("Last DATA: " + reply.text);
  add(kRule);
  if (reply.error_line) add(*reply.error_line);
  add(kRule);
  add(std::string("Call active: ") + call_seen);
  add(std::string("tmrSaveTimed: ") + save_timer);
  add(kRule);
  add("");
  logs_.Append(LogKind::kErrors, program_folder_ + "\\errors.txt", lines);
}

void NetRemote::RequestReset() {
  context_.flags.mblnNetRemoteResetRequested = true;
  AddStatusLineInView(context_.form,
                      "ERROR: Net Remote - Attempting reset " + NowText(context_.clock));
}

void NetRemote::OnError(int number, const std::string& description) {
  Form1& form = context_.form;
  if (number == kConnectionRefused) {
    AddStatusLine(form, "Is 'Net Remote' enabled in SDR#?");
    context_.network_box.SwitchOnAfterRefusal(context_.handles[SdrRole::kPortBox],
                                              context_.handles[SdrRole::kNetworkButton]);
    ShowLastStatusLine(form);
    return;
  }
  AddStatusLineInView(form, "WinSock error: " + Decimal(number) + " - " + description);
  if (form.lstStatusLog.count() > kStatusLogLimit) form.lstStatusLog.Clear();
}

}  // namespace corvane
