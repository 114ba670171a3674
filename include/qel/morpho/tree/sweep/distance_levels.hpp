// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_DISTANCE_LEVELS_HPP
#define QEL_MORPHO_TREE_SWEEP_DISTANCE_LEVELS_HPP

#include <qel/core/internal/narrowed.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/morpho/tree/sweep/level_groups.hpp>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Levels of integers by their distances from `first`, the value of the root.
template <typename V>
struct distance_levels {
  std::uint64_t distance(V v) const {
    const std::uint64_t up = static_cast<std::uint64_t>(v) - static_cast<std::uint64_t>(first);
    return increasing ? up : 0 - up;
  }

  /// The level of `v`. \pre `v` is a value of the image.
  std::uint64_t level(V v) const {
    const std::uint64_t d = distance(v);
    return d == 0 ? 0 : std::min(d - gap, highest);
  }

  V first;
  bool increasing;
  std::uint64_t highest;  ///< level of the last value
  std::uint64_t gap = 0;  ///< unused levels above the first
  unsigned nends = 0;     ///< sites of the first and the last value, if they have been counted
};

/// The distances of the values of `f` in sweep order. Cost: one pass.
template <typename I>
distance_levels<typename I::value> distances_of(const I& f, bool increasing) {
  using value_t = typename I::value;
  value_t least = f(f.domain().pmin());
  value_t greatest = least;
  const unsigned ncols = f.domain().len(1);
  box_runstart_piter<typename I::site> p(f.domain());
  for (p.start(); p.is_valid(); p.next()) {
    const value_t* const row = &f(p);
    for (unsigned i = 0; i < ncols; ++i) {
      least = std::min(least, row[i]);
      greatest = std::max(greatest, row[i]);
    }
  }
  distance_levels<value_t> levels{increasing ? least : greatest, increasing, 0};
  levels.highest = levels.distance(increasing ? greatest : least);
  return levels;
}

/// Moves the first and the last value next to the others: one that stands for "no data" is often far away. Cost: one
/// pass. \pre there are three different values.
template <typename I>
void close_gaps(const I& f, distance_levels<typename I::value>& levels) {
  std::uint64_t second = levels.highest;
  std::uint64_t last_but_one = 0;
  box_fwd_piter_<typename I::site> p(f.domain());
  for (p.start(); p.is_valid(); p.next()) {
    const std::uint64_t d = levels.distance(f(p));
    if (d == 0 || d == levels.highest) {
      ++levels.nends;
    } else {
      second = std::min(second, d);
      last_but_one = std::max(last_but_one, d);
    }
  }
  levels.gap = second - 1;
  levels.highest = last_but_one - levels.gap + 1;
}

/// Gives the sites of `f` their levels, and counts them by groups.
template <typename I, typename L>
level_groups set_levels_by_distance(const I& f, const distance_levels<typename I::value>& by_distance, L& levels) {
  const unsigned shift = sizeof(typename L::value) <= 2 ? 0 : shift_of_groups(by_distance.highest, f.domain().nsites());
  std::vector<unsigned> counts((by_distance.highest >> shift) + 1);
  // By value: bytes may lie anywhere, so what references lead to would be read again after each of their stores.
  const auto level_of = [by_distance](auto v) { return by_distance.level(v); };
  unsigned* const count = counts.data();
  const unsigned ncols = f.domain().len(1);
  box_runstart_piter<typename I::site> p(f.domain());
  for (p.start(); p.is_valid(); p.next()) {
    const typename I::value* const row = &f(p);
    typename L::value* const level = &levels(p);
    for (unsigned i = 0; i < ncols; ++i) {
      level[i] = qel::internal::narrowed<typename L::value>(level_of(row[i]));
      ++count[level[i] >> shift];
    }
  }
  std::exclusive_scan(counts.begin(), counts.end(), counts.begin(), 0u);
  return {std::move(counts), shift};
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_DISTANCE_LEVELS_HPP
