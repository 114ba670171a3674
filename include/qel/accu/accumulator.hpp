// SPDX-License-Identifier: MIT
#ifndef QEL_ACCU_ACCUMULATOR_HPP
#define QEL_ACCU_ACCUMULATOR_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// A small value that summarises a set of elements.
///
/// A model has the types `argument` and `result` and offers `init()` (back to the empty state), `take(t)` for
/// one element, `take(other)` for the content of another accumulator, `to_result()` and `is_valid()`. A
/// default-constructed accumulator is empty. Accumulators live by value in images, one for each element: they
/// have no heap memory and nothing virtual.
///
/// The accumulators and attributes of the library convert to their result, so that an image of accumulators becomes
/// an image of results by assignment.
template <typename E>
struct Accumulator : Object<E> {
  /// Makes the accumulator hold `t` alone: an element, or something that converts to one.
  template <typename T>
  void take_as_init(const T& t) {
    internal::force_exact<E>(*this).take_as_init_(t);
  }

  /// The same for every model that has no shorter way: `init()`, then `take(t)`.
  template <typename T>
  void take_as_init_(const T& t) {
    E& exact = internal::force_exact<E>(*this);
    exact.init();
    exact.take(t);
  }

 protected:
  Accumulator() = default;
};

}  // namespace qel

#endif  // QEL_ACCU_ACCUMULATOR_HPP
