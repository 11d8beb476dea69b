// A box runs its own loop on this thread until it is answered: a second thread takes the picture.
#include "desktop/box_pictures.h"

#include <cstdio>
#include <filesystem>
#include <thread>
#include <utility>

#include "base/files_win.h"
#include "base/prompts_win.h"
#include "base/wall_clock_win.h"
#include "desktop/harness/message_box.h"
#include "desktop/harness/wait.h"
#include "desktop/ui_window/real_window_win.h"
#include "sim/no_sink.h"
#include "store/labels.h"
#include "store/settings.h"
#include "store/start_error.h"

namespace corvane::ui_test {

namespace {

constexpr int kPainted_ms = 300;

class Photographer : public Prompts {
 public:
  Photographer(std::string folder, std::string suffix)
      : folder_(std::move(folder)), suffix_(std::move(suffix)) {}

  void Name(std::string name) { name_ = std::move(name); }
  void ShowBox(const std::string& text, const std::string& title, BoxIcon icon) override {
    bool done = false;
    std::thread at_the_camera([&] { done = Take(text, title, icon); });
    boxes_.ShowBox(text, title, icon);
    at_the_camera.join();
    ++so_far_.taken;
    if (done) return;
    std::printf("box-%s-%s: no picture, or another box\n", name_.c_str(), suffix_.c_str());
    ++so_far_.findings;
  }
  void EndProgram() override {}

  [[nodiscard]] const BoxPictures& so_far() const { return so_far_; }

 private:
  bool Take(const std::string& text, const std::string& title, BoxIcon icon) {
    using namespace desktop;
    const ShownIcon expected = icon == BoxIcon::kCritical ? ShownIcon::kError : ShownIcon::kNone;
    const unsigned program = ThisProgram();
    if (!WaitFor([&] { return FindMessageBox(program) != 0; })) return false;
    const WindowHandle box = FindMessageBox(program);
    const bool seen = WaitFor(
        [&] {
          return LookAtBox(box) == ShownBox{title, text, expected, 1};
        },
        kAnswerLimit_ms);
    (void)WaitFor([] { return false; }, kPainted_ms);
    const bool saved = SaveScreenshot(box, folder_ + "\\box-" + name_ + "-" + suffix_ + ".png");
    AnswerBox(box);
    return seen && saved;
  }

  std::string folder_;
  std::string suffix_;
  std::string name_;
  PromptsWin boxes_;
  BoxPictures so_far_;
};

}  // namespace

BoxPictures TakeBoxes(const std::string& folder, const std::string& suffix) {
  const std::string place = folder + "\\files";
  std::filesystem::create_directories(place);
  FilesWin files;
  WallClockWin clock;
  sim::NoSink nobody;
  Form1 form(nobody);
  Presets presets;
  ProgramFlags flags;
  NetworkNames names;
  Photographer camera(folder, suffix);
  StartErrors errors(files, camera, place);

  camera.Name("version");
  (void)files.WriteAll(place + kSettingsFileName, "of another version");
  (void)errors.Handle(kInvalidPropertyValue);
  camera.Name("access");
  (void)errors.Handle(kPermissionDenied);
  camera.Name("corrupt");
  (void)files.WriteAll(place + kSettingsFileName, "");
  (void)SettingsFile(files, camera, clock, flags, form, presets, errors, place).ReadSettings();
  camera.Name("renamed");
  (void)files.WriteAll(place + "\\TETRA_network.txt", "");
  (void)LabelFiles(files, camera, form, names, place).RenameOldNetworkFile();
  camera.Name("list");
  camera.ShowBox("Error saving GSSI list.", "Error", BoxIcon::kCritical);
  camera.Name("shutdown");
  camera.ShowBox("Problem shutting down, Some of this sessions changes are lost, Sorry", "Warning",
                 BoxIcon::kCritical);
  std::filesystem::remove_all(place);
  return camera.so_far();
}

}  // namespace corvane::ui_test
