// What call following needs of the link to SDR#.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/number_text.h"

namespace corvane {

// The network that the plug-in decodes at the moment: plain decimal texts, each 0 to 32767; "0"
// when not known.
struct NetworkIdentity {
  std::string CurrentMcc = "0";
  std::string CurrentMnc = "0";
  std::string CurrentLa = "0";

  [[nodiscard]] std::int32_t mcc() const { return Number(CurrentMcc); }
  [[nodiscard]] std::int32_t mnc() const { return Number(CurrentMnc); }

 private:
  static std::int32_t Number(const std::string& text) {
    return ParseDecimal<std::int32_t>(text).value_or(0);
  }
};

// The Network Info edit box, in which the plug-in lists what it decodes.
class NetworkInfoBox {
 public:
  virtual ~NetworkInfoBox() = default;

  // Which box is meant at the moment: another number after it was closed and opened again, 0 when
  // there is none.
  [[nodiscard]] virtual std::uintptr_t Identity() const = 0;
  // Lines in the box, the unfinished last one included, so never less than 1; 0 means that the box
  // gave no answer.
  [[nodiscard]] virtual std::int32_t LineCount() = 0;
  // One line by its zero-based index: "" for a negative index, nullopt when the reading timed out.
  [[nodiscard]] virtual std::optional<std::string> Line(std::int32_t index) = 0;
  virtual void Clear() = 0;
};

// Commands to SDR# and its plug-in.
//
// Nobody waits for mblnReceiving: the reply handler that raises it lets no events run, so whoever
// looks at it from a wait finds it lowered. What is waited for is the answer to a command, before
// the next one is sent.
class SdrLink {
 public:
  virtual ~SdrLink() = default;

  // Sends one command when no other is under way; waits for that one first. A command that finds
  // no connection is lost and reported. Lets events run.
  virtual void SendNetRemoteSet(const std::string& method, const std::string& value) = 0;
  virtual void SendNetRemoteGet(const std::string& method) = 0;

  // A command was sent and neither answered nor given up yet (after 200 ms).
  [[nodiscard]] virtual bool CommandUnderWay() const = 0;
  // Waits while a command is under way, also while the program shuts down; ends early only when the
  // socket is not connected. Socket events run inside, no others.
  virtual void AwaitAnswer() = 0;
  // The socket's State is 7.
  [[nodiscard]] virtual bool SocketConnected() const = 0;

  // Presses the plug-in's selector of `timeslot`, 1 to 4.
  virtual void PressTimeslot(int timeslot) = 0;
};

}  // namespace corvane
