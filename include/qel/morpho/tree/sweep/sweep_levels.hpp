// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP
#define QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP

// The levels of an image in sweep order: small integers for the values, greater ones nearer to the leaves, 0 for the
// value of the root.
//
// The level of an integer is its distance from the value of the root, of a value that is none its rank. A flood reads
// little else, so levels are as narrow as can be: values of 8 and 16 bits have levels of as many, wider ones of 16
// where distances or, of few different values, ranks fit, else of 32. Where distances don't, the site array tells the
// ranks.

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

/// The levels of an image in groups of 2^`shift` neighbours, at each of which sites are counted.
struct level_groups {
  std::vector<unsigned> below;  ///< for each group, the number of sites of lower ones
  unsigned shift;
};

/// Groups of levels up to `highest`, for an image of `nsites` sites: there are neither more groups than sites nor many.
/// Their number hardly matters: 2^12 to 2^17 take the same time.
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

/// The values of an image of integers: from `first`, that of the root, to the other end.
template <typename V>
struct value_range {
  /// How far `v` is from `first`. \pre `v` lies in the range.
  std::uint64_t distance(V v) const {
    const std::uint64_t up = static_cast<std::uint64_t>(v) - static_cast<std::uint64_t>(first);
    return increasing ? up : 0 - up;
  }

  V first;
  V last;
  bool increasing;
};

/// The range of `f` in sweep order. Cost: one pass.
template <typename I>
value_range<typename I::value> range_of(const I& f, bool increasing) {
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
  if (increasing) return {least, greatest, true};
  return {greatest, least, false};
}

template <typename I, typename L>
level_groups set_levels_by_distance(const I& f, const value_range<typename I::value>& range, L& levels) {
  const std::uint64_t highest = range.distance(range.last);
  const unsigned shift = sizeof(typename L::value) <= 2 ? 0 : shift_of_groups(highest, f.domain().nsites());
  std::vector<unsigned> counts((highest >> shift) + 1);
  // By value: bytes may lie anywhere, so what references lead to would be read again after each of their stores.
  const auto distance = [range](auto v) { return range.distance(v); };
  unsigned* const count = counts.data();
  const unsigned ncols = f.domain().len(1);
  box_runstart_piter<typename I::site> p(f.domain());
  for (p.start(); p.is_valid(); p.next()) {
    const typename I::value* const row = &f(p);
    typename L::value* const level = &levels(p);
    for (unsigned i = 0; i < ncols; ++i) {
      level[i] = qel::internal::narrowed<typename L::value>(distance(row[i]));
      ++count[level[i] >> shift];
    }
  }
  sum_up(counts);
  return {std::move(counts), shift};
}

/// Levels that are ranks: in `s`, the sites of one value stand together.
template <typename I, typename L, typename S>
level_groups set_levels_by_rank(const I& f, const S& s, L& levels) {
  const unsigned n = s.nsites();
  level_groups groups{{}, shift_of_groups(n - 1, n)};
  // The walk jumps about in the image: fetch ahead.
  constexpr unsigned ahead = 24;
  unsigned rank = 0;
  typename I::value last = f(s[0]);
  for (unsigned i = 0; i < n; ++i) {
    if (n - i > ahead) {
      __builtin_prefetch(&f(s[i + ahead]));
      __builtin_prefetch(&levels(s[i + ahead]), 1);
    }
    const auto& p = s[i];
    const typename I::value v = f(p);
    if (v != last) ++rank;
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
  constexpr std::uint64_t end16 = std::uint64_t{1} << 16;
  [[maybe_unused]] constexpr std::uint64_t end32 = std::uint64_t{1} << 32;
  if constexpr (std::is_integral_v<value_t>) {
    const value_range<value_t> range = range_of(f, order.increasing);
    [[maybe_unused]] const std::uint64_t highest = range.distance(range.last);
    const auto by_distance = [&](auto& levels) { return set_levels_by_distance(f, range, levels); };
    if constexpr (sizeof(value_t) == 1) {
      return use(by_distance, std::uint8_t());
    } else if constexpr (sizeof(value_t) == 2) {
      return use(by_distance, std::uint16_t());
    } else {
      if (highest < end16) return use(by_distance, std::uint16_t());
      const few_values<I> few(f, order.increasing);
      const auto by_few_ranks = [&](auto& levels) {
        few.set_levels(f, levels);
        return level_groups{few.below(), 0};
      };
      if (few.are_few()) return use(by_few_ranks, std::uint16_t());
      if (highest < end32) return use(by_distance, std::uint32_t());
    }
  }
  if constexpr (!std::is_integral_v<value_t> || sizeof(value_t) > 4) {
    const auto by_rank = [&](auto& levels) { return set_levels_by_rank(f, stored_sites(s), levels); };
    return use(by_rank, std::uint32_t());
  }
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP
