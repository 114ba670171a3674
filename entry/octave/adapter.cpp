// SPDX-License-Identifier: MIT

// The host operations that GNU Octave lacks or does otherwise, for the module attribute_profile.mex only.
//
// The linker binds the entry layer's calls to these definitions and keeps them out of the module's exports: neither
// Octave nor another module sees them. Octave's own header stands in for entry/host.hpp (the two declare the same
// names), so that the compiler checks the calls here against the real host.
//
// Errors: during a call Octave's mxMalloc and mxCreateNumericArray never return null. They throw, as mexErrMsgTxt does,
// and the exception destroys what these frames and the entry layer's own.

#include <mex.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

static_assert(std::is_signed_v<mwSize> && sizeof(mwSize) == 8, "Octave has to be built with 64-bit indices");
static_assert(mxLOGICAL_CLASS == 3 && mxDOUBLE_CLASS == 6 && mxSINGLE_CLASS == 7 && mxINT8_CLASS == 8 &&
                  mxUINT64_CLASS == 15,
              "the entry layer counts on these class numbers");

extern "C" {

/// Octave's array sizes have 64 bits. A size is a count: with its top bit set it is large, not negative.
mxArray* mxCreateNumericArray_700(std::int32_t dimension_count, const std::int32_t* dimensions, mxClassID class_id,
                                  std::int32_t complexity) {
  std::vector<mwSize> wide(static_cast<std::size_t>(dimension_count));
  std::transform(dimensions, dimensions + dimension_count, wide.begin(),
                 [](std::int32_t size) { return mwSize{static_cast<std::uint32_t>(size)}; });
  return mxCreateNumericArray(dimension_count, wide.data(), class_id, complexity == 0 ? mxREAL : mxCOMPLEX);
}

std::int32_t mxGetNumberOfDimensions_700(const mxArray* array) {
  return static_cast<std::int32_t>(mxGetNumberOfDimensions(array));
}

/// Octave's own operation of this name leaks some 80 bytes a call. Octave releases what mxMalloc gives when the call
/// ends, however it ends. Null for an array without text.
char* mxArrayToString(const mxArray* array) {
  if (!mxIsChar(array)) return nullptr;
  const std::size_t size = mxGetNumberOfElements(array) + 1;
  auto* const text = static_cast<char*>(mxMalloc(size));
  mxGetString(array, text, static_cast<mwSize>(size));
  return text;
}

}  // extern "C"
