// SPDX-License-Identifier: MIT
#ifndef QEL_DATA_INITIALIZE_HPP
#define QEL_DATA_INITIALIZE_HPP

#include <qel/core/concept/image.hpp>
#include <qel/data/check_init.hpp>
#include <qel/data/geom/bbox.hpp>
#include <qel/trace/trace.hpp>

namespace qel {

/// Gives the empty image `ima` the domain and border of `model`. The value types may differ.
///
/// Numbers and sites are not set, other values are those of their default construction. The trace shows nothing of what
/// runs inside. \throws std::bad_alloc
template <typename I, typename J>
void initialize(Image<I>& ima, const Image<J>& model) {
  trace::entering("core::initialize");
  trace::suspend();
  const J& exact_model = internal::force_exact<J>(model);
  const auto b = geom::bbox(exact_model.domain());
  const unsigned bdr = exact_model.border();
  internal::check_init(&I::init_);
  internal::force_exact<I>(ima).init_(b, bdr);
  trace::resume();
  trace::exiting("core::initialize");
}

}  // namespace qel

#endif  // QEL_DATA_INITIALIZE_HPP
