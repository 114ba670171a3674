// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_IF_POSSIBLE_HPP
#define QEL_CORE_INTERNAL_IF_POSSIBLE_HPP

#include <qel/core/point2d.hpp>

namespace qel {

/// Hooks that some classes have and others do without.
namespace if_possible {

/// Tells a stored position which set it now belongs to.
template <typename Psite, typename S>
auto change_target(Psite& p, const S& s) -> decltype(p.change_target(s)) {
  p.change_target(s);
}

/// A plain site belongs to no set.
template <typename G, typename C, typename S>
void change_target(point<G, C>&, const S&) {}

}  // namespace if_possible

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_IF_POSSIBLE_HPP
