// SPDX-License-Identifier: MIT

// Containers and walks of the library against simple models: any operations in any order.

#include "fuzz/input.hpp"

#include <qel/core/convert/to_p_array.hpp>
#include <qel/core/dpsites_piter.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/core/site_set/box_piter.hpp>
#include <qel/core/site_set/p_indexed_piter.hpp>
#include <qel/core/util/priority_bits.hpp>
#include <qel/core/util/set.hpp>
#include <qel/core/util/tracked_ptr.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace {

using fuzz::require;
using qel::box2d;
using qel::dpoint2d;
using qel::point2d;
using sites = std::vector<point2d>;

/// An object that may hold a handle on an older one: so there are no rings, which handles would never free.
template <template <typename> class Handle>
struct chained {
  chained(int& count, int index) : living(count), age(index) { ++living; }
  chained(const chained&) = delete;
  chained& operator=(const chained&) = delete;
  ~chained() { --living; }

  int& living;
  int age;
  Handle<chained> next;
};

template <typename T>
using shared = std::shared_ptr<T>;

// Each handle has a twin among the standard shared pointers.
void run_tracked_ptr(fuzz::input& in) {
  using object = chained<qel::util::tracked_ptr>;
  using twin = chained<shared>;
  int living = 0;
  {
    int living_twins = 0;
    std::array<std::optional<qel::util::tracked_ptr<object>>, 4> handles;
    std::array<std::shared_ptr<twin>, 4> twins;
    for (auto& h : handles) h.emplace();
    for (int age = 0; !in.is_empty(); ++age) {
      const std::size_t operation = in.below(8);
      const std::size_t i = in.below(4);
      const std::size_t j = in.below(4);
      auto& h = *handles[i];
      if (operation < 4) twins[i] = operation == 0 ? std::make_shared<twin>(living_twins, age) : nullptr;
      if (operation == 0) h = new object(living, age);
      if (operation == 1) h = static_cast<object*>(nullptr);
      if (operation == 2) h.clean_();
      if (operation == 3) handles[i].emplace();
      if (operation == 4) h = h.operator->();
      if (operation == 5) {
        h = *handles[j];
        twins[i] = twins[j];
      } else if (operation == 6 && twins[i] && twins[j] && twins[j]->age < twins[i]->age) {
        h->next = *handles[j];
        twins[i]->next = twins[j];
      } else if (operation == 7 && twins[j]) {
        h = (*handles[j])->next;
        twins[i] = twins[j]->next;
      }
      require(living == living_twins, "an object lives as long as it has handles");
      for (std::size_t k = 0; k < 4; ++k) {
        const auto* const holders = handles[k]->holders();
        require((*handles[k] == nullptr) == !twins[k] && (holders == nullptr) == !twins[k],
                "handles are null together");
        if (holders == nullptr) continue;
        require((*handles[k])->age == twins[k]->age, "a handle keeps its object");
        require(holders->size() == static_cast<std::size_t>(twins[k].use_count()), "all handles are listed");
        require(holders->count(&*handles[k]) == 1, "each handle is listed");
      }
    }
  }
  require(living == 0, "no object is left");
}

void run_set(fuzz::input& in) {
  qel::util::set<short> set;
  std::set<short> model;
  while (!in.is_empty()) {
    const std::size_t operation = in.below(8);
    const auto k = static_cast<short>(in.below(48) - 24);
    if (operation < 4) {
      set.insert(k);
      model.insert(k);
    } else if (operation == 4) {
      require(set.vect() == std::vector<short>(model.begin(), model.end()), "set: sorted elements");
    } else if (operation == 5) {
      const qel::util::set<short> copy = set;
      set.insert(k);
      require((copy == set) == (model.count(k) == 1), "set: equality");
      model.insert(k);
    } else if (operation == 6 && in.below(8) == 0) {
      set.clear();
      model.clear();
    } else if (!model.empty()) {
      const std::size_t i = in.below(model.size());
      const short element = *std::next(model.begin(), static_cast<std::ptrdiff_t>(i));
      require(set[static_cast<unsigned>(i)] == element, "set: element by number");
    }
    require(set.nelements() == model.size(), "set: number of elements");
    for (short e = -25; e <= 24; ++e) require(set.has(e) == (model.count(e) == 1), "set: has");
  }
}

