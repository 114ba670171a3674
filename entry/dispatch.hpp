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

#include <qel/accu/trait_accumulator.hpp>
#include <qel/core/concept/image.hpp>
#include <qel/core/concept/neighborhood.hpp>
#include <qel/core/image2d.hpp>
#include <qel/core/internal/large_pages.hpp>
#include <qel/core/internal/narrowed.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/morpho/named_attributes.hpp>
#include <qel/morpho/to_threshold.hpp>

#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

namespace entry {
namespace internal {

/// The number of thresholds: the columns of input 3, reduced to 32 bits.
inline std::uint32_t threshold_count(const mxArray* thresholds) {
  return qel::internal::narrowed<std::uint32_t>(mxGetN(thresholds));
}

/// The output array: 2N + 1 planes of `rows` x `cols`, with N thresholds. Hosts leave a large block to the system, which
/// clears its pages when they are first written: large pages, as a call writes all of it.
template <typename T>
mxArray* make_output(std::uint32_t rows, std::uint32_t cols, std::uint32_t count) {
  const std::uint32_t planes = 2 * count + 1;
  const std::int32_t dimensions[] = {static_cast<std::int32_t>(rows), static_cast<std::int32_t>(cols),
                                     static_cast<std::int32_t>(planes)};
  mxArray* const output = mxCreateNumericArray_700(3, dimensions, define_image_type(T{}), 0);
  qel::internal::advise_large_pages(mxGetPr(output), sizeof(T) * rows * cols * planes);
  return output;
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

/// How the image of a call lies. Turned saves the transpositions, and sums are the same only where their order is free.
template <typename I>
orientation orientation_for(const std::string& attribute) {
  bool is_free = false;
  qel::morpho::with_attribute<I>(attribute, [&](const auto& chosen) {
    using A = typename std::decay_t<decltype(chosen)>::accumulator;
    using order = typename qel::trait::accumulator_<A>::order;
    is_free = std::is_same_v<order, qel::trait::accumulator::order::free>;
  });
  return is_free ? orientation::turned : orientation::upright;
}

/// \pre, \throws  as `mxArray2qel_image`.
template <typename T>
qel::image2d<T> import_image(const mxArray* image, orientation lies) {
  return lies == orientation::turned ? turned_image<T>(image) : mxArray2qel_image<T, T>(image);
}

}  // namespace internal
}  // namespace entry

/// Writes the profile of `image` by the attribute called `attribute` at `position`, which moves behind it.
template <typename I, typename N, typename T>
void compute_attribute_profile(const qel::Image<I>& image, T*& position, std::string attribute,
                               const qel::Neighborhood<N>& neighborhood, const mxArray* thresholds, std::string rule,
                               entry::orientation lies = entry::orientation::upright) {
  const bool known = qel::morpho::with_attribute<I>(attribute, [&](const auto& chosen) {
    using A = typename std::decay_t<decltype(chosen)>::accumulator;
    using L = typename std::decay_t<decltype(chosen)>::threshold;
    const auto lambdas = entry::internal::read_thresholds<L>(thresholds);
    if (rule.empty()) rule = chosen.default_rule;
    _compute_attribute_profile<I, T, A, N, L>(image, position, A(), neighborhood, lambdas, rule, lies);
  });
  if (!known) mexErrMsgTxt(entry::messages::unknown_attribute);
}

template <typename T>
void compute_attribute_profile(const mxArray* image, mxArray*& output, std::string attribute, std::int32_t connectivity,
                               const mxArray* thresholds, std::string rule) {
  if (mxGetNumberOfDimensions_700(image) != 2) mexErrMsgTxt(entry::messages::not_two_dimensions);
  const entry::orientation lies = entry::internal::orientation_for<qel::image2d<T>>(attribute);
  const qel::image2d<T> input = entry::internal::import_image<T>(image, lies);
  // Connectivity and thresholds are checked only now; if one is wrong, the array is left to the host.
  output = entry::internal::make_output<T>(qel::internal::narrowed<std::uint32_t>(mxGetM(image)),
                                           qel::internal::narrowed<std::uint32_t>(mxGetN(image)),
                                           entry::internal::threshold_count(thresholds));
  T* position = reinterpret_cast<T*>(mxGetPr(output));
  const qel::neighb2d& neighborhood = entry::internal::select_neighborhood(connectivity);
  compute_attribute_profile(input, position, attribute, neighborhood, thresholds, rule, lies);
}

#endif  // ENTRY_DISPATCH_HPP
