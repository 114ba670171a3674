// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_NARROWED_HPP
#define QEL_CORE_INTERNAL_NARROWED_HPP

// Narrowing that is meant, by a name that you can search for. Between types of one width, and to a wider one, use a
// plain cast.

#include <type_traits>

namespace qel {

namespace internal {

/// `v` in the type To: an integer modulo 2^(width of To), a floating-point number rounded to nearest.
template <typename To, typename From>
constexpr To narrowed(From v) {
  // A floating-point number beyond the range of an integer type has no value there: test it instead.
  static_assert(std::is_integral_v<To> == std::is_integral_v<From>, "narrowed: integers only, or floating point only");
  return static_cast<To>(v);
}

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_NARROWED_HPP
