// What the call log says of a call, without the time in front.
#pragma once

#include <cstdint>
#include <string>

#include "core/call.h"
#include "core/call_watcher.h"

namespace corvane {

// `text`, with " [label]" behind it unless the label is empty.
[[nodiscard]] std::string WithLabel(const std::string& text, const std::string& label);

// " - Call ID: 1207"
[[nodiscard]] std::string CallIdText(std::int16_t call_id);

// "9001 [label]", or "9001 ".
[[nodiscard]] std::string GroupText(std::int32_t gssi, const std::string& label);

// Of a call that is counted, or about to be followed.
[[nodiscard]] std::string SetupText(const Setup& setup, const std::string& label);

// Of a call that was released, disconnected or timed out.
[[nodiscard]] std::string EndText(CallEnd how, std::int16_t call_id);

}  // namespace corvane
