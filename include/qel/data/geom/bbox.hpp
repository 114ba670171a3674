// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_GEOM_BBOX_HPP
#define QEL_DATA_GEOM_BBOX_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/concept/site_set.hpp>
#include <qel/core/site_set/trait_site_set.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

/// The extent of site sets and images.
namespace geom {

namespace impl {

template <typename S>
auto bbox_(trait::site_set::bbox::known, const S& s) {
  return s.bbox();
}

}  // namespace impl

/// The bounding box of a site set that knows it, such as a box: nothing is walked.
template <typename S>
auto bbox(const Site_Set<S>& s) {
  trace::entering("geom::bbox");
  const auto b = impl::bbox_(typename trait::site_set_<S>::bbox(), internal::force_exact<S>(s));
  trace::exiting("geom::bbox");
  return b;
}

/// The bounding box of an image's domain.
template <typename I>
auto bbox(const Image<I>& ima) {
  trace::entering("geom::bbox");
  const auto b = geom::bbox(internal::force_exact<I>(ima).domain());
  trace::exiting("geom::bbox");
  return b;
}

}  // namespace geom

}  // namespace qel

#endif  // QEL_DATA_GEOM_BBOX_HPP
