#include "host/library/HostError.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace orxdb {

std::string Cited(const std::string& text) {
  constexpr std::size_t kLongest = 100;
  if (text.size() <= kLongest) return "'" + text + "'";
  std::size_t end = kLongest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xc0U) == 0x80U) --end;
  return "'" + text.substr(0, end) + "…'";
}

std::string Hexadecimal(HRESULT status) {
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                 static_cast<std::uint32_t>(status), 16)
                       .ptr;
  return "0x" + std::string(digits.data(), end);
}

}  // namespace orxdb
