// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_PROXY_HPP
#define QEL_CORE_INTERNAL_PROXY_HPP

// Objects that stand in for others.
//
// A proxy gives its subject by `subj_()`. The subject may be a proxy: an iterator over a site array stands for a stored
// position, and that for a site. The conversion follows the chain at compile time.

#include <qel/core/concept/object.hpp>

#include <type_traits>
#include <utility>

namespace qel {

namespace internal {

template <typename T>
using bare_t = std::remove_cv_t<std::remove_reference_t<T>>;

template <typename Subject, typename E>
inline constexpr bool reaches_subject =
    std::is_same_v<bare_t<decltype(std::declval<const E&>().subj_())>, bare_t<Subject>>;

/// From an object of class E to the Subject at the end of its chain; `last` tells that one step is enough.
template <typename Subject, typename E, bool last>
struct helper_get_proxy_impl;

template <typename Subject, typename E>
struct helper_get_proxy_impl<Subject, E, true> {
  static Subject get(const E& object) { return object.subj_(); }
};

template <typename Subject, typename E>
struct helper_get_proxy_impl<Subject, E, false> {
  static Subject get(const E& object) {
    using next = bare_t<decltype(object.subj_())>;
    return helper_get_proxy_impl<Subject, next, reaches_subject<Subject, next>>::get(object.subj_());
  }
};

template <typename Subject, typename E>
struct get_proxy_impl {
  operator Subject() const {  // NOLINT(google-explicit-constructor): standing in for the subject is the point
    return helper_get_proxy_impl<Subject, E, reaches_subject<Subject, E>>::get(force_exact<E>(*this));
  }

 protected:
  get_proxy_impl() = default;
};

template <typename Subject, typename E>
struct proxy_impl : get_proxy_impl<Subject, E> {
 protected:
  proxy_impl() = default;
};

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_PROXY_HPP
