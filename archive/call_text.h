// A call record as a line of JSON or CSV, the same in every command that gives records.
#pragma once

#include <cstdint>
#include <string>

#include "archive/call_record.h"

namespace corvane::tools {

// "2026-11-15T23:34:03"
[[nodiscard]] std::string IsoTime(std::int64_t second);
// Seconds with at most one decimal: "12", "12.3".
[[nodiscard]] std::string SecondsText(double seconds);

// One object without an end of line: start, length_s, mcc, mnc, gssi, label, call_id, carrier,
// slot, talkers, recording, end. What is not known is null.
[[nodiscard]] std::string CallJson(const CallRecord& call);

// The same as columns; the talkers are "ssi@pos" with blanks between them.
[[nodiscard]] std::string CallCsvHeader();
[[nodiscard]] std::string CallCsv(const CallRecord& call);

}  // namespace corvane::tools
