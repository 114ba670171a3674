// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_TRAIT_SITE_SET_HPP
#define QEL_CORE_TRAIT_SITE_SET_HPP

#include <qel/core/box2d.hpp>

namespace qel {

namespace trait {

namespace site_set {

/// Whether a site set knows its bounding box without a walk.
namespace bbox {
struct known {};
}  // namespace bbox

}  // namespace site_set

/// The properties of the site set type S: `bbox`.
template <typename S>
struct site_set_;

template <typename P>
struct site_set_<box<P>> {
  using bbox = site_set::bbox::known;
};

}  // namespace trait

}  // namespace qel

#endif  // QEL_CORE_TRAIT_SITE_SET_HPP
