// SPDX-License-Identifier: MIT

// The module `_attribute_profile`: what Python can't do. It trusts its arguments, which the package has checked; see
// ../attribute_profile/_attribute_profile.pyi.

#include "arrays.hpp"
#include "settings.hpp"
#include "side_threads.hpp"
#include "typed_calls.hpp"

#include <pybind11/functional.h>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <qel/core/image2d.hpp>
#include <qel/morpho/attribute/is_increasing.hpp>
#include <qel/morpho/named_attributes.hpp>
#include <qel/morpho/tree/filter/rules.hpp>
#include <qel/scene/block_profile.hpp>
#include <qel/scene/rectangle.hpp>
#include <qel/scene/window.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace py = pybind11;

namespace python {
namespace {

using qel::scene::rectangle;

/// The image of `source`, read while the call that it belongs to lasts.
template <typename T>
qel::image2d<T> read_for(side_work& work, const strided_image& source) {
  const std::lock_guard<std::mutex> reading(work.source);
  work.stop.check();
  return to_image<T>(source);
}

/// The profiles of `bands`, an array of bands x rows x columns: bands x planes x rows x columns.
py::array profiles(const py::array& bands, const settings& wanted, std::size_t workers,
                   const std::function<void(std::size_t)>& after) {
  return with_value_type(bands.dtype(), [&](auto zero) {
    using T = decltype(zero);
    std::vector<strided_image> sources;
    for (py::ssize_t k = 0; k < bands.shape(0); ++k) sources.push_back(band_of(bands, k));
    const std::vector<std::size_t> shape = {sources.size(), wanted.planes(), static_cast<std::size_t>(bands.shape(1)),
                                            static_cast<std::size_t>(bands.shape(2))};
    const std::size_t length = shape[1] * shape[2] * shape[3];  // of a profile
    const std::shared_ptr<T[]> planes = elements<T>(shape);
    const auto work = std::make_shared<side_work>();
    work->tasks = sources.size();
    work->task = [sources, wanted, planes, length, &shared = *work](std::size_t k) {
      write_profile(read_for<T>(shared, sources[k]), wanted, shared.stop, planes.get() + k * length);
    };
    run_aside(work, workers, after);
    return to_array(planes, shape);
  });
}

/// The planes of `image` in figures: planes x 2, the sum of the values and that of their squares.
py::array sums(const py::array& image, const settings& wanted) {
  return with_value_type(image.dtype(), [&](auto zero) {
    using T = decltype(zero);
    const auto work = std::make_shared<side_work>();
    const auto found = std::make_shared<std::vector<plane_sums>>();
    work->tasks = 1;
    work->task = [source = image_of(image), wanted, found, &shared = *work](std::size_t) {
      *found = sum_profile(read_for<T>(shared, source), wanted, shared.stop);
    };
    run_aside(work, 1, [](std::size_t) {});
    py::array_t<double> result({found->size(), std::size_t{2}});
    for (std::size_t k = 0; k < found->size(); ++k) {
      result.mutable_at(k, 0) = (*found)[k].values;
      result.mutable_at(k, 1) = (*found)[k].squares;
    }
    return result;
  });
}

using place_tuple = std::array<std::int64_t, 4>;  // row, column, rows, columns

rectangle to_rectangle(const place_tuple& p) { return {p[0], p[1], p[2], p[3]}; }

/// The reader of a scene whose pixels `read(row, column, rows, columns)` gives as an array.
scene_reader reader_of(const py::function& read, const py::dtype& type) {
  return [&read, &type](const rectangle& place, const std::function<void(const strided_image&)>& use) {
    const py::gil_scoped_acquire acquired;
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
    const py::array pixels = read(place.row, place.col, place.rows, place.cols);
    if (pixels.ndim() != 2 || pixels.shape(0) != place.rows || pixels.shape(1) != place.cols)
      throw py::value_error("source: it gives arrays of another shape than what was asked for");
    if (!pixels.dtype().equal(type)) throw py::type_error("source: it gives arrays of another dtype than its own");
    const strided_image image = image_of(pixels);
    const py::gil_scoped_release released;
    use(image);
  };
}

std::string refusal(const qel::scene::not_provable& why, const settings& wanted, std::int64_t most_pixels) {
  std::ostringstream text;
  text.precision(10);
  text << "memory: the block of " << why.block.rows << " x " << why.block.cols << " pixels at row " << why.block.row
       << ", column " << why.block.col << " can't be proved for the threshold " << wanted.thresholds[why.threshold]
       << " by windows of up to " << most_pixels << " pixels; give more memory, or a smaller threshold";
  return text.str();
}

/// The profile of a block of a scene: planes x rows x columns.
py::array block(const py::function& read, const py::dtype& type, const place_tuple& scene, const place_tuple& place,
                const settings& wanted, std::int64_t overlap, std::int64_t most_pixels) {
  const block_task task = {to_rectangle(scene), to_rectangle(place), {overlap, most_pixels}};
  return with_value_type(type, [&](auto zero) {
    using T = decltype(zero);
    const std::vector<std::size_t> shape = {wanted.planes(), static_cast<std::size_t>(task.block.rows),
                                            static_cast<std::size_t>(task.block.cols)};
    const std::shared_ptr<T[]> planes = elements<T>(shape);
    try {
      const py::gil_scoped_release released;
      write_block_profile(task, wanted, reader_of(read, type), planes.get());
    } catch (const qel::scene::not_provable& why) {
      throw py::value_error(refusal(why, wanted, most_pixels));
    }
    return to_array(planes, shape);
  });
}

/// Bytes for each pixel of a window at worst, and the reach of regions in pixels.
std::pair<std::int64_t, double> window_needs_of(const py::dtype& type, const settings& wanted) {
  return with_value_type(type, [&](auto zero) {
    const window_needs needs = needs_of_windows<decltype(zero)>(wanted);
    return std::make_pair(needs.bytes, needs.reach);
  });
}

/// For each attribute: its letter, its name, the name of its rule, whether blocks can be proved by it.
std::vector<std::tuple<std::string, std::string, std::string, bool>> attributes() {
  using image = qel::image2d<unsigned char>;
  std::vector<std::tuple<std::string, std::string, std::string, bool>> result;
  const auto add = [&](const auto& a) {
    using A = typename std::decay_t<decltype(a)>::accumulator;
    result.emplace_back(a.short_name, a.name, a.default_rule, qel::morpho::attribute::is_increasing<A>);
  };
  std::apply([&](const auto&... all) { (add(all), ...); }, qel::morpho::named_attributes<image>);
  return result;
}

std::vector<std::string> rules() {
  return std::apply([](const auto&... all) { return std::vector<std::string>{all.name...}; },
                    qel::morpho::tree::filter::rules);
}

void translate(std::exception_ptr failure) {
  try {
    if (failure) std::rethrow_exception(failure);
  } catch (const std::bad_alloc&) {
    PyErr_SetString(PyExc_MemoryError, "no memory for the planes or for the work on them");
  }
}

}  // namespace
}  // namespace python

PYBIND11_MODULE(_attribute_profile, module) {
  py::register_local_exception_translator(&python::translate);
  py::class_<python::settings>(module, "Settings")
      .def(py::init([](std::string attribute, std::vector<double> thresholds, int connectivity, std::string rule) {
             return python::settings{std::move(attribute), std::move(thresholds), connectivity, std::move(rule)};
           }),
           py::arg("attribute"), py::arg("thresholds"), py::arg("connectivity"), py::arg("rule"));
  module.def("profiles", &python::profiles);
  module.def("sums", &python::sums);
  module.def("block", &python::block);
  module.def("window_needs", &python::window_needs_of);
  module.attr("__version__") = ATTRIBUTE_PROFILE_VERSION;
  module.attr("attributes") = python::attributes();
  module.attr("rules") = python::rules();
  module.attr("longest_side") = qel::scene::longest_side;
  py::module_::import("atexit").attr("register")(py::cpp_function(&python::wait_for_left_threads));
}
