// SPDX-License-Identifier: MIT
#ifndef PROGRAM_WINDOW_MEMORY_HPP
#define PROGRAM_WINDOW_MEMORY_HPP

// What a window costs, and how far around a block one has to look: the figures that a plan is made of.

#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/is_increasing.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace program {

/// Memory for each pixel of a window while its trees are made and filtered, in bytes, at worst: every pixel a node.
template <typename T, typename A>
constexpr std::int64_t window_bytes() {
  constexpr std::int64_t value = sizeof(T);
  constexpr std::int64_t pixel = value + 1 + 4 + 4;               // value, validity, sorted site, number of node
  constexpr std::int64_t node = 3 * 4 + value;                    // table of nodes, and their values
  constexpr std::int64_t flood = (value == 1 ? 2 : 4) + 4 + 8;    // levels, queues, room for more nodes
  constexpr std::int64_t sort = value > 2 ? 2 * (8 + value) : 0;  // pairs of place and value
  constexpr std::int64_t attribute = sizeof(A) + sizeof(typename A::result);
  constexpr std::int64_t planes = 8 + value + 1 + 2;  // a group of planes, marks, proof
  return std::max({pixel + sort, pixel + node + flood, pixel + node + std::max(attribute, planes + 8)});
}

/// Pixels from end to end of most regions that do not reach the largest threshold.
template <typename A, typename L>
double reach_of(const std::vector<L>& thresholds) {
  if constexpr (!qel::morpho::attribute::is_increasing<A>) return 256;  // of no meaning: nothing is proved
  double largest = 0;
  for (const L threshold : thresholds) largest = std::max(largest, static_cast<double>(threshold));
  // A diagonal is a length. Areas are not round: a region of n pixels is mostly within 4 times the side of a square.
  const bool is_area = std::is_same_v<L, unsigned>;
  return is_area ? 4 * std::sqrt(largest) : largest;
}

}  // namespace program

#endif  // PROGRAM_WINDOW_MEMORY_HPP
