// Identifiers of classes, interfaces and type libraries.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>

/// A 128-bit identifier in the platform's layout: the first three members are numbers in machine
/// order, the last eight bytes are kept as written.
struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];

  friend constexpr bool operator==(const GUID& left, const GUID& right) noexcept {
    return left.Data1 == right.Data1 && left.Data2 == right.Data2 && left.Data3 == right.Data3 &&
           std::equal(std::begin(left.Data4), std::end(left.Data4), std::begin(right.Data4));
  }
};
static_assert(sizeof(GUID) == 16);

using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

inline constexpr GUID GUID_NULL{};
inline constexpr IID IID_NULL{};
inline constexpr CLSID CLSID_NULL{};

constexpr bool IsEqualGUID(REFGUID left, REFGUID right) noexcept {
  return left == right;
}
constexpr bool IsEqualIID(REFIID left, REFIID right) noexcept {
  return left == right;
}
constexpr bool IsEqualCLSID(REFCLSID left, REFCLSID right) noexcept {
  return left == right;
}
