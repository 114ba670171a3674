// SPDX-License-Identifier: MIT
#ifndef ENTRY_HOST_HPP
#define ENTRY_HOST_HPP

// The fifteen operations that the module needs of its host. It uses one more where there is one: entry/sparse.hpp.
//
// They are declared here rather than taken from a host's own headers, so that one set of objects serves
// MATLAB (on Windows through the adapter in entry/windows), GNU Octave (through that in entry/octave) and the host in
// the test program. The names ending
// in _700 take and give 32-bit dimensions whatever the width of the host's own sizes.

#include <cstddef>
#include <cstdint>

extern "C" {

/// The host's array; only pointers to it exist here.
struct mxArray;

/// The host's array classes. The underlying type is fixed so that classes not listed are valid values too.
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

/// Writes to the host's console. It carries no `format` attribute: the usage text is printed with each line
/// as the format. That is safe for fixed lines without a percent sign, but compilers would warn of it.
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

/// The start of the data block, column-major, whatever the class; to be read as elements of the class.
double* mxGetPr(const mxArray* array);

bool mxIsChar(const mxArray* array);
bool mxIsDouble(const mxArray* array);
bool mxIsEmpty(const mxArray* array);
bool mxIsLogical(const mxArray* array);
bool mxIsNumeric(const mxArray* array);

}  // extern "C"

#endif  // ENTRY_HOST_HPP
