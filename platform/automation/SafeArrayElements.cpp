#include "platform/automation/SafeArrayElements.h"

#include <cstring>
#include <span>

#include "platform/automation/BString.h"
#include "platform/automation/SafeArrays.h"
#include "platform/automation/Unknown.h"
#include "platform/automation/Variants.h"

namespace orxdb {
namespace {

constexpr USHORT kObjects = FADF_UNKNOWN | FADF_DISPATCH;

void Release(BSTR string) {
  SysFreeString(string);
}

void Release(IUnknown* object) {
  if (object) object->Release();
}

void Release(VARIANT& value) {
  // A nested array that somebody still has locked outlives this one.
  if (!OwnsNothing(value.vt)) VariantClear(&value);
}

HRESULT Copy(BSTR& target, BSTR source) {
  target = source ? SysAllocStringByteLen(reinterpret_cast<const char*>(source),
                                          SysStringByteLen(source))
                  : nullptr;
  return source && !target ? E_OUTOFMEMORY : S_OK;
}

HRESULT Copy(IUnknown*& target, IUnknown* source) {
  target = source;
  if (source) source->AddRef();
  return S_OK;
}

HRESULT Copy(VARIANT& target, const VARIANT& source) {
  target = VARIANT{};
  return VariantCopy(&target, &source);
}

template <typename T>
void ReleaseEach(void* first, std::size_t count) {
  for (T& element : std::span(static_cast<T*>(first), count)) Release(element);
}

template <typename T>
HRESULT CopyEach(void* target, const void* source, std::size_t count) {
  auto* to = static_cast<T*>(target);
  for (const T& element : std::span(static_cast<const T*>(source), count)) {
    const HRESULT status = Copy(*to++, element);
    if (FAILED(status)) return status;
  }
  return S_OK;
}

/// The address of an element, the array not being locked. Indexes come leftmost dimension first,
/// which is the last bound and the fastest in memory.
HRESULT Locate(const SAFEARRAY& array, const LONG* indexes, void** element) {
  std::size_t position = 0;
  std::size_t stride = 1;
  const std::span bounds = Bounds(array);
  for (auto bound = bounds.rbegin(); bound != bounds.rend(); ++bound, ++indexes) {
    const LONGLONG offset = LONGLONG{*indexes} - bound->lLbound;
    if (offset < 0 || offset >= bound->cElements) return DISP_E_BADINDEX;
    position += static_cast<std::size_t>(offset) * stride;
    stride *= bound->cElements;
  }
  if (!array.pvData || bounds.empty()) return E_UNEXPECTED;
  *element = static_cast<char*>(array.pvData) + position * array.cbElements;
  return S_OK;
}

/// Keeps an array locked for the time of one operation on it.
class Lock {
 public:
  explicit Lock(SAFEARRAY* array) : m_array(array), m_status(SafeArrayLock(array)) {}
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  ~Lock() {
    if (SUCCEEDED(m_status)) SafeArrayUnlock(m_array);
  }
  HRESULT status() const { return m_status; }

 private:
  SAFEARRAY* m_array;
  HRESULT m_status;
};

/// Replaces an element by a copy that exists before the old value goes.
template <typename T>
HRESULT Replace(void* element, const T& value) {
  T copy{};
  const HRESULT status = Copy(copy, value);
  if (FAILED(status)) return status;
  T& place = *static_cast<T*>(element);
  T old = place;
  place = copy;
  Release(old);
  return S_OK;
}

}  // namespace

void ReleaseElements(const SAFEARRAY& array, void* first, std::size_t count) noexcept {
  if (array.fFeatures & FADF_VARIANT) {
    ReleaseEach<VARIANT>(first, count);
  } else if (array.fFeatures & FADF_BSTR) {
    ReleaseEach<BSTR>(first, count);
  } else if (array.fFeatures & kObjects) {
    ReleaseEach<IUnknown*>(first, count);
  }
}

HRESULT CopyElements(const SAFEARRAY& array, void* target, const void* source,
                     std::size_t count) noexcept {
  if (array.fFeatures & FADF_VARIANT) return CopyEach<VARIANT>(target, source, count);
  if (array.fFeatures & FADF_BSTR) return CopyEach<BSTR>(target, source, count);
  if (array.fFeatures & kObjects) return CopyEach<IUnknown*>(target, source, count);
  std::memcpy(target, source, count * array.cbElements);
  return S_OK;
}

}  // namespace orxdb

HRESULT SafeArrayPtrOfIndex(SAFEARRAY* array, const LONG* indexes, void** element) {
  if (!array || !indexes || !element) return E_INVALIDARG;
  return orxdb::Locate(*array, indexes, element);
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indexes, const void* value) {
  if (!array || !indexes) return E_INVALIDARG;
  const bool byValue = (array->fFeatures & (FADF_BSTR | orxdb::kObjects)) != 0;
  if (!byValue && !value) return E_INVALIDARG;
  const orxdb::Lock lock(array);
  if (FAILED(lock.status())) return lock.status();
  void* element = nullptr;
  const HRESULT status = orxdb::Locate(*array, indexes, &element);
  if (FAILED(status)) return status;
  if (array->fFeatures & FADF_VARIANT) {
    return VariantCopy(static_cast<VARIANT*>(element), static_cast<const VARIANT*>(value));
  }
  // Strings and objects come as themselves; nothing is written through their address.
  void* const itself = const_cast<void*>(value);
  if (array->fFeatures & FADF_BSTR) {
    return orxdb::Replace<BSTR>(element, static_cast<BSTR>(itself));
  }
  if (byValue) return orxdb::Replace<IUnknown*>(element, static_cast<IUnknown*>(itself));
  std::memmove(element, value, array->cbElements);
  return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, const LONG* indexes, void* value) {
  if (!array || !indexes || !value) return E_INVALIDARG;
  const orxdb::Lock lock(array);
  if (FAILED(lock.status())) return lock.status();
  void* element = nullptr;
  const HRESULT status = orxdb::Locate(*array, indexes, &element);
  if (FAILED(status)) return status;
  return orxdb::CopyElements(*array, value, element, 1);
}
