// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_FLOOD_HPP
#define QEL_MORPHO_TREE_FLOOD_FLOOD_HPP

// The nodes of a component tree by flooding the image level by level, from the root towards the leaves and back.
//
// The tree is fixed by the levels and the neighbourhood alone, so how it is found is free. The union-find sweep
// (`impl::generic::compute_parent`) jumps about in the image at every site; a flood goes from neighbour to neighbour.
//
// The flood stands on a site of the component that it fills. A neighbour of a higher level lies in a component
// inside: the flood goes up to it at once and comes back when that component is full. Neighbours of the same or a
// lower level wait, each in the queue of its level. When no site of the present level waits any more, the component
// is full: its node is complete, and the flood goes down to the highest level at which a site waits. That is the
// level of its parent: either a component that the flood has left for this one, or, if it is higher, a new one around
// it.
//
// Cost: each site waits once at most, and looks at its neighbours once and again each time the flood comes back to it; the
// branches on which the processor guesses wrong, about two a site, are most of it. Memory beyond the result: a level and
// a place in the queues for each site.
// No recursion: open components, one for each level at most, stand on a stack on the heap.

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
  unsigned canonical;  ///< the best candidate so far, as a place in the block, turned round if the last one is sought
};

/// An open component that the flood has left for one inside, and the site on which it goes on when it is back.
struct left_component {
  open_component component;
  unsigned site;
};

/// Floods the sites of `level`, a block in which the sites not to be visited have level 0.
///
/// What the inner loops read is given by value: what a reference leads to would be read again after each store.
///
/// \param level     at each place, the level of its site; all are 0 in the end.
/// \param start     a place of the lowest level.
/// \param around    distances in the block to the neighbours of a site: a symmetric neighbourhood.
/// \param last_ties whether the canonical site of a node is its last one in the block, not the first.
/// \param waiting   empty `level_queues` or `level_lists`.
/// \param numbers   receives the number of each site's node; its block is laid out like that of the levels.
/// \throws std::bad_alloc
template <typename L, typename Around, typename Queues>
flooded_nodes flood(L* const level, const unsigned start, const Around around, const bool last_ties, Queues waiting,
                    image2d<unsigned>& numbers) {
  // The least canonical place is sought: places are turned round where it is the last one.
  const unsigned turn = last_ties ? ~0u : 0u;
  unsigned* const number = numbers.buffer();
  flooded_nodes nodes(numbers.domain().nsites());
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
    // The neighbours behind one that is above have their turn when the flood is back: they are all looked at again then.
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
      return nodes;
    }
    list.parent[full] = node_sheet::site(now.number);
  }
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_FLOOD_HPP
