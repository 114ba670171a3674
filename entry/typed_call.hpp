// SPDX-License-Identifier: MIT
#ifndef ENTRY_TYPED_CALL_HPP
#define ENTRY_TYPED_CALL_HPP

#include "entry/host.hpp"

#include <cstdint>
#include <string>

/// Computes the profile of `image`, whose elements are of type T, and puts it into `output`: an array of the image's
/// class of rows x columns x (2N + 1) elements, with N thresholds.
///
/// \param image         a host array of the class of T.
/// \param attribute     the attribute's name, as the user gave it.
/// \param connectivity  4 or 8; 0 if none was given, which is 4.
/// \param thresholds    1 x N doubles, in the unit of the attribute.
/// \param rule          the filtering rule; empty for the attribute's default.
/// \throws std::bad_alloc; std::bad_array_new_length for an image with too many rows or columns, or for more thresholds
///         than a third dimension of 31 bits has planes for.
///
/// A wrong argument ends the call through the host; `output` may be set by then.
///
/// Each type has a translation unit of its own in entry/types, because each instantiation is large.
template <typename T>
void compute_attribute_profile(const mxArray* image, mxArray*& output, std::string attribute, std::int32_t connectivity,
                               const mxArray* thresholds, std::string rule);

#endif  // ENTRY_TYPED_CALL_HPP
