// SPDX-License-Identifier: MIT

// Filling, copying and making images.

#include <qel/data/fill.hpp>

#include <qel/data/duplicate.hpp>
#include <qel/data/initialize.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/attribute/inertia.hpp>

#include <limits>

#include "tests/unit/trace_capture.hpp"
#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace attribute = qel::morpho::attribute;

const box2d two_rows({-1, 4}, {0, 6});

template <typename T>
class fill : public ::testing::Test {};
TYPED_TEST_SUITE(fill, support::value_types, support::value_type_names);

TYPED_TEST(fill, a_value_reaches_the_border) {
  using limits = std::numeric_limits<TypeParam>;
  for (const TypeParam v : {limits::min(), TypeParam(3), limits::max()}) {
    image2d<TypeParam> ima(two_rows, 2);
    qel::data::fill(ima, v);
    for (unsigned i = 0; i < ima.nelements(); ++i) ASSERT_EQ(ima.element(i), v);
  }
}

/// The end of the name of the path that a fill took.
template <typename I, typename D>
std::string path_of_fill(I& dest, const D& src) {
  const trace_capture capture;
  qel::data::fill(dest, src);
  for (const char* const path : {"fastest", "lines", "fast"})
    if (capture.output().find(std::string("data::impl::fill_with_image_") + path + " {") != std::string::npos)
      return path;
  return "none";
}

/// Fills an image of D that holds `before` everywhere from one with a border of 1 that holds `value`.
template <typename D, typename V>
void check_path(D before, const V& value, D after, unsigned dest_border, const std::string& path) {
  image2d<D> dest(two_rows, dest_border);
  qel::data::fill(dest, before);
  image2d<V> src(two_rows, 1);
  qel::data::fill(src, value);
  EXPECT_EQ(path_of_fill(dest, src), path);
  for (unsigned i = 0; i < dest.nelements(); ++i) {
    const bool written = path == "fastest" || two_rows.has(dest.point_at_index(i));
    EXPECT_EQ(dest.element(i), written ? after : before) << "element " << i;
  }
}

TYPED_TEST(fill, an_image_of_one_type_copies_the_border_only_with_the_whole_block) {
  check_path<TypeParam, TypeParam>(1, 2, 2, 1, "fastest");
  check_path<TypeParam, TypeParam>(1, 2, 2, 0, "lines");
  check_path<TypeParam, TypeParam>(1, 2, 2, 3, "lines");
}

TEST(fill_with_image, accumulators_become_results_by_the_path_of_their_size) {
  using I = image2d<short>;
  attribute::card<I> area;
  attribute::diagonal<I> diagonal;
  attribute::inertia<I> inertia;
  attribute::deviation<I, float, float> deviation;
  for (short col = 0; col < 2; ++col) {
    area.take(point2d(0, col));
    diagonal.take(point2d(0, col));
    inertia.take(point2d(0, col));
    deviation.take(static_cast<short>(2 * col));
  }
  check_path(9u, area, 2u, 1, "fastest");
  check_path(9u, area, 2u, 0, "lines");
  for (const unsigned border : {0u, 1u}) {
    check_path(9.0, diagonal, 2.23606797749979, border, "fast");
    check_path(9.0f, inertia, 0.125f, border, "fast");
    check_path(9.0f, deviation, 1.0f, border, "fast");
  }
}

TEST(fill_with_image, other_domains_go_by_lines_but_domains_without_sites_are_equal) {
  image2d<int> a(box2d({0, 0}, {1, 1})), b(box2d({0, 0}, {2, 2}));
  qel::data::fill(b, 5);
  EXPECT_EQ(path_of_fill(a, b), "lines");
  EXPECT_EQ(values(a), std::vector<int>(4, 5));
  image2d<int> c(box2d({3, 0}, {0, 5}), 0), d(box2d({9, 9}, {7, 7}), 0);
  EXPECT_EQ(path_of_fill(c, d), "fastest");
}

// The scope of the innermost operation stays open then.
TEST(fill_with_value, of_one_element_ends_the_trace) {
  image2d<int> ima(box2d({0, 0}, {0, 0}), 0);
  const trace_capture capture;
  qel::data::fill(ima, 4);
  EXPECT_EQ(ima.element(0), 4);
  EXPECT_EQ(capture.errors(),
            "error: bad matching scope (entering is 'data::impl::memset_' v. exiting is 'data::memset_')\n");
}

TYPED_TEST(fill, a_duplicate_has_all_values_in_a_block_of_its_own) {
  image2d<TypeParam> model(two_rows, 2);
  for (unsigned i = 0; i < model.nelements(); ++i) model.element(i) = static_cast<TypeParam>(i);
  const auto copy = duplicate(model);
  qel::data::fill(model, TypeParam(99));
  for (unsigned i = 0; i < copy.nelements(); ++i) EXPECT_EQ(copy.element(i), static_cast<TypeParam>(i));
  image2d<double> other;
  initialize(other, copy);
  EXPECT_EQ(other.domain(), two_rows);
  EXPECT_EQ(other.border(), 2u);
}

}  // namespace
