// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_LEVEL_QUEUES_HPP
#define QEL_MORPHO_TREE_LEVEL_QUEUES_HPP

#include <qel/core/util/priority_bits.hpp>
#include <qel/morpho/tree/sweep_levels.hpp>

#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The waiting sites of a flood, by level. A block with one place for each site serves all levels: it is known how many
/// sites a level has.
///
/// \tparam layers those of the `priority_bits` that find the next level.
template <unsigned layers>
class level_queues {
 public:
  /// \param ranges the empty ranges of the levels, kept by the caller.
  /// \param places room for as many sites as there are, kept by the caller.
  /// \throws std::bad_alloc
  level_queues(std::vector<level_range>& ranges, unsigned* places)
      : ranges_(ranges.data()), places_(places), levels_(ranges.size()) {}

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

  /// Leaves the empty `level`; the highest level below it that sites have been pushed to and that has not been left since,
  /// or 0. Its queue may be empty: that of a component which the flood has left for one inside often is.
  unsigned next_below(unsigned level) {
    levels_.erase(level);
    const unsigned below = levels_.greatest_below(level);
    return below == util::priority_bits<layers>::none ? 0 : below;
  }

 private:
  level_range* ranges_;
  unsigned* places_;
  util::priority_bits<layers> levels_;
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_LEVEL_QUEUES_HPP
