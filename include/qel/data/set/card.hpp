// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_SET_CARD_HPP
#define QEL_DATA_SET_CARD_HPP

#include <qel/core/concept/object.hpp>
#include <qel/core/concept/site_set.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

namespace set {

namespace impl {

template <typename S>
unsigned card_from_method(const Site_Set<S>& s) {
  trace::entering("set::impl::card_from_method");
  const unsigned n = internal::force_exact<S>(s).nsites();
  trace::exiting("set::impl::card_from_method");
  return n;
}

}  // namespace impl

}  // namespace set

}  // namespace qel

#endif  // QEL_DATA_SET_CARD_HPP
