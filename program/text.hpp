// SPDX-License-Identifier: MIT
#ifndef PROGRAM_TEXT_HPP
#define PROGRAM_TEXT_HPP

#include <array>
#include <charconv>
#include <string>

namespace program {

/// The shortest text that is read as the same number.
template <typename N>
std::string text_of(N number) {
  std::array<char, 32> text;
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

}  // namespace program

#endif  // PROGRAM_TEXT_HPP
