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
  if (taken_) (void)Bring();
}

bool SoundSource::Take() {
  taken_ = true;
  return Run("take");
}

bool SoundSource::Bring() {
  taken_ = false;
  return Run("bring");
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
