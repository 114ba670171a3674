// SPDX-License-Identifier: MIT
#include "program/request.hpp"

#include <qel/core/image2d.hpp>
#include <qel/morpho/named_attributes.hpp>

#include <CLI/CLI.hpp>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <set>
#include <sstream>
#include <system_error>
#include <tuple>
#include <type_traits>

#include "program/cores.hpp"
#include "program/text.hpp"
#include "program/version.hpp"
#include "program/warn.hpp"

namespace program {
namespace {

constexpr char summary[] = "Writes the attribute profile of a raster scene, from file to file.";

constexpr char details[] = R"(Example:
  attribute-profile scene.tif profile.tif area 100 1000 --connectivity 8
  gdalinfo profile.tif

N thresholds give 2N + 1 bands for each band of INPUT: the dark regions that do
not reach a threshold raised to their surroundings, from the last threshold to
the first; the band itself; the bright regions lowered, from the first threshold
to the last. Each band has a description, and the file has the settings as
metadata.

By area and diagonal a scene is computed in blocks, side by side on all cores,
and may have any size. The result is exact all the same, to the bit that of the
whole scene: what a block can not prove is read again with more around it. For
inertia and std there is no such proof; see --inexact.

Parts of a scene can be computed on many machines and put together:
  attribute-profile scene.tif parts/1.tif area 100 --srcwin 0 0 4096 4096
  ...
  attribute-profile scene.tif profile.tif area 100 --parts parts

Pixels without data, by the nodata value or the mask of INPUT, keep their values
in all planes. In the regions they take part by these values like all others.

OUTPUT is written in a hidden folder beside it and moved into place when it is
complete. Exit status: 0 if it is, 1 after an error, 2 for wrong usage.)";

/// `text` in lines that leave room for the names of the options.
std::string wrapped(const std::string& text) {
  constexpr std::size_t width = 52;
  std::istringstream words(text);
  std::string result;
  std::size_t length = 0;
  for (std::string word; words >> word; length += word.size() + 1) {
    const bool breaks = length + word.size() > width;
    if (!result.empty()) result += breaks ? '\n' : ' ';
    if (breaks) length = 0;
    result += word;
  }
  return result;
}

/// Whole numbers, in digits. CLI11 takes a number that its type has no room for as the greatest of the type.
CLI::Validator whole_number(std::int64_t least, std::int64_t most = 1'000'000'000) {
  const auto fault = [=](const std::string& text) {
    std::int64_t number = -1;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    const bool is_right = read.ec == std::errc() && read.ptr == end && number >= least && number <= most;
    return is_right ? std::string()
                    : "'" + text + "' is no whole number from " + text_of(least) + " to " + text_of(most);
  };
  return {fault, ""};
}

/// Replaces "all" by a number.
const CLI::Validator all_cores(
    [](std::string& text) {
      if (text == "all") text = text_of(usable_cores());
      return std::string();
    },
    "");

/// A check without a text of its own: the names of the values say it.
CLI::Validator silent(CLI::Validator check) { return check.description(""); }

std::set<std::string> attribute_names() {
  std::set<std::string> names;
  const auto add = [&](const auto& attribute) { names.insert({attribute.short_name, attribute.name}); };
  std::apply([&](const auto&... attributes) { (add(attributes), ...); },
             qel::morpho::named_attributes<qel::image2d<unsigned char>>);
  return names;
}

std::set<std::string> rule_names() {
  return std::apply([](const auto&... rules) { return std::set<std::string>{rules.name...}; },
                    qel::morpho::tree::filter::rules);
}

void add_positionals(CLI::App& app, request& r) {
  const auto add = [&](const char* name, auto& target, const char* text) {
    return app.add_option(name, target, wrapped(text))->required()->type_name("");
  };
  add("INPUT", r.input, "Raster that GDAL opens, with bands of 8 to 64 bits of integers");
  add("OUTPUT", r.output, "Raster file to write");
  add("ATTRIBUTE", r.attribute,
      "Of a region: area (a), in pixels; diagonal (d) of its bounding box, in pixels; inertia (i), its moment of "
      "inertia; std (s), the standard deviation of its values")
      ->check(silent(CLI::IsMember(attribute_names())));
  add("THRESHOLD", r.thresholds, "One or more values of the attribute; regions that reach them stay");
}

void add_options(CLI::App& app, request& r) {
  const auto add = [&](const char* name, auto& target, const char* value, const char* text) {
    return app.add_option(name, target, wrapped(text))->type_name(value);
  };
  add("-b,--band", r.bands, "N", "Band to use, from 1; can be repeated. Default: all but transparency")
      ->allow_extra_args(false);
  add("--connectivity", r.connectivity, "4|8", "Whether pixels that share an edge are connected, or a corner too")
      ->check(silent(CLI::IsMember(std::set<int>{4, 8})))
      ->capture_default_str();
  add("--rule", r.rule, "min|max|direct|sub",
      "Which regions go. Default: min for area and diagonal, where all rules agree; sub for inertia and std")
      ->check(silent(CLI::IsMember(rule_names())));
  add("--srcwin", r.srcwin, "XOFF YOFF XSIZE YSIZE",
      "Write only this part, in pixels of INPUT, computed as if the whole had been")
      ->check(whole_number(0));
  add("--of", r.driver, "FORMAT", "Format of OUTPUT, by GDAL's short name. Default: by the extension");
  add("--co", r.creation_options, "NAME=VALUE",
      "Creation option of the format; can be repeated. Where nothing else is said, GeoTIFF is tiled, compressed and a "
      "BigTIFF if safer")
      ->allow_extra_args(false);
  add("-j,--jobs", r.jobs, "N|all",
      "Blocks to compute side by side. OUTPUT has the same bytes for each N. Default: all, the cores that the process "
      "may use")
      ->take_last()
      ->transform(all_cores)
      ->check(whole_number(1, 1024));
  add("--parts", r.parts, "FOLDER",
      "Put together the .tif files of FOLDER, which have been computed with --srcwin and the same settings otherwise");
  add("--memory", r.memory, "MB", "Memory to use, in megabytes, for all jobs. Default: half of what is free")
      ->check(whole_number(1));
  add("--block", r.block, "SIDE",
      "Work in blocks of SIDE x SIDE pixels; multiples of 256 suit the tiles of a GeoTIFF. Default: 2048, more for "
      "large "
      "thresholds, less if memory is short; by inertia and std the whole scene")
      ->check(whole_number(1));
  add("--overlap", r.overlap, "PIXELS",
      "Pixels read around a block at first: a matter of time, and of the result only with --inexact. Default: a guess "
      "from the thresholds")
      ->check(whole_number(0));
  app.add_flag("--inexact", r.inexact,
               wrapped("Let inertia and std work in blocks: a region that crosses a block and its overlap is judged by "
                       "its part in there"));
  app.add_flag("-q,--quiet", r.quiet, wrapped("No progress, no summary, no warnings"));
}

bool is_area(const std::string& attribute) {
  bool is_unsigned = false;
  qel::morpho::with_attribute<qel::image2d<unsigned char>>(attribute, [&](const auto& named) {
    is_unsigned = std::is_unsigned_v<typename std::decay_t<decltype(named)>::threshold>;
  });
  return is_unsigned;
}

/// What is wrong with a threshold, which the library's function would take in some way; nothing if it is right.
std::string fault_of(double threshold, bool area) {
  constexpr double greatest_area = std::numeric_limits<std::uint32_t>::max();
  if (!std::isfinite(threshold)) return "it has to be a number";
  if (threshold < 0) return "it is negative";
  if (area && threshold > greatest_area) return "an area is at most 4294967295 pixels";
  return "";
}

/// \throws CLI::ValidationError
void check_thresholds(const request& r) {
  const bool area = is_area(r.attribute);
  for (const double threshold : r.thresholds) {
    const std::string text = text_of(threshold);
    const std::string fault = fault_of(threshold, area);
    if (!fault.empty()) throw CLI::ValidationError("THRESHOLD " + text, fault);
    if (area && threshold != std::floor(threshold) && !r.quiet)
      warn("threshold " + text + " is used as " + text_of(std::floor(threshold)) + ": an area is a number of pixels");
  }
}

/// The arguments, the last one first, as CLI11 takes them. GDAL's users write long options with one dash.
std::vector<std::string> arguments(int argc, char** argv) {
  const std::set<std::string> long_ones = {"-of", "-co", "-srcwin"};
  std::vector<std::string> all;
  for (int k = argc - 1; k > 0; --k) {
    const std::string text = argv[k];
    const bool is_negative = text.size() > 1 && text[0] == '-' && (std::isdigit(text[1]) != 0 || text[1] == '.');
    if (is_negative) throw CLI::ValidationError(text, "numbers below 0 have no meaning here");
    all.push_back(long_ones.count(text) != 0 ? "-" + text : text);
  }
  return all;
}

}  // namespace

command_line read_command_line(int argc, char** argv) {
  request r;
  CLI::App app(summary, "attribute-profile");
  app.footer(details);
  app.get_formatter()->column_width(28);
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.set_version_flag("--version", version_text, "Print the version and exit");
  add_positionals(app, r);
  add_options(app, r);
  try {
    app.parse(arguments(argc, argv));
    check_thresholds(r);
  } catch (const CLI::ParseError& outcome) {
    if (outcome.get_exit_code() == 0) return {{}, app.exit(outcome)};
    static_cast<void>(std::fprintf(stderr, "attribute-profile: %s; see attribute-profile --help\n", outcome.what()));
    return {{}, 2};
  }
  return {r, 0};
}

}  // namespace program
