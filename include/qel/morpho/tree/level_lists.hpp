// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_LEVEL_LISTS_HPP
#define QEL_MORPHO_TREE_LEVEL_LISTS_HPP

#include <qel/core/util/priority_bits.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The waiting sites of a flood, by level, for images of many levels of which few sites share one: does what `level_queues`
/// does. The sites of a level are a linked list. A level needs 4 bytes, which are far from those of other levels, and the
/// links stand where the numbers will: at the site, near to which the flood reads anyway. With many sites to a level it is
/// slower, for popping one waits for the link of the one before.
///
/// \tparam layers those of the `priority_bits` that find the next level.
template <unsigned layers>
class level_lists {
 public:
  /// \param heads an element for each level, whatever it holds.
  /// \param links an element for each site, kept by the caller; that of a site which waits is taken.
  /// \throws std::bad_alloc
  level_lists(std::vector<unsigned> heads, unsigned* links)
      : heads_(std::move(heads)), links_(links), levels_(heads_.size()) {
    std::fill(heads_.begin(), heads_.end(), none);
  }

  void push(unsigned level, unsigned site) {
    links_[site] = std::exchange(heads_[level], site);
    levels_.insert(level);
  }

  bool is_empty(unsigned level) const { return heads_[level] == none; }

  /// \pre the level's list is not empty.
  unsigned pop(unsigned level) { return std::exchange(heads_[level], links_[heads_[level]]); }

  /// The site of the level that will be popped next, or `popped` if there is none: worth fetching from memory.
  unsigned peek(unsigned level, unsigned popped) const { return heads_[level] == none ? popped : heads_[level]; }

  /// Leaves the empty `level`; the highest level below it that sites have been pushed to and that has not been left since,
  /// or 0. Its list may be empty: that of a component which the flood has left for one inside often is.
  unsigned next_below(unsigned level) {
    levels_.erase(level);
    const unsigned below = levels_.greatest_below(level);
    return below == util::priority_bits<layers>::none ? 0 : below;
  }

 private:
  static constexpr unsigned none = ~0u;

  std::vector<unsigned> heads_;
  unsigned* links_;
  util::priority_bits<layers> levels_;
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_LEVEL_LISTS_HPP
