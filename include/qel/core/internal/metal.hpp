// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_INTERNAL_METAL_HPP
#define QEL_CORE_INTERNAL_METAL_HPP

#include <type_traits>

namespace qel {

/// Truth values as types, to select an overload or a specialisation.
namespace metal {

/// `b` as a type.
template <bool b>
using bool_ = std::bool_constant<b>;

}  // namespace metal

}  // namespace qel

#endif  // QEL_CORE_INTERNAL_METAL_HPP
