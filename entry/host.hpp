// SPDX-License-Identifier: MIT
#ifndef ENTRY_HOST_HPP
#define ENTRY_HOST_HPP

// The fifteen operations that the module needs of its host. entry/sparse.hpp has one more, which a host may lack.
//
// They are declared here, not taken from a host's headers: one set of objects serves MATLAB (on Windows through
// entry/windows/adapter.cpp), GNU Octave (through entry/octave/adapter.cpp) and the host of the test program. The names
// that end in _700 have 32-bit dimensions whatever the width of the host's sizes.

#include <cstddef>
#include <cstdint>

extern "C" {

/// The host's array; only pointers to it exist here.
struct mxArray;

/// The host's array classes. The underlying type is fixed: classes not listed are valid values, too.
enum mxClassID : std::int32_t {
  mxLOGICAL_CLASS = 3,
  mxDOUBLE_CLASS = 6,
  mxSINGLE_CLASS = 7,
  mxINT8_CLASS = 8,
  mxUINT8_CLASS = 9,
  mxINT16_CLASS = 10,
  mxUINT16_CLASS = 11,
  mxINT32_CLASS = 12,
  mxUINT32_CLASS = 13,
  mxINT64_CLASS = 14,
  mxUINT64_CLASS = 15
};

/// Reports `text` as the error of the call and ends the call at once, from any depth.
[[noreturn]] void mexErrMsgTxt(const char* text);

/// Writes to the host's console. It has no `format` attribute: each line of the usage text is printed as the format,
/// which is safe for fixed lines without a percent sign, but compilers would warn.
int mexPrintf(const char* format, ...);

/// The text of a character array as new, zero-terminated storage; the host reclaims it when the call ends.
char* mxArrayToString(const mxArray* array);

/// A new column-major array; `complexity` is 0 for real elements.
mxArray* mxCreateNumericArray_700(std::int32_t dimension_count, const std::int32_t* dimensions, mxClassID class_id,
                                  std::int32_t complexity);

mxClassID mxGetClassID(const mxArray* array);

/// The number of rows.
std::size_t mxGetM(const mxArray* array);

/// The number of columns; for more than two dimensions the product of all but the first.
std::size_t mxGetN(const mxArray* array);

/// The number of dimensions, at least 2.
std::int32_t mxGetNumberOfDimensions_700(const mxArray* array);

std::size_t mxGetNumberOfElements(const mxArray* array);

/// The start of the data block, column-major, whatever the class: read it as elements of the class.
double* mxGetPr(const mxArray* array);

bool mxIsChar(const mxArray* array);
bool mxIsDouble(const mxArray* array);
bool mxIsEmpty(const mxArray* array);
bool mxIsLogical(const mxArray* array);
bool mxIsNumeric(const mxArray* array);

}  // extern "C"

#endif  // ENTRY_HOST_HPP
