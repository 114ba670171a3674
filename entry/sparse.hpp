// SPDX-License-Identifier: MIT
#ifndef ENTRY_SPARSE_HPP
#define ENTRY_SPARSE_HPP

// Keeps sparse arrays from being read as full ones.
//
// A sparse double array answers "yes" to mxIsDouble and tells rows x columns elements, but its data block holds its
// non-zero elements only: a full read runs off the end. Only inputs read as doubles need the test: a sparse image is
// double or logical, and no image of these classes is read.

#include "entry/host.hpp"

extern "C" {

#if defined(_WIN32)
/// An ordinary import: Windows has no weak ones, and every host there has the operation.
bool mxIsSparse(const mxArray* array);
#else
/// A weak reference: a host without sparse arrays may lack it.
[[gnu::weak]] bool mxIsSparse(const mxArray* array);
#endif

}  // extern "C"

namespace entry {

/// True if the data block of `array` holds all its elements.
inline bool is_full(const mxArray* array) {
#if !defined(_WIN32)
  if (mxIsSparse == nullptr) return true;
#endif
  return !mxIsSparse(array);
}

}  // namespace entry

#endif  // ENTRY_SPARSE_HPP
