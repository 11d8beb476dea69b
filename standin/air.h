// What is on the air: the network's identity, its carriers and the calls on them. Knows nothing of
// who listens.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace corvane::standin {

inline constexpr int kCarrierSpacingHz = 25000;

struct Call {
  int id = 0;
  std::int32_t group = 0;
  std::int32_t party = 0;
  int carrier = 0;
  int slot = 0;
  std::string status = "Granted";  // "Granted", "Request_queued", "Not_granted"
  std::string service = "Point_to_multipoint";
  bool encrypted = false;
  bool speaking = false;     // there is voice on its carrier and timeslot
  std::uint64_t serial = 0;  // given by Air: Call IDs come again
};

struct Identity {
  std::string mcc;  // what follows "MCC:" in the label, usually a number
  std::string mnc;
  std::string la;
  bool operator==(const Identity&) const = default;
};

// Where a PDU can be heard.
struct Pdu {
  bool on_control = false;
  std::optional<int> carrier;
  std::string line;   // without a line end
  bool ended = true;  // the line end follows
};

// One PDU line each, in the form in which the TETRA Demodulator writes it.
[[nodiscard]] std::string SetupLine(const Call& call);
[[nodiscard]] std::string GrantedLine(const Call& call);  // with call.party
[[nodiscard]] std::string CeasedLine(const Call& call);
[[nodiscard]] std::string ReleaseLine(const Call& call, const std::string& cause);
[[nodiscard]] std::string DisconnectLine(const Call& call);
[[nodiscard]] std::string EncryptedLine(const Call& call);

class Air {
 public:
  struct Events {
    std::function<void(const Pdu&)> pdu;
    std::function<void()>
        changed;  // a call began, ended, changed its speaker; the identity changed
  };
  void SetEvents(Events events) { events_ = std::move(events); }

  std::int32_t base_hz = 300000000;
  std::int32_t offset_hz = 12500;
  int control_carrier = 2604;
  bool signalling_on_control = false;  // everything about calls is heard there too, not only setups

  // Each answers "" or why it was not done.
  // Sends the setup. A call that is not granted is over with that.
  std::string Start(Call call);
  std::string Speak(int id, std::int32_t party);
  std::string Pause(int id);
  // `missed`: the call is over, but nothing is sent.
  std::string Release(int id, const std::string& cause, bool missed);
  std::string Disconnect(int id, bool missed);
  // Sends the setup of a call that goes on once more.
  std::string RepeatSetup(int id);

  // Something that no call explains.
  void Send(const Pdu& pdu);

  void SetIdentity(std::optional<Identity> identity);
  [[nodiscard]] const std::optional<Identity>& identity() const { return identity_; }

  [[nodiscard]] const std::map<int, Call>& calls() const { return calls_; }  // by Call ID
  [[nodiscard]] const Call* Find(int id) const;
  // The call with that Call ID is still the one that had the serial.
  [[nodiscard]] bool IsOn(int id, std::uint64_t serial) const;
  // The call with voice on that carrier and timeslot; nullptr when there is none.
  [[nodiscard]] const Call* VoiceOn(int carrier, int slot) const;
  [[nodiscard]] bool IsFree(int carrier, int slot) const;
  [[nodiscard]] std::int64_t FrequencyOf(int carrier) const;  // Hz
  // The carrier within a few kHz of the frequency.
  [[nodiscard]] std::optional<int> CarrierAt(std::int64_t frequency_hz) const;

 private:
  void SendAbout(const Call& call, std::string line, bool setup);
  std::string End(int id, const std::function<std::string(const Call&)>& line, bool missed);

  Events events_;
  std::map<int, Call> calls_;
  std::uint64_t last_serial_ = 0;
  std::optional<Identity> identity_ = Identity{"262", "42", "101"};
};

}  // namespace corvane::standin
