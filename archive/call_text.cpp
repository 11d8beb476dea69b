// Records as text.
#include "archive/call_text.h"

#include <cmath>
#include <optional>

#include "archive/instant.h"
#include "archive/utf8.h"
#include "base/date_time.h"
#include "base/number_text.h"

namespace corvane::tools {

namespace {

template <typename Number>
std::string Or(const std::optional<Number>& number, const char* nothing) {
  return number ? Decimal(*number) : nothing;
}

std::string StringOrNull(const std::string& text) {
  return text.empty() ? "null" : JsonString(text);
}

}  // namespace

const char* NameOf(EndOfCall end) {
  switch (end) {
    case EndOfCall::kReleased:
      return "released";
    case EndOfCall::kDisconnected:
      return "disconnected";
    case EndOfCall::kTimedOut:
      return "timed_out";
    case EndOfCall::kForced:
      return "forced";
    case EndOfCall::kUnknown:
      break;
  }
  return "unknown";
}

std::string IsoTime(std::int64_t second) {
  std::string text = IsoDate(TimeAt(second));
  text[text.find(' ')] = 'T';
  return text;
}

std::string SecondsText(double seconds) {
  const auto tenths = static_cast<std::int64_t>(std::llround(seconds * 10));
  std::string text = Decimal(tenths / 10);
  if (tenths % 10 != 0) text += "." + Decimal(tenths % 10);
  return text;
}

std::string CallJson(const CallRecord& call) {
  std::string text = "{\"start\":";
  text += call.start ? JsonString(IsoTime(*call.start)) : "null";
  text += ",\"length_s\":" + (call.length_s ? SecondsText(*call.length_s) : "null");
  text += ",\"mcc\":" + Or(call.mcc, "null");
  text += ",\"mnc\":" + Or(call.mnc, "null");
  text += ",\"gssi\":" + Or(call.gssi, "null");
  text += ",\"label\":" + StringOrNull(call.label);
  text += ",\"call_id\":" + Or(call.call_id, "null");
  text += ",\"carrier\":" + Or(call.carrier, "null");
  text += ",\"slot\":" + Or(call.slot, "null");
  text += ",\"talkers\":[";
  for (const Talker& talker : call.talkers) {
    if (&talker != call.talkers.data()) text += ',';
    text += "{\"ssi\":" + Decimal(talker.ssi) + ",\"label\":" + StringOrNull(talker.label) +
            ",\"pos_s\":" + Decimal(talker.pos_s) + "}";
  }
  text += "],\"recording\":";
  text += call.recording ? JsonString(call.recording->relative) : "null";
  return text + ",\"end\":\"" + NameOf(call.end) + "\"}";
}

std::string CallCsvHeader() {
  return "start,length_s,mcc,mnc,gssi,label,call_id,carrier,slot,talkers,recording,end";
}

std::string CallCsv(const CallRecord& call) {
  std::string text = call.start ? IsoTime(*call.start) : "";
  text += "," + (call.length_s ? SecondsText(*call.length_s) : "");
  text += "," + Or(call.mcc, "") + "," + Or(call.mnc, "") + "," + Or(call.gssi, "");
  text += "," + SafeCsvField(call.label);
  text += "," + Or(call.call_id, "") + "," + Or(call.carrier, "") + "," + Or(call.slot, "") + ",";
  for (const Talker& talker : call.talkers) {
    if (&talker != call.talkers.data()) text += ' ';
    text += Decimal(talker.ssi) + "@" + Decimal(talker.pos_s);
  }
  text += "," + SafeCsvField(call.recording ? call.recording->relative : "");
  return text + "," + NameOf(call.end);
}

}  // namespace corvane::tools
