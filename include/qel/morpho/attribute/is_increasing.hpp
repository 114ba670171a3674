// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_ATTRIBUTE_IS_INCREASING_HPP
#define QEL_MORPHO_ATTRIBUTE_IS_INCREASING_HPP

#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/diagonal.hpp>

namespace qel {

namespace morpho {

namespace attribute {

/// Whether the attribute A never shrinks from a region to a greater one that holds it. Then a node that reaches a
/// threshold stands above nodes that do or do not, but never below one that does not: the four rules agree.
///
/// False unless known. An attribute of your own may be added by a specialisation.
template <typename A>
inline constexpr bool is_increasing = false;

/// Pixels are only added.
template <typename I>
inline constexpr bool is_increasing<card<I>> = true;

/// A box around more is no smaller.
template <typename I>
inline constexpr bool is_increasing<diagonal<I>> = true;

}  // namespace attribute

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_ATTRIBUTE_IS_INCREASING_HPP
