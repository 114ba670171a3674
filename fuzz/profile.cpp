// SPDX-License-Identifier: MIT

// The profile of a small image, by a call as a host makes it, against the slow profile by definition, bit by bit.

#include "fuzz/input.hpp"
#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"
#include "tests/support/slow_profile.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

/// A value at the least one of T, at the greatest one or around zero, where ties and overflows are; or any.
template <typename T>
T pixel(std::size_t place, fuzz::input& in) {
  using limits = std::numeric_limits<T>;
  if (place == 3) return in.take<T>();
  const auto step = static_cast<T>(in.below(16));
  return static_cast<T>(place == 0 ? limits::min() + step : place == 1 ? limits::max() - step : step - T(8));
}

/// A long thin image or a small one, of up to 64 pixels.
template <typename T>
support::matrix<T> image(fuzz::input& in) {
  support::matrix<T> result{1, 1, {}};
  const std::size_t shape = in.below(16);
  if (shape < 2) {
    (shape == 0 ? result.rows : result.cols) += in.below(500);
  } else {
    result.cols += in.below(64);
    result.rows += in.below(64 / result.cols);
  }
  const std::size_t place = in.below(4);
  while (result.values.size() < result.rows * result.cols) result.values.push_back(pixel<T>(place, in));
  return result;
}

/// The attribute of a node or a number beside it, where it matters; or any number.
double threshold(const std::vector<double>& attribute_values, fuzz::input& in) {
  const double v = in.pick(attribute_values);
  switch (in.below(6)) {
    case 0:
      return v;
    case 1:
      return std::nextafter(v, inf);
    case 2:
      return std::nextafter(v, -inf);
    case 3:
      return static_cast<double>(std::nextafter(static_cast<float>(v), HUGE_VALF));
    case 4:
      return v - 0x1p32;
    default:
      return in.take<double>();
  }
}

template <typename T>
void compare(fuzz::input& in) {
  const std::vector<std::string> attributes = {"a", "d", "i", "s", "area", "diagonal", "inertia", "std"};
  const std::vector<std::string> rules = {"", "min", "max", "direct", "sub"};
  test_host::request r;
  r.attribute = in.pick(attributes);
  r.rule = in.pick(rules);
  const int connectivity = in.below(2) == 0 ? 4 : 8;
  r.connectivity = connectivity;
  r.thresholds.resize(1 + in.below(4));
  const auto f = image<T>(in);
  const oracle::slow_profile<T> slow(f, connectivity);
  for (double& t : r.thresholds) t = threshold(slow.attribute_values(r.attribute), in);
  fuzz::require(test_host::planes(f, r) == slow.planes(r.attribute, r.thresholds, r.rule), "planes");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::input in(data, size);
  fuzz::call_with_type(in.below(8), [&](auto zero) { compare<decltype(zero)>(in); });
  return 0;
}
