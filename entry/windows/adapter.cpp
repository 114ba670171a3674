// SPDX-License-Identifier: MIT

// For the module attribute_profile.mexw64 only: a call that fails gives back what it owns, although the host can't
// unwind the module's frames.
//
// Another compiler makes MATLAB for Windows and doesn't know MinGW's frames: its mexErrMsgTxt would leave the call
// without running a destructor, and a C++ exception that reached it would end the session. So the entry layer calls the
// mexErrMsgTxt here, which unwinds to the exported function; that one owns nothing and reports to the host.
//
// A call that the host ends inside one of its own operations, for lack of memory for the result, is not covered.

#include "entry/windows/link_names.hpp"

#include "entry/attribute_profile.hpp"
#include "entry/host.hpp"

#include <cstdint>
#include <new>

namespace {

/// The error of a call on its way out. The texts are literals, which outlive the call.
struct call_error {
  const char* text;
};

/// Makes the call; returns what went wrong with it, or null.
const char* failure_of_call(std::int32_t nlhs, mxArray* plhs[], std::int32_t nrhs, const mxArray* prhs[]) {
  try {
    mexFunction(nlhs, plhs, nrhs, prhs);
  } catch (const call_error& error) {
    return error.text;
  } catch (const std::bad_alloc&) {
    return "Out of memory.";
  }
  return nullptr;
}

}  // namespace

extern "C" {

/// The host's own operation.
[[noreturn]] void report_to_host(const char* text) __asm__("mexErrMsgTxt");

/// What the host calls.
void call_from_host(std::int32_t nlhs, mxArray* plhs[], std::int32_t nrhs,
                    const mxArray* prhs[]) __asm__("mexFunction");

void mexErrMsgTxt(const char* text) { throw call_error{text}; }

// No exception may be in flight when the host leaves this frame: its object would stay behind.
void call_from_host(std::int32_t nlhs, mxArray* plhs[], std::int32_t nrhs, const mxArray* prhs[]) {
  if (const char* const text = failure_of_call(nlhs, plhs, nrhs, prhs)) report_to_host(text);
}

}  // extern "C"
