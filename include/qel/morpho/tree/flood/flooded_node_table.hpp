// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_FLOODED_NODE_TABLE_HPP
#define QEL_MORPHO_TREE_FLOOD_FLOODED_NODE_TABLE_HPP

#include <qel/core/dpoint2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/site_set/p_array.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/fill.hpp>
#include <qel/data/initialize.hpp>
#include <qel/morpho/tree/flood/flood.hpp>
#include <qel/morpho/tree/flood/flooded_nodes.hpp>
#include <qel/morpho/tree/flood/level_heaps.hpp>
#include <qel/morpho/tree/flood/level_queues.hpp>
#include <qel/morpho/tree/nodes/node_table.hpp>
#include <qel/morpho/tree/sweep/level_groups.hpp>
#include <qel/morpho/tree/sweep/sweep_levels.hpp>
#include <qel/morpho/tree/sweep/sweep_order.hpp>
#include <qel/trace/trace.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <type_traits>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Whether `f` can be flooded under `nbh`: neighbours go both ways, those of every site lie in the block, and those to
/// the right and below are among them, so that a flood reaches every site.
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
  return has(dpoint2d(0, 1)) && has(dpoint2d(1, 0));
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

/// Where a site waits at a level of type L.
template <typename L>
using place_t = std::conditional_t<sizeof(L) <= 2, unsigned, std::uint64_t>;

/// Empty queues for levels of type L, or empty heaps for those of 32 bits. \throws std::bad_alloc
///
/// \param places one for each site.
template <typename L>
auto queues_for(const level_groups& groups, place_t<L>* places) {
  constexpr unsigned layers = sizeof(L) == 1 ? 2 : 3;
  if constexpr (sizeof(L) <= 2)
    return level_queues<layers>(groups.below, places);
  else
    return level_heaps(groups, places);
}

/// The node table of `f` by flooding. \pre `can_be_flooded(f, nbh)`. \throws std::bad_alloc.
///
/// The trace scope has the name and the steps of the plain form, so that outlines can be compared.
template <typename I, typename N, typename S>
node_table<I> flooded_node_table(const I& f, const N& nbh, const S& s) {
  trace::entering("morpho::tree::impl::generic::compute_parent");
  node_table<I> table;
  initialize(table.number, f);
  const sweep_order order = order_of(f, s);
  // Before what is needed for the flood only: memory that is freed behind it leaves no holes.
  flooded_nodes found(f.domain().nsites());
  with_sweep_levels(f, s, order, [&](auto set_levels, auto level) {
    using level_t = decltype(level);
    typename trait::ch_value<I, place_t<level_t>>::ret places;
    initialize(places, f);
    typename trait::ch_value<I, level_t>::ret levels;
    initialize(levels, f);
    qel::data::fill(levels, 0);
    const level_groups groups = set_levels(levels);
    with_distances(f, nbh.win(), [&](const auto& around) {
      flood(levels, around, !order.raster_ties, queues_for<level_t>(groups, places.buffer()), table.number, found);
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
