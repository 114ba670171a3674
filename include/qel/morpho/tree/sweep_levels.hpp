// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_LEVELS_HPP
#define QEL_MORPHO_TREE_SWEEP_LEVELS_HPP

// The levels of an image in sweep order: small integers that stand for the values, greater ones nearer to the leaves.
//
// 0 is kept for "not to be visited". Values of 8 and 16 bits are numbered as they are, with gaps; wider ones by their
// rank among the values of the image, read off the site array.

#include <qel/core/box_piter.hpp>
#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/morpho/tree/sweep_order.hpp>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Whether levels are the values themselves rather than their ranks.
template <typename T>
inline constexpr bool levels_are_values = std::is_integral_v<T> && sizeof(T) <= 2;

/// The type of a level: 16 bits where 257 levels do.
template <typename T>
using sweep_level_t = std::conditional_t<sizeof(T) == 1, unsigned short, unsigned>;

/// Layers of `util::priority_bits` that hold all levels of values of type T: 257, 65537, or as many as an image of less
/// than 2^30 sites can have.
template <typename T>
constexpr unsigned most_layers() {
  if (!levels_are_values<T>) return 5;
  return sizeof(T) == 1 ? 2 : 3;
}

/// The waiting places of one level: those in [bottom, top) are taken.
struct level_range {
  unsigned bottom = 0;
  unsigned top = 0;
};

/// Levels that are the values themselves.
template <typename I, typename L>
std::vector<level_range> set_levels_by_value(const I& f, const sweep_order& order, L& levels) {
  using value_t = typename I::value;
  using limits = std::numeric_limits<value_t>;
  std::vector<level_range> ranges(static_cast<std::size_t>(limits::max() - limits::min()) + 2);
  const int sign = order.increasing ? 1 : -1;
  const int before_first = (order.increasing ? limits::min() : -limits::max()) - 1;
  box_fwd_piter_<typename I::site> p(f.domain());
  for (p.start(); p.is_valid(); p.next()) {
    const auto level = qel::internal::narrowed<typename L::value>(sign * f(p) - before_first);
    levels(p) = level;
    ++ranges[level].top;
  }
  unsigned first = 0;
  for (level_range& range : ranges) {
    const unsigned count = range.top;
    range.bottom = range.top = first;
    first += count;
  }
  return ranges;
}

/// Levels that are ranks: the sites of one value stand together in `s`.
template <typename I, typename L, typename S>
std::vector<level_range> set_levels_by_rank(const I& f, const S& s, L& levels) {
  std::vector<level_range> ranges(1);
  ranges.reserve(std::size_t{s.nsites()} + 1);
  const unsigned n = s.nsites();
  // The walk jumps about in the image: what it needs soon is fetched from memory ahead of it.
  constexpr unsigned ahead = 24;
  typename I::value last{};
  for (unsigned i = 0; i < n; ++i) {
    if (n - i > ahead) {
      __builtin_prefetch(&f(s[i + ahead]));
      __builtin_prefetch(&levels(s[i + ahead]), 1);
    }
    const auto& p = s[i];
    const typename I::value v = f(p);
    if (i == 0 || v != last) ranges.push_back({i, i});
    last = v;
    levels(p) = qel::internal::narrowed<unsigned>(ranges.size()) - 1;
  }
  return ranges;
}

/// Gives the sites of the domain their levels, from 1 up. Returns the empty ranges of the levels, each with room for all
/// sites of its level.
template <typename I, typename L, typename S>
std::vector<level_range> set_sweep_levels(const I& f, const S& s, const sweep_order& order, L& levels) {
  if constexpr (levels_are_values<typename I::value>)
    return set_levels_by_value(f, order, levels);
  else
    return set_levels_by_rank(f, stored_sites(s), levels);
}

/// The place in their block of a site of the lowest level. `ranges` are those of the levels, still empty.
template <typename L>
unsigned lowest_place(const L& levels, const std::vector<level_range>& ranges) {
  typename L::value lowest = 1;
  while (std::size_t{lowest} + 1 < ranges.size() && ranges[std::size_t{lowest} + 1].bottom == 0) ++lowest;
  const auto* const end = levels.buffer() + levels.nelements();
  return qel::internal::narrowed<unsigned>(std::find(levels.buffer(), end, lowest) - levels.buffer());
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_LEVELS_HPP
