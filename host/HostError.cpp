#include "host/HostError.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace orxdb {

std::string Hexadecimal(HRESULT status) {
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                 static_cast<std::uint32_t>(status), 16)
                       .ptr;
  return "0x" + std::string(digits.data(), end);
}

}  // namespace orxdb
