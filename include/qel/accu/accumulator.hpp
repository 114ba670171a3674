// SPDX-License-Identifier: MIT
#ifndef QEL_ACCU_ACCUMULATOR_HPP
#define QEL_ACCU_ACCUMULATOR_HPP

// An accumulator takes sites or grey levels one by one, or another accumulator as a whole, and gives one result: a box,
// a moment, a variance. Attributes are made of them. Each has one form; the test
// `accumulator.merges_restarts_and_converts` holds parts that are merged equal to the whole.

#include <qel/core/concept/object.hpp>

namespace qel {

/// A small value that summarises a set of elements.
///
/// A model has the types `argument` and `result` and offers `init()` (back to the empty state), `take(t)` for one
/// element, `take(other)` for the content of another accumulator, `to_result()` and `is_valid()`. It starts empty.
/// Accumulators live by value in images: they have no heap memory and nothing virtual.
///
/// Those of the library convert to their result: an image of accumulators becomes an image of results by assignment.
template <typename E>
struct Accumulator : Object<E> {
  /// Makes the accumulator hold `t` alone: an element, or something that converts to one.
  template <typename T>
  void take_as_init(const T& t) {
    internal::force_exact<E>(*this).take_as_init_(t);
  }

  /// For a model that has no shorter way.
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
