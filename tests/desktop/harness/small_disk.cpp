// One file that takes all the room there is.
#include "desktop/harness/small_disk.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace corvane::desktop {

namespace {
// A larger one would not be the disk that was made for this.
constexpr std::uintmax_t kLargestSmallDisk = 64ULL * 1024 * 1024;

void UseForTemporaryFolders(const std::filesystem::path& folder) {
  for (const char* variable : {"TMP", "TEMP"}) _putenv_s(variable, folder.string().c_str());
}

}  // namespace

SmallDisk::SmallDisk() : usual_folder_(std::filesystem::temp_directory_path()) {
  const char* folder = std::getenv("CORVANE_SMALL_DISK");
  if (folder == nullptr) throw std::runtime_error("CORVANE_SMALL_DISK is not set");
  filler_ = std::filesystem::path(folder) / "filler";
  // The library asks for the folder above the one that is named.
  if (std::filesystem::space(filler_).capacity > kLargestSmallDisk) {
    throw std::runtime_error(std::string(folder) + " is no small disk");
  }
  UseForTemporaryFolders(folder);
}

SmallDisk::~SmallDisk() {
  Free();
  UseForTemporaryFolders(usual_folder_);
}

void SmallDisk::Fill() const {
  std::ofstream file(filler_, std::ios::binary | std::ios::app);
  for (const std::size_t piece : {65'536U, 4'096U, 512U, 1U}) {
    const std::string zeros(piece, '\0');
    while (file.write(zeros.data(), static_cast<std::streamsize>(piece)).flush()) {
    }
    file.clear();
  }
}

void SmallDisk::Free() const {
  std::error_code error;
  std::filesystem::remove(filler_, error);
}

}  // namespace corvane::desktop
