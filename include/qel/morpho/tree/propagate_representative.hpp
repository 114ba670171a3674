// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_PROPAGATE_REPRESENTATIVE_HPP
#define QEL_MORPHO_TREE_PROPAGATE_REPRESENTATIVE_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/site_set/box_piter.hpp>

namespace qel {

namespace morpho {

namespace tree {

/// Gives each site of `f` that is not a node of `tree` the value of `f` at the node that represents it. A
/// rule changes values at nodes only; this completes the image.
///
/// Which sites are nodes is asked of the tree's own image, so the rule has no influence on it. The result
/// does not depend on the order of the walk; raster order reads and writes memory nearly in sequence.
///
/// Cost: one pass; nothing is allocated. Borders are not touched.
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
