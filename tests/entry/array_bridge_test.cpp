// SPDX-License-Identifier: MIT

// The limits of the bridge; what it carries over is compared with the slow profile.

#include "entry/array_bridge.hpp"

#include "tests/entry/test_host.hpp"

#include <gtest/gtest.h>

#include <new>
#include <utility>

namespace {

// A wider border leaves fewer coordinates to the image.
TEST(array_bridge_limits, follow_the_border) {
  const mxArray* const longest = test_host::array(mxUINT8_CLASS, {32758, 1});
  const mxArray* const too_long = test_host::array(mxUINT8_CLASS, {32759, 1});
  const unsigned thickness = std::exchange(qel::border::thickness, 10u);
  EXPECT_EQ((mxArray2qel_image<unsigned char, unsigned char>(longest).domain().len(0)), 32758u);
  EXPECT_THROW((mxArray2qel_image<unsigned char, unsigned char>(too_long)), std::bad_array_new_length);
  qel::border::thickness = thickness;
  test_host::reset();
}

}  // namespace
