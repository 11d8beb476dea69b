// What the program asks of its own windows, beyond their controls' state.
#pragma once

namespace corvane {

class ControlSink;
class UserEvents;
struct Dialog;

class Shell {
 public:
  virtual ~Shell() = default;

  // Is told what the editor's controls show, those of one editor after the other.
  [[nodiscard]] virtual ControlSink& editor_sink() = 0;
  // Makes the editor's window, shows it and leaves the main window usable. The controls and their
  // handlers stay valid until CloseEditor has returned. False when the system refuses a window.
  [[nodiscard]] virtual bool OpenEditor(Dialog& dialog, UserEvents& handlers) = 0;
  virtual void BringEditorToFront() = 0;
  // Destroys the editor's window, if there is one.
  virtual void CloseEditor() = 0;

  // The session ends: while `held`, the system is told that the program still has to save, and its
  // user that it is worth waiting for.
  virtual void HoldSession(bool held) = 0;

  // Destroys the main window. The program ends when the outermost handler has returned.
  virtual void CloseMainWindow() = 0;
};

}  // namespace corvane
