// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_TAKE_AS_INIT_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_TAKE_AS_INIT_HPP

#include <qel/accu/trait_accumulator.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

/// The site only counts.
template <typename A, typename I, typename P>
void take_as_init(trait::accumulator::when_pix::use_none, A& accu, const I&, const P&) {
  accu.set_count(1);
}

/// The accumulator takes the site.
template <typename A, typename I, typename P>
void take_as_init(trait::accumulator::when_pix::use_p, A& accu, const I&, const P& p) {
  accu.take_as_init(p);
}

/// The accumulator takes the value at the site.
template <typename A, typename I, typename P>
void take_as_init(trait::accumulator::when_pix::use_v, A& accu, const I& f, const P& p) {
  accu.take_as_init(f(p));
}

/// Makes `accu` hold one site of the image `f` alone, the one on which the iterator `p` stands.
template <typename A, typename I, typename P>
void take_as_init(A& accu, const I& f, const P& p) {
  take_as_init(typename trait::accumulator_<A>::when_pix(), accu, f, p);
}

/// The accumulator of a node takes a site of its own. Each site starts from a copy of `a`, for `a` may have settings.
template <typename A, typename I, typename P>
void take_site(A& of_node, const A& a, const I& f, const P& p) {
  A one = a;
  take_as_init(one, f, p);
  of_node.take(one);
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_TAKE_AS_INIT_HPP
