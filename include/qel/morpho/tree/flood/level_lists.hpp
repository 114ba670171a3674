// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_LEVEL_LISTS_HPP
#define QEL_MORPHO_TREE_FLOOD_LEVEL_LISTS_HPP

#include <qel/morpho/tree/flood/waiting_levels.hpp>

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
class level_lists : public waiting_levels<layers> {
 public:
  /// \param heads an element for each level, whatever it holds.
  /// \param links an element for each site, kept by the caller; that of a site which waits is taken.
  /// \throws std::bad_alloc
  level_lists(std::vector<unsigned> heads, unsigned* links)
      : waiting_levels<layers>(heads.size()), heads_(std::move(heads)), links_(links) {
    std::fill(heads_.begin(), heads_.end(), none);
  }

  void push(unsigned level, unsigned site) {
    links_[site] = std::exchange(heads_[level], site);
    this->insert(level);
  }

  bool is_empty(unsigned level) const { return heads_[level] == none; }

  /// \pre the level's list is not empty.
  unsigned pop(unsigned level) { return std::exchange(heads_[level], links_[heads_[level]]); }

  /// The site of the level that will be popped next, or `popped` if there is none: worth fetching from memory.
  unsigned peek(unsigned level, unsigned popped) const { return heads_[level] == none ? popped : heads_[level]; }

 private:
  static constexpr unsigned none = ~0u;

  std::vector<unsigned> heads_;
  unsigned* links_;
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_LEVEL_LISTS_HPP
