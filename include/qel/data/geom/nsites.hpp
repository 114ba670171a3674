// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_GEOM_NSITES_HPP
#define QEL_DATA_GEOM_NSITES_HPP

#include <qel/core/concept/image.hpp>
#include <qel/data/set/card.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace geom {

/// The number of sites of an image's domain.
template <typename I>
unsigned nsites(const Image<I>& ima) {
  trace::entering("geom::nsites");
  const unsigned n = set::impl::card_from_method(internal::force_exact<I>(ima).domain());
  trace::exiting("geom::nsites");
  return n;
}

}  // namespace geom

}  // namespace qel

#endif  // QEL_DATA_GEOM_NSITES_HPP
