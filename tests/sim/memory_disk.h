// Folders and files in memory, found by their paths without regard to case, as on a Windows disk.
//
// Paths as the program writes them ("C:\Corvane\Daily"); a name that the system would refuse leads
// nowhere. A file that is replaced or written again keeps the name it was made with.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::sim {

class MemoryDisk {
 public:
  [[nodiscard]] bool Exists(std::string_view path) const;
  [[nodiscard]] bool IsDirectory(std::string_view path) const;
  // Whether something could be made there.
  [[nodiscard]] bool HasParent(std::string_view path) const;
  // nullptr when it is no file.
  [[nodiscard]] const std::string* Content(std::string_view path) const;
  [[nodiscard]] std::string* Content(std::string_view path);
  // The names of all files under a folder, sorted, "\" between the parts.
  [[nodiscard]] std::vector<std::string> List(std::string_view folder) const;

  // The folders above it must be there.
  void MakeDirectory(std::string_view path);
  // With all folders above it.
  void MakeDirectories(std::string_view path);
  // An empty file; one that is there is emptied. The folder must be there.
  std::string& Create(std::string_view path);
  // With all that is below it. False when there was nothing.
  bool Remove(std::string_view path);
  // A file, or a folder with all that is below it, takes the place of what is at `to`.
  void Move(std::string_view from, std::string_view to);

 private:
  struct Entry {
    std::string name;
    std::optional<std::string> content;  // nullopt: a folder
  };
  struct Place {
    std::string key;        // in lower case, a "\" after each part
    std::string_view name;  // the last part as given
    bool allowed = true;
  };
  // What was asked of late, until something is made or goes: a program asks for its folder of the
  // day, and for files that are not there, several times a second.
  struct Asked {
    std::string path;
    const Entry* entry = nullptr;
    bool is_directory = false;
  };

  [[nodiscard]] static Place Resolve(std::string_view path);
  [[nodiscard]] const Asked& Ask(std::string_view path) const;
  void Forget() {
    for (Asked& asked : asked_) asked.path.clear();
  }
  [[nodiscard]] bool HasDirectory(const std::string& key) const;

  std::map<std::string, Entry> entries_;
  mutable std::array<Asked, 4> asked_;
  mutable std::size_t next_asked_ = 0;
};

}  // namespace corvane::sim
