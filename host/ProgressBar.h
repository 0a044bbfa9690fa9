#pragma once

#include <chrono>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace orxdb {

/// A count on standard error that grows in place, and is wiped out at its end. Only on a terminal,
/// and only for work that takes longer than a second.
class ProgressBar {
 public:
  /// `total` of 0 when it is not known.
  ProgressBar(std::string what, long long total) : m_what(std::move(what)), m_total(total) {}
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar() {
    if (m_shown) std::fputs("\r\x1b[K", stderr);
  }

  void operator()(long long done) {
    const auto now = std::chrono::steady_clock::now();
    if (!m_terminal || now < m_next) return;
    m_next = now + std::chrono::milliseconds(200);
    m_shown = true;
    const std::string of = m_total > 0 ? " of " + std::to_string(m_total) : "";
    std::fprintf(stderr, "\r%s: %lld%s", m_what.c_str(), done, of.c_str());
  }

 private:
  std::string m_what;
  long long m_total;
  bool m_terminal = isatty(STDERR_FILENO) != 0;
  bool m_shown = false;
  std::chrono::steady_clock::time_point m_next =
      std::chrono::steady_clock::now() + std::chrono::seconds(1);
};

}  // namespace orxdb
