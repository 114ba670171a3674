// SPDX-License-Identifier: MIT
#ifndef ENTRY_ATTRIBUTE_PROFILE_HPP
#define ENTRY_ATTRIBUTE_PROFILE_HPP

// What the module offers to its host. All other symbols are hidden.

#include "entry/host.hpp"

#include <cstdint>

extern "C" {

/// Tells the host for which generation of its interface the module is made.
[[gnu::visibility("default")]] const char* mexVersion();

/// AP = attribute_profile(I, A, L, C, F).
///
/// \param nlhs  not read: any number of outputs asked for gives the same.
/// \param plhs  plhs[0] receives the profile; not touched by a call without inputs, which prints the usage.
/// \param nrhs  0, 3, 4 or 5.
/// \param prhs  image, attribute, thresholds, and optionally connectivity and rule, which may be empty.
/// \throws std::bad_alloc and its kind only. A wrong argument ends the call through the host.
[[gnu::visibility("default")]] void mexFunction(std::int32_t nlhs, mxArray* plhs[], std::int32_t nrhs,
                                                const mxArray* prhs[]);

}  // extern "C"

#endif  // ENTRY_ATTRIBUTE_PROFILE_HPP
