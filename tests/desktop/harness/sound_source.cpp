// The tool is no Windows program: it tells its end in a file.
#include "desktop/harness/sound_source.h"

#include <cstdlib>

#include "desktop/harness/process.h"
#include "desktop/harness/program_folder.h"
#include "desktop/harness/wait.h"

namespace corvane::desktop {

SoundSource::SoundSource() {
  if (const char* tool = std::getenv("CORVANE_SOUND_SOURCE")) tool_ = tool;
}

SoundSource::~SoundSource() {
  for (const std::string& cure : std::set(cures_)) (void)Run(cure);
}

bool SoundSource::Take() {
  return Spoil("take", "bring");
}
bool SoundSource::Bring() {
  return Cure("bring");
}
bool SoundSource::Mute() {
  return Spoil("mute", "unmute");
}
bool SoundSource::Unmute() {
  return Cure("unmute");
}
bool SoundSource::Play() {
  return Spoil("play", "hush");
}
bool SoundSource::Hush() {
  return Cure("hush");
}
bool SoundSource::Freeze() {
  return Spoil("freeze", "thaw");
}
bool SoundSource::Thaw() {
  return Cure("thaw");
}

bool SoundSource::Spoil(const std::string& what, const std::string& cure) {
  cures_.insert(cure);
  return Run(what);
}

bool SoundSource::Cure(const std::string& cure) {
  cures_.erase(cure);
  return Run(cure);
}

bool SoundSource::Run(const std::string& what) const {
  if (tool_.empty()) return false;
  const std::filesystem::path answer = tool_.parent_path() / "answer";
  std::error_code error;
  std::filesystem::remove(answer, error);
  const auto tool = Process::Start(tool_, {what}, tool_.parent_path());
  if (tool == nullptr) return false;
  const std::string good = what + " 0";
  return WaitFor([&] { return ReadWholeFile(answer).ends_with('\n'); }) &&
         ReadWholeFile(answer).starts_with(good);
}

}  // namespace corvane::desktop
