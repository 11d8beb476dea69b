// The small table of file numbers: which path is open as which number. It opens nothing itself.
#pragma once

#include <map>
#include <string>

namespace corvane {

class FileNumbers {
 public:
  // The lowest number from 1 that is not in use.
  [[nodiscard]] int FreeFile() const;
  void Open(int number, std::string path);
  // Nothing when the number is not in use.
  void Close(int number);
  // "" when the number is not in use.
  [[nodiscard]] std::string PathOf(int number) const;

 private:
  std::map<int, std::string> open_;
};

}  // namespace corvane
