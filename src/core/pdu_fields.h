// The fields of one decoded signalling line of the Network Info box.
//
// A value follows its key with no blank in between and is closed by a blank. Keys are searched from
// the start of the line, case-sensitively, also inside other words; the first occurrence counts.
// Every function gives nullopt when the key is missing, the closing blank is missing, or a number
// is not plain decimal digits in the range of its type.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

[[nodiscard]] std::optional<std::string_view> BasicService(std::string_view line);
[[nodiscard]] std::optional<std::int16_t> CallId(std::string_view line);
[[nodiscard]] std::optional<std::int32_t> CallingParty(std::string_view line);
// Two words, as in "Transmission Not_granted".
[[nodiscard]] std::optional<std::string_view> SetupStatus(std::string_view line);
[[nodiscard]] std::optional<std::int32_t> Group(std::string_view line);
[[nodiscard]] std::optional<std::int16_t> TimeSlot(std::string_view line);
[[nodiscard]] std::optional<std::int32_t> Carrier(std::string_view line);

// The talker of a D_TX_Granted line: the number that makes up the rest of the line behind
// "Party_SSI:", blanks around it dropped, or failing that the part before the first blank.
[[nodiscard]] std::optional<std::int32_t> GrantedParty(std::string_view line);

// The line's content could not be decoded.
[[nodiscard]] bool IsEncrypted(std::string_view line);

// True for a line that sets up a call.
[[nodiscard]] bool IsSetup(std::string_view line);

}  // namespace corvane
