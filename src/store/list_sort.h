// The order in which list files are loaded.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {

// The sort key of one line of a group or subscriber list: country in 4 digits, network in 5, group
// in 8, compared as text. Numbers that need more push the rest out at the end.
using ListKey = std::array<char, 17>;

[[nodiscard]] ListKey MakeListKey(std::int16_t mcc, std::int16_t mnc, std::int32_t gssi);

// The positions of `keys` in ascending order of the keys; equal keys keep their order.
[[nodiscard]] std::vector<std::uint32_t> ListOrder(const std::vector<ListKey>& keys);

}  // namespace corvane
