// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_DUPLICATE_HPP
#define QEL_DATA_DUPLICATE_HPP

#include <qel/core/concept/image.hpp>
#include <qel/core/trait_image.hpp>
#include <qel/data/fill.hpp>
#include <qel/data/initialize.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

/// A deep copy of `model`: domain, border and all values, those of the border too. Cost: one pass over the block.
///
/// \pre    `model` is valid.
/// \throws std::bad_alloc
template <typename I>
typename trait::concrete<I>::ret duplicate(const Image<I>& model) {
  trace::entering("core::duplicate");
  typename trait::concrete<I>::ret output;
  initialize(output, model);
  data::fill(output, internal::force_exact<I>(model));
  trace::exiting("core::duplicate");
  return output;
}

}  // namespace qel

#endif  // QEL_DATA_DUPLICATE_HPP
