// SPDX-License-Identifier: MIT
#ifndef PROGRAM_GDAL_ERRORS_HPP
#define PROGRAM_GDAL_ERRORS_HPP

#include <cpl_error.h>

#include <string>

namespace program {

/// Takes the errors and warnings that GDAL reports, for as long as it lives.
///
/// Many of GDAL's calls do not return what went wrong, and some, such as closing a file, not even that something did: a
/// write that failed in GDAL's cache is only reported here. So whoever reads or writes asks `check` afterwards.
class gdal_errors {
 public:
  /// \param show_warnings  print GDAL's warnings on standard error, a line each.
  explicit gdal_errors(bool show_warnings);
  gdal_errors(const gdal_errors&) = delete;
  gdal_errors& operator=(const gdal_errors&) = delete;
  ~gdal_errors();

  /// Throws a `failure` "WHAT: REASON" if an error has been reported since the last `forget`, the reason being the first.
  void check(const std::string& what) const;

  /// Throws such a `failure` in any case.
  [[noreturn]] void fail(const std::string& what) const;

  /// Errors reported so far do not matter.
  void forget() { reason_.clear(); }

 private:
  static void CPL_STDCALL take(CPLErr kind, CPLErrorNum number, const char* text);

  bool show_warnings_;
  std::string reason_;
  std::string last_warning_;
};

}  // namespace program

#endif  // PROGRAM_GDAL_ERRORS_HPP
