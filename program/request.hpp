// SPDX-License-Identifier: MIT
#ifndef PROGRAM_REQUEST_HPP
#define PROGRAM_REQUEST_HPP

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace program {

/// What the command line asks for.
struct request {
  std::string input;
  std::string output;
  std::string attribute;
  std::vector<double> thresholds;
  std::vector<int> bands;  ///< from 1; none: all
  int connectivity = 4;
  std::string rule;    ///< empty: the default of the attribute
  std::string driver;  ///< empty: by the extension of the output
  std::vector<std::string> creation_options;
  std::optional<std::array<std::int64_t, 4>> srcwin;  ///< XOFF YOFF XSIZE YSIZE
  std::optional<std::int64_t> block;                  ///< pixels a side
  std::optional<std::int64_t> overlap;                ///< pixels
  std::optional<std::int64_t> memory;                 ///< megabytes
  std::optional<int> jobs;                            ///< none: as many as there are cores
  std::string parts;                                  ///< the folder of parts to be put together; empty: compute
  bool inexact = false;
  bool quiet = false;
};

/// Either what is asked for, or the exit status after help, version or wrong usage have been printed.
struct command_line {
  std::optional<request> wanted;
  int status = 0;
};

/// Reads the command line. Every text that `--help` and the manual page show is in the body.
command_line read_command_line(int argc, char** argv);

}  // namespace program

#endif  // PROGRAM_REQUEST_HPP
