#include "host/transfer/DecimalComma.h"

#include <algorithm>

namespace orxdb {
namespace {

bool AllDigits(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

bool IsPlainNumber(std::string_view text, char decimalSign) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t sign = text.find(decimalSign);
  if (sign == text.npos || text.size() == 1) return false;
  return AllDigits(text.substr(0, sign)) && AllDigits(text.substr(sign + 1));
}

void DecimalCommaEvidence::Add(std::string_view text) {
  m_withStop |= IsPlainNumber(text, '.');
  if (!IsPlainNumber(text, ',')) return;
  if (text.front() == '-' || text.front() == '+') text.remove_prefix(1);
  const std::size_t before = text.find(',');
  const bool thousands = text.size() - before == 4 && before >= 1 && before <= 3 && text[0] != '0';
  m_clear |= !thousands;
}

}  // namespace orxdb
