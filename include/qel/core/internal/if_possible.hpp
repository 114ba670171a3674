// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_IF_POSSIBLE_HPP
#define QEL_CORE_INTERNAL_IF_POSSIBLE_HPP

namespace qel {

/// Hooks that some classes have and others do without.
namespace if_possible {

namespace internal {

template <typename Psite, typename S>
auto change_target(Psite& p, const S& s, int) -> decltype(p.change_target(s)) {
  p.change_target(s);
}

template <typename Psite, typename S>
void change_target(Psite&, const S&, long) {}

}  // namespace internal

/// Tells a stored position which set it now belongs to. A position that has no `change_target`, as a plain site,
/// belongs to none.
template <typename Psite, typename S>
void change_target(Psite& p, const S& s) {
  internal::change_target(p, s, 0);
}

}  // namespace if_possible

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_IF_POSSIBLE_HPP
