// SPDX-License-Identifier: MIT
#include "program/cores.hpp"

#include <sched.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <thread>

namespace program {
namespace {

constexpr double no_quota = std::numeric_limits<double>::infinity();

/// Processor seconds a second. Version 2 has "QUOTA PERIOD" in one file, version 1 a file for each; the quota is "max" or
/// negative where there is none.
double quota_of(const std::string& folder) {
  double quota = -1;
  double period = 0;
  std::ifstream(folder + "/cpu.max") >> quota >> period;
  if (period <= 0) {
    std::ifstream(folder + "/cpu.cfs_quota_us") >> quota;
    std::ifstream(folder + "/cpu.cfs_period_us") >> period;
  }
  return quota > 0 && period > 0 ? quota / period : no_quota;
}

/// The least quota of a group and of all groups around it.
double least_quota(const std::string& root, std::string group) {
  double least = quota_of(root);
  while (group.size() > 1) {
    least = std::min(least, quota_of(root + group));
    group.resize(group.rfind('/'));
  }
  return least;
}

double quota_of_process() {
  double least = no_quota;
  std::ifstream groups("/proc/self/cgroup");  // lines NUMBER:CONTROLLERS:GROUP
  for (std::string line; std::getline(groups, line);) {
    std::istringstream parts(line);
    std::string number;
    std::string controllers;
    std::string group;
    std::getline(std::getline(std::getline(parts, number, ':'), controllers, ':'), group);
    if (group.empty() || group.front() != '/') continue;
    for (const char* const root : {"/sys/fs/cgroup", "/sys/fs/cgroup/unified", "/sys/fs/cgroup/cpu"})
      least = std::min(least, least_quota(root, group));
  }
  return least;
}

int cores_of_affinity() {
  cpu_set_t set;
  if (sched_getaffinity(0, sizeof set, &set) == 0) return CPU_COUNT(&set);
  return static_cast<int>(std::thread::hardware_concurrency());  // more cores than a set of the usual size has
}

}  // namespace

int usable_cores() {
  const double cores = std::min(static_cast<double>(cores_of_affinity()), std::ceil(quota_of_process()));
  return std::max(static_cast<int>(cores), 1);
}

}  // namespace program
