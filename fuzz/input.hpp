// SPDX-License-Identifier: MIT
#ifndef FUZZ_INPUT_HPP
#define FUZZ_INPUT_HPP

// Reads the bytes of a fuzzer as numbers from front to back, and ends the program when a law does not hold. Clang's own
// reader comes only with its fuzzer. This one reads a kept input alike under every compiler.

#include "tests/support/random_image.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <iterator>
#include <tuple>

/// The fuzzer and the replay program call this with each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

class input {
 public:
  input(const std::uint8_t* data, std::size_t size) : next_(data), left_(size) {}

  bool is_empty() const { return left_ == 0; }

  /// The next bytes as a number; zeros stand behind the end.
  template <typename T>
  T take() {
    T value{};
    const std::size_t n = std::min(sizeof value, left_);
    if (n != 0) std::memcpy(&value, next_, n);
    next_ += n;
    left_ -= n;
    return value;
  }

  /// A number from 0 to `n` - 1. \pre `n` is not 0.
  std::size_t below(std::size_t n) {
    return n <= 256 ? std::size_t{take<std::uint8_t>()} % n : std::size_t{take<std::uint32_t>()} % n;
  }

  template <typename C>
  const auto& pick(const C& choices) {
    return choices[below(std::size(choices))];
  }

 private:
  const std::uint8_t* next_;
  std::size_t left_;
};

/// Ends the program unless the law holds: the fuzzer keeps the input then.
inline void require(bool holds, const char* law) {
  if (holds) return;
  std::cerr << "violated: " << law << std::endl;
  std::abort();
}

/// Calls `function` with a zero of value type number `n`.
template <typename F>
void call_with_type(std::size_t n, F function) {
  std::size_t i = 0;
  std::apply([&](auto... zero) { ((i++ == n ? function(zero) : void()), ...); }, support::value_types_in<std::tuple>());
}

}  // namespace fuzz

#endif  // FUZZ_INPUT_HPP
