// SPDX-License-Identifier: MIT
//
//   bench_stages PICTURE_FOLDER SIDE [Google Benchmark's options]
//
// Times each stage of a profile by itself on the mosaics of SIDE x SIDE pixels: where a whole call spends its time.
// Names are CLASS/TREE/STAGE, and the counter `per_site` is the time for one pixel. `completion` writes a plane from the
// values of the nodes, `export` one from an image; `parents` is `tree` with the parent image, which a call does without.

#include "bench/picture.hpp"
#include "entry/array_bridge.hpp"

#include <benchmark/benchmark.h>
#include <qel/core/image2d.hpp>
#include <qel/core/neighb2d.hpp>
#include <qel/core/p_array.hpp>
#include <qel/data/duplicate.hpp>
#include <qel/data/sort_psites.hpp>
#include <qel/fun/geq.hpp>
#include <qel/morpho/attribute/card.hpp>
#include <qel/morpho/attribute/deviation.hpp>
#include <qel/morpho/attribute/diagonal.hpp>
#include <qel/morpho/attribute/inertia.hpp>
#include <qel/morpho/tree/compute_attribute_image.hpp>
#include <qel/morpho/tree/compute_parent.hpp>
#include <qel/morpho/tree/data.hpp>
#include <qel/morpho/tree/filter/direct.hpp>
#include <qel/morpho/tree/filter/max.hpp>
#include <qel/morpho/tree/filter/min.hpp>
#include <qel/morpho/tree/filter/sub.hpp>
#include <qel/morpho/tree/node_tree.hpp>
#include <qel/pw/cst.hpp>
#include <qel/pw/value.hpp>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace bench {
namespace {

template <typename T>
qel::p_array2d sorted_sites(const qel::image2d<T>& image, bool decreasing) {
  return decreasing ? qel::data::sort_psites_decreasing(image) : qel::data::sort_psites_increasing(image);
}

/// What the stages work on: a picture in the host and as an image, one of its trees, and room for results.
template <typename T>
struct subject {
  using image_type = qel::image2d<T>;
  using tree_type = qel::morpho::tree::data<image_type, qel::p_array2d>;
  using area_type = qel::morpho::attribute::card<image_type>;

  const mxArray* array;
  image_type image;
  bool decreasing;
  qel::p_array2d sites;
  tree_type tree;
  qel::morpho::tree::node_tree<tree_type> nodes;
  qel::image2d<unsigned> area;
  image_type filtered;
  std::vector<T> plane;

  subject(const mxArray* array_, bool decreasing_)
      : array(array_),
        image(mxArray2qel_image<T, T>(array)),
        decreasing(decreasing_),
        sites(sorted_sites(image, decreasing)),
        tree(image, sites, qel::c4()),
        nodes(tree),
        area(qel::morpho::tree::compute_attribute_image(area_type(), nodes)),
        filtered(qel::duplicate(nodes.f())),
        plane(image.domain().nsites()) {}

  auto keep() const { return qel::pw::value_(area) >= qel::pw::cst_(1000u); }
};

/// The subject of this picture and tree. It is made when the first of its stages runs, in place of the one
/// before, which takes too much memory to be kept.
template <typename T>
subject<T>& get_subject(const std::string& path, bool decreasing) {
  static std::unique_ptr<subject<T>> current;
  if (current == nullptr || current->decreasing != decreasing) {
    current.reset();
    test_host::reset();
    current = std::make_unique<subject<T>>(read_picture(path).to_array(), decreasing);
  }
  return *current;
}

template <typename A>
constexpr auto attribute_of = [](auto& s) { return qel::morpho::tree::compute_attribute_image(A(), s.nodes); };

/// Registers a benchmark of each stage; each gives something that depends on all that it has done.
template <typename T>
void add_stages(const std::string& path, const std::string& prefix, bool decreasing) {
  namespace attribute = qel::morpho::attribute;
  namespace filter = qel::morpho::tree::filter;
  using image_type = qel::image2d<T>;
  const auto add = [&](const char* name, auto work) {
    const auto run = [=](benchmark::State& state) {
      using benchmark::Counter;
      auto& s = get_subject<T>(path, decreasing);
      for (auto _ : state) {
        auto result = work(s);
        benchmark::DoNotOptimize(result);
        benchmark::ClobberMemory();
      }
      state.counters["per_site"] =
          Counter(s.image.domain().nsites(), Counter::kIsIterationInvariantRate | Counter::kInvert);
    };
    benchmark::RegisterBenchmark((prefix + name).c_str(), run)->Unit(benchmark::kMillisecond);
  };

  add("import", [](auto& s) { return mxArray2qel_image<T, T>(s.array); });
  add("sort", [](auto& s) { return sorted_sites(s.image, s.decreasing); });
  add("parents", [](auto& s) { return qel::morpho::tree::compute_parent(s.image, qel::c4(), s.sites); });
  add("tree", [](auto& s) { return decltype(s.tree)(s.image, s.sites, qel::c4()).table().nnodes(); });
  add("nodes", [](auto& s) { return decltype(s.nodes)(s.tree).nnodes(); });
  add("attribute/area", attribute_of<attribute::card<image_type>>);
  add("attribute/diagonal", attribute_of<attribute::diagonal<image_type>>);
  add("attribute/inertia", attribute_of<attribute::inertia<image_type>>);
  add("attribute/std", attribute_of<attribute::deviation<image_type, float, float>>);
  add("copy", [](auto& s) { return qel::duplicate(s.nodes.f()); });
  // A rule's cost does not depend on the values that it changes, so it may work on its own result.
  add("rule/min", [](auto& s) { return filter::min(s.nodes, s.filtered, s.keep()), 0; });
  add("rule/max", [](auto& s) { return filter::max(s.nodes, s.filtered, s.keep()), 0; });
  add("rule/direct", [](auto& s) { return filter::direct(s.nodes, s.filtered, s.keep()), 0; });
  add("rule/sub", [](auto& s) { return filter::sub(s.nodes, s.filtered, s.keep()), 0; });
  add("completion",
      [](auto& s) { return write_plane_by_number(s.tree.table().number, s.filtered.buffer(), s.plane.data()), 0; });
  add("export", [](auto& s) { return qel_image2mxPtr(s.image, s.plane.data()), 0; });
}

template <typename T>
void add_class(const std::string& folder, const std::string& side, const std::string& name) {
  const std::string path = folder + "/mosaic-" + side + "-" + name;
  add_stages<T>(path, name + "/min-tree/", true);
  add_stages<T>(path, name + "/max-tree/", false);
}

}  // namespace
}  // namespace bench

int main(int argc, char* argv[]) {
  benchmark::Initialize(&argc, argv);
  if (argc != 3) {
    std::cerr << "usage: bench_stages PICTURE_FOLDER SIDE [benchmark options]" << std::endl;
    return EXIT_FAILURE;
  }
  bench::add_class<unsigned char>(argv[1], argv[2], "uint8");
  bench::add_class<unsigned short>(argv[1], argv[2], "uint16");
  bench::add_class<int>(argv[1], argv[2], "int32");
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
