// SPDX-License-Identifier: MIT
#ifndef QEL_PW_CST_HPP
#define QEL_PW_CST_HPP

#include <qel/core/concept/function.hpp>

namespace qel {

namespace pw {

/// The function that gives the same value at every site.
template <typename A>
class cst_ : public Function_v2v<cst_<A>> {
 public:
  using result = A;

  explicit cst_(const A& value) : value_(value) {}

  template <typename P>
  const A& operator()(const P&) const {
    return value_;
  }

 private:
  A value_;
};

}  // namespace pw

}  // namespace qel

#endif  // QEL_PW_CST_HPP
