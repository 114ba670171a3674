// SPDX-License-Identifier: MIT
#ifndef QEL_QEL_HPP
#define QEL_QEL_HPP

// All that a program needs to make images, trees and profiles. Each header also stands alone: include the few that you
// use where the time to compile matters.

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/core/opt_at.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/data/fill.hpp>
#include <qel/data/initialize.hpp>
#include <qel/data/make_image.hpp>
#include <qel/data/sort_psites.hpp>
#include <qel/fun/geq.hpp>
#include <qel/fun/predicate.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/attribute/inertia.hpp>
#include <qel/morpho/attribute/is_increasing.hpp>
#include <qel/morpho/attribute_profile.hpp>
#include <qel/morpho/named_attributes.hpp>
#include <qel/morpho/profile_planes.hpp>
#include <qel/morpho/to_threshold.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/compute_parent.hpp>
#include <qel/morpho/tree/data.hpp>
#include <qel/morpho/tree/filter/batch/filter_planes.hpp>
#include <qel/morpho/tree/filter/named_rule.hpp>
#include <qel/morpho/tree/filter/rules.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/piter.hpp>
#include <qel/morpho/tree/propagate_representative.hpp>
#include <qel/morpho/tree/spread_node_values.hpp>
#include <qel/morpho/tree/sweep/sweep_sites.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>
#include <qel/scene/block_profile.hpp>
#include <qel/trace/trace.hpp>

#endif  // QEL_QEL_HPP
