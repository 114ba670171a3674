// SPDX-License-Identifier: MIT
#ifndef QEL_TRACE_TRACE_HPP
#define QEL_TRACE_TRACE_HPP

// A nested, timed outline of the operations that run, on `std::cout`; off until you set `trace::quiet` to false.
//
// An operation opens a scope by `entering` with its name and closes it by `exiting` with the same name. Closing a scope
// twice, or by another name, prints an error on `std::cerr` and turns tracing off.
//
// The state belongs to the process and has no locks: while one thread traces, no other may run anything of the library.
// While `quiet` is true nothing is written, and any number of threads may run, each on its own images. Cost when quiet:
// one test, and the caller's temporary string.

#include <ctime>
#include <iostream>
#include <stack>
#include <string>

namespace qel {

/// A timed outline of the operations that run, for debugging.
namespace trace {

inline bool quiet = true;        ///< when true, `entering` and `exiting` do nothing
inline unsigned tab = 0;         ///< number of open scopes
inline bool full_trace = false;  ///< when true, `suspend` changes nothing

namespace internal {

inline unsigned max_tab = 0;   ///< `tab` just after the latest `entering`
inline timespec start_time{};  ///< reserved
inline bool is_quiet = quiet;  ///< what `resume` restores; one value: `suspend` does not nest

}  // namespace internal

inline std::stack<std::clock_t> start_times;  ///< processor clock at the opening of each open scope
inline std::stack<std::string> scopes;        ///< names of the open scopes

namespace internal {

/// Writes only what is new: while nothing is traced, threads share the settings.
inline void change(bool& setting, bool value) {
  if (setting == value) return;
  setting = value;
}

inline void indent() {
  for (unsigned i = 0; i < tab; ++i) std::cout << "  ";
}

inline void report_missing_entering(const std::string& scope) {
  std::cerr << "error: missing 'entering' scope (exiting is '" << scope << "')" << std::endl;
  quiet = true;
}

inline void report_bad_matching(const std::string& scope) {
  std::cerr << "error: bad matching scope (entering is '" << scopes.top() << "' v. exiting is '" << scope << "')"
            << std::endl;
  quiet = true;
}

/// Takes `scope` off the open scopes; a fault is reported and turns tracing off.
inline void close_scope(const std::string& scope) {
  if (scopes.empty()) return report_missing_entering(scope);
  if (scopes.top() != scope) report_bad_matching(scope);
  scopes.pop();
}

/// Prints the seconds since the opening of the innermost scope, unless the clock has not moved.
inline void print_elapsed() {
  // Empty only after a surplus `exiting` of the caller.
  if (start_times.empty()) return;
  const std::clock_t now = std::clock();
  if (now < start_times.top()) {
    std::cerr << "warning: bad timer in trace handling" << std::endl;
  } else if (now > start_times.top()) {
    const float seconds = (static_cast<float>(now) - static_cast<float>(start_times.top())) / 1000000.0f;
    std::cout << "- " << seconds << "s ";
  }
  start_times.pop();
}

}  // namespace internal

/// Opens the scope `scope`.
inline void entering(const std::string& scope) {
  if (quiet) return;
  start_times.push(std::clock());
  scopes.push(scope);
  if (tab != 0) {
    if (tab == internal::max_tab) std::cout << std::endl;
    internal::indent();
  }
  std::cout << scope << " {";
  internal::max_tab = ++tab;
}

/// Closes the innermost scope, `scope`. One without inner scopes closes on its own line.
inline void exiting(const std::string& scope) {
  if (quiet) return;
  internal::close_scope(scope);
  const bool leaf = internal::max_tab == tab;
  if (tab != 0) --tab;
  if (leaf) {
    std::cout << "} ";
  } else {
    internal::indent();
    std::cout << "} " << scope << " ";
  }
  internal::print_elapsed();
  if (leaf || internal::max_tab - tab >= 2) std::cout << std::endl;
}

/// Silences what follows, up to `resume`, unless `full_trace` is set.
inline void suspend() {
  internal::change(internal::is_quiet, quiet);
  if (!full_trace) internal::change(quiet, true);
}

/// Undoes `suspend`.
inline void resume() { internal::change(quiet, internal::is_quiet); }

}  // namespace trace

}  // namespace qel

#endif  // QEL_TRACE_TRACE_HPP
