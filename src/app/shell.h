// What the program asks of its own windows, beyond their controls' state.
#pragma once

namespace corvane {

struct EditorHandOver;

class Shell {
 public:
  virtual ~Shell() = default;
  // Shows the G/SSI editor on what is handed over, or brings it to the front. The main window stays
  // usable.
  virtual void ShowEditor(EditorHandOver& hand_over) = 0;
  virtual void CloseEditor() = 0;
  // Destroys the main window. The program ends when the outermost handler has returned.
  virtual void CloseMainWindow() = 0;
};

}  // namespace corvane
