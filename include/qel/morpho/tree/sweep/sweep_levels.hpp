// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP
#define QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP

// The levels of an image in sweep order: small integers for the values, greater ones nearer to the leaves, 0 for the
// value of the root.
//
// Levels are distances from the value of the root, or ranks. A flood reads little else, so they are narrow. Values of 8
// and 16 bits have distances of as many. Wider integers have levels of 16 bits if distances fit, or ranks because there
// are few different values; else distances of 32 bits, if these fit and the values do not crowd. All others, floating
// point included, have ranks of 32 bits, read off the site array.

#include <qel/core/internal/narrowed.hpp>
#include <qel/morpho/tree/sweep/distance_levels.hpp>
#include <qel/morpho/tree/sweep/few_values.hpp>
#include <qel/morpho/tree/sweep/level_groups.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>

#include <cstdint>
#include <type_traits>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Levels that are ranks: in `s`, the sites of one value stand together.
template <typename I, typename L, typename S>
level_groups set_levels_by_rank(const I& f, const S& s, L& levels) {
  const unsigned n = s.nsites();
  level_groups groups{{}, shift_of_groups(n - 1, n)};
  // The walk jumps about in the image: fetch ahead.
  constexpr unsigned ahead = 24;
  unsigned rank = 0;
  typename I::value last{};
  for (unsigned i = 0; i < n; ++i) {
    if (n - i > ahead) {
      __builtin_prefetch(&f(s[i + ahead]));
      __builtin_prefetch(&levels(s[i + ahead]), 1);
    }
    const auto& p = s[i];
    const typename I::value v = f(p);
    if (i != 0 && v != last) ++rank;
    if (rank >> groups.shift == groups.below.size()) groups.below.push_back(i);
    last = v;
    levels(p) = rank;
  }
  return groups;
}

/// Calls `use(set_levels, level)` with the way to give the sites of `f` their levels, and a level of the type to hold
/// them: `set_levels(levels)` returns their groups, of one level each where levels have 8 or 16 bits.
///
/// \pre there are sites.
template <typename I, typename S, typename Use>
auto with_sweep_levels(const I& f, const S& s, const sweep_order& order, Use use) {
  using value_t = typename I::value;
  [[maybe_unused]] const auto by_rank = [&](auto& levels) { return set_levels_by_rank(f, stored_sites(s), levels); };
  if constexpr (!std::is_integral_v<value_t>) {
    return use(by_rank, std::uint32_t());
  } else {
    distance_levels<value_t> distances = distances_of(f, order.increasing);
    const auto by_distance = [&](auto& levels) { return set_levels_by_distance(f, distances, levels); };
    if constexpr (sizeof(value_t) <= 2) {
      return use(by_distance, std::conditional_t<sizeof(value_t) == 1, std::uint8_t, std::uint16_t>());
    } else {
      if (distances.highest >> 16 == 0) return use(by_distance, std::uint16_t());
      const few_values<I> few(f, order.increasing);
      const auto by_few_ranks = [&](auto& levels) {
        few.set_levels(f, levels);
        return level_groups{few.below(), 0};
      };
      if (few.are_few()) return use(by_few_ranks, std::uint16_t());
      close_gaps(f, distances);
      const auto by_distance_or_rank = [&](auto& levels) {
        if (distances.highest >> 32 != 0) return by_rank(levels);
        level_groups groups = by_distance(levels);
        return are_crowded(groups, f.domain().nsites(), distances.nends) ? by_rank(levels) : groups;
      };
      return use(by_distance_or_rank, std::uint32_t());
    }
  }
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP
