// SPDX-License-Identifier: MIT

// The host for the finished module on Linux: this program's operations come before those of the stand-in libraries.

#include "entry/attribute_profile.hpp"
#include "tests/matlab/loaded_module.hpp"

#include <dlfcn.h>

#include <cstdint>

void* loaded_module::symbol(const char* name) {
  static void* const handle = dlopen(MODULE_FILE, RTLD_NOW | RTLD_LOCAL);
  return handle == nullptr ? nullptr : dlsym(handle, name);
}

// What the test host calls goes to the loaded module.
void mexFunction(std::int32_t nlhs, mxArray** plhs, std::int32_t nrhs, const mxArray** prhs) {
  loaded_module::exported<decltype(mexFunction)>("mexFunction")(nlhs, plhs, nrhs, prhs);
}
