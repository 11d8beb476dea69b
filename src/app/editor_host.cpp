// Opening and ending the editor.
#include "app/editor_host.h"

#include <utility>

#include "panel/logs.h"

namespace corvane {

EditorHost::EditorHost(Shell& shell, EditorParts parts) : shell_(shell), parts_(std::move(parts)) {
  parts_.unload = [this] { Close(); };
}

void EditorHost::Show(Form1& form) {
  if (parts_.flags.mblnShuttingDown) return;
  if (open_) {
    shell_.BringEditorToFront();
    return;
  }
  open_ = std::make_unique<Editor>(shell_.editor_sink(), parts_);
  open_->form.Load();
  if (shell_.OpenEditor(open_->dialog, open_->form)) return;
  AddStatusLine(form, "The G/SSI editor's window could not be opened");
  Close();
}

void EditorHost::Close() {
  if (!open_) return;
  open_->form.Unload();
  shell_.CloseEditor();
  ended_.push_back(std::move(open_));
  parts_.loop.Post(EventSource::kUser, [this] { ended_.clear(); });
}

}  // namespace corvane
