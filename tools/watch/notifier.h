// Notices that the system shows beside its clock.
#pragma once

#include <memory>
#include <string>

namespace corvane::tools {

class Notifier {
 public:
  virtual ~Notifier() = default;
  // Shows `text`, in ASCII, until the next one or until the user has had enough of it. False when
  // the system refuses.
  [[nodiscard]] virtual bool Show(const std::string& text) = 0;
  // To be called again and again: whoever owns a window answers its messages.
  virtual void Attend() = 0;
};

// nullptr where the system has no such notices.
[[nodiscard]] std::unique_ptr<Notifier> SystemNotifier();

}  // namespace corvane::tools
