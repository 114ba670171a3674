// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_PROPAGATE_REPRESENTATIVE_HPP
#define QEL_MORPHO_TREE_PROPAGATE_REPRESENTATIVE_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/site_set/box_piter.hpp>

namespace qel {

namespace morpho {

namespace tree {

/// Gives each site of `f` that is no node of `tree` the value of `f` at its node. A rule changes values at nodes only;
/// this completes the image.
///
/// Cost: one pass in raster order (any order gives the same); nothing is allocated. Borders are not touched.
///
/// \pre `f` has the domain of the tree's image.
template <typename T, typename F>
void propagate_representative(const T& tree, Image<F>& f) {
  F& output = qel::internal::force_exact<F>(f);
  typename F::domain_t::fwd_piter p(output.domain());
  for (p.start(); p.is_valid(); p.next())
    if (!tree.is_a_node(p)) output(p) = output(tree.parent(p));
}

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_PROPAGATE_REPRESENTATIVE_HPP
