// SPDX-License-Identifier: MIT
#ifndef BENCH_MEASURE_HPP
#define BENCH_MEASURE_HPP

// What the benchmark programs share: the calls that they are asked for, the clock, and child processes.

#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

constexpr int rounds = 5;

inline std::vector<std::string> split(const std::string& text, char separator) {
  std::istringstream stream(text);
  std::vector<std::string> fields;
  for (std::string field; std::getline(stream, field, separator);) fields.push_back(field);
  return fields;
}

/// What a call is made of: PICTURE,ATTRIBUTE,CONNECTIVITY,THRESHOLD/THRESHOLD/...[,RULE].
struct request {
  std::string name;
  std::string path;
  std::string attribute;
  double connectivity;
  std::vector<double> thresholds;
  std::string rule;  ///< empty for the attribute's default

  std::size_t planes() const { return 2 * thresholds.size() + 1; }
};

/// \throws std::runtime_error, std::logic_error
inline request parse_request(const std::string& text) {
  const auto fields = split(text, ',');
  if (fields.size() != 4 && fields.size() != 5) throw std::runtime_error("four or five fields expected: " + text);
  request r{text, fields[0], fields[1], std::stod(fields[2]), {}, fields.size() == 5 ? fields[4] : ""};
  for (const std::string& threshold : split(fields[3], '/')) r.thresholds.push_back(std::stod(threshold));
  return r;
}

inline double processor_ms() {
  std::timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return 1e3 * static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_nsec);
}

/// Runs `work` of the case `name`, which gives a plain object, in a child process: what earlier work left in the heap
/// decides how many pages it faults in.
template <typename Work>
auto in_child(const std::string& name, Work work) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  decltype(work()) result{};
  const pid_t child = fork();
  if (child == 0) {
    result = work();
    _exit(write(ends[1], &result, sizeof result) == sizeof result ? EXIT_SUCCESS : EXIT_FAILURE);
  }
  close(ends[1]);
  const bool told = child > 0 && read(ends[0], &result, sizeof result) == sizeof result;
  close(ends[0]);
  if (child > 0) waitpid(child, nullptr, 0);
  if (!told) throw std::runtime_error("the child process failed: " + name);
  return result;
}

}  // namespace bench

#endif  // BENCH_MEASURE_HPP
