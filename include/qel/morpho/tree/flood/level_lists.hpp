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

/// The waiting sites of a flood by level, like `level_queues`, for images of many levels of which few sites share one.
/// The sites of a level are a linked list: 4 bytes a level, far from those of other levels, and a link at the place of
/// the site's number, near which the flood reads anyway. With many sites a level this is slower, because to pop one
/// waits for the link of the one before.
///
/// \tparam layers those of the `priority_bits` that find the next level.
template <unsigned layers>
class level_lists : public waiting_levels<layers> {
 public:
  /// \param heads one element for each level; what it holds does not matter.
  /// \param links one element for each site, kept by the caller; waiting sites use theirs.
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

  /// The site of the level that is popped next, worth fetching from memory; `popped` if there is none.
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
