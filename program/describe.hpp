// SPDX-License-Identifier: MIT
#ifndef PROGRAM_DESCRIBE_HPP
#define PROGRAM_DESCRIBE_HPP

// What the output says of itself.

#include <string>
#include <vector>

#include "program/part_files.hpp"
#include "program/request.hpp"
#include "program/text.hpp"
#include "program/version.hpp"

namespace program {

/// The texts of `numbers` with blanks between.
template <typename List>
std::string list_of(const List& numbers) {
  std::string list;
  for (const auto number : numbers) list += (list.empty() ? "" : " ") + text_of(number);
  return list;
}

/// What each plane of a band is, in their order. Thresholds are told as they are compared: areas as integers.
template <typename L>
std::vector<std::string> plane_descriptions(const std::string& band, const std::string& attribute,
                                            const std::vector<L>& thresholds) {
  std::vector<std::string> texts = {band};
  for (const L threshold : thresholds) {
    const auto text = [&](const char* side) {
      return std::string(band).append(", ").append(attribute).append(side).append(text_of(threshold));
    };
    texts.insert(texts.begin(), text(", dark < "));
    texts.push_back(text(", bright < "));
  }
  return texts;
}

/// The settings of a profile, as metadata of its file.
template <typename L>
settings settings_of(const request& r, const std::string& attribute, const std::string& rule,
                     const std::vector<L>& thresholds, const std::vector<int>& bands, bool exact) {
  return {{"ATTRIBUTE", attribute},
          {"THRESHOLDS", list_of(thresholds)},
          {"CONNECTIVITY", std::to_string(r.connectivity)},
          {"RULE", rule},
          {"INPUT_BANDS", list_of(bands)},
          {"EXACT", exact ? "YES" : "NO"},
          {"SOFTWARE", version_text}};
}

}  // namespace program

#endif  // PROGRAM_DESCRIBE_HPP
