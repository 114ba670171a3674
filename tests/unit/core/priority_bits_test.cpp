// SPDX-License-Identifier: MIT

#include <qel/core/util/priority_bits.hpp>

#include <iterator>
#include <set>

#include "tests/unit/unit.hpp"

namespace {

TEST(priority_bits, finds_the_greatest_member_below_like_an_ordered_set) {
  SCOPED_TRACE(::testing::Message() << "seed " << unit::seed);
  support::random_engine engine(unit::seed);
  for (const std::size_t n : {1u, 64u, 65u, 4096u, 4097u, 300000u}) {
    qel::util::priority_bits bits(n);
    std::set<unsigned> model;
    for (int step = 0; step < 3000; ++step) {
      const auto k = static_cast<unsigned>(support::below(n, engine));
      const auto member = model.lower_bound(k);
      if (support::below(2, engine) == 0) {
        bits.insert(k);
        model.insert(k);
      } else if (member != model.end()) {
        bits.erase(*member);
        model.erase(member);
      }
      const auto above = model.lower_bound(k);
      ASSERT_EQ(bits.greatest_below(k), above == model.begin() ? qel::util::priority_bits::none : *std::prev(above));
    }
  }
}

}  // namespace
