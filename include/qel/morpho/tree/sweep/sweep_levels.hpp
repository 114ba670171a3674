// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP
#define QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP

// The levels of an image in sweep order: small integers for the values, greater ones nearer to the leaves.
//
// 0 means "not to be visited". Values of 8 bits are numbered as they are, with gaps; wider ones by their rank among the
// values of the image. Levels have 16 bits where they suffice, as a flood reads little else. Otherwise they have 32,
// and the site array tells the ranks of values that have more than 16 bits.

#include <qel/core/internal/large_pages.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/morpho/tree/sweep/few_values.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Whether levels are the values themselves rather than their ranks.
template <typename T>
inline constexpr bool levels_are_values = std::is_integral_v<T> && sizeof(T) <= 2;

template <typename I, typename L>
std::vector<unsigned> set_levels_by_value(const I& f, const sweep_order& order, L& levels) {
  using value_t = typename I::value;
  using limits = std::numeric_limits<value_t>;
  std::vector<unsigned> counts(static_cast<std::size_t>(limits::max() - limits::min()) + 2);
  const int sign = order.increasing ? 1 : -1;
  const int before_first = (order.increasing ? limits::min() : -limits::max()) - 1;
  box_fwd_piter_<typename I::site> p(f.domain());
  for (p.start(); p.is_valid(); p.next()) {
    const auto level = qel::internal::narrowed<typename L::value>(sign * f(p) - before_first);
    levels(p) = level;
    ++counts[level];
  }
  unsigned below = 0;
  for (unsigned& count : counts) below += std::exchange(count, below);
  return counts;
}

/// Levels that are ranks: in `s`, the sites of one value stand together.
template <typename I, typename L, typename S>
std::vector<unsigned> set_levels_by_rank(const I& f, const S& s, L& levels) {
  const unsigned n = s.nsites();
  std::vector<unsigned> below;
  qel::internal::reserve_large(below, std::size_t{n} + 1);
  below.push_back(0);
  // The walk jumps about in the image: fetch ahead.
  constexpr unsigned ahead = 24;
  typename I::value last{};
  for (unsigned i = 0; i < n; ++i) {
    if (n - i > ahead) {
      __builtin_prefetch(&f(s[i + ahead]));
      __builtin_prefetch(&levels(s[i + ahead]), 1);
    }
    const auto& p = s[i];
    const typename I::value v = f(p);
    if (i == 0 || v != last) below.push_back(i);
    last = v;
    levels(p) = qel::internal::narrowed<unsigned>(below.size()) - 1;
  }
  return below;
}

/// Calls `use(set_levels, level)` with the way to give the sites of `f` their levels, and a level of the type to hold
/// them: `set_levels(levels)` returns for each level, from 1 up, the number of sites of lower ones.
template <typename I, typename S, typename Use>
auto with_sweep_levels(const I& f, const S& s, const sweep_order& order, Use use) {
  using value_t = typename I::value;
  [[maybe_unused]] const auto by_value = [&](auto& levels) { return set_levels_by_value(f, order, levels); };
  [[maybe_unused]] const auto by_rank = [&](auto& levels) { return set_levels_by_rank(f, stored_sites(s), levels); };
  if constexpr (levels_are_values<value_t> && sizeof(value_t) == 1) {
    return use(by_value, std::uint16_t());
  } else {
    if constexpr (std::is_integral_v<value_t>) {
      const few_values<I> few(f, order.increasing);
      if (few.are_few()) return use([&](auto& levels) { return few.set_levels(f, levels); }, std::uint16_t());
    }
    if constexpr (levels_are_values<value_t>)
      return use(by_value, std::uint32_t());
    else
      return use(by_rank, std::uint32_t());
  }
}

/// The place in its block of a site of the lowest level. `below` has for each level the number of sites of lower ones.
template <typename L>
unsigned lowest_place(const L& levels, const std::vector<unsigned>& below) {
  typename L::value lowest = 1;
  while (std::size_t{lowest} + 1 < below.size() && below[std::size_t{lowest} + 1] == 0) ++lowest;
  const auto* const end = levels.buffer() + levels.nelements();
  return qel::internal::narrowed<unsigned>(std::find(levels.buffer(), end, lowest) - levels.buffer());
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_SWEEP_SWEEP_LEVELS_HPP
