// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_FLOOD_COMPONENT_HPP
#define QEL_MORPHO_TREE_FLOOD_FLOOD_COMPONENT_HPP

#include <qel/core/image2d.hpp>
#include <qel/morpho/tree/flood/flooded_nodes.hpp>
#include <qel/morpho/tree/nodes/node_sheet.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>
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

/// Where a flood stands between two components above the lowest level.
template <typename Queues>
struct flood_state {
  Queues waiting;                    ///< no site waits
  std::vector<left_component> left;  ///< none: kept for its room
  unsigned nentered;                 ///< nodes that have a number
  unsigned nfull;                    ///< nodes that are complete
};

/// The number of the root.
inline constexpr unsigned flood_root = 0;

/// Floods the component above level 0 that has the place `start`.
///
/// Inner loops read local values: what a reference leads to would be read again after each store. So this is a function
/// of its own, which keeps few of them.
template <typename L, typename Around, typename Queues>
[[gnu::noinline]] void flood_from(const unsigned start, L* const level, const Around around, const unsigned turn,
                                  image2d<unsigned>& numbers, flooded_nodes& nodes, flood_state<Queues>& state) {
  unsigned* const number = numbers.buffer();
  const flooded_nodes::pointers list = nodes.data();
  Queues waiting = std::move(state.waiting);
  std::vector<left_component> left = std::move(state.left);
  unsigned nentered = state.nentered;
  unsigned nfull = state.nfull;
  std::size_t room = nodes.size();
  const auto entered = [&](unsigned l) {
    if (nentered == room) {
      nodes.grow();
      room = nodes.size();
    }
    return open_component{l, nentered++, ~0u};
  };

  left.push_back({{0, flood_root, ~0u}, start});
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
    } else {
      now = left.back().component;
      here = left.back().site;
      left.pop_back();
    }
    list.parent[full] = node_sheet::site(now.number);
    if (left.empty()) break;
  }
  state = {std::move(waiting), std::move(left), nentered, nfull};
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_FLOOD_COMPONENT_HPP
