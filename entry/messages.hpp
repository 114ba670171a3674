// SPDX-License-Identifier: MIT
#ifndef ENTRY_MESSAGES_HPP
#define ENTRY_MESSAGES_HPP

// Every error text that a user can see. Users and scripts match on them: wording, line ends and the differences between
// the inputs are part of the interface.

namespace entry {
namespace messages {

inline constexpr char wrong_count[] = "Wrong number of inputs.\n";
inline constexpr char bad_rule[] = "Input 5 has to be either a string or empty.";
inline constexpr char bad_connectivity[] = "Input 4 has to be either a scalar double or empty.";
inline constexpr char bad_image[] = "Input 1 has to be a numeric 1D or 2D array.";
inline constexpr char too_many_dimensions[] = "Input 1. Data with more than two dimensions are not supported.";
inline constexpr char bad_attribute[] = "Input 2 has to be a string.";
inline constexpr char empty_thresholds[] = "Input 3 has not to be empty.";
inline constexpr char unsupported_class[] =
    "Data type not supported.\n"
    " Please convert the input data to either one of the following types: "
    "uint8, int8, uint16, int16, uint32, int32, uint64, int64.";

inline constexpr char not_two_dimensions[] = "Images of >2 dimensions are not supported.";
inline constexpr char unknown_connectivity[] =
    "This value of connectivity does not match any connectivity rule for 2d images.";
inline constexpr char unknown_attribute[] = "Attribute not supported.";
inline constexpr char bad_thresholds[] = "Input 3 has to be a 1xN array of double.";

inline constexpr char unknown_rule[] =
    "The filtering rule must be one of the following strings: 'min', 'max', 'direct', 'sub'.\n";

}  // namespace messages
}  // namespace entry

#endif  // ENTRY_MESSAGES_HPP
