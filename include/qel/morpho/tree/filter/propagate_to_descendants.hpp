// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_PROPAGATE_TO_DESCENDANTS_HPP
#define QEL_MORPHO_TREE_FILTER_PROPAGATE_TO_DESCENDANTS_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/internal/wrapping.hpp>

#include <vector>

namespace qel {

namespace morpho {

namespace tree {

namespace filter {

/// Subtracts `v` from the value of `f` at the node `n` and at all its descendants: modulo 2^width for integers.
///
/// Cost: the number of nodes in the subtree, which can be millions of levels high: waiting nodes are on the heap.
///
/// \pre    `f` has the domain of the tree's image.
/// \throws std::bad_alloc Some nodes may have been changed then.
template <typename T, typename F>
void propagate_to_descendants(const T& tree, Image<F>& f, typename F::psite n, typename F::value v) {
  F& exact_f = qel::internal::force_exact<F>(f);
  std::vector<typename F::psite> waiting(1, n);
  while (!waiting.empty()) {
    const typename F::psite p = waiting.back();
    waiting.pop_back();
    exact_f(p) = qel::internal::difference(exact_f(p), v);
    const auto& children = tree.children(p).vect_;
    waiting.insert(waiting.end(), children.begin(), children.end());
  }
}

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_PROPAGATE_TO_DESCENDANTS_HPP
