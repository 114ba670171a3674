// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_FLOODED_NODE_TABLE_HPP
#define QEL_MORPHO_TREE_FLOOD_FLOODED_NODE_TABLE_HPP

#include <qel/core/dpoint2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/site_set/p_array.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/core/util/priority_bits.hpp>
#include <qel/data/fill.hpp>
#include <qel/data/initialize.hpp>
#include <qel/morpho/tree/flood/flood.hpp>
#include <qel/morpho/tree/flood/flooded_nodes.hpp>
#include <qel/morpho/tree/flood/level_lists.hpp>
#include <qel/morpho/tree/flood/level_queues.hpp>
#include <qel/morpho/tree/nodes/node_table.hpp>
#include <qel/morpho/tree/sweep/sweep_levels.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>
#include <qel/trace/trace.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The most layers of `util::priority_bits` for levels of type L of values of type T: there are 257, 65537 at most, or
/// as many as an image of less than 2^30 sites can have.
template <typename T, typename L>
constexpr unsigned most_layers() {
  if (levels_are_values<T> && sizeof(T) == 1) return 2;
  return levels_are_values<T> || sizeof(L) == 2 ? 3 : 5;
}

/// Whether `f` can be flooded under `nbh`: neighbours go both ways, those of every site lie in the block, and those to
/// the right and below are among them, so that a flood reaches every site. The layers have to hold all levels.
template <typename I, typename N>
bool can_be_flooded(const I& f, const N& nbh) {
  const auto& win = nbh.win();
  const auto has = [&win](const dpoint2d& dp) {
    for (unsigned i = 0; i < win.size(); ++i)
      if (win.dp(i) == dp) return true;
    return false;
  };
  const auto border = qel::internal::narrowed<int>(f.border());
  for (unsigned i = 0; i < win.size(); ++i) {
    const dpoint2d dp = win.dp(i);
    if (std::abs(dp.row()) > border || std::abs(dp.col()) > border || !has(-dp)) return false;
  }
  using value_t = typename I::value;
  const std::size_t nlevels = std::size_t{f.domain().nsites()} + 1;
  const bool levels_fit =
      levels_are_values<value_t> || util::priority_bits<most_layers<value_t, std::uint32_t>()>::fits(nlevels);
  return levels_fit && has(dpoint2d(0, 1)) && has(dpoint2d(1, 0));
}

template <std::size_t n, typename I, typename W>
std::array<int, n> distances(const I& f, const W& win) {
  std::array<int, n> result;
  for (unsigned i = 0; i < n; ++i) result[i] = f.delta_index(win.dp(i));
  return result;
}

/// Calls `flood` with the distances to the neighbours. The compiler knows how many there are where they are 4 or 8.
template <typename I, typename W, typename Flood>
void with_distances(const I& f, const W& win, Flood flood) {
  if (win.size() == 4) return flood(distances<4>(f, win));
  if (win.size() == 8) return flood(distances<8>(f, win));
  std::vector<int> around;
  for (unsigned i = 0; i < win.size(); ++i) around.push_back(f.delta_index(win.dp(i)));
  return flood(around);
}

/// Calls `flood` with empty queues: arrays or, with many levels of few sites each, linked lists. The compiler knows the
/// number of layers.
///
/// \param below  for each level, the number of sites that have a lower one.
/// \param places,numbers images that need not be set.
template <unsigned layers, unsigned most, typename P, typename N, typename Flood>
void with_queues(std::vector<unsigned>& below, P& places, N& numbers, Flood flood) {
  if constexpr (layers < most)
    if (!util::priority_bits<layers>::fits(below.size()))
      return with_queues<layers + 1, most>(below, places, numbers, flood);
  constexpr unsigned few_sites = 20;
  if constexpr (layers > 3)
    if (numbers.domain().nsites() / few_sites < below.size())
      return flood(level_lists<layers>(std::move(below), numbers.buffer()));
  return flood(level_queues<layers>(below, places.buffer()));
}

/// The node table of `f` by flooding. \pre `can_be_flooded(f, nbh)`. \throws std::bad_alloc.
///
/// The trace scope has the name and the steps of the plain form, so that outlines can be compared.
template <typename I, typename N, typename S>
node_table<I> flooded_node_table(const I& f, const N& nbh, const S& s) {
  trace::entering("morpho::tree::impl::generic::compute_parent");
  using value_t = typename I::value;
  node_table<I> table;
  initialize(table.number, f);
  const sweep_order order = order_of(f, s);
  // Before what is needed for the flood only: memory that is freed behind it leaves no holes.
  flooded_nodes found(f.domain().nsites());
  typename trait::ch_value<I, unsigned>::ret places;
  initialize(places, f);
  with_sweep_levels(f, s, order, [&](auto set_levels, auto level) {
    using level_t = decltype(level);
    typename trait::ch_value<I, level_t>::ret levels;
    initialize(levels, f);
    qel::data::fill(levels, 0);
    std::vector<unsigned> below = set_levels(levels);
    const unsigned start = lowest_place(levels, below);
    constexpr unsigned most = most_layers<value_t, level_t>();
    with_distances(f, nbh.win(), [&](const auto& around) {
      with_queues<std::min(most, 3u), most>(below, places, table.number, [&](auto queues) {
        flood(levels.buffer(), start, around, !order.raster_ties, std::move(queues), table.number, found);
      });
    });
  });

  table.canonical = std::move(found.canonical);
  table.parent = std::move(found.parent);
  table.upward = p_array2d(std::move(found.upward));
  trace::exiting("morpho::tree::impl::generic::compute_parent");
  return table;
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_FLOODED_NODE_TABLE_HPP
