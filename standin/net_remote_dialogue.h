// The Net Remote dialogue: one command text in, one reply text out. Knows nothing of connections.
#pragma once

#include <string>
#include <string_view>

#include "standin/receiver.h"

namespace corvane::standin {

// With its CR LF, like every reply.
inline constexpr std::string_view kGreeting =
    "{\"Name\":\"Net Remote\",\"Version\":\"1.0.5282.28765\"}\r\n";

// Carries out what one read brought, as one command, and answers with the reply. Two commands in
// one text are a syntax error.
[[nodiscard]] std::string AnswerCommand(Receiver& receiver, std::string_view text);

// The same for a setting changed by hand: "" or the error's message.
[[nodiscard]] std::string SetByHand(Receiver& receiver, std::string_view method,
                                    std::string_view value);

}  // namespace corvane::standin
