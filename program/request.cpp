// SPDX-License-Identifier: MIT
#include "program/request.hpp"

#include <qel/core/image2d.hpp>
#include <qel/morpho/named_attributes.hpp>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <set>
#include <sstream>
#include <tuple>

#include "program/version.hpp"

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

A scene that does not fit into the memory is computed in blocks. For area and
diagonal the result is exact all the same, to the bit that of the whole scene:
what a block can not prove is read again with more around it. For inertia and std
there is no such proof; see --inexact.

Pixels without data, by the nodata value or the mask of INPUT, keep their values
in all planes. In the regions they take part by these values like all others.

OUTPUT is written under another name in its folder and moved into place when it
is complete. Exit status: 0 if it is, 1 after an error, 2 for wrong usage.)";

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
      "Write only this part, in pixels of INPUT, computed as if the whole had been");
  add("--of", r.driver, "FORMAT", "Format of OUTPUT, by GDAL's short name")->capture_default_str();
  add("--co", r.creation_options, "NAME=VALUE",
      "Creation option of the format; can be repeated. Where nothing else is said, GeoTIFF is tiled, compressed and a "
      "BigTIFF if safer")
      ->allow_extra_args(false);
  add("--memory", r.memory, "MB", "Memory to use, in megabytes. Default: half of what is free")
      ->check(silent(CLI::PositiveNumber));
  add("--block", r.block, "SIDE",
      "Work in blocks of SIDE x SIDE pixels; multiples of 256 suit the tiles of a GeoTIFF. Default: the whole scene if "
      "it fits, else the largest blocks that do")
      ->check(silent(CLI::PositiveNumber));
  add("--overlap", r.overlap, "PIXELS",
      "Pixels read around a block at first: a matter of time, and of the result only with --inexact. Default: a guess "
      "from the thresholds")
      ->check(silent(CLI::NonNegativeNumber));
  app.add_flag("--inexact", r.inexact,
               wrapped("Let inertia and std work in blocks: a region that crosses a block and its overlap is judged by "
                       "its part in there"));
  app.add_flag("-q,--quiet", r.quiet, wrapped("No progress, no summary, no warnings"));
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
    app.parse(argc, argv);
  } catch (const CLI::ParseError& outcome) {
    if (outcome.get_exit_code() == 0) return {{}, app.exit(outcome)};
    static_cast<void>(std::fprintf(stderr, "attribute-profile: %s; see attribute-profile --help\n", outcome.what()));
    return {{}, 2};
  }
  return {r, 0};
}

}  // namespace program
