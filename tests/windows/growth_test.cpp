// SPDX-License-Identifier: MIT

// A failing call on Windows gives back what it owns, though the host unwinds none of the module's frames.

#include "tests/entry/test_host.hpp"

#include <gtest/gtest.h>
#include <windows.h>

#include <psapi.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

std::size_t pagefile_usage() {
  PROCESS_MEMORY_COUNTERS counters{};
  EXPECT_TRUE(K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters));
  return counters.PagefileUsage;
}

/// Inputs of a wrong call of each kind: 200 x 200 pixels, which a call that fails late owns several times.
std::vector<std::vector<const mxArray*>> wrong_inputs() {
  using test_host::matrix;
  using test_host::text;
  std::vector<std::int32_t> pixels(200 * 200);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = static_cast<std::int32_t>(i * 7919 % 1000);
  const mxArray* const image = matrix(200, 200, pixels);
  const mxArray* const area = text(std::string(100, 'x') + "area");
  const mxArray* const one = matrix<double>(1, 1, {1});
  return {{image},
          {image, text("area"), one, one, one},
          {image, text("area"), one, area, text("min")},
          {text("image"), text("area"), one},
          {image, one, one},
          {image, area, matrix<double>(1, 0, {})},
          {matrix<double>(1, 1, {2}), area, one},
          {image, text("area"), one, matrix<double>(1, 1, {6}), text("min")},
          {image, area, one},
          {image, text("std"), matrix<double>(2, 1, {1, 2})},
          {image, text("std"), one, matrix<double>(1, 1, {4}), area},
          {test_host::array(mxUINT8_CLASS, {32766, 1}), text("area"), one}};
}

TEST(failing_calls, leave_no_memory_behind_whatever_the_host_does) {
  for (std::size_t kind = 0; kind < wrong_inputs().size(); ++kind) {
    std::size_t before = std::numeric_limits<std::size_t>::max();
    for (int call = 0; call < 300; ++call) {
      test_host::reset();
      const auto inputs = wrong_inputs()[kind];
      EXPECT_ANY_THROW(test_host::call(inputs));
      if (call == 20) before = pagefile_usage();  // later calls reuse what the first ones took
    }
    // A byte for each pixel, left behind by each call, would come to 11 MB.
    EXPECT_LT(pagefile_usage(), before + (1U << 20)) << "kind " << kind;
  }
  test_host::reset();
}

}  // namespace
