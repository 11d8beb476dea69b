// What the main window tells the G/SSI editor when it shows it.
#pragma once

#include <cstdint>

namespace corvane {

struct EditorHandOver {
  std::int32_t EditorMcc = 0;
  std::int32_t EditorMnc = 0;
  std::int32_t EditorGssi = 0;   // 0: none
  std::int32_t EditorSsi = 0;    // 0: none
  bool EditorPreselect = false;  // the editor is to select EditorGssi and EditorSsi
};

}  // namespace corvane
