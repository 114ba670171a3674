// SPDX-License-Identifier: MIT
#include "program/gdal_errors.hpp"

#include <algorithm>
#include <cstdio>

#include "program/failure.hpp"

namespace program {
namespace {

/// `text` as one line.
std::string one_line(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace

gdal_errors::gdal_errors(bool show_warnings) : show_warnings_(show_warnings) { CPLPushErrorHandlerEx(take, this); }

gdal_errors::~gdal_errors() { CPLPopErrorHandler(); }

void CPL_STDCALL gdal_errors::take(CPLErr kind, CPLErrorNum, const char* text) {
  auto& self = *static_cast<gdal_errors*>(CPLGetErrorHandlerUserData());
  if (kind >= CE_Failure) {
    if (self.reason_.empty()) self.reason_ = one_line(text);
  } else if (kind == CE_Warning && self.show_warnings_ && text != self.last_warning_) {
    self.last_warning_ = text;  // some are repeated for each band or block
    static_cast<void>(std::fprintf(stderr, "attribute-profile: warning: %s\n", one_line(text).c_str()));
  }
}

void gdal_errors::check(const std::string& what) const {
  if (!reason_.empty()) fail(what);
}

void gdal_errors::fail(const std::string& what) const { throw failure(reason_.empty() ? what : what + ": " + reason_); }

}  // namespace program
