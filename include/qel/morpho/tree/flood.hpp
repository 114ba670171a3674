// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_HPP
#define QEL_MORPHO_TREE_FLOOD_HPP

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
// Cost: each site waits once at most and looks at its neighbours once; the branches on which the processor guesses
// wrong, about two a site, are most of it. Memory beyond the result: a level and a place in the queues for each site.
// No recursion: open components, one for each level at most, stand on a stack on the heap.

#include <qel/core/image2d.hpp>
#include <qel/core/internal/large_pages.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/point2d.hpp>
#include <qel/core/util/priority_bits.hpp>
#include <qel/morpho/tree/node_sheet.hpp>
#include <qel/morpho/tree/sweep_levels.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The waiting sites, by level. A block with one place for each site serves all levels: it is known how many sites a
/// level has.
class level_queues {
 public:
  /// \param ranges the empty ranges of the levels.
  /// \param places room for as many sites as there are, kept by the caller.
  level_queues(std::vector<level_range> ranges, unsigned* places)
      : ranges_(std::move(ranges)), levels_(ranges_.size()), places_(places) {}

  void push(unsigned level, unsigned site) {
    places_[ranges_[level].top++] = site;
    levels_.insert(level);
  }

  bool is_empty(unsigned level) const { return ranges_[level].top == ranges_[level].bottom; }

  /// \pre the level's queue is not empty.
  unsigned pop(unsigned level) { return places_[--ranges_[level].top]; }

  /// A site of the level that will be popped soon, if there is one: worth fetching from memory.
  /// \pre a site has been popped from the level.
  unsigned peek(unsigned level) const {
    const level_range& range = ranges_[level];
    return places_[range.top - range.bottom < 2 ? range.bottom : range.top - 2];
  }

  /// Leaves the empty `level`; the highest level below it at which sites wait, or 0.
  unsigned next_below(unsigned level) {
    levels_.erase(level);
    const unsigned below = levels_.greatest_below(level);
    return below == util::priority_bits::none ? 0 : below;
  }

 private:
  std::vector<level_range> ranges_;
  util::priority_bits levels_;
  unsigned* places_;
};

/// A component that the flood has entered and not yet filled.
struct open_component {
  unsigned level;
  unsigned number;     ///< of its node
  unsigned canonical;  ///< the best candidate so far, as a place in the block
};

/// An open component that the flood has left for one inside, and where it goes on when it is back.
struct left_component {
  open_component component;
  unsigned site;
  unsigned neighbour;
};

/// The nodes that a flood finds, by number.
struct flooded_nodes {
  /// Makes room for as many nodes as there are sites. What is not used is never touched, and costs no memory.
  explicit flooded_nodes(std::size_t nsites) {
    qel::internal::reserve_large(canonical, nsites);
    qel::internal::reserve_large(parent, nsites);
    qel::internal::reserve_large(upward, nsites);
  }

  unsigned add() {
    const auto number = qel::internal::narrowed<unsigned>(parent.size());
    canonical.push_back(0);
    parent.push_back(node_sheet::site(number));
    return number;
  }

  void close(unsigned number, unsigned canonical_place) {
    canonical[number] = canonical_place;
    upward.push_back(node_sheet::site(number));
  }

  std::vector<unsigned> canonical;  ///< the place in the block of each node's canonical site
  std::vector<point2d> parent;
  std::vector<point2d> upward;
};

/// Floods the sites of `level`, a block in which the sites not to be visited have level 0.
///
/// \param level     at each place, the level of its site; all are 0 in the end.
/// \param start     a place of the lowest level.
/// \param around    distances in the block to the neighbours of a site: a symmetric neighbourhood.
/// \param last_ties whether the canonical site of a node is its last one in the block, not the first.
/// \param numbers   receives the number of each site's node; its block is laid out like that of the levels.
template <typename L, typename Around>
flooded_nodes flood(L* level, unsigned start, const Around& around, bool last_ties, level_queues& waiting,
                    image2d<unsigned>& numbers) {
  const auto n = qel::internal::narrowed<unsigned>(around.size());
  // The least canonical place is sought: places are turned round where it is the last one.
  const unsigned turn = last_ties ? ~0u : 0u;
  unsigned* const number = numbers.buffer();
  flooded_nodes nodes(numbers.domain().nsites());
  const auto entered = [&](unsigned l) { return open_component{l, nodes.add(), ~0u}; };

  std::vector<left_component> left(1, left_component{{0, 0, 0}, 0, 0});  // below the root
  open_component now = entered(level[start]);
  unsigned here = start;
  unsigned next = 0;
  level[start] = 0;
  for (;;) {
    while (next < n) {
      const unsigned there = here + static_cast<unsigned>(around[next++]);
      const unsigned l = level[there];
      if (l == 0) continue;
      level[there] = 0;
      if (l <= now.level) {
        waiting.push(l, there);
        continue;
      }
      left.push_back({now, here, next});
      now = entered(l);
      here = there;
      next = 0;
    }

    number[here] = now.number;
    now.canonical = std::min(now.canonical, here ^ turn);
    next = 0;
    if (!waiting.is_empty(now.level)) {
      here = waiting.pop(now.level);
      const unsigned soon = waiting.peek(now.level);
      __builtin_prefetch(level + soon);
      __builtin_prefetch(level + soon + around[0]);
      __builtin_prefetch(level + soon + around[n - 1]);
      continue;
    }

    const unsigned full = now.number;
    nodes.close(full, now.canonical ^ turn);
    const unsigned below = waiting.next_below(now.level);
    if (below > left.back().component.level) {
      now = entered(below);
      here = waiting.pop(below);
    } else {
      if (left.size() == 1) return nodes;
      now = left.back().component;
      here = left.back().site;
      next = left.back().neighbour;
      left.pop_back();
    }
    nodes.parent[full] = node_sheet::site(now.number);
  }
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_HPP
