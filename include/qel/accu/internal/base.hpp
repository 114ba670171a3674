// SPDX-License-Identifier: MIT
#ifndef QEL_ACCU_INTERNAL_BASE_HPP
#define QEL_ACCU_INTERNAL_BASE_HPP

#include <qel/accu/accumulator.hpp>
#include <qel/core/concept/object.hpp>
#include <qel/core/internal/proxy.hpp>

#include <type_traits>

namespace qel {

namespace accu {

namespace internal {

/// The base of the accumulator E with results of type R.
///
/// An accumulator stands in for its result, which is computed where a value of R is expected: an image of accumulators
/// becomes an image of results by assignment of elements.
template <typename R, typename E>
struct base : Accumulator<E>, qel::internal::proxy_impl<R, E> {
  using result = std::remove_cv_t<std::remove_reference_t<R>>;

  R subj_() const { return qel::internal::force_exact<E>(*this).to_result(); }

 protected:
  base() = default;
};

}  // namespace internal

}  // namespace accu

}  // namespace qel

#endif  // QEL_ACCU_INTERNAL_BASE_HPP
