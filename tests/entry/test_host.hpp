// SPDX-License-Identifier: MIT
#ifndef TESTS_ENTRY_TEST_HOST_HPP
#define TESTS_ENTRY_TEST_HOST_HPP

// A host in the test program: the operations of entry/host.hpp over arrays in memory, for whole calls without MATLAB or
// Octave. Errors are exceptions. Data blocks have exactly the size of their elements, so that the address sanitizer
// sees every access beyond them. A pattern fills output arrays, so that an element that is never written shows.

#include "entry/host.hpp"

#include "tests/support/random_image.hpp"

#include <cstddef>
#include <iomanip>
#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace test_host {

/// Classes that the module has no name for.
inline constexpr auto cell_class = static_cast<mxClassID>(1);
inline constexpr auto char_class = static_cast<mxClassID>(4);

/// What each byte of a new output array holds.
inline constexpr unsigned char unwritten = 0xA5;

/// What mexErrMsgTxt throws; what() is the exact text.
class error : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// An array of zeros of any class and shape; it lives until reset(), as all arrays here.
mxArray* array(mxClassID id, std::vector<std::size_t> dims);

/// A row of characters.
mxArray* text(const std::string& s);

/// Makes a sparse array of `a`: it keeps its dimensions, and its data block shrinks to `nonzeros` elements.
void set_sparse(mxArray* a, std::size_t nonzeros);

/// From now on mxArrayToString has no memory and returns null.
void exhaust_text_memory();

/// Calls mexFunction for one output and returns that output, or null if there is none. The output goes to `*plhs`,
/// whose value survives an error, or without `plhs` to a slot of the call.
const mxArray* call(const std::vector<const mxArray*>& args, mxArray** plhs = nullptr);

std::vector<std::size_t> dimensions(const mxArray* a);
mxClassID class_of(const mxArray* a);

/// What mexPrintf wrote since reset().
std::string& console();

/// Frees all arrays and texts and clears the console.
void reset();

namespace internal {

/// The class of arrays of T by its properties alone, so that tests do not depend on the table under test.
template <typename T>
constexpr mxClassID class_of_type() {
  if (std::is_same_v<T, bool>) return static_cast<mxClassID>(3);
  if (std::is_floating_point_v<T>) return static_cast<mxClassID>(sizeof(T) == 8 ? 6 : 7);
  const int log2_of_size = sizeof(T) == 8 ? 3 : sizeof(T) == 4 ? 2 : sizeof(T) == 2 ? 1 : 0;
  return static_cast<mxClassID>(8 + 2 * log2_of_size + (std::is_unsigned_v<T> ? 1 : 0));
}

void* data(mxArray* a, std::size_t bytes);
const void* data(const mxArray* a, std::size_t element_size, std::size_t& count);

}  // namespace internal

template <typename T>
mxArray* matrix(std::size_t rows, std::size_t cols, const std::vector<T>& column_major) {
  mxArray* const a = array(internal::class_of_type<T>(), {rows, cols});
  T* const block = static_cast<T*>(internal::data(a, column_major.size() * sizeof(T)));
  for (std::size_t i = 0; i < column_major.size(); ++i) block[i] = column_major[i];
  return a;
}

/// A copy of the data block, column-major.
template <typename T>
std::vector<T> values(const mxArray* a) {
  std::size_t count = 0;
  const T* const block = static_cast<const T*>(internal::data(a, sizeof(T), count));
  return std::vector<T>(block, block + count);
}

/// What a call asks for besides the image. Connectivity 0 and an empty rule mean: not given.
struct request {
  std::string attribute;
  std::vector<double> thresholds;
  double connectivity = 0;
  std::string rule = {};
};

inline std::ostream& operator<<(std::ostream& out, const request& r) {
  out << "attribute '" << r.attribute << "', rule '" << r.rule << "', connectivity " << r.connectivity
      << ", thresholds [";
  for (const double t : r.thresholds) out << std::setprecision(17) << " " << t;
  return out << " ]";
}

template <typename T>
std::vector<const mxArray*> inputs(const support::matrix<T>& image, const request& r) {
  std::vector<const mxArray*> result = {matrix<T>(image.rows, image.cols, column_major(image)), text(r.attribute),
                                        matrix<double>(1, r.thresholds.size(), r.thresholds)};
  if (r.connectivity != 0)
    result.push_back(matrix<double>(1, 1, {r.connectivity}));
  else if (!r.rule.empty())
    result.push_back(array(mxDOUBLE_CLASS, {0, 0}));
  if (!r.rule.empty()) result.push_back(text(r.rule));
  return result;
}

/// The planes that the call returns, one after the other. Calls reset() first.
template <typename T>
std::vector<T> planes(const support::matrix<T>& image, const request& r) {
  reset();
  const mxArray* const result = call(inputs(image, r));
  if (dimensions(result) != std::vector<std::size_t>{image.rows, image.cols, 2 * r.thresholds.size() + 1})
    throw std::logic_error("the result has wrong dimensions");
  return values<T>(result);
}

}  // namespace test_host

#endif  // TESTS_ENTRY_TEST_HOST_HPP
