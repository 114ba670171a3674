// SPDX-License-Identifier: MIT
#include <qel/morpho/attribute_profile.hpp>

#include <qel/data/make_image.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/profile_planes.hpp>
#include <qel/morpho/tree/filter/rules.hpp>

#include "tests/support/slow_profile.hpp"
#include "tests/unit/trace_capture.hpp"
#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace morpho = qel::morpho;

template <typename T, typename Sink>
void area_profile(const image2d<T>& f, const std::vector<unsigned>& thresholds, Sink&& sink) {
  morpho::attribute_profile(f, c8(), morpho::attribute::card<image2d<T>>(), thresholds,
                            morpho::tree::filter::rule::max(), sink);
}

template <typename T>
class attribute_profile : public ::testing::Test {};
TYPED_TEST_SUITE(attribute_profile, support::value_types, support::value_type_names);

// With so many thresholds the planes of one tree go out in several groups.
TYPED_TEST(attribute_profile, needs_no_host_and_is_the_same_in_every_sink) {
  for_random_images<TypeParam>([](const image2d<TypeParam>& f, auto&) {
    const std::vector<unsigned> thresholds = {2, 1, 5, 9, 30, 4, 3, 7, 2};
    const support::matrix<TypeParam> rows{f.domain().len(0), f.domain().len(1), values(f)};
    const auto copy = qel::make_image(rows.values.data(), rows.rows, rows.cols);
    morpho::plane_images<image2d<TypeParam>> images;
    area_profile(copy, thresholds, images);
    EXPECT_NE(images.images[9].buffer(), copy.buffer()) << "what a sink keeps is not the user's image";
    std::vector<TypeParam> block(19 * values(f).size());
    morpho::raster_planes<TypeParam> raster(block.data());
    area_profile(f, thresholds, raster);
    EXPECT_EQ(raster.position(), block.data() + block.size());

    // The oracle writes columns: those of the transposed image are the rows.
    const oracle::slow_profile<TypeParam> slow(support::transposed(rows), 8);
    EXPECT_EQ(block, slow.planes("area", {thresholds.begin(), thresholds.end()}, "max"));
    std::vector<TypeParam> all;
    for (const auto& plane : images.images)
      for (const TypeParam v : values(plane)) all.push_back(v);
    EXPECT_EQ(all, block);
  });
}

TEST(attribute_profile_sinks, agree_on_rows_longer_than_the_pieces_that_are_written_at_once) {
  support::random_engine engine(seed);
  const auto f = image(support::random_image<int>(2, 1000, support::flavour::all_distinct, engine));
  std::vector<int> block(10000);
  area_profile(f, {3, 20}, morpho::raster_planes(block.data()));
  morpho::plane_images<image2d<int>> images;
  area_profile(f, {3, 20}, images);
  std::vector<int> all;
  for (const auto& plane : images.images)
    for (const int v : values(plane)) all.push_back(v);
  EXPECT_EQ(block, all);
}

// A fill of one element leaves its scope open: no step of a profile makes an image so small.
TEST(attribute_profile_trace, of_a_constant_image_is_that_of_another) {
  const auto outline = [](int second) {
    image2d<int> f(box2d({0, 0}, {0, 1}));
    f({0, 0}) = 7;
    f({0, 1}) = second;
    morpho::plane_images<image2d<int>> planes;
    const trace_capture trace;
    area_profile(f, {1, 2}, planes);
    return trace.outline() + trace.errors();
  };
  EXPECT_EQ(outline(7), outline(8));
}

}  // namespace
