// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_FLOOD_HPP
#define QEL_MORPHO_TREE_FLOOD_FLOOD_HPP

// The nodes of a component tree by flooding the image level by level, from the root towards the leaves and back: the
// fast form of the union-find sweep (`impl::generic::compute_parent`), which jumps about in the image at every site,
// while a flood goes from neighbour to neighbour. Levels and neighbourhood alone decide the tree. The test
// `node_table.is_that_of_union_find_for_every_sweep_and_neighbourhood` holds the two equal.
//
// The sites of the lowest level are the root's. From each higher site that no flood has reached yet a flood starts.
//
// The flood stands on a site of the component that it fills. A neighbour of a higher level lies in a component inside:
// the flood goes up to it at once and comes back when that component is full. Neighbours of the same or a lower level
// wait, each in the queue of its level. When no site of the present level waits, the component is full: its node is
// complete, and the flood goes down to the highest level at which a site waits. That is the level of its parent: a
// component that the flood has left for this one, or, if it is higher, a new one around it.
//
// Cost: each site waits once at most. A higher site looks at its neighbours once, and again each time the flood comes
// back to it. Wrong guesses of the processor at branches, about two a site, are most of the time. Memory beyond the
// result: a level and a place in the queues for each site, and 16 bytes for each open component, one a level at most.
// These stand on a heap stack, so there is no recursion.

#include <qel/core/image2d.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/morpho/tree/flood/flood_component.hpp>
#include <qel/morpho/tree/flood/flooded_nodes.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>

#include <algorithm>
#include <utility>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// Gives the sites of level 0 to the root, of which this returns the canonical site. Parameters as for `flood`.
template <typename L>
unsigned take_lowest(const L* level, unsigned turn, image2d<unsigned>& numbers) {
  unsigned* const number = numbers.buffer();
  const unsigned ncols = numbers.domain().len(1);
  unsigned canonical = ~0u;
  box_runstart_piter<point2d> row(numbers.domain());
  for (row.start(); row.is_valid(); row.next()) {
    const auto first = qel::internal::narrowed<unsigned>(&numbers(row) - number);
    for (unsigned here = first; here != first + ncols; ++here) {
      if (level[here] != 0) continue;
      number[here] = flood_root;
      canonical = std::min(canonical, here ^ turn);
    }
  }
  return canonical;
}

/// Floods the sites of `levels`, whose border has level 0.
///
/// \param levels    the level of each site, 0 for the lowest; the flood sets all to 0.
/// \param around    distances in the block to the neighbours of a site: a symmetric neighbourhood.
/// \param last_ties whether the canonical site of a node is its last one in the block, not the first.
/// \param waiting   empty `level_queues` or `level_heaps`.
/// \param numbers   receives the number of each site's node; its block is laid out like that of `levels`.
/// \param nodes     receives the nodes; empty before.
/// \throws std::bad_alloc
template <typename I, typename Around, typename Queues>
void flood(I& levels, const Around& around, bool last_ties, Queues waiting, image2d<unsigned>& numbers,
           flooded_nodes& nodes) {
  // The least place is sought: where it is the last one, places are turned round.
  const unsigned turn = last_ties ? ~0u : 0u;
  auto* const level = levels.buffer();
  const auto* const end = level + levels.nelements();
  const auto next_start = [=](const auto* from) { return std::find_if(from, end, [](auto l) { return l != 0; }); };
  nodes.grow();
  const unsigned canonical = take_lowest(level, turn, numbers);
  flood_state<Queues> state{std::move(waiting), {}, flood_root + 1, 0};
  for (const auto* start = next_start(level); start != end; start = next_start(start))
    flood_from(qel::internal::narrowed<unsigned>(start - level), level, around, turn, numbers, nodes, state);

  const flooded_nodes::pointers list = nodes.data();
  list.canonical[flood_root] = numbers.point_at_index(canonical ^ turn);
  list.parent[flood_root] = node_sheet::site(flood_root);
  list.upward[state.nfull] = node_sheet::site(flood_root);
  nodes.resize(state.nentered);
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_FLOOD_HPP
