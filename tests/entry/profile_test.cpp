// SPDX-License-Identifier: MIT

// What stands in which plane of a profile.

#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using pixels = support::matrix<unsigned char>;

struct profile : ::testing::Test {
  void TearDown() override { test_host::reset(); }

  /// The planes of a profile of `image`.
  static std::vector<pixels> planes(const pixels& image, const std::string& attribute, mxArray* thresholds,
                                    double connectivity, const std::string& rule) {
    const mxArray* const output = test_host::call(
        {test_host::matrix<unsigned char>(image.rows, image.cols, column_major(image)), test_host::text(attribute),
         thresholds, test_host::matrix<double>(1, 1, {connectivity}), test_host::text(rule)});
    const std::vector<unsigned char> block = test_host::values<unsigned char>(output);
    const std::size_t size = image.rows * image.cols;
    EXPECT_EQ(test_host::dimensions(output), (std::vector{image.rows, image.cols, block.size() / size}));
    std::vector<pixels> result;
    for (std::size_t first = 0; first < block.size(); first += size)
      result.push_back(support::from_column_major(image.rows, image.cols, block, first));
    return result;
  }

  static mxArray* list(const std::vector<double>& values) {
    return test_host::matrix<double>(1, values.size(), values);
  }
};

TEST_F(profile, worked_example_with_both_connectivities) {
  const pixels image{3, 4, {2, 2, 9, 9, 2, 8, 1, 9, 7, 7, 1, 3}};
  const pixels raised_4{3, 4, {2, 2, 9, 9, 2, 8, 3, 9, 7, 7, 3, 3}};
  const pixels lowered_4{3, 4, {2, 2, 9, 9, 2, 7, 1, 9, 7, 7, 1, 3}};
  const pixels raised_8{3, 4, {2, 2, 9, 9, 2, 8, 2, 9, 7, 7, 2, 3}};
  EXPECT_EQ(planes(image, "a", list({3}), 4, "min"), (std::vector{raised_4, image, lowered_4}));
  EXPECT_EQ(planes(image, "a", list({3}), 8, "min"), (std::vector{raised_8, image, image}));
}

TEST_F(profile, list_of_thresholds_gives_the_planes_of_each_in_reverse_and_then_in_the_given_order) {
  support::random_engine engine(7);
  pixels image{9, 7, std::vector<unsigned char>(63)};
  for (unsigned char& value : image.values) value = static_cast<unsigned char>(support::below(16, engine));
  const std::vector<double> thresholds = {5, 0, 9, 0};  // neither sorted nor free of repeats
  for (const char* const attribute : {"a", "d", "i", "s"})
    for (const char* const rule : {"min", "max", "direct", "sub"}) {
      SCOPED_TRACE(std::string(attribute) + " " + rule);
      std::vector<pixels> expected(9, image);
      for (std::size_t k = 0; k < 4; ++k) {
        const auto alone = planes(image, attribute, list({thresholds[k]}), 8, rule);
        expected[3 - k] = alone.front();
        expected[5 + k] = alone.back();
      }
      ASSERT_NE(expected[2].values, expected[3].values) << "the order of these planes would not show";
      EXPECT_EQ(planes(image, attribute, list(thresholds), 8, rule), expected);
    }
}

// A host that tells trailing dimensions as columns makes a list of a 1 x 2 x 2 array.
TEST_F(profile, thresholds_in_trailing_dimensions_are_a_list) {
  const pixels image{1, 1, {200}};
  EXPECT_EQ(planes(image, "s", test_host::array(mxDOUBLE_CLASS, {1, 2, 2}), 4, "sub"), std::vector(9, image));
}

}  // namespace
