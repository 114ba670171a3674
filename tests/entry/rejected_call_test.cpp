// SPDX-License-Identifier: MIT

// Every error text, and which one a call with several faults gets: that of the first check.

#include "tests/entry/test_host.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <string>
#include <vector>

namespace {

using test_host::array;
using test_host::matrix;
using test_host::text;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

mxArray* scalar(double value) { return matrix<double>(1, 1, {value}); }

mxArray* sparse(mxClassID id, std::size_t rows, std::size_t cols, std::size_t nonzeros) {
  mxArray* const result = array(id, {rows, cols});
  test_host::set_sparse(result, nonzeros);
  return result;
}

enum input : std::size_t { image, attribute, thresholds, connectivity, rule };

/// A check of the entry layer: its input, whether the output array exists by then, what the user reads, and arrays that
/// it rejects, which live until reset().
struct check {
  input about;
  bool output_exists;
  const char* message;
  std::vector<mxArray*> bad_arrays;
};

/// In the order in which they are made.
std::vector<check> checks() {
  return {
      {rule,
       false,
       "Input 5 has to be either a string or empty.",
       {scalar(1), array(test_host::cell_class, {1, 1}), matrix<bool>(1, 1, {true})}},
      {connectivity,
       false,
       "Input 4 has to be either a scalar double or empty.",
       {matrix<int>(1, 1, {8}), matrix<float>(1, 1, {4}), matrix<bool>(1, 1, {true}), matrix<double>(1, 2, {4, 4}),
        text("4"), sparse(mxDOUBLE_CLASS, 1, 1, 0)}},
      {image,
       false,
       "Input 1 has to be a numeric 1D or 2D array.",
       {text("image"), array(test_host::cell_class, {2, 2}), array(mxUINT8_CLASS, {0, 3}),
        array(mxUINT8_CLASS, {2, 2, 0}), array(test_host::char_class, {2, 2, 2})}},
      {image,
       false,
       "Input 1. Data with more than two dimensions are not supported.",
       {array(mxUINT8_CLASS, {2, 2, 2}), array(mxLOGICAL_CLASS, {1, 1, 1, 2})}},
      {attribute, false, "Input 2 has to be a string.", {text(""), scalar('a'), array(test_host::cell_class, {1, 1})}},
      {thresholds, false, "Input 3 has not to be empty.", {array(mxDOUBLE_CLASS, {1, 0}), text("")}},
      {image,
       false,
       "Data type not supported.\n Please convert the input data to either one of the following types: uint8, "
       "int8, uint16, int16, uint32, int32, uint64, int64.",
       {array(mxLOGICAL_CLASS, {2, 2}), array(mxDOUBLE_CLASS, {2, 2}), array(mxSINGLE_CLASS, {2, 2}),
        sparse(mxDOUBLE_CLASS, 50, 50, 1), sparse(mxLOGICAL_CLASS, 50, 50, 0)}},
      {connectivity,
       true,
       "This value of connectivity does not match any connectivity rule for 2d images.",
       {scalar(6), scalar(-4), scalar(1), scalar(9), scalar(nan), scalar(inf), scalar(-inf), scalar(1e300),
        scalar(4294967300.0)}},
      {attribute,
       true,
       "Attribute not supported.",
       {text("Area"), text("A"), text("ar"), text("standard"), text("a "), text("areas")}},
      {thresholds,
       true,
       "Input 3 has to be a 1xN array of double.",
       {matrix<float>(1, 2, {1, 2}), matrix<int>(1, 1, {3}), matrix<bool>(1, 1, {true}), text("3"),
        matrix<double>(2, 1, {1, 2}), matrix<double>(2, 2, {1, 2, 3, 4}), sparse(mxDOUBLE_CLASS, 1, 1000, 2),
        array(mxUINT64_CLASS, {1, 2})}},
      {rule,
       true,
       "The filtering rule must be one of the following strings: 'min', 'max', 'direct', 'sub'.\n",
       {text("xyz"), text("Min"), text("mi"), text("subtractive"), text(" sub")}},
  };
}

std::vector<const mxArray*> good_inputs() {
  return {matrix<unsigned char>(2, 2, {1, 2, 3, 4}), text("s"), matrix<double>(1, 2, {1, 2}), scalar(4), text("max")};
}

/// The call ends with `message`; `output_exists` tells whether the output slot has been set by then.
void expect_rejected(const std::vector<const mxArray*>& inputs, const std::string& message, bool output_exists) {
  mxArray* output = nullptr;
  try {
    test_host::call(inputs, &output);
    ADD_FAILURE() << "accepted instead of: " << message;
  } catch (const test_host::error& e) {
    EXPECT_EQ(e.what(), message);
  }
  EXPECT_EQ(output != nullptr, output_exists) << message;
}

TEST(rejected_calls, report_their_first_fault_whatever_comes_later) {
  const std::vector<check> all = checks();
  for (auto first = all.begin(); first != all.end(); ++first)
    for (mxArray* const bad : first->bad_arrays) {
      std::vector<const mxArray*> inputs = good_inputs();
      inputs[first->about] = bad;
      expect_rejected(inputs, first->message, first->output_exists);
      for (auto later = first + 1; later != all.end(); ++later) {
        if (later->about == first->about) continue;
        SCOPED_TRACE(std::string("together with: ") + later->message);
        for (mxArray* const bad_later : later->bad_arrays) {
          std::vector<const mxArray*> two_faults = inputs;
          two_faults[later->about] = bad_later;
          expect_rejected(two_faults, first->message, first->output_exists);
        }
      }
    }
  test_host::reset();
}

TEST(rejected_calls, wrong_number_of_inputs_is_found_before_any_input_is_looked_at) {
  for (const std::size_t count : {1u, 2u, 6u, 50u})
    expect_rejected(std::vector<const mxArray*>(count, nullptr), "Wrong number of inputs.\n", false);
}

TEST(rejected_calls, unknown_rule_is_printed_and_leaves_every_plane_unwritten) {
  for (const char* const name : {"a", "d", "i", "s"}) {
    std::vector<const mxArray*> inputs = good_inputs();
    inputs[attribute] = text(name);
    inputs[rule] = text("xyz");
    mxArray* output = nullptr;
    EXPECT_THROW(test_host::call(inputs, &output), test_host::error) << name;
    EXPECT_EQ(test_host::console(), "Filtering Rule: xyz\n");
    EXPECT_EQ(test_host::values<unsigned char>(output), std::vector<unsigned char>(20, test_host::unwritten));
    test_host::reset();
  }
}

TEST(rejected_calls, text_without_memory_ends_in_bad_alloc) {
  const std::vector<const mxArray*> inputs = good_inputs();
  test_host::exhaust_text_memory();
  EXPECT_THROW(test_host::call(inputs), std::bad_alloc);
  EXPECT_THROW(test_host::call({inputs[0], inputs[1], inputs[2]}), std::bad_alloc);
  test_host::reset();
}

}  // namespace
