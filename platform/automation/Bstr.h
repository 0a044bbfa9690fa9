// Owner of a counted wide string.
//
//   Bstr name(u"TAP");
//   object->GetName(name.put());       // takes a string that the callee allocated
//   *out = name.detach();              // hands it over
#pragma once

#include <limits>
#include <new>
#include <string_view>
#include <utility>

#include "platform/automation/BString.h"

namespace orxdb {

/// The characters of a string, empty for null. Valid as long as the string.
inline std::u16string_view View(BSTR string) noexcept {
  return string ? std::u16string_view(string, SysStringLen(string)) : std::u16string_view();
}

/// The bytes of a string, empty for null: the text of a string made by byte length.
inline std::string_view Bytes(BSTR string) noexcept {
  return string ? std::string_view(reinterpret_cast<const char*>(string), SysStringByteLen(string))
                : std::string_view();
}

/// Owns one string; empty (null) by default. Making one throws std::bad_alloc without memory.
class Bstr {
 public:
  Bstr() noexcept = default;
  explicit Bstr(std::u16string_view text)
      : m_string(SysAllocStringLen(text.data() ? text.data() : u"", Length(text.size()))) {
    ThrowIfNull();
  }
  Bstr(Bstr&& other) noexcept : m_string(other.detach()) {}
  Bstr& operator=(Bstr&& other) noexcept {
    attach(other.detach());
    return *this;
  }
  ~Bstr() { SysFreeString(m_string); }

  /// A byte-length string that holds narrow text.
  static Bstr FromBytes(std::string_view bytes) {
    Bstr string;
    string.m_string = SysAllocStringByteLen(bytes.data() ? bytes.data() : "", Length(bytes.size()));
    string.ThrowIfNull();
    return string;
  }

  BSTR get() const noexcept { return m_string; }
  /// Frees the string and gives the place for another.
  BSTR* put() noexcept {
    reset();
    return &m_string;
  }
  [[nodiscard]] BSTR detach() noexcept { return std::exchange(m_string, nullptr); }
  void attach(BSTR string) noexcept { SysFreeString(std::exchange(m_string, string)); }
  void reset() noexcept { attach(nullptr); }

  std::u16string_view view() const noexcept { return View(m_string); }
  std::string_view bytes() const noexcept { return Bytes(m_string); }
  /// False for null, true also for a string without characters.
  explicit operator bool() const noexcept { return m_string != nullptr; }

 private:
  static UINT Length(std::size_t length) {
    if (length > std::numeric_limits<UINT>::max()) throw std::bad_alloc();
    return static_cast<UINT>(length);
  }
  void ThrowIfNull() const {
    if (!m_string) throw std::bad_alloc();
  }

  BSTR m_string = nullptr;
};

}  // namespace orxdb
