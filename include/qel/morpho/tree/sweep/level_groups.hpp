// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_LEVEL_GROUPS_HPP
#define QEL_MORPHO_TREE_SWEEP_LEVEL_GROUPS_HPP

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The levels of an image in groups of 2^`shift` consecutive ones.
struct level_groups {
  std::vector<unsigned> below;  ///< for each group, the number of sites of lower ones
  unsigned shift;
};

/// Groups of levels up to `highest`, for an image of `nsites` sites: there are neither more groups than sites nor many.
/// Where sites are spread evenly, their number hardly matters: 2^12 to 2^17 take the same time.
inline unsigned shift_of_groups(std::uint64_t highest, unsigned nsites) {
  constexpr unsigned most_groups = 1u << 12;
  unsigned shift = 0;
  while (highest >> shift >= std::min(nsites, most_groups)) ++shift;
  return shift;
}

/// Whether most of `nsites` sites are in few groups, so that the heaps of these would be large; `nends` of them don't
/// matter, as they share two levels.
inline bool are_crowded(const level_groups& groups, unsigned nsites, unsigned nends) {
  constexpr std::uint64_t few_groups = 64;
  std::uint64_t pairs = 0;  // of sites in one group
  for (std::size_t g = 0; g < groups.below.size(); ++g) {
    const bool is_last = g + 1 == groups.below.size();
    const std::uint64_t n = (is_last ? nsites : groups.below[g + 1]) - groups.below[g];
    const bool has_end = g == 0 || is_last;
    const std::uint64_t counted = has_end ? n - std::min<std::uint64_t>(n, nends) : n;
    pairs += counted * counted;
  }
  const std::uint64_t all_pairs = std::uint64_t{nsites} * nsites;
  return pairs > all_pairs / few_groups;
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_LEVEL_GROUPS_HPP
