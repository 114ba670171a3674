// SPDX-License-Identifier: MIT

// The limits of the bridge; what it carries over is compared with the slow profile.

#include "entry/array_bridge.hpp"

#include "tests/entry/test_host.hpp"

#include <gtest/gtest.h>

#include <new>
#include <utility>
#include <vector>

namespace {

TEST(array_bridge_limits, larger_images_end_the_call_before_anything_is_made) {
  for (const auto& [rows, cols] : {std::pair{32766u, 1u}, {1u, 32766u}, {40000u, 1u}, {65537u, 1u}, {2u, 65537u}}) {
    mxArray* output = nullptr;
    const std::vector<const mxArray*> inputs = {test_host::array(mxUINT8_CLASS, {rows, cols}), test_host::text("a"),
                                                test_host::matrix<double>(1, 1, {2})};
    EXPECT_THROW(test_host::call(inputs, &output), std::bad_array_new_length) << rows << " x " << cols;
    EXPECT_EQ(output, nullptr);
  }
  test_host::reset();
}

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

TEST(define_image_type, knows_the_classes_that_no_image_has) {
  EXPECT_EQ(define_image_type(false), 3);
  EXPECT_EQ(define_image_type(0.0), 6);
  EXPECT_EQ(define_image_type(0.0f), 7);
}

}  // namespace
