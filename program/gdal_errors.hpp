// SPDX-License-Identifier: MIT
#ifndef PROGRAM_GDAL_ERRORS_HPP
#define PROGRAM_GDAL_ERRORS_HPP

#include <cpl_error.h>

#include <mutex>
#include <string>

namespace program {

/// Takes the errors and warnings that GDAL reports.
///
/// Many of GDAL's calls do not return what went wrong, and some, such as closing a file, not even that something did: a
/// write that failed in GDAL's cache is only reported here. So ask `check` after each read or write.
///
/// GDAL has handlers for each thread. An object takes what a thread reports while there is a `scope` in it.
class gdal_errors {
 public:
  /// Sends what this thread reports to `errors`, and no longer to the scopes around this one.
  class scope {
   public:
    explicit scope(gdal_errors& errors) { CPLPushErrorHandlerEx(take, &errors); }
    scope(const scope&) = delete;
    scope& operator=(const scope&) = delete;
    ~scope() { CPLPopErrorHandler(); }
  };

  /// \param show_warnings  print GDAL's warnings on standard error, a line each; in all threads each of them once.
  explicit gdal_errors(bool show_warnings) : show_warnings_(show_warnings) {}

  /// Takes from now on what threads without a scope report: those that GDAL starts to compress. For good.
  void take_from_all_threads() { CPLSetErrorHandlerEx(take, this); }

  /// Throws a `failure` "WHAT: REASON" if an error has been reported since the last `forget`, the reason being the first.
  void check(const std::string& what) const;

  /// Throws such a `failure` in any case.
  [[noreturn]] void fail(const std::string& what) const;

  /// Errors reported so far do not matter.
  void forget();

 private:
  static void CPL_STDCALL take(CPLErr kind, CPLErrorNum number, const char* text);
  std::string reason() const;

  bool show_warnings_;
  mutable std::mutex mutex_;
  std::string reason_;
};

}  // namespace program

#endif  // PROGRAM_GDAL_ERRORS_HPP
