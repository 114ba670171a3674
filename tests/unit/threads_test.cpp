// SPDX-License-Identifier: MIT

// Threads that share the library, each with its own images. The thread sanitizer ends the program at a race. The
// threads make the first calls of `c4()` and `c8()`.

#include <qel/qel.hpp>

#include <cstdio>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "tests/support/random_image.hpp"

namespace {

/// The profiles of a new image by every attribute and rule, one plane after the other.
template <typename T>
std::vector<T> profiles() {
  support::random_engine engine(1);
  const auto m = support::random_image<T>(40, 50, support::flavour::few_levels, engine);
  const auto image = qel::make_image(m.values.data(), m.rows, m.cols);
  std::vector<T> all;
  const auto add = [&](const auto& attribute, const qel::neighb2d& nbh, const auto& rule) {
    using chosen = std::decay_t<decltype(attribute)>;
    const std::vector<typename chosen::threshold> thresholds = {2, 9};
    std::vector<T> planes(5 * m.values.size());
    qel::morpho::attribute_profile(image, nbh, typename chosen::accumulator(), thresholds, rule,
                                   qel::morpho::raster_planes(planes.data()));
    all.insert(all.end(), planes.begin(), planes.end());
  };
  const auto by_every_rule = [&](const auto& attribute) {
    std::apply([&](const auto&... rule) { ((add(attribute, qel::c4(), rule), add(attribute, qel::c8(), rule)), ...); },
               qel::morpho::tree::filter::rules);
  };
  std::apply([&](const auto&... attribute) { (by_every_rule(attribute), ...); },
             qel::morpho::named_attributes<qel::image2d<T>>);
  return all;
}

/// Whether two threads come to the same profiles.
template <typename T>
struct twins {
  std::vector<T> results[2];
  std::thread threads[2] = {std::thread([this] { results[0] = profiles<T>(); }),
                            std::thread([this] { results[1] = profiles<T>(); })};

  bool agree() {
    for (std::thread& t : threads) t.join();
    return results[0] == results[1];
  }
};

}  // namespace

int main() {
  twins<unsigned char> bytes;
  twins<int> words;
  const bool bytes_agree = bytes.agree();
  const bool words_agree = words.agree();
  if (!bytes_agree || !words_agree) static_cast<void>(std::fputs("threads: the profiles differ\n", stderr));
  return bytes_agree && words_agree ? 0 : 1;
}
