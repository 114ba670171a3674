// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_SITE_SET_TRAIT_SITE_SET_HPP
#define QEL_CORE_SITE_SET_TRAIT_SITE_SET_HPP

#include <qel/core/box2d.hpp>

namespace qel {

namespace trait {

/// What algorithms ask of a site set type.
namespace site_set {

/// Whether a site set knows its bounding box without a walk.
namespace bbox {
/// It does, at no cost.
struct known {};
}  // namespace bbox

}  // namespace site_set

/// The properties of the site set type S: `bbox`.
template <typename S>
struct site_set_;

/// The properties of a box.
template <typename P>
struct site_set_<box<P>> {
  /// A box is its own bounding box.
  using bbox = site_set::bbox::known;
};

}  // namespace trait

}  // namespace qel

#endif  // QEL_CORE_SITE_SET_TRAIT_SITE_SET_HPP
