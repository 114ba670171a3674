// SPDX-License-Identifier: MIT

// The MATLAB module as a host loads it. It carries a C++ run-time of its own, so what leaves it by an exception has to
// cross from one run-time to another: from the module into this program and from this program through the module.
// This program's operations stand in for the host's: they come before those of the stand-in libraries.

#include "entry/attribute_profile.hpp"
#include "tests/entry/test_host.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <stdexcept>
#include <vector>

namespace {

void* module() {
  static void* const handle = dlopen(MODULE_FILE, RTLD_NOW | RTLD_LOCAL);
  return handle;
}

/// The module's function, not this program's of the same name.
template <typename F>
F* exported(const char* name) {
  if (module() == nullptr) throw std::runtime_error(dlerror());
  return reinterpret_cast<F*>(dlsym(module(), name));
}

struct loaded_module : ::testing::Test {
  ~loaded_module() override { test_host::reset(); }
};

}  // namespace

// What the test host calls goes to the loaded module.
extern "C" void mexFunction(int nlhs, mxArray** plhs, int nrhs, const mxArray** prhs) {
  exported<decltype(mexFunction)>("mexFunction")(nlhs, plhs, nrhs, prhs);
}

TEST_F(loaded_module, tells_its_interface_generation) {
  EXPECT_STREQ(exported<decltype(mexVersion)>("mexVersion")(), "MATLAB R14 native");
}

TEST_F(loaded_module, lets_an_error_of_the_host_through) {
  const support::matrix<std::uint8_t> image{1, 2, {1, 2}};
  EXPECT_THROW(test_host::planes(image, {"std", {3}, 4, "none"}), test_host::error);
}

TEST_F(loaded_module, reports_an_image_beyond_the_limit_as_an_allocation_failure) {
  const support::matrix<std::uint8_t> image{32766, 1, std::vector<std::uint8_t>(32766)};
  EXPECT_THROW(test_host::planes(image, {"area", {3}}), std::bad_alloc);
}
