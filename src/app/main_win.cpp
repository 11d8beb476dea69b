// WinMain: the real seams, the real window, the program between them.
#include <windows.h>

#include <string>

#include "app/app.h"
#include "app/program_folder_win.h"
#include "app/single_instance_win.h"
#include "base/files_win.h"
#include "base/loop_win.h"
#include "base/patient_files.h"
#include "base/prompts_win.h"
#include "base/wall_clock_win.h"
#include "link/socket_win.h"
#include "link/window_ops_win.h"
#include "record/mci_win.h"
#include "ui/editor_layout.h"
#include "ui/form_window_win.h"
#include "ui/main_layout.h"

namespace corvane {
namespace {

class RealShell : public Shell {
 public:
  RealShell(LoopWin& loop, FormWindow& window) : loop_(loop), window_(window), editor_(loop) {}
  ControlSink& editor_sink() override { return editor_; }
  bool OpenEditor(Dialog& dialog, UserEvents& handlers) override {
    if (!editor_.Create(EditorWindowTable(dialog), handlers, window_.handle())) return false;
    editor_.Show();
    return true;
  }
  void BringEditorToFront() override { editor_.BringToFront(); }
  void CloseEditor() override { editor_.Destroy(); }
  void HoldSession(bool held) override {
    // Without the window there is nothing to hold any more.
    const HWND window = window_.handle();
    if (window == nullptr) return;
    if (held) {
      ShutdownBlockReasonCreate(window, L"Corvane saves its lists and recordings");
    } else {
      ShutdownBlockReasonDestroy(window);
    }
  }
  void CloseMainWindow() override {
    window_.Destroy();
    loop_.Quit();
  }

 private:
  LoopWin& loop_;
  FormWindow& window_;
  FormWindow editor_;
};

int RunProgram() {
  const std::wstring shown_folder = FolderOfProgram();
  const ProgramFolder folder = ChooseFolder(FormsOf(shown_folder));
  if (!folder.problem.empty()) {
    ShowFolderProblem(shown_folder, folder.problem);
    return 1;
  }
  SingleInstance instance(folder.path);
  if (!instance.is_first()) {
    instance.BringFirstToFront();
    return 0;
  }
  LoopWin loop;
  WallClockWin clock;
  FilesWin files;
  PatientFiles patient_files(files, loop);
  if (const std::string problem = WritingProblem(patient_files, folder.path); !problem.empty()) {
    ShowFolderProblem(shown_folder, problem);
    return 1;
  }
  PromptsWin prompts;
  WindowOpsWin windows;
  SocketWin socket(loop);
  MciWin mci;
  FormWindow window(loop);
  RealShell shell(loop, window);
  App app(Platform{loop, clock, window, windows, socket, files, mci, prompts, folder.path}, shell);
  loop.SetErrorReporter([&app](const std::string& what) { app.ReportException(what.c_str()); });

  if (!window.Create(MainWindowTable(app.form()), app.main_form())) return 1;
  windows.SetOwnMainWindow(window.handle());
  if (!app.Load()) return 1;
  prompts.SetOwner(window.handle());
  window.Show();
  instance.PublishWindow(window.handle());
  return loop.Run();
}

}  // namespace
}  // namespace corvane

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  return corvane::RunProgram();
}
