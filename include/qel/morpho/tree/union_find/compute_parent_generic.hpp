// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_UNION_FIND_COMPUTE_PARENT_GENERIC_HPP
#define QEL_MORPHO_TREE_UNION_FIND_COMPUTE_PARENT_GENERIC_HPP

// The parent image of a component tree by union-find over the sites in sweep order: the plain form, for any image, site
// array and neighbourhood. The fast form is `internal::flood`; the test
// `node_table.is_that_of_union_find_for_every_sweep_and_neighbourhood` holds the two equal.
//
// An increasing order gives a max-tree, a decreasing one a min-tree; the code knows no direction. In a max-tree, a node
// is the set of all sites of value v in a connected component of the sites of v or more. Its canonical site, the first
// in the sweep order, names it. In the result a canonical site points to the canonical site of the parent node, any
// other site to that of its own node, and the root, the first site of the order, to itself.

#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/concept/site_set.hpp>
#include <qel/core/site_set/p_indexed_piter.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/fill.hpp>
#include <qel/data/initialize.hpp>
#include <qel/morpho/tree/union_find/zfind_root.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// For checks of the arguments of `compute_parent`; there are none.
template <typename I, typename N, typename S>
void compute_parent_tests(const Image<I>&, const Neighborhood<N>&, const Site_Set<S>&) {}

}  // namespace internal

namespace impl {

namespace generic {

/// The raw forest: takes the sites in reverse order, and makes each the parent of the finished components around it.
/// No union by rank: the root of a merged set has to be the site taken last.
template <typename I, typename N, typename S, typename P>
void sweep(const I& f, const N& nbh, const S& s, P& parent) {
  using site = typename I::site;
  typename trait::ch_value<I, bool>::ret deja_vu;
  initialize(deja_vu, f);
  initialize(parent, f);
  P zpar;
  initialize(zpar, f);
  data::fill(deja_vu, false);

  typename S::bkd_piter p(s);
  typename N::niter n(nbh, p);
  for (p.start(); p.is_valid(); p.next()) {
    const site here = p;
    parent(here) = here;
    zpar(here) = here;
    for (n.start(); n.is_valid(); n.next()) {
      if (!f.domain().has(n) || !deja_vu(n)) continue;
      const site r = internal::zfind_root(zpar, n);
      if (r == here) continue;
      parent(r) = here;
      zpar(r) = here;
    }
    deja_vu(here) = true;
  }
}

/// Makes every site point to a canonical site. One forward pass is enough, because the site's parent is settled before
/// it: if the parent is not canonical, its own parent is the canonical site of its node.
template <typename I, typename S, typename P>
void canonicalize(const I& f, const S& s, P& parent) {
  typename S::fwd_piter p(s);
  for (p.start(); p.is_valid(); p.next()) {
    const typename I::site q = parent(p);
    if (f(parent(q)) == f(q)) parent(p) = parent(q);
  }
}

template <typename I, typename N, typename S>
typename trait::ch_value<I, typename I::psite>::ret compute_parent(const Image<I>& f, const Neighborhood<N>& nbh,
                                                                   const Site_Set<S>& s) {
  trace::entering("morpho::tree::impl::generic::compute_parent");
  internal::compute_parent_tests(f, nbh, s);
  const I& exact_f = qel::internal::force_exact<I>(f);
  const S& exact_s = qel::internal::force_exact<S>(s);
  typename trait::ch_value<I, typename I::psite>::ret parent;
  sweep(exact_f, qel::internal::force_exact<N>(nbh), exact_s, parent);
  canonicalize(exact_f, exact_s, parent);
  trace::exiting("morpho::tree::impl::generic::compute_parent");
  return parent;
}

}  // namespace generic

}  // namespace impl

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_UNION_FIND_COMPUTE_PARENT_GENERIC_HPP
