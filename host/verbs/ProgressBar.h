#pragma once

#include <chrono>
#include <cstdio>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace orxdb {

/// A count on standard error that grows in place, with its rate and, when the whole is known, the
/// time left; it is wiped out at its end. Only on a terminal,
/// and only for work that takes longer than a second. Serves as Progress.
class ProgressBar {
 public:
  ProgressBar() = default;
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar() { Clear(); }

  /// Makes room for a line; the next report shows the bar again.
  void Clear() {
    if (std::exchange(m_shown, false)) std::fputs("\r\x1b[K", stderr);
  }

  void operator()(std::string_view what, long long done, long long total) {
    const auto now = std::chrono::steady_clock::now();
    if (!m_terminal || now < m_next) return;
    m_next = now + std::chrono::milliseconds(200);
    m_shown = true;
    std::fprintf(stderr, "\r\x1b[K%.*s: %lld", static_cast<int>(what.size()), what.data(), done);
    if (total > 0) std::fprintf(stderr, " of %lld", total);
    // In whole numbers: the decimal sign would follow the locale.
    const double seconds = std::chrono::duration<double>(now - m_start).count();
    const double rate = static_cast<double>(done) / seconds;
    std::fprintf(stderr, ", %.0f a second", rate);
    if (total >= done && rate > 0) {
      std::fprintf(stderr, ", %.0f s left", static_cast<double>(total - done) / rate);
    }
  }

 private:
  bool m_terminal = isatty(STDERR_FILENO) != 0;
  bool m_shown = false;
  std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point m_next = m_start + std::chrono::seconds(1);
};

}  // namespace orxdb
