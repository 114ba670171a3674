// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_CHECK_INIT_HPP
#define QEL_DATA_CHECK_INIT_HPP

#include <qel/core/box2d.hpp>

namespace qel {

namespace internal {

/// Fails to build for an image class without a suitable `init_`; does nothing at run time.
///
///     internal::check_init(&I::init_);
template <typename I>
constexpr int check_init(void (I::*)(const box2d&, unsigned)) {
  return 0;
}

}  // namespace internal

}  // namespace qel

#endif  // QEL_DATA_CHECK_INIT_HPP
