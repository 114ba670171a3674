// SPDX-License-Identifier: MIT
#ifndef QEL_PW_CST_HPP
#define QEL_PW_CST_HPP

#include <qel/core/concept/function.hpp>

namespace qel {

/// Point-wise functions: they give a value at each site.
namespace pw {

/// The function that gives the same value at every site.
template <typename A>
class cst_ : public Function_v2v<cst_<A>> {
 public:
  /// The type of the value.
  using result = A;

  /// \param value kept as a copy; a threshold in the unit of an attribute.
  explicit cst_(const A& value) : value_(value) {}

  /// The value, at any site.
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
