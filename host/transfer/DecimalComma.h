#pragma once

#include <string>
#include <string_view>

namespace orxdb {

/// Finds out from plain numbers whether a source writes a comma as the decimal sign.
class DecimalCommaEvidence {
 public:
  void Add(std::string_view text);
  /// Whether numbers with a comma were seen, none with a full stop, and not only such as may be
  /// thousands ("1,500").
  bool Shown() const noexcept { return m_clear && !m_withStop; }

 private:
  bool m_clear = false;
  bool m_withStop = false;
};

/// Whether the text is a plain number with one such sign: "-12,5".
bool IsPlainNumber(std::string_view text, char decimalSign);

}  // namespace orxdb
