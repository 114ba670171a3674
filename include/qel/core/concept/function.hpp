// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_FUNCTION_HPP
#define QEL_CORE_CONCEPT_FUNCTION_HPP

#include <qel/core/concept/object.hpp>

namespace qel {

/// Anything that maps an argument to a result by `operator()`; a model has the type `result`.
template <typename E>
struct Function : Object<E> {
 protected:
  Function() = default;
};

/// A function from a value to a value.
template <typename E>
struct Function_v2v : Function<E> {
 protected:
  Function_v2v() = default;
};

/// A function from a value to a truth value.
///
/// Virtual inheritance lets a class be this and another kind of `Function_v2v`. The price: the downcast to the exact
/// class starts here, not at `Function_v2v`.
template <typename E>
struct Function_v2b : virtual Function_v2v<E> {
 protected:
  Function_v2b() = default;
};

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_FUNCTION_HPP
