// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_LEVEL_HEAPS_HPP
#define QEL_MORPHO_TREE_FLOOD_LEVEL_HEAPS_HPP

#include <qel/core/internal/narrowed.hpp>
#include <qel/core/util/priority_bits.hpp>
#include <qel/morpho/tree/sweep/level_groups.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The waiting sites of a flood by level, like `level_queues`, for so many levels that few sites share one. The sites
/// of a group of levels have one heap. Those that come while the flood is above the group are put down behind the heap,
/// and enter it only when the flood asks for the group's highest level.
///
/// Cost: to push, a constant; to pop, and to enter the heap, the logarithm of the sites that wait in the group.
class level_heaps {
 public:
  /// \param groups the sites of each group are counted.
  /// \param places one for each site, kept by the caller.
  /// \throws std::bad_alloc
  level_heaps(const level_groups& groups, std::uint64_t* places)
      : filled_(groups.below.size()), shift_(groups.shift), places_(places) {
    heaps_.reserve(groups.below.size());
    for (const unsigned first : groups.below) heaps_.push_back({first, first, first});
  }

  void push(unsigned level, unsigned site) {
    const unsigned group = level >> shift_;
    places_[heaps_[group].top++] = std::uint64_t{level} << 32 | site;
    filled_.insert(group);
  }

  /// Whether no site waits at the level. \pre none waits at a higher level of its group.
  bool is_empty(unsigned level) { return greatest(level >> shift_) != level; }

  /// \pre a site waits at the level: `is_empty` or `next_below` has told so, and none was pushed since.
  unsigned pop(unsigned level) {
    heap& taken = heaps_[level >> shift_];
    std::uint64_t* const places = places_ + taken.bottom;
    const auto site = qel::internal::narrowed<unsigned>(places[0]);
    taken.end = --taken.top;
    sift_down(places, taken.top - taken.bottom);
    return site;
  }

  /// The site of the group that is popped next, worth fetching from memory; `popped` if there is none.
  unsigned peek(unsigned level, unsigned popped) const {
    const heap& taken = heaps_[level >> shift_];
    return taken.top == taken.bottom ? popped : qel::internal::narrowed<unsigned>(places_[taken.bottom]);
  }

  /// Leaves the empty `level`. Returns the highest level below it at which a site waits, or 0.
  /// \pre as for `is_empty`.
  unsigned next_below(unsigned level) {
    unsigned group = level >> shift_;
    while (heaps_[group].top == heaps_[group].bottom) {
      filled_.erase(group);
      group = filled_.greatest_below(group);
      if (group == decltype(filled_)::none) return 0;
    }
    return greatest(group);
  }

 private:
  /// The places of a group that are taken: a heap in [bottom, end), and in [end, top) what has not entered it.
  struct heap {
    unsigned bottom;
    unsigned end;
    unsigned top;
  };

  /// Puts the last of `n + 1` places where it belongs in the heap of the others, the first of which is free.
  ///
  /// `std::pop_heap` goes down to the leaves first. Here the last place mostly belongs near the top: half of the steps.
  static void sift_down(std::uint64_t* places, std::size_t n) {
    const std::uint64_t last = places[n];
    std::size_t free = 0;
    for (std::size_t below = 1; below < n; below = 2 * free + 1) {
      below += below + 1 < n && places[below + 1] > places[below] ? 1 : 0;
      if (places[below] <= last) break;
      places[free] = places[below];
      free = below;
    }
    places[free] = last;
  }

  /// The greatest level of the group at which a site waits, or 0.
  unsigned greatest(unsigned group) {
    heap& taken = heaps_[group];
    if (taken.top == taken.bottom) return 0;
    std::uint64_t* const places = places_;
    if (taken.end == taken.bottom) {
      std::make_heap(places + taken.bottom, places + taken.top);
      taken.end = taken.top;
    }
    while (taken.end != taken.top) std::push_heap(places + taken.bottom, places + ++taken.end);
    return qel::internal::narrowed<unsigned>(places_[taken.bottom] >> 32);
  }

  std::vector<heap> heaps_;
  util::priority_bits<2> filled_;
  unsigned shift_;
  std::uint64_t* places_;  ///< level and site: the level decides
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_LEVEL_HEAPS_HPP
