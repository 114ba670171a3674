// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_FLOOD_HPP
#define QEL_MORPHO_TREE_FLOOD_FLOOD_HPP

// The nodes of a component tree by flooding the image level by level, from the root towards the leaves and back: the
// fast form of the union-find sweep (`impl::generic::compute_parent`), which jumps about in the image at every site,
// while a flood goes from neighbour to neighbour. Levels and neighbourhood alone decide the tree. The test
// `node_table.is_that_of_union_find_for_every_sweep_and_neighbourhood` holds the two equal.
//
// The flood stands on a site of the component that it fills. A neighbour of a higher level lies in a component inside:
// the flood goes up to it at once and comes back when that component is full. Neighbours of the same or a lower level
// wait, each in the queue of its level. When no site of the present level waits, the component is full: its node is
// complete, and the flood goes down to the highest level at which a site waits. That is the level of its parent: a
// component that the flood has left for this one, or, if it is higher, a new one around it.
//
// Cost: each site waits once at most. It looks at its neighbours once, and again each time the flood comes back to it.
// Wrong guesses of the processor at branches, about two a site, are most of the time. Memory beyond the result: a level
// and a place in the queues for each site. No recursion: open components, one a level at most, stand on a heap stack.

#include <qel/core/image2d.hpp>
#include <qel/morpho/tree/flood/flooded_nodes.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// A component that the flood has entered and not yet filled.
struct open_component {
  unsigned level;
  unsigned number;     ///< of its node
  unsigned canonical;  ///< the best candidate so far, as a place in the block; turned round if the last place is sought
};

/// An open component that the flood has left for one inside, and the site where it goes on.
struct left_component {
  open_component component;
  unsigned site;
};

/// Floods the sites of `level`, a block in which the sites not to be visited have level 0.
///
/// Inner loops read values, not references: what a reference leads to would be read again after each store.
///
/// \param level     at each place, the level of its site; the flood sets all to 0.
/// \param start     a place of the lowest level.
/// \param around    distances in the block to the neighbours of a site: a symmetric neighbourhood.
/// \param last_ties whether the canonical site of a node is its last one in the block, not the first.
/// \param waiting   empty `level_queues` or `level_lists`.
/// \param numbers   receives the number of each site's node; its block is laid out like that of `level`.
/// \param nodes     receives the nodes; empty before.
/// \throws std::bad_alloc
template <typename L, typename Around, typename Queues>
void flood(L* const level, const unsigned start, const Around around, const bool last_ties, Queues waiting,
           image2d<unsigned>& numbers, flooded_nodes& nodes) {
  // The least place is sought: where it is the last one, places are turned round.
  const unsigned turn = last_ties ? ~0u : 0u;
  unsigned* const number = numbers.buffer();
  const flooded_nodes::pointers list = nodes.data();
  unsigned nentered = 0;
  unsigned nfull = 0;
  std::size_t room = 0;
  const auto entered = [&](unsigned l) {
    if (nentered == room) {
      nodes.grow();
      room = nodes.size();
    }
    return open_component{l, nentered++, ~0u};
  };

  std::vector<left_component> left(1, left_component{{0, 0, 0}, 0});  // below the root
  open_component now = entered(level[start]);
  unsigned here = start;
  level[start] = 0;
  for (;;) {
    // At the first higher neighbour the flood leaves; it looks at all neighbours again when it is back.
    unsigned above = 0;
    unsigned above_level = 0;
    for (std::size_t i = 0; i < around.size(); ++i) {
      const unsigned there = here + static_cast<unsigned>(around[i]);
      const unsigned l = level[there];
      if (l == 0) continue;
      level[there] = 0;
      if (l > now.level) {
        above = there;
        above_level = l;
        break;
      }
      waiting.push(l, there);
    }
    if (above_level != 0) {
      left.push_back({now, here});
      now = entered(above_level);
      here = above;
      continue;
    }

    number[here] = now.number;
    now.canonical = std::min(now.canonical, here ^ turn);
    if (!waiting.is_empty(now.level)) {
      here = waiting.pop(now.level);
      const unsigned soon = waiting.peek(now.level, here);
      __builtin_prefetch(level + soon);
      __builtin_prefetch(level + soon + around.front());
      __builtin_prefetch(level + soon + around.back());
      continue;
    }

    const unsigned full = now.number;
    list.canonical[full] = numbers.point_at_index(now.canonical ^ turn);
    list.upward[nfull++] = node_sheet::site(full);
    const unsigned below = waiting.next_below(now.level);
    if (below > left.back().component.level) {
      now = entered(below);
      here = waiting.pop(below);
    } else if (left.size() > 1) {
      now = left.back().component;
      here = left.back().site;
      left.pop_back();
    } else {
      list.parent[full] = node_sheet::site(full);
      nodes.resize(nentered);
      return;
    }
    list.parent[full] = node_sheet::site(now.number);
  }
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_FLOOD_HPP
