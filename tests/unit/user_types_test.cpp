// SPDX-License-Identifier: MIT

// A user's own types, with nothing but what the concepts ask for, through everything that takes them.

#include <qel/accu/internal/base.hpp>
#include <qel/core/concept/site_set.hpp>
#include <qel/core/concept/window.hpp>
#include <qel/core/internal/pseudo_site_base.hpp>
#include <qel/core/internal/site_set_iterator_base.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/data/fill.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/filter/direct.hpp>
#include <qel/morpho/tree/filter/max.hpp>
#include <qel/morpho/tree/filter/min.hpp>
#include <qel/morpho/tree/filter/sub.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/propagate_representative.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include "tests/support/minimal_image.hpp"
#include "tests/unit/unit.hpp"

namespace mine {

/// Up and down, and across with two columns skipped: symmetric, but not a window of the library.
struct window : qel::Window<window> {
  using dpsite = qel::dpoint2d;
  using site = qel::point2d;
  using psite = qel::point2d;
  unsigned size() const { return 2; }
  dpsite dp(unsigned i) const { return {0, i == 0 ? -1 : 1}; }
};

/// The sites (0, 0) to (k, k), walked on stored positions that know no set.
struct diagonal : qel::Site_Set<diagonal> {
  using site = qel::point2d;
  struct psite : qel::internal::pseudo_site_base_<const site&, psite> {
    psite() : p(0, 0) {}
    const site& subj_() const { return p; }
    site p;
  };
  struct fwd_piter : qel::internal::site_set_iterator_base<diagonal, fwd_piter> {
    explicit fwd_piter(const diagonal& s) { this->change_target(s); }
    void start_() { this->p_.p = {0, 0}; }
    void next_() { this->p_.p = *this + qel::dpoint2d(1, 1); }
    bool is_valid_() const { return *this != this->s_->end; }
    void invalidate_() { this->p_.p = this->s_->end; }
  };
  site end{3, 3};
};

/// The volume above a base level, which is a setting and no content: `init` keeps it.
struct volume : qel::accu::internal::base<double, volume> {
  using argument = double;
  explicit volume(double base_level = 0) : level(base_level) {}
  void init() { sum = 0; }
  void take(double v) { sum += v - level; }
  void take(const volume& other) { sum += other.sum; }
  double to_result() const { return sum; }
  bool is_valid() const { return true; }

  double level;
  double sum = 0;
};

/// A user's class that derives from an image.
struct map : qel::image2d<int> {
  using qel::image2d<int>::image2d;
};

}  // namespace mine

namespace qel::trait {

template <typename T>
struct image_<support::minimal_image<T>> {
  using quant = image::quant::high;
  struct value_storage {};
};
template <typename T, typename V>
struct ch_value<support::minimal_image<T>, V> {
  using ret = image2d<V>;
};
template <typename T>
struct concrete<support::minimal_image<T>> {
  using ret = image2d<T>;
};

template <>
struct accumulator_<mine::volume> {
  using when_pix = accumulator::when_pix::use_v;
  using order = accumulator::order::free;
};

}  // namespace qel::trait

