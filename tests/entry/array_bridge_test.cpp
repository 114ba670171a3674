// SPDX-License-Identifier: MIT

// The limits of the bridge; what it carries over is compared with the slow profile.

#include "entry/array_bridge.hpp"

#include "tests/entry/test_host.hpp"

#include <gtest/gtest.h>

#include <new>
#include <utility>

namespace {

// A wider border leaves fewer coordinates to the image, and none still leaves one to the end of a walk.
TEST(array_bridge_limits, follow_the_border) {
  for (const auto& [border, greatest] : {std::pair{10u, 32758u}, {0u, 32767u}}) {
    const mxArray* const longest = test_host::array(mxUINT8_CLASS, {greatest, 1});
    const mxArray* const too_long = test_host::array(mxUINT8_CLASS, {greatest + 1, 1});
    const unsigned thickness = std::exchange(qel::border::thickness, border);
    EXPECT_EQ((mxArray2qel_image<unsigned char, unsigned char>(longest).domain().len(0)), greatest);
    EXPECT_THROW((mxArray2qel_image<unsigned char, unsigned char>(too_long)), std::bad_array_new_length);
    qel::border::thickness = thickness;
  }
  test_host::reset();
}

}  // namespace
