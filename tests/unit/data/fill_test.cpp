// SPDX-License-Identifier: MIT

// Filling, copying and making images.

#include <qel/data/fill.hpp>

#include <qel/data/duplicate.hpp>
#include <qel/data/initialize.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/diagonal.hpp>

#include <cstdint>

#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace attribute = qel::morpho::attribute;

const box2d two_rows({-1, 4}, {0, 6});

/// Fills images of D from others whose element number j is make(j). Only a copy of the whole block copies the border:
/// between equal borders and elements of one size.
template <typename D, typename F>
void check_fill(F make) {
  using V = decltype(make(0u));
  for (const auto& [to, from] : {std::pair{1u, 1u}, {0u, 0u}, {0u, 2u}, {3u, 1u}}) {
    SCOPED_TRACE(::testing::Message() << "border " << to << " from border " << from);
    image2d<D> dest(two_rows, to);
    image2d<V> src(two_rows, from);
    for (unsigned j = 0; j < src.nelements(); ++j) src.element(j) = make(j);
    qel::data::fill(dest, D(99));
    for (unsigned j = 0; j < dest.nelements(); ++j) EXPECT_EQ(dest.element(j), D(99)) << "element " << j;
    qel::data::fill(dest, src);
    const bool whole = sizeof(D) == sizeof(V) && to == from;
    for (unsigned j = 0; j < dest.nelements(); ++j) {
      const point2d p = dest.point_at_index(j);
      EXPECT_EQ(dest.element(j), whole || two_rows.has(p) ? static_cast<D>(src(p)) : D(99)) << "element " << j;
    }
  }
}

template <typename T>
class fill : public ::testing::Test {};
TYPED_TEST_SUITE(fill, support::value_types, support::value_type_names);

TYPED_TEST(fill, an_image_or_a_value) {
  const auto number = [](unsigned j) { return static_cast<TypeParam>(j); };
  check_fill<TypeParam>(number);
  check_fill<std::int64_t>(number);
}

TEST(fill, an_image_of_accumulators_gives_their_results) {
  using I = image2d<int>;
  check_fill<unsigned>([](unsigned j) {
    attribute::card<I> area;
    area.set_count(j);
    return area;
  });
  check_fill<double>([](unsigned j) {
    attribute::diagonal<I> diagonal;
    diagonal.take(point2d(0, 0) + dpoint2d(j, 0));
    diagonal.take(point2d(0, 0));
    return diagonal;
  });
}

TEST(fill, a_duplicate_has_all_values_in_a_block_of_its_own) {
  image2d<int> model(two_rows, 2);
  for (unsigned i = 0; i < model.nelements(); ++i) model.element(i) = static_cast<int>(i);
  const auto copy = duplicate(model);
  qel::data::fill(model, 99);
  for (unsigned i = 0; i < copy.nelements(); ++i) EXPECT_EQ(copy.element(i), static_cast<int>(i));
  image2d<double> other;
  initialize(other, copy);
  EXPECT_EQ(other.domain(), two_rows);
  EXPECT_EQ(other.border(), 2u);
}

}  // namespace
