// A number that two runs share when they were the same in every byte: FNV-1a.
#pragma once

#include <cstdint>
#include <string_view>

namespace corvane::sim {

class Digest {
 public:
  void Add(std::string_view bytes) {
    for (const char c : bytes) AddByte(static_cast<unsigned char>(c));
    AddByte(0xFF);  // where one text ends and the next begins
  }
  void Add(std::int64_t number) {
    for (int shift = 0; shift < 64; shift += 8) {
      AddByte(static_cast<unsigned char>(static_cast<std::uint64_t>(number) >> shift));
    }
  }
  [[nodiscard]] std::uint64_t value() const { return value_; }

 private:
  void AddByte(unsigned char byte) { value_ = (value_ ^ byte) * 0x100000001B3U; }

  std::uint64_t value_ = 0xCBF29CE484222325U;
};

}  // namespace corvane::sim
