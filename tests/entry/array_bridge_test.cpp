// SPDX-License-Identifier: MIT
#include "entry/array_bridge.hpp"

#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"
#include "tests/support/value_types.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <utility>
#include <vector>

namespace {

template <typename T>
class array_bridge : public ::testing::Test {
 protected:
  void TearDown() override { test_host::reset(); }
};
TYPED_TEST_SUITE(array_bridge, support::value_types, support::value_type_names);

TYPED_TEST(array_bridge, keeps_every_element_at_its_row_and_column_and_gives_the_block_back) {
  support::random_engine engine(1);
  for (const auto& [rows, cols] : {std::pair{1u, 1u}, {3u, 2u}, {1u, 70u}, {70u, 1u}, {65u, 31u}}) {
    const auto pixels = support::random_image<TypeParam>(rows, cols, support::flavour::full_range, engine);
    const std::vector<TypeParam> block = column_major(pixels);
    const mxArray* const array = test_host::matrix<TypeParam>(rows, cols, block);
    EXPECT_EQ(define_image_type(TypeParam(0)), test_host::class_of(array));
    const auto image = mxArray2qel_image<TypeParam, TypeParam>(array);
    ASSERT_EQ(image.domain(),
              qel::box2d(qel::point2d(0, 0), qel::point2d(static_cast<short>(rows - 1), static_cast<short>(cols - 1))));
    EXPECT_EQ(image.border(), qel::border::thickness);
    for (std::size_t i = 0; i < pixels.values.size(); ++i)
      ASSERT_EQ(image(qel::point2d(static_cast<short>(i / cols), static_cast<short>(i % cols))), pixels.values[i]);

    std::vector<TypeParam> exported(block.size() + 1, TypeParam(77));
    TypeParam* const destination = exported.data();
    qel_image2mxPtr(image, destination);
    EXPECT_EQ(exported.back(), TypeParam(77)) << "written behind the plane";
    exported.pop_back();
    EXPECT_EQ(exported, block);
  }
}

// A bright pixel in the first corner and a dark one in the last: an area threshold of 2 removes each from the
// tree in which it is a leaf, and nothing else.
template <typename T>
void expect_exact_profile(std::size_t rows, std::size_t cols) {
  std::vector<T> input(rows * cols, T(100));
  input.front() = T(120);
  input.back() = T(50);
  std::vector<T> expected = input;
  expected.back() = T(100);
  expected.insert(expected.end(), input.begin(), input.end());
  expected.insert(expected.end(), input.begin(), input.end());
  expected[2 * rows * cols] = T(100);
  const mxArray* const profile = test_host::call(
      {test_host::matrix<T>(rows, cols, input), test_host::text("a"), test_host::matrix<double>(1, 1, {2})});
  EXPECT_EQ(test_host::dimensions(profile), (std::vector<std::size_t>{rows, cols, 3}));
  EXPECT_TRUE(test_host::values<T>(profile) == expected);
}

TEST(array_bridge_limits, images_of_32765_rows_or_columns_are_exact) {
  expect_exact_profile<unsigned char>(32765, 3);
  expect_exact_profile<unsigned char>(3, 32765);
  expect_exact_profile<long>(32765, 3);
  expect_exact_profile<long>(3, 32765);
  test_host::reset();
}

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

TEST(define_image_type, knows_the_classes_that_no_image_has) {
  EXPECT_EQ(define_image_type(false), 3);
  EXPECT_EQ(define_image_type(0.0), 6);
  EXPECT_EQ(define_image_type(0.0f), 7);
}

}  // namespace