template <unsigned layers>
void run_priority_bits(fuzz::input& in, std::size_t n) {
  using priority_bits = qel::util::priority_bits<layers>;
  if constexpr (layers < 5)
    if (!priority_bits::fits(n)) return run_priority_bits<layers + 1>(in, n);
  priority_bits bits(n);
  std::set<unsigned> model;
  while (!in.is_empty()) {
    const std::size_t operation = in.below(4);
    const auto k = static_cast<unsigned>(operation == 3 && !model.empty() ? *model.rbegin() : in.below(n));
    if (operation < 2) {
      bits.insert(k);
      model.insert(k);
    } else {
      bits.erase(k);
      model.erase(k);
    }
    for (const std::size_t from : {std::size_t{k}, in.below(n), n - 1}) {
      const auto next = model.lower_bound(static_cast<unsigned>(from));
      const unsigned expected = next == model.begin() ? priority_bits::none : *std::prev(next);
      require(bits.greatest_below(static_cast<unsigned>(from)) == expected, "priority_bits: greatest member below");
    }
  }
}

void run_priority_bits(fuzz::input& in) {
  constexpr std::size_t sizes[] = {1, 64, 65, 257, 4096, 4097, 65537, 262145};
  run_priority_bits<1>(in, in.pick(sizes));
}

/// The sites that a new walk visits, twice in a row.
template <typename P>
sites walk(P p) {
  require(!p.is_valid(), "walk: starts at start()");
  std::array<sites, 2> walks;
  for (sites& w : walks)
    for (p.start(); p.is_valid(); p.next()) {
      require(w.size() < 5000, "walk: ends");
      w.push_back(p.to_site());
    }
  require(walks[0] == walks[1], "walk: is the same again");
  return walks[0];
}

void run_box(fuzz::input& in) {
  // Braces, here and below, fix which number is taken first.
  const point2d last{std::min(in.take<short>(), short{32766}), in.take<short>()};
  const auto reach = [&in](int from) {
    return static_cast<short>(std::max(from - int{in.take<std::uint8_t>()} % 20, -32768));
  };
  const point2d first{reach(last.row()), reach(last.col())};
  const box2d box(first, last);
  sites all, starts;
  for (int row = first.row(); row <= last.row(); ++row)
    for (int col = first.col(); col <= last.col(); ++col) {
      all.emplace_back(static_cast<short>(row), static_cast<short>(col));
      if (col == first.col()) starts.push_back(all.back());
    }
  require(box.is_valid() && box.nsites() == all.size(), "box: number of sites");
  require(walk(box2d::fwd_piter(box)) == all, "box: raster order");
  require(walk(qel::box_runstart_piter<point2d>(box)) == starts, "box: starts of rows");
  require(qel::convert::to_p_array(box).vect_ == all, "box: as array");
  const point2d p{in.take<short>(), in.take<short>()};
  require(box.has(p) == (std::find(all.begin(), all.end(), p) != all.end()), "box: has");
}

void run_array(fuzz::input& in) {
  qel::p_array2d array;
  sites model;
  while (!in.is_empty()) {
    const auto i = static_cast<short>(in.below(256) - 128);
    if (i == 0) {
      array.clear();
      model.clear();
    }
    array.insert({i, i});
    model.emplace_back(i, i);
    qel::p_array2d::psite p;
    p.change_target(array);
    p.change_index(i);
    require(array.nsites() == model.size(), "array: number of sites");
    require(array.has(p) == (i >= 0 && static_cast<std::size_t>(i) < model.size()), "array: has");
    require(!array.has(p) || p == model[static_cast<std::size_t>(i)], "array: site by number");
  }
  require(walk(qel::p_array2d::fwd_piter(array)) == model, "array: its order");
  std::reverse(model.begin(), model.end());
  require(walk(qel::p_array2d::bkd_piter(array)) == model, "array: against its order");
}

void run_window(fuzz::input& in) {
  qel::window2d win;
  std::set<std::pair<int, int>> model;
  const point2d centre{in.take<short>(), in.take<short>()};
  while (!in.is_empty()) {
    const auto [row, col] = in.take<std::array<signed char, 2>>();
    win.insert(dpoint2d(row, col));
    model.emplace(row, col);
  }
  bool symmetric = true;
  int delta = 0;
  sites around;
  for (const auto& [r, c] : model) {
    symmetric = symmetric && model.count({-r, -c}) == 1;
    delta = std::max({delta, std::abs(r), std::abs(c)});
    around.emplace_back(static_cast<short>(centre.row() + r), static_cast<short>(centre.col() + c));
  }
  require(win.size() == model.size() && win.is_centered() == (model.count({0, 0}) == 1), "window: size and centre");
  require(win.is_symmetric() == symmetric && win.delta() == static_cast<unsigned>(delta), "window: symmetry and reach");
  require(walk(qel::window2d::fwd_piter(win, centre)) == around, "window: sites around");
  const qel::neighb2d nbh(win);
  require(walk(qel::neighb2d::niter(nbh, centre)) == around, "neighbourhood: sites around");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr void (*runs[])(fuzz::input&) = {run_tracked_ptr, run_set,   run_priority_bits,
                                            run_box,         run_array, run_window};
  fuzz::input in(data, size);
  in.pick(runs)(in);
  return 0;
}
