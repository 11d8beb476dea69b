// Pressing buttons by role.
#include "link/link_context.h"

namespace corvane {

bool PressButton(LinkContext& context, SdrRole role) {
  const WindowHandle button = context.handles[role];
  if (button == 0) return false;
  return context.windows.Send(button, kBmClick, 0, 0).answered;
}

}  // namespace corvane
