// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_FILTER_DIRECT_HPP
#define QEL_MORPHO_TREE_FILTER_DIRECT_HPP

#include <qel/core/concept/function.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/morpho/tree/piter.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace morpho {

namespace tree {

/// The rules that change the values of nodes by a predicate.
namespace filter {

/// Judges each node of `tree` by itself: one that fails `pred` takes in `f` the value of its nearest ancestor that
/// passes, or of the root. Only the values at nodes change. Cost: one walk over the nodes.
///
/// \pre    `f` has the domain of the tree's image.
/// \throws std::bad_alloc
template <typename T, typename F, typename P>
void direct(const T& tree, Image<F>& f, const Function_v2b<P>& pred) {
  trace::entering("qel::morpho::tree::filter::direct");
  F& exact_f = qel::internal::force_exact<F>(f);
  const P& passes = qel::internal::force_exact<P>(pred);
  dn_node_piter<T> n(tree);
  for (n.start(); n.is_valid(); n.next())
    if (!passes(n.to_site())) exact_f(n) = exact_f(tree.parent(n));
  trace::exiting("qel::morpho::tree::filter::direct");
}

}  // namespace filter

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_FILTER_DIRECT_HPP
