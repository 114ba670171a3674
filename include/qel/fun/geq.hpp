// SPDX-License-Identifier: MIT
#ifndef QEL_FUN_GEQ_HPP
#define QEL_FUN_GEQ_HPP

#include <qel/core/concept/function.hpp>

namespace qel {

/// Functions made of other functions.
namespace fun {

/// The function that tells whether F reaches G: f(x) >= g(x), compared as C++ compares their types.
///
/// Equality passes; a NaN on either side fails.
template <typename F, typename G>
class geq_v2b_expr_ : public Function_v2b<geq_v2b_expr_<F, G>> {
 public:
  /// Passed or failed.
  using result = bool;

  /// Keeps a copy of each.
  geq_v2b_expr_(const F& f, const G& g) : f_(f), g_(g) {}

  /// Whether f(x) >= g(x); in a filter, x is a site.
  template <typename X>
  bool operator()(const X& x) const {
    return f_(x) >= g_(x);
  }

 private:
  F f_;
  G g_;
};

}  // namespace fun

/// Joins two functions to a predicate, which holds copies of both and evaluates nothing yet.
///
///     const auto pred = pw::value_(area) >= pw::cst_(100u);
template <typename F, typename G>
fun::geq_v2b_expr_<F, G> operator>=(const Function_v2v<F>& f, const Function_v2v<G>& g) {
  return {internal::force_exact<F>(f), internal::force_exact<G>(g)};
}

}  // namespace qel

#endif  // QEL_FUN_GEQ_HPP
