// SPDX-License-Identifier: MIT
#ifndef QEL_CORE_BORDER_HPP
#define QEL_CORE_BORDER_HPP

namespace qel {

/// Sites around the domain of an image, in its block of values but without image data.
namespace border {

/// The border of an image that is made without one of its own, in sites on each side.
inline unsigned thickness = 3;

}  // namespace border

}  // namespace qel

#endif  // QEL_CORE_BORDER_HPP
