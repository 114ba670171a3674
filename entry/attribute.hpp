// SPDX-License-Identifier: MIT
#ifndef ENTRY_ATTRIBUTE_HPP
#define ENTRY_ATTRIBUTE_HPP

// The attributes that a user can ask for by name.

#include <qel/morpho/named_attributes.hpp>

namespace entry {

/// The attributes of images of type I.
template <typename I>
inline constexpr auto attributes = qel::morpho::named_attributes<I>;

}  // namespace entry

#endif  // ENTRY_ATTRIBUTE_HPP
