// Owner of a safe array and a typed view of its elements.
//
//   SafeArray names = SafeArray::Vector(VT_BSTR, 3);
//   ArrayAccess<BSTR> strings(names.get());
//   strings[0] = Bstr(u"ID").detach();  // the array owns it from here
#pragma once

#include <new>
#include <span>
#include <utility>

#include "platform/automation/SafeArrays.h"

namespace orxdb {

/// Owns one array; null by default.
class SafeArray {
 public:
  SafeArray() noexcept = default;
  SafeArray(SafeArray&& other) noexcept : m_array(other.detach()) {}
  SafeArray& operator=(SafeArray&& other) noexcept {
    attach(other.detach());
    return *this;
  }
  ~SafeArray() { SafeArrayDestroy(m_array); }

  /// A vector of `count` zero elements from index 0. Throws std::bad_alloc.
  static SafeArray Vector(VARTYPE type, ULONG count) {
    SafeArray array;
    array.m_array = SafeArrayCreateVector(type, 0, count);
    if (!array.m_array) throw std::bad_alloc();
    return array;
  }

  SAFEARRAY* get() const noexcept { return m_array; }
  /// Destroys the array and gives the place for another.
  SAFEARRAY** put() noexcept {
    reset();
    return &m_array;
  }
  [[nodiscard]] SAFEARRAY* detach() noexcept { return std::exchange(m_array, nullptr); }
  void attach(SAFEARRAY* array) noexcept { SafeArrayDestroy(std::exchange(m_array, array)); }
  void reset() noexcept { attach(nullptr); }
  explicit operator bool() const noexcept { return m_array != nullptr; }

 private:
  SAFEARRAY* m_array = nullptr;
};

/// Keeps an array locked and shows its elements, all dimensions in memory order. A null array, or
/// one whose elements are not of the size of T, gives a false view without elements. Stored
/// strings, objects and variants belong to the array.
template <typename T>
class ArrayAccess {
 public:
  explicit ArrayAccess(SAFEARRAY* array) noexcept {
    void* data = nullptr;
    if (SafeArrayGetElemsize(array) != sizeof(T) || FAILED(SafeArrayAccessData(array, &data))) {
      return;
    }
    m_array = array;
    std::size_t count = array->cDims == 0 || !data ? 0 : 1;
    for (USHORT i = 0; i < array->cDims; ++i) count *= array->rgsabound[i].cElements;
    m_elements = std::span<T>(static_cast<T*>(data), count);
  }
  ArrayAccess(const ArrayAccess&) = delete;
  ArrayAccess& operator=(const ArrayAccess&) = delete;
  ~ArrayAccess() {
    if (m_array) SafeArrayUnaccessData(m_array);
  }

  explicit operator bool() const noexcept { return m_array != nullptr; }
  std::span<T> elements() const noexcept { return m_elements; }
  std::size_t size() const noexcept { return m_elements.size(); }
  T& operator[](std::size_t position) const noexcept { return m_elements[position]; }
  auto begin() const noexcept { return m_elements.begin(); }
  auto end() const noexcept { return m_elements.end(); }

 private:
  SAFEARRAY* m_array = nullptr;
  std::span<T> m_elements;
};

}  // namespace orxdb
