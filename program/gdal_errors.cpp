// SPDX-License-Identifier: MIT
#include "program/gdal_errors.hpp"

#include <algorithm>
#include <cstdio>
#include <set>

#include "program/failure.hpp"
#include "program/warn.hpp"

namespace program {
namespace {

/// `text` as one line.
std::string one_line(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

/// Some warnings are repeated for each band, block and thread.
void warn_once(const std::string& text) {
  static std::mutex mutex;
  static std::set<std::string> shown;
  const std::lock_guard lock(mutex);
  if (shown.insert(text).second) warn(text);
}

}  // namespace

void CPL_STDCALL gdal_errors::take(CPLErr kind, CPLErrorNum, const char* text) {
  auto& self = *static_cast<gdal_errors*>(CPLGetErrorHandlerUserData());
  if (kind >= CE_Failure) {
    const std::lock_guard lock(self.mutex_);
    if (self.reason_.empty()) self.reason_ = one_line(text);
  } else if (kind == CE_Warning && self.show_warnings_) {
    warn_once(one_line(text));
  }
}

std::string gdal_errors::reason() const {
  const std::lock_guard lock(mutex_);
  return reason_;
}

void gdal_errors::check(const std::string& what) const {
  if (!reason().empty()) fail(what);
}

void gdal_errors::fail(const std::string& what) const {
  const std::string why = reason();
  throw failure(why.empty() ? what : what + ": " + why);
}

void gdal_errors::forget() {
  const std::lock_guard lock(mutex_);
  reason_.clear();
}

}  // namespace program
