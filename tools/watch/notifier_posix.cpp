// There are desktops of many kinds here, and users who start what theirs has with --exec.
#include "tools/watch/notifier.h"

namespace corvane::tools {

std::unique_ptr<Notifier> SystemNotifier() {
  return nullptr;
}

}  // namespace corvane::tools
