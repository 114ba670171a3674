// SPDX-License-Identifier: MIT
#ifndef QEL_FUN_PREDICATE_HPP
#define QEL_FUN_PREDICATE_HPP

#include <qel/core/concept/function.hpp>

#include <type_traits>

namespace qel {

namespace fun {

/// Makes your own callable, such as a lambda or a `std::function`, a predicate that the rules take.
template <typename F>
class predicate_ : public Function_v2b<predicate_<F>> {
 public:
  /// Passed or failed.
  using result = bool;

  /// \param f called with a site; kept as a copy.
  explicit predicate_(const F& f) : f_(f) {}

  /// Whether `f` says so of the site `p`.
  template <typename P>
  bool operator()(const P& p) const {
    return f_(p);
  }

 private:
  F f_;
};

/// `f` as a predicate: itself if it is one, else a `predicate_` with a copy.
template <typename F>
decltype(auto) predicate(const F& f) {
  if constexpr (std::is_base_of_v<Function_v2b<F>, F>)
    return (f);
  else
    return predicate_<F>(f);
}

}  // namespace fun

}  // namespace qel

#endif  // QEL_FUN_PREDICATE_HPP
