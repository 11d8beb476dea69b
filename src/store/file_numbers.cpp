// Numbers in use, lowest first.
#include "store/file_numbers.h"

#include <utility>

namespace corvane {

int FileNumbers::FreeFile() const {
  int number = 1;
  while (open_.contains(number)) ++number;
  return number;
}

void FileNumbers::Open(int number, std::string path) {
  open_[number] = std::move(path);
}

void FileNumbers::Close(int number) {
  open_.erase(number);
}

std::string FileNumbers::PathOf(int number) const {
  const auto found = open_.find(number);
  return found == open_.end() ? std::string() : found->second;
}

}  // namespace corvane
