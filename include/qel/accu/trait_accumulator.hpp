// SPDX-License-Identifier: MIT
#ifndef QEL_ACCU_TRAIT_ACCUMULATOR_HPP
#define QEL_ACCU_TRAIT_ACCUMULATOR_HPP

namespace qel {

namespace trait {

/// What algorithms ask of an accumulator type.
namespace accumulator {

/// What an accumulator takes of a site of an image.
namespace when_pix {
struct use_none {};  ///< nothing: the site only counts
struct use_p {};     ///< the site
struct use_v {};     ///< the image value at the site
}  // namespace when_pix

/// Whether the order in which an accumulator takes its content shows in its result.
namespace order {
struct free {};   ///< no: its arithmetic is exact
struct fixed {};  ///< yes: its sums are rounded
}  // namespace order

}  // namespace accumulator

/// The properties of the accumulator type A: `when_pix`, `order`.
template <typename A>
struct accumulator_;

}  // namespace trait

}  // namespace qel

#endif  // QEL_ACCU_TRAIT_ACCUMULATOR_HPP
