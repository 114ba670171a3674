// SPDX-License-Identifier: MIT
#ifndef ENTRY_DISPATCH_HPP
#define ENTRY_DISPATCH_HPP

// From names and numbers to types: selects the neighbourhood and the attribute for a given value type.

#include "entry/array_bridge.hpp"
#include "entry/host.hpp"
#include "entry/messages.hpp"
#include "entry/profile.hpp"
#include "entry/sparse.hpp"
#include "entry/typed_call.hpp"

#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/morpho/named_attributes.hpp>
#include <qel/morpho/to_threshold.hpp>

#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace entry {
namespace internal {

/// The number of thresholds: the columns of input 3, reduced to 32 bits.
inline std::uint32_t threshold_count(const mxArray* thresholds) {
  return qel::internal::narrowed<std::uint32_t>(mxGetN(thresholds));
}

/// The output array: 2N + 1 planes of `rows` x `cols`, with N thresholds.
template <typename T>
mxArray* make_output(std::uint32_t rows, std::uint32_t cols, std::uint32_t count) {
  const std::int32_t dimensions[] = {static_cast<std::int32_t>(rows), static_cast<std::int32_t>(cols),
                                     static_cast<std::int32_t>(2 * count + 1)};
  return mxCreateNumericArray_700(3, dimensions, define_image_type(T{}), 0);
}

inline const qel::neighb2d& select_neighborhood(std::int32_t connectivity) {
  switch (connectivity) {
    case 0:  // none was given
    case 4:
      return qel::c4();
    case 8:
      return qel::c8();
    default:
      mexErrMsgTxt(messages::unknown_connectivity);
  }
}

/// The thresholds in the attribute's result type, in the order given. Ends the call if they are no row of doubles.
/// \throws std::bad_array_new_length if the number of planes would not fit into 31 bits.
template <typename L>
std::vector<L> read_thresholds(const mxArray* thresholds) {
  if (mxGetClassID(thresholds) != mxDOUBLE_CLASS || mxGetM(thresholds) != 1 || !is_full(thresholds))
    mexErrMsgTxt(messages::bad_thresholds);
  const std::uint32_t count = threshold_count(thresholds);
  // Beyond this the output's third dimension wraps, and the planes run off its end.
  if (count > std::uint32_t{std::numeric_limits<std::int32_t>::max()} / 2) throw std::bad_array_new_length();

  return qel::morpho::to_thresholds<L>(mxGetPr(thresholds), count);
}

}  // namespace internal
}  // namespace entry

/// Writes the profile of `image` by the attribute called `attribute` at `position`, which moves behind it.
template <typename I, typename N, typename T>
void compute_attribute_profile(const qel::Image<I>& image, T*& position, std::string attribute,
                               const qel::Neighborhood<N>& neighborhood, const mxArray* thresholds, std::string rule) {
  const auto computed = [&](const auto& candidate) {
    using candidate_type = std::decay_t<decltype(candidate)>;
    using A = typename candidate_type::accumulator;
    using L = typename candidate_type::threshold;
    if (!candidate.is_called(attribute)) return false;
    const auto lambdas = entry::internal::read_thresholds<L>(thresholds);
    if (rule.empty()) rule = candidate.default_rule;
    _compute_attribute_profile<I, T, A, N, L>(image, position, A(), neighborhood, lambdas, rule);
    return true;
  };
  const bool known = std::apply([&](const auto&... candidates) { return (computed(candidates) || ...); },
                                qel::morpho::named_attributes<I>);
  if (!known) mexErrMsgTxt(entry::messages::unknown_attribute);
}

template <typename T>
void compute_attribute_profile(const mxArray* image, mxArray*& output, std::string attribute, std::int32_t connectivity,
                               const mxArray* thresholds, std::string rule) {
  if (mxGetNumberOfDimensions_700(image) != 2) mexErrMsgTxt(entry::messages::not_two_dimensions);
  const qel::image2d<T> input = mxArray2qel_image<T, T>(image);
  // Connectivity and thresholds are checked only now; if one is wrong, the array is left to the host.
  output = entry::internal::make_output<T>(input.domain().len(0), input.domain().len(1),
                                           entry::internal::threshold_count(thresholds));
  T* position = reinterpret_cast<T*>(mxGetPr(output));
  const qel::neighb2d& neighborhood = entry::internal::select_neighborhood(connectivity);
  compute_attribute_profile(input, position, attribute, neighborhood, thresholds, rule);
}

#endif  // ENTRY_DISPATCH_HPP
