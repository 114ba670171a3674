// SPDX-License-Identifier: MIT
#ifndef TESTS_UNIT_TRACE_CAPTURE_HPP
#define TESTS_UNIT_TRACE_CAPTURE_HPP

#include <iostream>
#include <sstream>
#include <string>

#include <qel/trace/trace.hpp>

namespace unit {

/// Turns tracing on and keeps what it prints; turns it off and clears it at the end.
class trace_capture {
 public:
  trace_capture() { qel::trace::quiet = false; }
  trace_capture(const trace_capture&) = delete;
  trace_capture& operator=(const trace_capture&) = delete;

  ~trace_capture() {
    std::cout.rdbuf(cout_);
    std::cerr.rdbuf(cerr_);
    qel::trace::quiet = qel::trace::internal::is_quiet = true;
    qel::trace::full_trace = false;
    qel::trace::tab = qel::trace::internal::max_tab = 0;
    qel::trace::start_times = {};
    qel::trace::scopes = {};
  }

  /// What went to `std::cout`, exactly.
  std::string output() const { return out_.str(); }

  /// The same without the seconds, as in "- 0.25s ".
  std::string outline() const {
    std::string text = output();
    for (auto i = text.find("- "); i != std::string::npos; i = text.find("- "))
      text.erase(i, text.find("s ", i) + 2 - i);
    return text;
  }

  /// What went to `std::cerr`.
  std::string errors() const { return err_.str(); }

 private:
  std::ostringstream out_, err_;
  std::streambuf* cout_ = std::cout.rdbuf(out_.rdbuf());
  std::streambuf* cerr_ = std::cerr.rdbuf(err_.rdbuf());
};

}  // namespace unit

#endif  // TESTS_UNIT_TRACE_CAPTURE_HPP
