// SPDX-License-Identifier: MIT
//
//   bench_call [--save FILE | --no-floor] PICTURE,ATTRIBUTE,CONNECTIVITY,THRESHOLD/THRESHOLD/...[,RULE] ...
//
// Times whole calls of the module's mexFunction in the test host, with the attribute's default rule if none is given.
// Prints a line of JSON for each case: samples of call and floor in milliseconds, page faults and peak memory. Every
// round runs every case once, right after its floor: what disturbs the machine disturbs all of them. --save writes the
// planes of the first case to FILE, column by column. --no-floor leaves out the floors, which need lengths that are
// multiples of 64.
//
// Each sample comes from a new process: what earlier work left in the heap decides how many pages a call faults in.
// Times are processor times: a call runs on one thread and waits for nothing, so a user on an idle machine waits as
// long, and other processes disturb them less. The host's filling of the output array counts.

#include "bench/floor.hpp"
#include "bench/measure.hpp"
#include "bench/picture.hpp"
#include "tests/entry/test_host.hpp"

#include <sys/resource.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace bench {
namespace {

/// The figures of one run, in its own process.
struct sample {
  double ms;
  std::int64_t page_faults;
  std::int64_t peak_bytes;  ///< beyond what the process held before
};

/// A call and its samples.
struct call_case : request {
  explicit call_case(const std::string& text) : request(parse_request(text)) {}

  std::vector<sample> calls;
  std::vector<sample> floors;
};

/// A picture for the host, column by column, and for the floor, row by row.
struct loaded_picture {
  picture columns;
  std::vector<char> rows;
};

loaded_picture load(const std::string& path) {
  loaded_picture result{read_picture(path), {}};
  const picture& p = result.columns;
  const std::size_t width = p.block.size() / p.sites();
  result.rows.resize(p.block.size());
  for (std::size_t row = 0; row < p.rows; ++row)
    for (std::size_t col = 0; col < p.cols; ++col)
      std::memcpy(&result.rows[(row * p.cols + col) * width], &p.block[(col * p.rows + row) * width], width);
  return result;
}

/// A line of the status of this process, in bytes.
std::int64_t status_bytes(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind(name + ":", 0) == 0) return 1024 * std::stoll(line.substr(name.size() + 1));
  throw std::runtime_error("no " + name + " in /proc/self/status");
}

std::int64_t page_faults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

template <typename Work>
sample measured(Work work) {
  const std::int64_t bytes = status_bytes("VmRSS");
  const std::int64_t faults = page_faults();
  const double start = processor_ms();
  work();
  return {processor_ms() - start, page_faults() - faults, status_bytes("VmHWM") - bytes};
}

template <typename T>
void floor_of(const loaded_picture& image, std::size_t planes) {
  const picture& p = image.columns;
  volatile std::uint32_t used = run_floor(reinterpret_cast<const T*>(image.rows.data()), p.rows, p.cols, planes);
  static_cast<void>(used);
}

sample run_floor_of(const call_case& c, const loaded_picture& image) {
  return measured([&] {
    if (image.columns.id == mxUINT8_CLASS) return floor_of<unsigned char>(image, c.planes());
    if (image.columns.id == mxUINT16_CLASS) return floor_of<unsigned short>(image, c.planes());
    return floor_of<int>(image, c.planes());
  });
}

/// Writes the planes to the file `save`, unless its name is empty.
sample run_call(const call_case& c, const picture& image, const std::string& save) {
  const auto args = to_arguments(c, image);
  const mxArray* output = nullptr;
  sample s = measured([&] { output = test_host::call(args); });
  const std::size_t output_bytes = c.planes() * image.block.size();
  s.peak_bytes -= static_cast<std::int64_t>(output_bytes);
  if (!save.empty())
    std::ofstream(save, std::ios::binary)
        .write(reinterpret_cast<const char*>(mxGetPr(output)), static_cast<std::streamsize>(output_bytes));
  return s;
}

/// One field of all samples as a JSON array.
template <typename Field>
std::string json(const std::vector<sample>& samples, Field field) {
  std::ostringstream text;
  for (const sample& s : samples) text << (text.tellp() == 0 ? "[" : ", ") << s.*field;
  return samples.empty() ? "[]" : text.str() + "]";
}

void run(std::vector<call_case> cases, const std::string& save, bool with_floor) {
  std::map<std::string, loaded_picture> pictures;
  for (const call_case& c : cases)
    if (pictures.count(c.path) == 0) pictures.emplace(c.path, load(c.path));

  for (int round = 0; round < rounds; ++round)
    for (call_case& c : cases) {
      const loaded_picture& image = pictures.at(c.path);
      const bool saved = round == 0 && &c == cases.data();
      if (with_floor) c.floors.push_back(in_child(c.name, [&] { return run_floor_of(c, image); }));
      c.calls.push_back(in_child(c.name, [&] { return run_call(c, image.columns, saved ? save : ""); }));
    }
  for (const call_case& c : cases)
    std::cout << "{\"case\": \"" << c.name << "\", \"sites\": " << pictures.at(c.path).columns.sites()
              << ", \"call_ms\": " << json(c.calls, &sample::ms) << ", \"floor_ms\": " << json(c.floors, &sample::ms)
              << ", \"page_faults\": " << json(c.calls, &sample::page_faults)
              << ", \"peak_bytes\": " << json(c.calls, &sample::peak_bytes) << "}" << std::endl;
}

}  // namespace
}  // namespace bench

int main(int argc, char* argv[]) {
  std::vector<std::string> args(argv + 1, argv + argc);
  std::string save;
  if (args.size() > 1 && args[0] == "--save") {
    save = args[1];
    args.erase(args.begin(), args.begin() + 2);
  }
  const bool with_floor = args.empty() || args[0] != "--no-floor";
  if (!with_floor) args.erase(args.begin());
  try {
    std::vector<bench::call_case> cases;
    cases.reserve(args.size());
    for (const std::string& arg : args) cases.emplace_back(arg);
    bench::run(std::move(cases), save, with_floor);
  } catch (const std::exception& e) {
    std::cerr << "bench_call: " << e.what() << std::endl;
    return EXIT_FAILURE;
  }
}
