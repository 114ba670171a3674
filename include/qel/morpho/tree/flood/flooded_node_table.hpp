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

/// The layers of `util::priority_bits` for levels of 16 bits: 8-bit values have 257.
template <typename T>
inline constexpr unsigned layers_of_short_levels = sizeof(T) == 1 ? 2 : 3;

/// Those for levels of 32 bits: 16-bit values have 65537, others as many as an image of less than 2^30 sites can have.
template <typename T>
inline constexpr unsigned most_layers = levels_are_values<T> ? 3 : 5;

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
  const bool levels_fit = levels_are_values<value_t> || util::priority_bits<most_layers<value_t>>::fits(nlevels);
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
flooded_nodes with_distances(const I& f, const W& win, Flood flood) {
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
flooded_nodes with_queues(std::vector<unsigned>& below, P& places, N& numbers, Flood flood) {
  if constexpr (layers < most)
    if (!util::priority_bits<layers>::fits(below.size()))
      return with_queues<layers + 1, most>(below, places, numbers, flood);
  constexpr unsigned few_sites = 20;
  if constexpr (layers > 3)
    if (numbers.domain().nsites() / few_sites < below.size())
      return flood(level_lists<layers>(std::move(below), numbers.buffer()));
  return flood(level_queues<layers>(below, places.buffer()));
}

/// The nodes of `levels`, of which `below` tells the number of sites that have a lower one.
template <unsigned layers, unsigned most, typename L, typename W, typename P, typename N>
flooded_nodes flood_levels(L& levels, std::vector<unsigned>& below, const W& win, bool last_ties, P& places,
                           N& numbers) {
  const unsigned start = lowest_place(levels, below);
  return with_distances(levels, win, [&](const auto& around) {
    return with_queues<layers, most>(below, places, numbers, [&](auto queues) {
      return flood(levels.buffer(), start, around, last_ties, std::move(queues), numbers);
    });
  });
}

/// The node table of `f` by flooding. \pre `can_be_flooded(f, nbh)`. \throws std::bad_alloc.
///
/// The trace scope has the name and the steps of the plain form, so that outlines can be compared.
template <typename I, typename N, typename S>
node_table<I> flooded_node_table(const I& f, const N& nbh, const S& s) {
  trace::entering("morpho::tree::impl::generic::compute_parent");
  using value_t = typename I::value;
  typename trait::ch_value<I, std::uint16_t>::ret levels;
  initialize(levels, f);
  node_table<I> table;
  initialize(table.number, f);
  typename trait::ch_value<I, unsigned>::ret places;
  initialize(places, f);
  qel::data::fill(levels, 0);

  const sweep_order order = order_of(f, s);
  const bool last_ties = !order.raster_ties;
  const auto nodes = [&] {
    std::vector<unsigned> below = set_short_levels(f, order, levels);
    if constexpr (sizeof(value_t) > 1)
      if (below.empty()) {
        levels = {};
        typename trait::ch_value<I, unsigned>::ret long_levels;
        // Nothing here has a trace scope.
        long_levels.init_(f.domain(), f.border());
        std::fill_n(long_levels.buffer(), long_levels.nelements(), 0u);
        below = set_long_levels(f, s, order, long_levels);
        return flood_levels<3, most_layers<value_t>>(long_levels, below, nbh.win(), last_ties, places, table.number);
      }
    constexpr unsigned layers = layers_of_short_levels<value_t>;
    return flood_levels<layers, layers>(levels, below, nbh.win(), last_ties, places, table.number);
  };
  flooded_nodes found = nodes();

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
