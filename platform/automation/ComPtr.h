// Owner of one reference to an object.
//
//   ComPtr<IOrxDbObj> object;
//   CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IOrxDbObj::iid, object.putVoid());
#pragma once

#include <utility>

#include "platform/automation/Unknown.h"

namespace orxdb {

/// Holds a reference and releases it at its end; null by default. T names its identifier as
/// `T::iid`.
template <typename T>
class ComPtr {
 public:
  ComPtr() noexcept = default;
  ComPtr(ComPtr&& other) noexcept : m_object(other.detach()) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    attach(other.detach());
    return *this;
  }
  ~ComPtr() { reset(); }

  T* get() const noexcept { return m_object; }
  T* operator->() const noexcept { return m_object; }
  T& operator*() const noexcept { return *m_object; }
  explicit operator bool() const noexcept { return m_object != nullptr; }

  /// Releases the object and gives the place for another reference.
  T** put() noexcept {
    reset();
    return &m_object;
  }
  /// As put, for calls that hand out objects of any interface.
  void** putVoid() noexcept { return reinterpret_cast<void**>(put()); }
  [[nodiscard]] T* detach() noexcept { return std::exchange(m_object, nullptr); }
  /// Takes over a reference that the caller owns.
  void attach(T* object) noexcept {
    if (T* old = std::exchange(m_object, object)) old->Release();
  }
  /// Shares the object with the caller, adding a reference.
  void copyFrom(T* object) noexcept {
    if (object) object->AddRef();
    attach(object);
  }
  void reset() noexcept { attach(nullptr); }

  /// Another interface of the object; null when there is none or this is null.
  template <typename U>
  ComPtr<U> QueryInterface() const noexcept {
    ComPtr<U> other;
    QueryInterface(U::iid, other.putVoid());
    return other;
  }
  /// E_POINTER, and null in `*object`, when this is null.
  HRESULT QueryInterface(REFIID iid, void** object) const noexcept {
    if (m_object) return m_object->QueryInterface(iid, object);
    if (object) *object = nullptr;
    return E_POINTER;
  }

 private:
  T* m_object = nullptr;
};

}  // namespace orxdb
