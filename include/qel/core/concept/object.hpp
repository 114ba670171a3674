// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_CONCEPT_OBJECT_HPP
#define QEL_CORE_CONCEPT_OBJECT_HPP

// The root of the concept classes, and the way from a concept class down to the exact class.
//
// A concept class is an empty base, generic over the exact class E that derives from it. An algorithm that takes
// `const Image<I>&` says what it needs, overloads can be told apart, and nothing is dispatched at run time.

/// Images, site sets, neighbourhoods, component trees, attributes and filters.
namespace qel {

/// The base of every class of the library.
template <typename E>
struct Object {
  /// The exact class behind the concept.
  using exact_t = E;

 protected:
  Object() = default;
};

namespace internal {

/// The exact object behind a reference to one of its concept classes.
/// \pre `object` is a base of an object whose exact class is E.
template <typename E, typename C>
constexpr E& force_exact(C& object) {
  return static_cast<E&>(object);
}

template <typename E, typename C>
constexpr const E& force_exact(const C& object) {
  return static_cast<const E&>(object);
}

}  // namespace internal

}  // namespace qel

#endif  // QEL_CORE_CONCEPT_OBJECT_HPP
