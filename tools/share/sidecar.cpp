// Writing the fields in their order.
#include "tools/share/sidecar.h"

#include <algorithm>
#include <cmath>

#include "archive/utf8.h"
#include "base/number_text.h"
#include "tools/system.h"

namespace corvane::tools {

namespace {

constexpr std::int64_t kSystemPerMcc = 100000;
constexpr const char* kNoTag = "-";

template <typename Number>
std::string OrNull(const std::optional<Number>& number) {
  return number ? Decimal(*number) : "null";
}

std::string Tag(const std::string& label) {
  return JsonString(label.empty() ? kNoTag : label);
}

std::string Field(const char* name, const std::string& value) {
  return "  \"" + std::string(name) + "\": " + value;
}

std::string Network(const CallRecord& call) {
  if (!call.mcc || !call.mnc) return kNoTag;
  return Decimal(*call.mcc) + "-" + Decimal(*call.mnc);
}

std::string Sources(const SharedCall& shared, std::int64_t begin_utc) {
  std::string text;
  const std::int64_t late = shared.begin - shared.call.start.value_or(shared.begin);
  for (const Talker& talker : shared.call.talkers) {
    // Who began the call spoke before SDR# was tuned to it.
    const std::int64_t pos = std::max<std::int64_t>(0, talker.pos_s - late);
    text += std::string(text.empty() ? "" : ",") + "\n    {\"src\": " + Decimal(talker.ssi) +
            ", \"time\": " + Decimal(begin_utc + pos) + ", \"pos\": " + Decimal(pos) +
            ", \"emergency\": 0, \"signal_system\": \"\", \"tag\": " + Tag(talker.label) +
            ", \"tag_ota\": \"\"}";
  }
  return text.empty() ? "[]" : "[" + text + "\n  ]";
}

}  // namespace

std::string SidecarJson(const SharedCall& shared, const SidecarFacts& facts) {
  const CallRecord& call = shared.call;
  const auto length = static_cast<std::int64_t>(std::llround(shared.seconds));
  const std::string freq = Decimal(facts.frequency_hz.value_or(0));
  const std::int64_t by_network =
      call.mcc && call.mnc ? *call.mcc * kSystemPerMcc + *call.mnc : std::int64_t{0};
  const std::string fields[] = {
      Field("freq", freq),
      Field("start_time", Decimal(facts.begin_utc)),
      Field("stop_time", Decimal(facts.begin_utc + length)),
      Field("emergency", "0"),
      Field("priority", "0"),
      Field("mode", "0"),
      Field("duplex", "0"),
      Field("encrypted", "0"),
      Field("call_length", Decimal(length)),
      Field("talkgroup", Decimal(call.gssi.value_or(0))),
      Field("talkgroup_tag", Tag(call.label)),
      Field("talkgroup_description", Tag(call.label)),
      Field("talkgroup_group_tag", Tag("")),
      Field("talkgroup_group", Tag("")),
      Field("audio_type", JsonString("digital tdma")),
      Field("short_name", JsonString(Network(call))),
      Field("freqList", "[\n    {\"freq\": " + freq + ", \"time\": " + Decimal(facts.begin_utc) +
                            ", \"pos\": 0, \"len\": " + Decimal(length) +
                            ", \"error_count\": 0, \"spike_count\": 0}\n  ]"),
      Field("srcList", Sources(shared, facts.begin_utc)),
      Field("timestamp", Decimal(facts.begin_utc * 1000)),
      Field("system", Decimal(facts.system.value_or(by_network))),
      Field("corvane", "{\"mcc\": " + OrNull(call.mcc) + ", \"mnc\": " + OrNull(call.mnc) +
                           ", \"la\": null, \"call_id\": " + OrNull(call.call_id) +
                           ", \"carrier\": " + OrNull(call.carrier) +
                           ", \"slot\": " + OrNull(call.slot) +
                           ", \"end_reason\": " + JsonString(NameOf(call.end)) + "}")};
  std::string text = "{\n";
  for (const std::string& field : fields) text += (&field == fields ? "" : ",\n") + field;
  return text + "\n}\n";
}

std::int64_t UtcOf(std::int64_t local) {
  // Both sides of a change of the clocks are asked; the later answer is wrong on one of them.
  constexpr std::int64_t kHalfDay = 43200;
  const std::int64_t before = local - SecondsAheadAt(local - kHalfDay);
  if (before + SecondsAheadAt(before) == local) return before;
  return local - SecondsAheadAt(local + kHalfDay);
}

}  // namespace corvane::tools
