// What saving and shutting down need of the folders above.
#pragma once

namespace corvane {

class CallControl {
 public:
  virtual ~CallControl() = default;
  [[nodiscard]] virtual bool IsCallFollowed() const = 0;
  // Ends the followed call and parks. Lets events run.
  virtual void ResetCallDisplay() = 0;
  // Stops and saves a recording that is still running although no call is followed any more.
  virtual void StopLeftoverRecording() = 0;
};

class WindowControl {
 public:
  virtual ~WindowControl() = default;
  virtual void CloseEditor() = 0;
  // Destroys the main window, which ends the program once every handler has returned.
  virtual void CloseMainWindow() = 0;
};

}  // namespace corvane
