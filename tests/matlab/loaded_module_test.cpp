// SPDX-License-Identifier: MIT

// The MATLAB module as a host loads it. It carries a C++ run-time of its own, so what leaves it by an exception has to
// cross from one run-time to another: from the module into this program and from this program through the module.

#include "tests/matlab/loaded_module.hpp"
#include "entry/attribute_profile.hpp"
#include "tests/entry/test_host.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <vector>

namespace {

struct matlab_module : ::testing::Test {
  ~matlab_module() override { test_host::reset(); }
};

TEST_F(matlab_module, tells_its_interface_generation) {
  EXPECT_STREQ(loaded_module::exported<decltype(mexVersion)>("mexVersion")(), "MATLAB R14 native");
}

TEST_F(matlab_module, lets_an_error_of_the_host_through) {
  const support::matrix<std::uint8_t> image{1, 2, {1, 2}};
  EXPECT_THROW(test_host::planes(image, {"std", {3}, 4, "none"}), test_host::error);
}

TEST_F(matlab_module, reports_an_image_beyond_the_limit_as_an_allocation_failure) {
  const support::matrix<std::uint8_t> image{32766, 1, std::vector<std::uint8_t>(32766)};
  EXPECT_THROW(test_host::planes(image, {"area", {3}}), std::bad_alloc);
}

}  // namespace
