// The life of the G/SSI editor: one at a time, made anew at each opening.
#pragma once

#include <memory>
#include <vector>

#include "app/shell.h"
#include "ui/editor_form.h"

namespace corvane {

class EditorHost {
 public:
  // `parts` without `unload`, which is the host's own.
  EditorHost(Shell& shell, EditorParts parts);

  // Opens an editor, or brings the open one to the front. Nothing once mblnShuttingDown is set. A
  // window that the system refuses is told in the status log of `form`.
  void Show(Form1& form);
  // Ends the open editor, if there is one. May be called by the editor itself: its controls and
  // handlers stay until the event under way is over.
  void Close();

  // nullptr while none is open.
  [[nodiscard]] Dialog* dialog() { return open_ ? &open_->dialog : nullptr; }

 private:
  struct Editor {
    Editor(ControlSink& sink, const EditorParts& parts) : dialog(sink), form(dialog, parts) {}
    Dialog dialog;
    EditorForm form;
  };

  Shell& shell_;
  EditorParts parts_;
  std::unique_ptr<Editor> open_;
  std::vector<std::unique_ptr<Editor>> ended_;
};

}  // namespace corvane
