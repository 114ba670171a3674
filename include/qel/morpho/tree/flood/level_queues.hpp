// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_LEVEL_QUEUES_HPP
#define QEL_MORPHO_TREE_FLOOD_LEVEL_QUEUES_HPP

#include <qel/core/util/priority_bits.hpp>

#include <algorithm>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The waiting sites of a flood by level, in one block with a place for each site: the sites of each level are counted.
///
/// \tparam layers those of the `priority_bits` that find the next level.
template <unsigned layers>
class level_queues {
 public:
  /// \param below  for each level, the number of sites that have a lower one.
  /// \param places one for each site, kept by the caller.
  /// \throws std::bad_alloc
  level_queues(const std::vector<unsigned>& below, unsigned* places) : levels_(below.size()), places_(places) {
    ranges_.reserve(below.size());
    for (const unsigned first : below) ranges_.push_back({first, first});
  }

  void push(unsigned level, unsigned site) {
    places_[ranges_[level].top++] = site;
    levels_.insert(level);
  }

  bool is_empty(unsigned level) const { return ranges_[level].top == ranges_[level].bottom; }

  /// \pre the level's queue is not empty.
  unsigned pop(unsigned level) { return places_[--ranges_[level].top]; }

  /// A site of the level that is popped soon, worth fetching from memory. If there is none, `popped` or another site of
  /// the level. \pre `popped` has just been popped from the level.
  unsigned peek(unsigned level, unsigned popped) const {
    const range& taken = ranges_[level];
    return taken.top == taken.bottom ? popped : places_[std::max(taken.bottom + 2, taken.top) - 2];
  }

  /// Leaves the empty `level`. Returns the highest level below it that sites have been pushed to since it was left, or
  /// 0. Perhaps none waits there now: the flood often takes all sites of a component that it has left for an inner one.
  unsigned next_below(unsigned level) {
    levels_.erase(level);
    const unsigned below = levels_.greatest_below(level);
    return below == util::priority_bits<layers>::none ? 0 : below;
  }

 private:
  /// The places of one level: those in [bottom, top) are taken.
  struct range {
    unsigned bottom;
    unsigned top;
  };

  std::vector<range> ranges_;
  util::priority_bits<layers> levels_;
  unsigned* places_;
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_LEVEL_QUEUES_HPP
