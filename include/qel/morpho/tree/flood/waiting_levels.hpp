// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FLOOD_WAITING_LEVELS_HPP
#define QEL_MORPHO_TREE_FLOOD_WAITING_LEVELS_HPP

#include <qel/core/util/priority_bits.hpp>

#include <cstddef>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The levels at which sites of a flood may wait.
///
/// \tparam layers those of the `priority_bits`.
template <unsigned layers>
class waiting_levels {
 public:
  /// Leaves the empty `level`. Returns the highest level below it that sites have been pushed to since it was left, or
  /// 0. Perhaps none waits there now: the flood often takes all sites of a component that it has left for an inner one.
  unsigned next_below(unsigned level) {
    levels_.erase(level);
    const unsigned below = levels_.greatest_below(level);
    return below == util::priority_bits<layers>::none ? 0 : below;
  }

 protected:
  /// No levels of `n`. \throws std::bad_alloc
  explicit waiting_levels(std::size_t n) : levels_(n) {}

  void insert(unsigned level) { levels_.insert(level); }

 private:
  util::priority_bits<layers> levels_;
};

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FLOOD_WAITING_LEVELS_HPP
