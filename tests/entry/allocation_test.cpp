// SPDX-License-Identifier: MIT

// Each allocation of a call fails once. A program of its own, because it replaces the language's allocation for all
// that it links. The leak sanitizer, where it runs, finds leaks.

#include "tests/entry/test_host.hpp"
#include "tests/support/random_image.hpp"
#include "tests/support/value_types.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>
#include <vector>

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

/// How many allocations succeed before one fails.
std::size_t allocations_left = never;

void* allocate(std::size_t size) {
  if (allocations_left == 0) {
    allocations_left = never;
    throw std::bad_alloc();
  }
  if (allocations_left != never) --allocations_left;
  if (void* const block = std::malloc(size == 0 ? 1 : size)) return block;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

namespace {

template <typename T>
struct exhausted_memory : ::testing::Test {
  ~exhausted_memory() override { test_host::reset(); }
};

TYPED_TEST_SUITE(exhausted_memory, support::value_types, support::value_type_names);

/// The planes of a call of which all allocations but the first `successes` fail; empty if the call failed.
template <typename T>
std::vector<T> planes(const test_host::request& r, std::size_t successes) {
  test_host::reset();
  support::random_engine engine(7);
  const auto inputs = test_host::inputs(support::random_image<T>(5, 6, support::flavour::few_levels, engine), r);
  allocations_left = successes;
  try {
    const mxArray* const result = test_host::call(inputs);
    allocations_left = never;
    return test_host::values<T>(result);
  } catch (const std::bad_alloc&) {
    return {};
  }
}

TYPED_TEST(exhausted_memory, is_reported_wherever_it_happens_and_the_next_call_is_right) {
  for (const char* const attribute : {"area", "diagonal", "inertia", "std"})
    for (const char* const rule : {"min", "max", "direct", "sub"}) {
      const test_host::request r{attribute, {2, 5}, 8, rule};
      SCOPED_TRACE(::testing::Message() << r);
      // The first failures come before anything that lives as long as the process has been built.
      std::size_t failures = 0;
      std::vector<TypeParam> result;
      while ((result = planes<TypeParam>(r, failures)).empty()) ++failures;
      EXPECT_GT(failures, 30U);
      for (std::size_t k = 0; k <= failures; ++k) {
        EXPECT_EQ(planes<TypeParam>(r, k).empty(), k < failures);
        ASSERT_EQ(planes<TypeParam>(r, never), result) << "after a failure of allocation " << k;
      }
    }
}

}  // namespace
