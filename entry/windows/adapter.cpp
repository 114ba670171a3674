// SPDX-License-Identifier: MIT

// Lets a failing call give back what it owns where the host can't unwind the module's frames, for the module
// attribute_profile.mexw64 only.
//
// MATLAB for Windows is made by another compiler, which doesn't know MinGW's frames: its mexErrMsgTxt would leave the call
// without a destructor run, and a C++ exception that reached it would end the session. So the entry layer's
// mexErrMsgTxt is the one here, which unwinds to the exported function; that one owns nothing and reports to the host.
//
// What the host itself ends inside one of its operations, for lack of memory for the result, is beyond this.

#include "entry/windows/link_names.hpp"

#include "entry/attribute_profile.hpp"
#include "entry/host.hpp"

#include <cstdint>
#include <new>

namespace {

/// The error of a call on its way out. The texts of the entry layer are literals, which outlive the call.
struct call_error {
  const char* text;
};

/// Makes the call; what went wrong with it, or null.
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
