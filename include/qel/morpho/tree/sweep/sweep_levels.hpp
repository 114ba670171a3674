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
#include <qel/core/site_set/box_piter.hpp>
#include <qel/morpho/tree/sweep/few_values.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
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

/// Turns the counts of elements into sums of those before.
inline void sum_up(std::vector<unsigned>& counts) {
  unsigned below = 0;
  for (unsigned& count : counts) below += std::exchange(count, below);
}

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
  sum_up(counts);
  return {std::move(counts), shift};
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
  return pairs > std::uint64_t{nsites} * nsites / few_groups;
}

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
    if constexpr (sizeof(value_t) == 1) {
      return use(by_distance, std::uint8_t());
    } else if constexpr (sizeof(value_t) == 2) {
      return use(by_distance, std::uint16_t());
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
