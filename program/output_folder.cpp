// SPDX-License-Identifier: MIT
#include "program/output_folder.hpp"

#include <cpl_conv.h>
#include <cpl_string.h>
#include <cpl_vsi.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "program/failure.hpp"

namespace program {
namespace {

constexpr char lock_name[] = "/lock";
constexpr char files_name[] = "/files";

std::optional<VSIStatBufL> status_of(const std::string& path) {
  VSIStatBufL status;
  return VSIStatL(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

/// Whether two paths lead to one file that exists.
bool is_same_file(const std::string& a, const std::string& b) {
  const auto first = status_of(a);
  const auto second = first ? status_of(b) : first;
  if (!second) return false;
  return first->st_ino == 0 ? a == b : first->st_ino == second->st_ino && first->st_dev == second->st_dev;
}

/// Where a link, or a link to a link, leads to, perhaps to nothing.
std::string end_of_links(std::string path, const std::string& given) {
  constexpr int most_links = 40;  // as many as the system follows
  for (int k = 0; k < most_links; ++k) {
    std::array<char, 4096> target;
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length < 0) return path;
    const std::string text(target.data(), static_cast<std::size_t>(length));
    path = CPLProjectRelativeFilename(CPLGetPath(path.c_str()), text.c_str());
  }
  throw failure("can't create " + given + ": too many links");
}

/// Files beside `output` that GDAL would take for a part of it. Its coordinates as well, if they are those of an older
/// output; otherwise they may belong to another file.
std::vector<std::string> sidecars_of(const std::string& output) {
  std::vector<std::string> files;
  for (const char* const suffix : {".aux.xml", ".ovr", ".msk"}) files.push_back(output + suffix);
  const std::string extension = CPLGetExtension(output.c_str());
  if (extension.empty() || !status_of(output)) return files;
  const std::string world = {extension.front(), extension.back(), 'w'};
  files.emplace_back(CPLResetExtension(output.c_str(), world.c_str()));
  return files;
}

/// Names of files that may be within the name of an input, as in `NETCDF:"a.nc":height` or `/vsizip/a.zip/b.tif`.
std::vector<std::string> names_within(const std::string& text) {
  constexpr std::size_t longest = 4096;
  constexpr char separators[] = ":\"'?{}&=,/";
  std::vector<std::string> names = {text};
  if (text.size() > longest) return names;
  std::vector<std::size_t> starts = {0};
  std::vector<std::size_t> ends = {text.size()};
  for (auto k = text.find_first_of(separators); k != std::string::npos; k = text.find_first_of(separators, k + 1)) {
    starts.push_back(k + 1);
    ends.push_back(k);
  }
  for (const std::size_t start : starts)
    for (const std::size_t end : ends)
      if (start < end) names.push_back(text.substr(start, end - start));
  return names;
}

/// All files that a dataset reads, those of its sources and of their sources too.
std::set<std::string> files_of(GDALDataset& input) {
  std::set<std::string> files;
  std::vector<std::string> found;
  const auto add = [&](GDALDataset& dataset) {
    const CPLStringList list(dataset.GetFileList());
    for (int k = 0; k < list.Count(); ++k)
      if (files.insert(list[k]).second) found.emplace_back(list[k]);
  };
  CPLErrorHandlerPusher quiet(CPLQuietErrorHandler);  // most of what a list names is no dataset of its own
  for (add(input); !found.empty();) {
    const std::string file = found.back();
    found.pop_back();
    const GDALDatasetUniquePtr source(GDALDataset::Open(file.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY));
    if (source) add(*source);
  }
  return files;
}

bool reads(GDALDataset& input, const std::string& input_name, const std::string& file) {
  if (!status_of(file)) return false;
  const auto is_it = [&](const auto& names) {
    for (const std::string& name : names)
      if (is_same_file(name, file)) return true;
    return false;
  };
  return is_it(names_within(input_name)) || is_it(files_of(input));
}

void refuse_other_kinds(const std::string& output, const std::string& given) {
  const auto status = status_of(output);
  if (!status || VSI_ISREG(status->st_mode) != 0) return;
  const bool is_folder = VSI_ISDIR(status->st_mode) != 0;
  throw failure("can't create " + given + ": it is " + (is_folder ? "a folder" : "no file, but a device or a pipe"));
}

std::string random_name() {
  std::random_device bits;
  std::array<char, 9> text;
  static_cast<void>(std::snprintf(text.data(), text.size(), "%08x", bits()));
  return text.data();
}

/// The start of the names of folders for `output`.
std::string folder_prefix(const std::string& output) {
  return std::string(".").append(CPLGetFilename(output.c_str())).append(".partial-");
}

/// Opens the file and locks it; negative if it is not there or another process has the lock.
int lock_file(const std::string& path, int flags) {
  const int file = open(path.c_str(), flags | O_CLOEXEC, 0666);
  if (file < 0 || flock(file, LOCK_EX | LOCK_NB) == 0) return file;
  close(file);
  return -1;
}

std::string place_of(const std::string& output) {
  const std::string folder = CPLGetPath(output.c_str());
  return folder.empty() ? "." : folder;
}

void remove_leftovers(const std::string& output) {
  const std::string place = place_of(output);
  const std::string prefix = folder_prefix(output);
  const CPLStringList entries(VSIReadDir(place.c_str()));
  for (int k = 0; k < entries.Count(); ++k) {
    if (std::string(entries[k]).compare(0, prefix.size(), prefix) != 0) continue;
    const std::string folder = place + "/" + entries[k];
    const int lock = lock_file(folder + lock_name, O_RDWR);
    if (lock < 0) continue;
    VSIRmdirRecursive(folder.c_str());
    close(lock);
  }
}

}  // namespace

output_folder::output_folder(const std::string& output, GDALDataset& input, const std::string& input_name)
    : given_(output), output_(end_of_links(output, output)) {
  refuse_other_kinds(output_, given_);
  if (reads(input, input_name, output_)) throw failure("can't create " + given_ + ": it is read by the input");
  for (const std::string& sidecar : sidecars_of(output_))
    if (reads(input, input_name, sidecar))
      throw failure("can't create " + given_ + ": " + sidecar + " beside it is read by the input");
  remove_leftovers(output_);
  make();
}

output_folder::~output_folder() { remove(); }

void output_folder::make() {
  folder_ = place_of(output_) + "/" + folder_prefix(output_) + random_name();
  if (VSIMkdir(folder_.c_str(), 0777) != 0) {
    const std::string reason = std::strerror(errno);
    folder_.clear();
    throw failure("can't create " + given_ + ": " + reason);
  }
  // Another process takes a folder whose lock is free for a leftover: so the lock is taken before it has its name. Where
  // there are no locks, nothing is ever a leftover.
  const std::string unnamed = folder_ + "/new";
  lock_ = lock_file(unnamed, O_RDWR | O_CREAT);
  if (lock_ >= 0) static_cast<void>(std::rename(unnamed.c_str(), (folder_ + lock_name).c_str()));
  VSIMkdir((folder_ + files_name).c_str(), 0777);
}

void output_folder::remove() {
  if (!folder_.empty()) VSIRmdirRecursive(folder_.c_str());
  folder_.clear();
  if (lock_ >= 0) close(lock_);
  lock_ = -1;
}

std::string output_folder::path() const { return folder_ + files_name + "/" + CPLGetFilename(output_.c_str()); }

void output_folder::commit() {
  const std::string name = CPLGetFilename(output_.c_str());
  const std::string from = folder_ + files_name;
  const std::string to = place_of(output_);
  const auto move = [&](const std::string& file) {
    if (VSIRename((from + "/" + file).c_str(), (to + "/" + file).c_str()) != 0)
      throw failure("can't move " + file + " to " + given_ + ": " + std::strerror(errno));
  };
  for (const std::string& sidecar : sidecars_of(output_)) VSIUnlink(sidecar.c_str());
  const std::set<std::string> others = {".", "..", name};
  const CPLStringList entries(VSIReadDir(from.c_str()));
  for (int k = 0; k < entries.Count(); ++k)
    if (others.count(entries[k]) == 0) move(entries[k]);
  move(name);
  remove();
}

}  // namespace program
