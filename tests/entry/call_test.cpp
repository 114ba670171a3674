// SPDX-License-Identifier: MIT

// What a call accepts, its defaults for inputs that are not given, the usage text, the console.

#include "entry/attribute_profile.hpp"
#include "entry/typed_call.hpp"
#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using test_host::array;
using test_host::text;

mxArray* scalar(double value) { return test_host::matrix<double>(1, 1, {value}); }
mxArray* empty() { return array(mxDOUBLE_CLASS, {0, 0}); }

/// The inputs of a call for a picture on which the connectivities differ, and the rules for moment and deviation.
std::vector<const mxArray*> inputs(const char* attribute, const std::vector<const mxArray*>& optional_inputs = {}) {
  support::random_engine engine(5);
  support::matrix<short> image{9, 9, std::vector<short>(81)};
  for (short& pixel : image.values) pixel = static_cast<short>(support::below(8, engine));
  auto result = test_host::inputs(image, {attribute, {0.3, 1.8, 3}});
  result.insert(result.end(), optional_inputs.begin(), optional_inputs.end());
  return result;
}

std::vector<short> profile(const char* attribute, const std::vector<const mxArray*>& optional_inputs = {}) {
  return test_host::values<short>(test_host::call(inputs(attribute, optional_inputs)));
}

struct accepted_call : ::testing::Test {
  ~accepted_call() override { test_host::reset(); }
};

TEST_F(accepted_call, optional_inputs_may_be_absent_or_empty) {
  const auto all_given = profile("a", {scalar(4), text("min")});
  test_host::reset();
  EXPECT_EQ(profile("a"), all_given);
  EXPECT_EQ(profile("a", {empty()}), all_given);
  EXPECT_EQ(profile("a", {text("")}), all_given) << "an empty input 4 of any class counts as not given";
  EXPECT_EQ(profile("a", {empty(), empty()}), all_given);
  EXPECT_EQ(test_host::console(), "") << "a rule that comes from a default is not printed";
}

TEST_F(accepted_call, connectivity_is_truncated) {
  const auto with_4 = profile("a", {scalar(4)});
  const auto with_8 = profile("a", {scalar(8)});
  ASSERT_NE(with_4, with_8);
  for (const double like_4 : {4.7, 0.0, 0.3, -0.5, 0.9999}) EXPECT_EQ(profile("a", {scalar(like_4)}), with_4) << like_4;
  for (const double like_8 : {8.5, 8.9999}) EXPECT_EQ(profile("a", {scalar(like_8)}), with_8) << like_8;
}

TEST_F(accepted_call, each_attribute_has_two_names_and_its_default_rule) {
  for (const auto& [short_name, name] : {std::pair{"a", "area"}, {"d", "diagonal"}, {"i", "inertia"}, {"s", "std"}})
    EXPECT_EQ(profile(short_name), profile(name)) << name;
  // On area and diagonal the four rules agree: no call can tell their default.
  for (const char* const name : {"i", "s"}) {
    const auto with_default = profile(name);
    EXPECT_EQ(with_default, profile(name, {empty(), text("sub")})) << name;
    for (const char* const other : {"min", "max", "direct"})
      EXPECT_NE(with_default, profile(name, {empty(), text(other)})) << name << ' ' << other;
  }
}

TEST_F(accepted_call, without_inputs_prints_the_usage_and_touches_no_output) {
  for (const int nlhs : {0, 1, 3}) {
    mxArray* output = nullptr;
    mexFunction(nlhs, &output, 0, nullptr);
    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(test_host::console(),
              R"( Attribute Profile - Sinopsys

   AP = ATTRIBUTE_PROFILE(I, A, L)
   AP = ATTRIBUTE_PROFILE(I, A, L, C)
   AP = ATTRIBUTE_PROFILE(I, A, L, C, F)

 INPUT
     I:  2D input image. Data type supported: uint8, int8, uint16, int16, uint32, int32, uint64, int64.
     A:  Attribute type. String.
         Attribute supported:
             Area: 'a', 'area';
             Length of the diagonal of the bounding box: 'd', 'diagonal';
             Moment of inertia: 'i', 'inertia';
             Standard deviation: 's', 'std'.
     L:  Values of lambda. Array of double.
     C:  Connectivity. Scalar. Either 4 (default) or 8.
     F:  Filtering rule. String.
         Rules supported:
             Min: 'min' (default for attributes 'a', 'd');
             Max: 'max';
             Direct: 'direct';
             Sub: 'sub' (default for attributes 'i', 's').

 OUTPUT
     AP: Attribute Profile. Array of 2D images of the same data type of the input image.

--
 Version 1.0
 14 May 2010
 The attribute_profile authors
 attribute_profile@example.org
)");
    test_host::reset();
  }
}

// A host that counts trailing dimensions as columns makes a list of a 1 x 2 x 2 array.
TEST_F(accepted_call, thresholds_in_trailing_dimensions_are_a_list) {
  const mxArray* const planes =
      test_host::call({test_host::matrix<short>(1, 1, {200}), text("s"), array(mxDOUBLE_CLASS, {1, 2, 2})});
  EXPECT_EQ(test_host::values<short>(planes), std::vector<short>(9, 200));
}

TEST_F(accepted_call, typed_call_turns_three_dimensions_away_by_itself) {
  mxArray* output = nullptr;
  try {
    compute_attribute_profile<short>(array(mxINT16_CLASS, {2, 2, 2}), output, "a", 4, scalar(1), "min");
    ADD_FAILURE() << "the call was accepted";
  } catch (const test_host::error& e) {
    EXPECT_STREQ(e.what(), "Images of >2 dimensions are not supported.");
  }
  EXPECT_EQ(output, nullptr);
}

}  // namespace
