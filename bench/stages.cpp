// SPDX-License-Identifier: MIT
//
//   bench_stages PICTURE,ATTRIBUTE,CONNECTIVITY,THRESHOLD/THRESHOLD/... ...
//
// Where a call spends its time: takes the steps of a call one by one, on memory as cold as in a call, and reads the
// clock in between. Prints a line of JSON for each case: the medians of the stages in milliseconds, both trees
// together, and that of the whole call, which their sum has to meet. Each sample comes from a new process, as in
// bench_call.

#include "bench/measure.hpp"
#include "bench/picture.hpp"
#include "entry/array_bridge.hpp"
#include "entry/dispatch.hpp"
#include "entry/profile.hpp"

#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/named_attributes.hpp>
#include <qel/morpho/tree/accumulate/compute_attribute_image.hpp>
#include <qel/morpho/tree/data.hpp>
#include <qel/morpho/tree/filter/batch/filter_planes.hpp>
#include <qel/morpho/tree/filter/batch/plane_values.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/morpho/tree/sweep/sweep_sites.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <type_traits>
#include <vector>

namespace bench {
namespace {

enum stage : std::size_t {
  import,
  output,
  tree,
  nodes,
  attribute,
  rules,
  planes,
  middle,
  release,
  whole_call,
  nstages
};
constexpr const char* names[] = {"import", "output", "tree",   "nodes",   "attribute",
                                 "rules",  "planes", "middle", "release", "whole call"};

/// Milliseconds by stage, and the clock that fills them.
struct times {
  std::array<double, nstages> ms;
  double last;

  void start() { last = processor_ms(); }

  /// What was done since the last lap belongs to stage `s`.
  void lap(stage s) {
    const double now = processor_ms();
    ms[s] += now - last;
    last = now;
  }
};

/// The sink of a call, with a clock: the time until a call of it is that of the rules.
template <typename T>
struct timed_planes {
  entry::column_planes<T> to;
  times& clock;

  template <typename Nodes, typename V>
  void filtered(const Nodes& n, const qel::morpho::tree::plane_values<V>& values) {
    clock.lap(rules);
    to.filtered(n, values);
    clock.lap(planes);
  }
};

/// The steps of one tree.
template <typename A, typename T, typename L>
void run_tree(const qel::image2d<T>& image, const qel::morpho::tree::sweep_sites<qel::image2d<T>>& sites,
              const qel::neighb2d& nbh, const std::vector<L>& thresholds, const std::string& rule,
              timed_planes<T>& sink) {
  using sites_type = qel::morpho::tree::sweep_sites<qel::image2d<T>>;
  const qel::morpho::tree::data<qel::image2d<T>, sites_type> made_tree(image, sites, nbh);
  sink.clock.lap(tree);
  const qel::morpho::tree::node_tree<std::decay_t<decltype(made_tree)>> made_nodes(made_tree);
  sink.clock.lap(nodes);
  const auto values = qel::morpho::tree::compute_attribute_image(A(), made_nodes);
  sink.clock.lap(attribute);
  std::vector<decltype(qel::pw::value_(values) >= qel::pw::cst_(L()))> keep;
  keep.reserve(thresholds.size());
  for (const L t : thresholds) keep.push_back(qel::pw::value_(values) >= qel::pw::cst_(t));
  qel::morpho::tree::filter_planes(made_nodes, keep, entry::rule_called(rule), sink);
}

template <typename T, typename Attribute>
times run_steps(const request& r, const picture& p, const Attribute& chosen) {
  using A = typename Attribute::accumulator;
  using L = typename Attribute::threshold;
  const mxArray* const array = p.to_array();
  const std::vector<L> thresholds(r.thresholds.begin(), r.thresholds.end());
  const std::vector<L> reversed(thresholds.rbegin(), thresholds.rend());
  const std::string rule = r.rule.empty() ? chosen.default_rule : r.rule;
  const qel::neighb2d& nbh = r.connectivity == 8 ? qel::c8() : qel::c4();

  times clock{};
  clock.start();
  const entry::orientation lies = entry::internal::orientation_for<qel::image2d<T>>(r.attribute);
  const qel::image2d<T> image = entry::internal::import_image<T>(array, lies);
  clock.lap(import);
  T* position = reinterpret_cast<T*>(mxGetPr(test_host::array(p.id, {p.rows, p.cols, r.planes()})));
  clock.lap(output);
  timed_planes<T> sink{{position, lies}, clock};
  qel::morpho::tree::sweep_sites<qel::image2d<T>> sites(image, false);
  run_tree<A>(image, sites, nbh, reversed, rule, sink);
  clock.lap(release);
  sink.to.input(qel::duplicate(image));
  clock.lap(middle);
  sites.turn();
  run_tree<A>(image, sites, nbh, thresholds, rule, sink);
  clock.lap(release);
  return clock;
}

template <typename T>
times run_stages(const request& r, const picture& p) {
  times result{};
  qel::morpho::with_attribute<qel::image2d<T>>(r.attribute,
                                               [&](const auto& chosen) { result = run_steps<T>(r, p, chosen); });
  return result;
}

times run_stages(const request& r, const picture& p) {
  if (p.id == mxUINT8_CLASS) return run_stages<unsigned char>(r, p);
  if (p.id == mxUINT16_CLASS) return run_stages<unsigned short>(r, p);
  return run_stages<int>(r, p);
}

double run_call(const request& r, const picture& p) {
  const auto args = to_arguments(r, p);
  const double start = processor_ms();
  test_host::call(args);
  return processor_ms() - start;
}

void run(const request& r) {
  const picture p = read_picture(r.path);
  std::array<std::vector<double>, nstages> samples;
  for (int round = 0; round < rounds; ++round) {
    times t = in_child(r.name, [&] { return run_stages(r, p); });
    t.ms[whole_call] = in_child(r.name, [&] { return run_call(r, p); });
    for (std::size_t s = 0; s < nstages; ++s) samples[s].push_back(t.ms[s]);
  }
  std::cout << "{\"case\": \"" << r.name << "\", \"sites\": " << p.sites();
  for (std::size_t s = 0; s < nstages; ++s) {
    std::sort(samples[s].begin(), samples[s].end());
    std::cout << ", \"" << names[s] << "\": " << samples[s][rounds / 2];
  }
  std::cout << "}" << std::endl;
}

}  // namespace
}  // namespace bench

int main(int argc, char* argv[]) {
  try {
    for (const std::string& arg : std::vector<std::string>(argv + 1, argv + argc))
      bench::run(bench::parse_request(arg));
  } catch (const std::exception& e) {
    std::cerr << "bench_stages: " << e.what() << std::endl;
    return EXIT_FAILURE;
  }
}
