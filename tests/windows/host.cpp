// SPDX-License-Identifier: MIT

// The host for the finished module on Windows, as unforgiving as the real one may be: its mexErrMsgTxt leaves the call
// without unwinding a frame of the module. Here the error goes on as in the other test programs.

#include "entry/attribute_profile.hpp"
#include "tests/entry/test_host.hpp"
#include "tests/matlab/loaded_module.hpp"

#include <setjmp.h>
#include <windows.h>

#include <cstdint>
#include <new>
#include <string>

namespace {

jmp_buf end_of_call;
std::string error_text;

}  // namespace

void* loaded_module::symbol(const char* name) {
  static const HMODULE handle = LoadLibraryA(MODULE_FILE);
  return handle == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(handle, name));
}

/// What libmex.dll exports as mexErrMsgTxt.
extern "C" [[noreturn]] void leave_call(const char* text) {
  error_text = text;
  longjmp(end_of_call, 1);
}

void mexFunction(std::int32_t nlhs, mxArray** plhs, std::int32_t nrhs, const mxArray** prhs) {
  static const auto function = loaded_module::exported<decltype(mexFunction)>("mexFunction");
  // Without a frame, longjmp sets the registers and unwinds nothing.
  if (_setjmp(end_of_call, nullptr) == 0) return function(nlhs, plhs, nrhs, prhs);
  if (error_text == "Out of memory.") throw std::bad_alloc();
  throw test_host::error(error_text);
}
