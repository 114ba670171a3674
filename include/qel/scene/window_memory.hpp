// SPDX-License-Identifier: MIT
#ifndef QEL_SCENE_WINDOW_MEMORY_HPP
#define QEL_SCENE_WINDOW_MEMORY_HPP

// What a window costs, and how far around a block one has to look: the figures that a plan is made of.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>
#include <vector>

namespace qel {

namespace scene {

/// Memory for each pixel of a window while its trees are made and filtered, in bytes, at worst: every pixel a node. Pictures
/// of 8 bits take about half.
///
/// One stage after the other: values sorted; the image flooded; the nodes judged, or filtered.
template <typename T, typename A>
constexpr std::int64_t window_bytes() {
  constexpr std::int64_t value = sizeof(T);
  constexpr std::int64_t result = sizeof(typename A::result);
  constexpr std::int64_t pixel = value + 1 + 4 + 4;                 // value, validity, sorted site, number of node
  constexpr std::int64_t node = 3 * 4 * 3 / 2 + value;              // tables that grow by doubling, and node values
  constexpr std::int64_t sorted = value > 2 ? 2 * (8 + value) : 0;  // pairs of value and place, twice
  constexpr std::int64_t flooded = value > 2 ? 4 + 8 : value + 4;   // levels, heaps or queues
  constexpr std::int64_t judged = sizeof(A) + result;               // accumulators
  constexpr std::int64_t filtered = result + 8 + value + 3;         // node values of some planes, marks
  return std::max({pixel + sorted, pixel + node + flooded, pixel + node + std::max(judged, filtered)}) * 11 / 10;
}

/// Pixels from end to end of most regions that do not reach the largest threshold, of area (`unsigned`) or diagonal.
template <typename L>
double reach_of(const std::vector<L>& thresholds) {
  double largest = 0;
  for (const L threshold : thresholds) largest = std::max(largest, static_cast<double>(threshold));
  // A diagonal is a length. Areas are not round; with twice the side of a square a photograph took the least time.
  const bool is_area = std::is_same_v<L, unsigned>;
  return is_area ? 2 * std::sqrt(largest) : largest;
}

}  // namespace scene

}  // namespace qel

#endif  // QEL_SCENE_WINDOW_MEMORY_HPP
