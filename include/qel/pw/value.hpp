// SPDX-License-Identifier: MIT
#ifndef QEL_PW_VALUE_HPP
#define QEL_PW_VALUE_HPP

// Functions from sites to values, of which predicates are made: `pw::value_(area) >= pw::cst_(100u)` holds where the
// attribute image `area` reaches 100.

#include <qel/core/concept/function.hpp>
#include <qel/core/concept/image.hpp>

namespace qel {

namespace pw {

/// An image as a function from sites to values.
///
/// It refers to the caller's image handle: the handle must outlive the function, and to assign another image to it
/// changes what the function sees.
template <typename I>
class value_ : public Function_v2v<value_<I>> {
 public:
  /// A value of the image.
  using result = typename I::value;

  /// \param ima the handle to read through; it outlives the function.
  explicit value_(const Image<I>& ima) : ima_(&internal::force_exact<I>(ima)) {}

  /// The value of the image at `p`. \pre the image has `p`.
  typename I::rvalue operator()(const typename I::psite& p) const { return (*ima_)(p); }

 private:
  const I* ima_;
};

}  // namespace pw

}  // namespace qel

#endif  // QEL_PW_VALUE_HPP
