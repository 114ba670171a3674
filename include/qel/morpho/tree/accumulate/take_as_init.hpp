// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_TREE_ACCUMULATE_TAKE_AS_INIT_HPP
#define QEL_MORPHO_TREE_ACCUMULATE_TAKE_AS_INIT_HPP

#include <qel/accu/trait_accumulator.hpp>

namespace qel {

namespace morpho {

namespace tree {

namespace internal {

template <typename A, typename I, typename P>
void take_as_init(trait::accumulator::when_pix::use_none, A& accu, const I&, const P&) {
  accu.set_count(1);
}

template <typename A, typename I, typename P>
void take_as_init(trait::accumulator::when_pix::use_p, A& accu, const I&, const P& p) {
  accu.take_as_init(p);
}

template <typename A, typename I, typename P>
void take_as_init(trait::accumulator::when_pix::use_v, A& accu, const I& f, const P& p) {
  accu.take_as_init(f(p));
}

/// Makes `accu` hold one site of the image `f`, that of the iterator `p`.
template <typename A, typename I, typename P>
void take_as_init(A& accu, const I& f, const P& p) {
  take_as_init(typename trait::accumulator_<A>::when_pix(), accu, f, p);
}

/// The accumulator of a node takes one of its sites, from a copy of `a`, which may have settings. A call would cost more
/// than the sums of an `inertia`.
template <typename A, typename I, typename P>
[[gnu::always_inline]] inline void take_site(A& of_node, const A& a, const I& f, const P& p) {
  A one = a;
  take_as_init(one, f, p);
  of_node.take(one);
}

}  // namespace internal

}  // namespace tree

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_TREE_ACCUMULATE_TAKE_AS_INIT_HPP
