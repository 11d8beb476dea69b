// The seam to the system's media control interface.
#pragma once

#include <string>

namespace corvane {

class Mci {
 public:
  struct Reply {
    unsigned error = 0;  // 0 is success
    std::string text;
  };
  virtual ~Mci() = default;

  // Sends one command string. `reply_length` is the size of the reply buffer in characters; with 0
  // no reply is asked for.
  virtual Reply Send(const std::string& command, unsigned reply_length) = 0;

  // The system's text for an error number, at most 1,024 characters.
  [[nodiscard]] virtual std::string ErrorText(unsigned error) = 0;
};

}  // namespace corvane
