// SPDX-License-Identifier: MIT

#include <qel/trace/trace.hpp>

#include <qel/data/duplicate.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>

#include <ctime>

#include "tests/unit/trace_capture.hpp"
#include "tests/unit/unit.hpp"

namespace {

using namespace unit;
namespace trace = qel::trace;

TEST(trace, outline_of_a_duplicate) {
  const auto ima = image<int>({1, 2, {1, 2}});
  const trace_capture capture;
  duplicate(ima);
  EXPECT_EQ(capture.outline(),
            "core::duplicate {\n"
            "  core::initialize {} \n"
            "  data::fill {\n"
            "    data::fill_with_image {\n"
            "      border::get {} \n"
            "      border::get {} \n"
            "      data::impl::fill_with_image_fastest {} \n"
            "    } data::fill_with_image \n"
            "  } data::fill \n"
            "} core::duplicate \n");
  EXPECT_EQ(capture.errors(), "");
}

/// An outline on one line, each scope with its inner scopes in parentheses.
std::string folded(const std::string& outline) {
  std::istringstream in(outline);
  std::string result, word;
  while (in >> word) {
    if (word == "{")
      result += "(";
    else if (word == "}" && in >> word)
      result += " )";
    else if (word != "{}")
      result += " " + word;
  }
  return result;
}

TEST(trace, outline_of_a_tree_and_its_attribute_image) {
  const auto ima = image<unsigned char>({1, 2, {1, 2}});
  const trace_capture capture;
  const auto s = qel::data::sort_psites_increasing(ima);
  const tree_of<unsigned char> tree(ima, s, c4());
  compute_attribute_image(qel::morpho::attribute::card<image2d<unsigned char>>(), tree);
  const std::string fill_with_value =
      " data::fill( data::fill_with_value( data::impl::fill_with_value_one_block("
      " data::memset_( data::impl::memset_ ) ) ) )";
  EXPECT_EQ(folded(capture.outline()),
            " histo::compute( qel::geom::max_col( geom::bbox( geom::bbox ) )"
            " qel::geom::min_row( geom::bbox( geom::bbox ) ) )"
            " geom::nsites( set::impl::card_from_method )"
            " morpho::tree::compute_parent( morpho::tree::impl::generic::compute_parent("
            " core::initialize core::initialize core::initialize" +
                fill_with_value + " ) ) core::initialize" + " morpho::tree::compute_attribute_image( core::initialize" +
                fill_with_value +
                " core::initialize data::fill( data::fill_with_image( border::get border::get"
                " data::impl::fill_with_image_fastest ) ) )");
}

TEST(trace, tells_the_seconds_when_the_clock_has_moved) {
  const trace_capture capture;
  trace::entering("a");
  trace::start_times.top() = std::clock() - 3L * 1000000;
  trace::exiting("a");
  // Some processor time passes in between.
  EXPECT_NEAR(std::stod(capture.output().substr(7)), 3.0, 0.5) << capture.output();
}

TEST(trace, does_nothing_when_quiet) {
  const trace_capture capture;
  trace::quiet = true;
  trace::exiting("never opened");
  trace::entering("a");
  EXPECT_EQ(trace::tab, 0u);
  EXPECT_EQ(capture.output() + capture.errors(), "");
}

TEST(trace, exiting_under_another_name_is_reported_and_still_closes_the_scope) {
  const trace_capture capture;
  trace::entering("scope");
  trace::exiting("scop");
  EXPECT_EQ(capture.errors(), "error: bad matching scope (entering is 'scope' v. exiting is 'scop')\n");
  EXPECT_EQ(capture.outline(), "scope {} \n");
  EXPECT_TRUE(trace::quiet && trace::scopes.empty() && trace::start_times.empty());
}

TEST(trace, suspend_keeps_one_value_and_full_trace_overrules_it) {
  const trace_capture capture;
  trace::suspend();
  EXPECT_TRUE(trace::quiet);
  trace::resume();
  EXPECT_FALSE(trace::quiet);
  trace::full_trace = true;
  image2d<int> ima;
  initialize(ima, image<int>({1, 1, {1}}));
  EXPECT_EQ(capture.outline(), "core::initialize {\n  geom::bbox {} \n} core::initialize \n");
}

}  // namespace
