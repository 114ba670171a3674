// SPDX-License-Identifier: MIT
#ifndef QEL_MORPHO_ATTRIBUTE_IS_INCREASING_HPP
#define QEL_MORPHO_ATTRIBUTE_IS_INCREASING_HPP

// What a node has: an attribute is an accumulator that takes the sites or grey levels of the node and of its
// descendants. Each has one form; the test `profile_oracle.small_images_agree_in_every_plane` compares all four with
// their definitions.

#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/diagonal.hpp>

namespace qel {

namespace morpho {

namespace attribute {

/// Whether the attribute A never shrinks from a region to a greater one that holds it. Then all ancestors of a node
/// that reaches a threshold reach it, too, and the four rules agree.
///
/// False unless known. Specialise it for an attribute of your own.
template <typename A>
inline constexpr bool is_increasing = false;

/// Sites are only added.
template <typename I>
inline constexpr bool is_increasing<card<I>> = true;

/// A box around more is no smaller.
template <typename I>
inline constexpr bool is_increasing<diagonal<I>> = true;

}  // namespace attribute

}  // namespace morpho

}  // namespace qel

#endif  // QEL_MORPHO_ATTRIBUTE_IS_INCREASING_HPP