namespace {

using namespace unit;
namespace tree = qel::morpho::tree;
namespace filter = qel::morpho::tree::filter;

// One row, so that the user's window is connected; the library's image under the same neighbours is the oracle.
template <typename T>
class users_own : public ::testing::Test {};
using value_types = ::testing::Types<int, double>;
TYPED_TEST_SUITE(users_own, value_types, );

TYPED_TEST(users_own, image_window_and_accumulator_give_what_the_librarys_do) {
  using T = TypeParam;
  const std::vector<T> row = {4, 9, 3, 5, 1};
  const auto f = image<T>({1, 5, row});
  const support::minimal_image<T> own(f.domain(), row);
  const qel::neighb<mine::window> nbh{mine::window()};
  const auto s = qel::data::sort_psites_increasing(own);
  EXPECT_EQ(s.vect_, qel::data::sort_psites_increasing(f).vect_);

  const tree_of<T> t(f, s, c4());
  const tree::data<support::minimal_image<T>, p_array2d> own_tree(own, s, nbh);
  EXPECT_EQ(values(own_tree.parent_image()), values(t.parent_image()));
  EXPECT_EQ(values(tree_of<T>(f, s, nbh).parent_image()), values(t.parent_image()));

  const auto volumes = tree::compute_attribute_image(mine::volume(1), own_tree);
  EXPECT_EQ(values(volumes), (std::vector<double>{11, 8, 17, 4, 17}));
  const tree::node_tree nodes(own_tree);
  const auto of_nodes = tree::compute_attribute_image(mine::volume(1), nodes);
  for (unsigned k = 0; k < nodes.nnodes(); ++k) EXPECT_EQ(of_nodes.element(k), volumes(nodes.table().canonical[k]));

  const auto large = qel::pw::value_(volumes) >= qel::pw::cst_(10.0);
  const auto filtered = [&](auto rule, auto g) {
    rule(g);
    tree::propagate_representative(own_tree, g);
    std::vector<T> result;
    for (const point2d& p : walk(box2d::fwd_piter(g.domain()))) result.push_back(g(p));
    return result;
  };
  EXPECT_EQ(filtered([&](auto& g) { filter::min(own_tree, g, large); }, own), (std::vector<T>{4, 4, 3, 3, 1}));
  EXPECT_EQ(filtered([&](auto& g) { filter::max(own_tree, g, large); }, own), (std::vector<T>{4, 4, 3, 3, 1}));
  EXPECT_EQ(filtered([&](auto& g) { filter::direct(own_tree, g, large); }, own), (std::vector<T>{4, 4, 3, 3, 1}));
  EXPECT_EQ(filtered([&](auto& g) { filter::sub(own_tree, g, large); }, own), (std::vector<T>{4, 4, 3, 3, 1}));
}

TEST(users_own_types, a_position_that_knows_no_set_can_be_walked) {
  const mine::diagonal s;
  EXPECT_EQ(walk(mine::diagonal::fwd_piter(s)), (sites{{0, 0}, {1, 1}, {2, 2}}));
}

TEST(users_own_types, a_class_derived_from_an_image_is_an_image) {
  mine::map source(box2d({0, 0}, {1, 1}), 0), target(box2d({0, 0}, {1, 1}), 0);
  qel::data::fill(source, 7);
  qel::data::fill(target, source);
  EXPECT_EQ(values(target), (std::vector<int>{7, 7, 7, 7}));
  EXPECT_EQ(values(qel::duplicate(source)), values(target));
}

TEST(users_own_types, images_of_plain_char_are_sorted_as_their_values_compare) {
  const auto f = image<char>({1, 4, {'c', '\0', 'a', '\0'}});
  EXPECT_EQ(qel::data::sort_psites_increasing(f).vect_, (sites{{0, 1}, {0, 3}, {0, 2}, {0, 0}}));
}

// Iterators, stored positions and neighbours are used where a site is meant.
TEST(users_own_types, what_stands_in_for_a_site_has_its_operators) {
  const box2d b({0, 0}, {1, 1});
  box2d::fwd_piter p(b), q(b);
  neighb2d::niter n(c4(), p);
  p.start();
  q.start();
  n.start();
  EXPECT_TRUE(p == q && n != p);
  EXPECT_EQ(p + dpoint2d(1, 0), point2d(1, 0));
  EXPECT_EQ(n - dpoint2d(1, 0), point2d(-2, 0));
  EXPECT_TRUE(qel::util::ord_strict(n, p) && qel::util::ord_weak(p, q) && !qel::util::ord_strict(p, q));
  EXPECT_TRUE(qel::util::ord_weak(dpoint2d(0, 1), dpoint2d(0, 1)));

  using center = const point2d&;
  static_assert(std::is_constructible_v<neighb2d::niter, const neighb2d&, center>);
  static_assert(!std::is_constructible_v<neighb2d::niter, const neighb2d&, point2d>, "the centre would dangle");
  static_assert(!std::is_constructible_v<neighb2d::niter, neighb2d, center>, "the neighbourhood would dangle");
  static_assert(!std::is_constructible_v<box2d::fwd_piter, box2d>, "the box would dangle");
}

}  // namespace
