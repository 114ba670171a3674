// SPDX-License-Identifier: MIT

// Scenes in blocks against one computation on the whole: small scenes by the thousand.

#include <qel/scene/block_profile.hpp>

#include <qel/core/site_set/p_array.hpp>
#include <qel/data/sort_psites.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/tree/filter/max.hpp>
#include <qel/morpho/tree/filter/min.hpp>
#include <qel/morpho/tree/filter/sub.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "tests/support/random_image.hpp"

namespace {

using namespace qel::scene;
using support::below;
using support::matrix;
using support::random_engine;
namespace tree = qel::morpho::tree;

constexpr unsigned long seed = 20261121;

/// A tree of 16-bit values has a queue for each value, which is most of the time on small scenes.
template <typename T>
constexpr int turns = sizeof(T) == 1 ? 2000 : 400;

/// Corridors one pixel wide through the whole scene: a serpentine, or a comb with a back and teeth. `relief` gives them
/// small steps, so that regions end within them.
template <typename T>
matrix<T> corridors(std::size_t rows, std::size_t cols, bool relief, random_engine& engine) {
  const bool comb = below(2, engine) == 0;
  const T ground = static_cast<T>(below(2, engine) == 0 ? 10 : 200);
  matrix<T> m{rows, cols, std::vector<T>(rows * cols, ground)};
  const std::size_t step = 2 + below(3, engine);
  for (std::size_t r = 0; r < rows; ++r)
    for (std::size_t c = 0; c < cols; ++c) {
      const bool back = comb ? c == 0 : c == (r / step % 2 == 0 ? cols - 1 : 0);
      if (r % step == 0 || back) m.values[r * cols + c] = static_cast<T>(100 + (relief ? below(3, engine) : 0));
    }
  return below(2, engine) == 0 ? m : transposed(m);
}

template <typename T>
matrix<T> random_scene(random_engine& engine) {
  const std::size_t rows = 1 + below(44, engine);
  const std::size_t cols = 1 + below(44, engine);
  const std::size_t kind = below(support::flavours.size() + 2, engine);
  if (kind >= support::flavours.size()) return corridors<T>(rows, cols, kind % 2 == 0, engine);
  return support::random_image<T>(rows, cols, support::flavours[kind], engine);
}

template <typename T>
rectangle all_of(const matrix<T>& m) {
  return {0, 0, static_cast<std::int64_t>(m.rows), static_cast<std::int64_t>(m.cols)};
}

template <typename T>
window<T> read(const matrix<T>& m, const rectangle& place) {
  window<T> w(place);
  for (std::int64_t r = place.row; r < place.end_row(); ++r)
    for (std::int64_t c = place.col; c < place.end_col(); ++c)
      w.values(w.site(r, c)) = m.values[static_cast<std::size_t>(r) * m.cols + static_cast<std::size_t>(c)];
  return w;
}

template <typename N, typename F, typename P>
void apply_rule(std::size_t rule, const N& nodes, F& values, const P& pred) {
  if (rule == 0) tree::filter::min(nodes, values, pred);
  if (rule == 1) tree::filter::max(nodes, values, pred);
  if (rule == 2) tree::filter::direct(nodes, values, pred);
  if (rule == 3) tree::filter::sub(nodes, values, pred);
}

/// One tree of an image and what the filters need.
template <typename T, typename A>
struct filtered_tree {
  using tree_type = tree::data<qel::image2d<T>, qel::p_array2d>;

  filtered_tree(const qel::image2d<T>& f, direction d, const qel::neighb2d& nbh)
      : sites(d == direction::bright ? qel::data::sort_psites_increasing(f) : qel::data::sort_psites_decreasing(f)),
        whole(f, sites, nbh),
        nodes(whole),
        attribute(tree::compute_attribute_image(A(), nodes)) {}

  template <typename P>
  std::vector<T> filtered(std::size_t rule, const P& pred) const {
    auto values = qel::duplicate(nodes.f());
    apply_rule(rule, nodes, values, pred);
    std::vector<T> pixels;
    qel::box2d::fwd_piter p(number().domain());
    for (p.start(); p.is_valid(); p.next()) pixels.push_back(values.element(number()(p)));
    return pixels;
  }

