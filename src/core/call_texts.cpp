// Texts of the call log, and the names of how a call ends.
#include "core/call_texts.h"

#include "base/number_text.h"
#include "base/text.h"

namespace corvane {

std::string WithLabel(const std::string& text, const std::string& label) {
  return label.empty() ? text : text + " [" + label + "]";
}

std::string CallIdText(std::int16_t call_id) {
  return " - Call ID: " + Decimal(call_id);
}

std::string GroupText(std::int32_t gssi, const std::string& label) {
  return Decimal(gssi) + " " + Bracketed(label);
}

std::string SetupText(const Setup& setup, const std::string& label) {
  return CallIdText(setup.call_id) + " - On carrier: " + Decimal(setup.carrier) +
         " - Group: " + GroupText(setup.gssi, label);
}

std::string EndText(CallEnd how, std::int16_t call_id) {
  switch (how) {
    case CallEnd::kReleased:
      return CallIdText(call_id) + " - VC D-Released";
    case CallEnd::kDisconnected:
      return CallIdText(call_id) + " - VC D-Disconnect";
    default:
      break;
  }
  return " - Call timeout occured - Did not see D-Release for Call ID: " + Decimal(call_id);
}

const char* NameOf(CallEnd how) {
  switch (how) {
    case CallEnd::kReleased:
      return "released";
    case CallEnd::kDisconnected:
      return "disconnected";
    case CallEnd::kTimedOut:
      return "timed out";
    case CallEnd::kReset:
      return "reset";
    case CallEnd::kLinkLost:
      break;
  }
  return "link lost";
}

}  // namespace corvane