  auto reaches(typename A::result lambda) const {
    return qel::pw::value_<qel::image2d<typename A::result>>(attribute) >= qel::pw::cst_<typename A::result>(lambda);
  }

  const auto& number() const { return nodes.table().number; }

  qel::p_array2d sites;
  tree_type whole;
  tree::node_tree<tree_type> nodes;
  qel::image2d<typename A::result> attribute;
};

/// A threshold of either attribute: small, about the size of a block or of the scene, or one that nothing reaches.
template <typename A>
typename A::result random_threshold(random_engine& engine) {
  const std::size_t greatest[] = {6, 40, 400, 2500};
  const std::size_t area = below(17, engine) == 0 ? 4294967295 : below(greatest[below(4, engine)], engine);
  if constexpr (std::is_same_v<typename A::result, double>)
    return std::sqrt(static_cast<double>(area));
  else
    return static_cast<unsigned>(area);
}

template <typename A>
class blocks : public ::testing::Test {};

template <typename T>
using area = qel::morpho::attribute::card<qel::image2d<T>>;
template <typename T>
using diagonal = qel::morpho::attribute::diagonal<qel::image2d<T>>;
template <typename T, typename A>
struct settings {
  using value = T;
  using attribute = A;
};
using attributes =
    ::testing::Types<settings<std::uint8_t, area<std::uint8_t>>, settings<std::uint16_t, area<std::uint16_t>>,
                     settings<std::uint8_t, diagonal<std::uint8_t>>, settings<std::int16_t, diagonal<std::int16_t>>>;
TYPED_TEST_SUITE(blocks, attributes, );

TYPED_TEST(blocks, equal_the_whole_scene_under_every_rule) {
  using T = typename TypeParam::value;
  using A = typename TypeParam::attribute;
  random_engine engine(seed);
  block_report total;
  int refused = 0;
  for (int turn = 0; turn < turns<T>; ++turn) {
    const matrix<T> m = random_scene<T>(engine);
    const rectangle scene = all_of(m);
    const auto& nbh = below(2, engine) == 0 ? qel::c4() : qel::c8();
    const std::int64_t side = 5 + static_cast<std::int64_t>(below(16, engine));
    const std::int64_t overlap = static_cast<std::int64_t>(below(8, engine));
    const std::size_t rule = below(4, engine);
    const std::vector<typename A::result> lambdas = {random_threshold<A>(engine), random_threshold<A>(engine)};
    SCOPED_TRACE(::testing::Message() << "seed " << seed << ", turn " << turn << ", c" << nbh.size() << ", side "
                                      << side << ", overlap " << overlap << ", rule " << rule << ", thresholds "
                                      << lambdas[0] << " " << lambdas[1] << ", scene " << m);

    const std::int64_t window_side = side + 2 * overlap;
    const std::int64_t least = window_side * window_side;
    const std::int64_t limit = std::max<std::int64_t>(least, below(2, engine) == 0 ? scene.pixels() : 2 * least);
    const auto reader = [&](const rectangle& place) { return read(m, place); };
    block_profile<T, A, decltype(reader)> profile(scene, reader, nbh, lambdas, {overlap, limit}, total);
    std::vector<std::vector<T>> got(4, std::vector<T>(m.values.size()));
    try {
      for (const rectangle& block : blocks_of(scene, side))
        profile.run(
            block, [](const auto&) {},
            [&](direction d, std::vector<block_plane<T>>& planes) {
              for (std::size_t k = 0; k < 2; ++k)
                for (std::int64_t r = block.row; r < block.end_row(); ++r)
                  for (std::int64_t c = block.col; c < block.end_col(); ++c)
                    got[(d == direction::bright ? 2u : 0u) + k][static_cast<std::size_t>(r * scene.cols + c)] =
                        planes[k].at(r, c);
            });
    } catch (const not_provable&) {
      ASSERT_LT(limit, scene.pixels());
      ++refused;
      continue;
    }

    const window<T> whole = read(m, scene);
    for (std::size_t plane = 0; plane < 4; ++plane) {
      const filtered_tree<T, A> t(whole.values, plane < 2 ? direction::dark : direction::bright, nbh);
      ASSERT_EQ(got[plane], t.filtered(rule, t.reaches(lambdas[plane % 2]))) << "plane " << plane;
    }
  }
  // Blocks that are all proved at once, or all read to the end, would find no fault.
  EXPECT_GT(total.read_again, total.blocks / 10);
  EXPECT_LT(total.read_again, total.blocks * 9 / 10);
  EXPECT_LT(refused, turns<T> / 2);
}

/// The law by its definition: two filters that agree, and not on a root that does not reach the threshold.
TYPED_TEST(blocks, proof_is_where_two_filters_agree) {
  using T = typename TypeParam::value;
  using A = typename TypeParam::attribute;
  random_engine engine(seed);
  for (int turn = 0; turn < turns<T> / 2; ++turn) {
    const matrix<T> m = random_scene<T>(engine);
    const window<T> w = read(m, all_of(m));
    const auto lambda = random_threshold<A>(engine);
    const inner_edges inner = {engine() % 2 == 0, engine() % 2 == 0, engine() % 2 == 0, engine() % 2 == 0};
    const direction d = turn % 2 == 0 ? direction::dark : direction::bright;
    const filtered_tree<T, A> t(w.values, d, below(2, engine) == 0 ? qel::c4() : qel::c8());
    SCOPED_TRACE(::testing::Message() << "seed " << seed << ", turn " << turn << ", threshold " << lambda << ", edges "
                                      << inner.top << inner.bottom << inner.left << inner.right << ", " << m);

    const auto reaches = t.reaches(lambda);
    const auto touches = compute_touch_image(t.nodes, inner);
    auto reaches_or_touches = qel::duplicate(touches);
    typename decltype(t.nodes)::nodes_t::fwd_piter n(t.nodes.nodes());
    for (n.start(); n.is_valid(); n.next()) reaches_or_touches(n) = touches(n) || reaches(n.to_site());
    const auto either = qel::pw::value_<qel::image2d<bool>>(reaches_or_touches) >= qel::pw::cst_<bool>(true);
    const auto root = t.nodes.nodes().vect_.back();
    const T root_value = t.nodes.f()(root);
    const T end = below(2, engine) == 0 ? root_value : static_cast<T>(root_value + 1);
    const bool root_is_certain = reaches(root) || !inner.any() || root_value == end;
    const auto proved = compute_proof_image(t.nodes, reaches, touches, end);
    for (std::size_t rule = 0; rule < 4; ++rule) {
      const std::vector<T> low = t.filtered(rule, reaches);
      const std::vector<T> high = t.filtered(rule, either);
      for (std::size_t i = 0; i < low.size(); ++i) {
        const qel::point2d p(static_cast<short>(i / m.cols), static_cast<short>(i % m.cols));
        const bool agree = low[i] == high[i] && (root_is_certain || low[i] != root_value);
        ASSERT_EQ(proved.element(t.number()(p)), agree) << "rule " << rule << ", site " << p.row() << " " << p.col();
      }
    }
  }
}

/// A corridor of 1000 pixels through blocks of 10: what the limit does not let prove is an error, not a guess.
TEST(block_limits, what_can_not_be_proved_is_an_error) {
  const matrix<std::uint8_t> m{3, 1000, std::vector<std::uint8_t>(3000, 7)};
  const rectangle scene = all_of(m);
  const auto reader = [&](const rectangle& place) { return read(m, place); };
  using profile = block_profile<std::uint8_t, area<std::uint8_t>, decltype(reader)>;
  const auto run = [&](unsigned threshold, std::int64_t most_pixels) {
    block_report report;
    profile p(scene, reader, qel::c4(), {1, threshold}, {2, most_pixels}, report);
    p.run(
        {0, 500, 3, 10}, [](const auto&) {}, [](direction, const auto&) {});
    return report.largest_overlap;
  };
  EXPECT_EQ(run(42, 42), 2);
  EXPECT_EQ(run(600, 650), 103);    // 128 would be 266 columns; 216 fit
  EXPECT_EQ(run(3001, 3000), 512);  // the whole scene
  try {
    run(600, 599);
    ADD_FAILURE() << "nothing thrown";
  } catch (const not_provable& failure) {
    EXPECT_EQ(failure.threshold, 1u);
    EXPECT_EQ(failure.block.col, 500);
  }
}

}  // namespace
