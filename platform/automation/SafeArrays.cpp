#include "platform/automation/SafeArrays.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <span>

#include "platform/automation/SafeArrayElements.h"
#include "platform/automation/Unknown.h"
#include "platform/automation/VariantTypes.h"

namespace {

using orxdb::ElementCount;

// Room before every descriptor: the interface identifier of objects, or the element type in its
// last four bytes. 16 bytes also keep the data of a vector aligned for every element.
constexpr std::size_t kPrefixSize = 16;
constexpr ULONG kMostLocks = 0xFFFF;
// The caller provided the memory: it is emptied, never freed or moved.
constexpr USHORT kForeignMemory = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED;

std::atomic<LONGLONG> g_liveArrays{0};

char* PrefixOf(SAFEARRAY* array) {
  return reinterpret_cast<char*>(array) - kPrefixSize;
}

std::size_t DescriptorSize(UINT dimensions) {
  return offsetof(SAFEARRAY, rgsabound) + dimensions * sizeof(SAFEARRAYBOUND);
}

/// A zeroed descriptor, followed by `dataSize` zeroed bytes.
SAFEARRAY* AllocateBlock(UINT dimensions, std::size_t dataSize) {
  if (dimensions == 0 || dimensions > std::numeric_limits<USHORT>::max()) return nullptr;
  auto* block =
      static_cast<char*>(std::calloc(1, kPrefixSize + DescriptorSize(dimensions) + dataSize));
  if (!block) return nullptr;
  auto* array = reinterpret_cast<SAFEARRAY*>(block + kPrefixSize);
  array->cDims = static_cast<USHORT>(dimensions);
  g_liveArrays.fetch_add(1, std::memory_order_relaxed);
  return array;
}

void FreeBlock(SAFEARRAY* array) {
  g_liveArrays.fetch_sub(1, std::memory_order_relaxed);
  std::free(PrefixOf(array));
}

/// Fills in element type, size and features.
void DescribeElements(SAFEARRAY& array, VARTYPE type, UINT elementSize) {
  array.cbElements = elementSize;
  if (type == VT_UNKNOWN || type == VT_DISPATCH) {
    const IID& iid = type == VT_UNKNOWN ? IID_IUnknown : IID_IDispatch;
    std::memcpy(PrefixOf(&array), &iid, sizeof iid);
    array.fFeatures =
        static_cast<USHORT>(FADF_HAVEIID | (type == VT_UNKNOWN ? FADF_UNKNOWN : FADF_DISPATCH));
    return;
  }
  const DWORD stored = type;
  std::memcpy(PrefixOf(&array) + kPrefixSize - sizeof stored, &stored, sizeof stored);
  array.fFeatures = FADF_HAVEVARTYPE;
  if (type == VT_BSTR) array.fFeatures |= FADF_BSTR;
  if (type == VT_VARIANT) array.fFeatures |= FADF_VARIANT;
}

/// False for bounds whose last index is no LONG.
bool IsInRange(const SAFEARRAYBOUND& bound) {
  const LONGLONG last = LONGLONG{bound.lLbound} + bound.cElements - 1;
  return last >= std::numeric_limits<LONG>::min() && last <= std::numeric_limits<LONG>::max();
}

/// The bytes of all elements; false when they are too many.
bool DataSize(const SAFEARRAY& array, std::size_t& size) {
  ULONGLONG total = array.cbElements;
  bool fits = true;
  for (const SAFEARRAYBOUND& bound : orxdb::Bounds(array)) {
    if (bound.cElements == 0) {
      size = 0;
      return true;
    }
    fits = fits && !__builtin_mul_overflow(total, bound.cElements, &total) &&
           total <= std::numeric_limits<ULONG>::max();
  }
  size = total;
  return fits;
}

void* AllocateZeroed(std::size_t size) {
  return std::calloc(1, size ? size : 1);
}

/// Frees what the elements own and leaves zeros in their place.
void Empty(SAFEARRAY& array) {
  if (!array.pvData) return;
  const std::size_t count = ElementCount(array);
  orxdb::ReleaseElements(array, array.pvData, count);
  std::memset(array.pvData, 0, count * array.cbElements);
}

/// Frees the elements and their memory.
void DropData(SAFEARRAY& array) {
  if (array.fFeatures & kForeignMemory) return Empty(array);
  orxdb::ReleaseElements(array, array.pvData, array.pvData ? ElementCount(array) : 0);
  // A vector's data goes with its descriptor, and data allocated later is not part of the block.
  if (array.fFeatures & FADF_CREATEVECTOR) {
    array.fFeatures &= static_cast<USHORT>(~FADF_CREATEVECTOR);
  } else {
    std::free(array.pvData);
  }
  array.pvData = nullptr;
}

/// Whether elements of one array can stand in the other, each in the same place.
bool HaveOneForm(const SAFEARRAY& left, const SAFEARRAY& right) {
  constexpr USHORT kOwning = FADF_BSTR | FADF_UNKNOWN | FADF_DISPATCH | FADF_VARIANT;
  const auto count = [](const SAFEARRAYBOUND& bound) { return bound.cElements; };
  return left.cbElements == right.cbElements &&
         (left.fFeatures & kOwning) == (right.fFeatures & kOwning) &&
         std::ranges::equal(orxdb::Bounds(left), orxdb::Bounds(right), {}, count, count);
}

}  // namespace

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds) {
  if (!bounds) return nullptr;
  SAFEARRAY* array = nullptr;
  if (FAILED(SafeArrayAllocDescriptorEx(type, dimensions, &array))) return nullptr;
  const std::span<SAFEARRAYBOUND> stored = orxdb::Bounds(*array);
  bool valid = true;
  for (UINT i = 0; i < dimensions; ++i) {
    valid = valid && IsInRange(bounds[i]);
    stored[dimensions - 1 - i] = bounds[i];
  }
  if (!valid || FAILED(SafeArrayAllocData(array))) {
    FreeBlock(array);
    return nullptr;
  }
  return array;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count) {
  const SAFEARRAYBOUND bound{count, lowerBound};
  const UINT elementSize = orxdb::SizeOfType(type);
  const ULONGLONG dataSize = ULONGLONG{count} * elementSize;
  if (elementSize == 0 || dataSize > std::numeric_limits<ULONG>::max() || !IsInRange(bound)) {
    return nullptr;
  }
  SAFEARRAY* array = AllocateBlock(1, dataSize);
  if (!array) return nullptr;
  DescribeElements(*array, type, elementSize);
  array->fFeatures |= FADF_CREATEVECTOR | FADF_FIXEDSIZE;
  array->rgsabound[0] = bound;
  array->pvData = reinterpret_cast<char*>(array) + DescriptorSize(1);
  return array;
}

HRESULT SafeArrayAllocDescriptor(UINT dimensions, SAFEARRAY** array) {
  if (!array) return E_POINTER;
  *array = nullptr;
  if (dimensions == 0 || dimensions > std::numeric_limits<USHORT>::max()) return E_INVALIDARG;
  *array = AllocateBlock(dimensions, 0);
  return *array ? S_OK : E_OUTOFMEMORY;
}

HRESULT SafeArrayAllocDescriptorEx(VARTYPE type, UINT dimensions, SAFEARRAY** array) {
  if (!array) return E_POINTER;
  *array = nullptr;
  const UINT elementSize = orxdb::SizeOfType(type);
  if (elementSize == 0) return DISP_E_BADVARTYPE;
  const HRESULT status = SafeArrayAllocDescriptor(dimensions, array);
  if (SUCCEEDED(status)) DescribeElements(**array, type, elementSize);
  return status;
}

HRESULT SafeArrayAllocData(SAFEARRAY* array) {
  std::size_t size = 0;
  if (!array || array->cDims == 0 || array->pvData) return E_INVALIDARG;
  if (!DataSize(*array, size)) return E_OUTOFMEMORY;
  array->pvData = AllocateZeroed(size);
  return array->pvData ? S_OK : E_OUTOFMEMORY;
}

HRESULT SafeArrayDestroyDescriptor(SAFEARRAY* array) {
  if (!array) return S_OK;
  if (array->cLocks > 0) return DISP_E_ARRAYISLOCKED;
  if (array->fFeatures & FADF_CREATEVECTOR) DropData(*array);
  if (!(array->fFeatures & kForeignMemory)) FreeBlock(array);
  return S_OK;
}

HRESULT SafeArrayDestroyData(SAFEARRAY* array) {
  if (!array) return E_INVALIDARG;
  if (array->cLocks > 0) return DISP_E_ARRAYISLOCKED;
  DropData(*array);
  return S_OK;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
  if (!array) return S_OK;
  if (array->cLocks > 0) return DISP_E_ARRAYISLOCKED;
  DropData(*array);
  return SafeArrayDestroyDescriptor(array);
}

HRESULT SafeArrayCopy(SAFEARRAY* source, SAFEARRAY** copy) {
  if (!copy) return E_INVALIDARG;
  *copy = nullptr;
  if (!source) return S_OK;
  std::size_t size = 0;
  if (source->cDims == 0) return E_INVALIDARG;
  if (!DataSize(*source, size)) return E_OUTOFMEMORY;
  SAFEARRAY* made = AllocateBlock(source->cDims, 0);
  if (!made) return E_OUTOFMEMORY;
  std::memcpy(made, source, DescriptorSize(source->cDims));
  made->cLocks = 0;
  made->pvData = nullptr;
  made->fFeatures &= static_cast<USHORT>(~(kForeignMemory | FADF_CREATEVECTOR | FADF_FIXEDSIZE));
  if (source->fFeatures & (FADF_HAVEIID | FADF_HAVEVARTYPE)) {
    std::memcpy(PrefixOf(made), PrefixOf(source), kPrefixSize);
  }
  HRESULT status = S_OK;
  if (source->pvData) {
    made->pvData = AllocateZeroed(size);
    status = made->pvData
                 ? orxdb::CopyElements(*source, made->pvData, source->pvData, ElementCount(*source))
                 : E_OUTOFMEMORY;
  }
  if (FAILED(status)) {
    // CopyElements left zeros behind its failure, so what was copied is freed here.
    DropData(*made);
    FreeBlock(made);
    return status;
  }
  *copy = made;
  return S_OK;
}

HRESULT SafeArrayCopyData(SAFEARRAY* source, SAFEARRAY* target) {
  if (!source || !target || !source->pvData || !target->pvData || !HaveOneForm(*source, *target)) {
    return E_INVALIDARG;
  }
  const std::size_t count = ElementCount(*source);
  const std::size_t size = count * source->cbElements;
  auto* const copies = static_cast<char*>(AllocateZeroed(size));
  if (!copies) return E_OUTOFMEMORY;
  const HRESULT status = orxdb::CopyElements(*source, copies, source->pvData, count);
  // Elements do not mind being moved. What goes are the old ones, or copies that nobody needs.
  if (SUCCEEDED(status)) {
    std::swap_ranges(copies, copies + size, static_cast<char*>(target->pvData));
  }
  orxdb::ReleaseElements(*target, copies, count);
  std::free(copies);
  return status;
}

HRESULT SafeArrayRedim(SAFEARRAY* array, const SAFEARRAYBOUND* rightmost) {
  if (!array || !rightmost || array->cDims == 0 || !array->pvData || !IsInRange(*rightmost) ||
      (array->fFeatures & (FADF_FIXEDSIZE | FADF_CREATEVECTOR | kForeignMemory))) {
    return E_INVALIDARG;
  }
  if (array->cLocks > 0) return DISP_E_ARRAYISLOCKED;

  SAFEARRAYBOUND& bound = array->rgsabound[0];
  const SAFEARRAYBOUND oldBound = bound;
  const std::size_t oldCount = ElementCount(*array);
  bound = *rightmost;
  std::size_t newSize = 0;
  if (!DataSize(*array, newSize)) {
    bound = oldBound;
    return E_OUTOFMEMORY;
  }
  const std::size_t newCount = ElementCount(*array);
  auto* data = static_cast<char*>(array->pvData);
  if (newCount < oldCount) orxdb::ReleaseElements(*array, data + newSize, oldCount - newCount);
  // The slowest dimension changes, so elements that stay keep their place; none minds being moved.
  auto* moved = static_cast<char*>(std::realloc(data, newSize ? newSize : 1));
  if (moved) {
    array->pvData = moved;
    if (newCount > oldCount) {
      const std::size_t oldSize = oldCount * array->cbElements;
      std::memset(moved + oldSize, 0, newSize - oldSize);
    }
  } else if (newCount > oldCount) {
    bound = oldBound;
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) {
  return array ? array->cDims : 0;
}

UINT SafeArrayGetElemsize(SAFEARRAY* array) {
  return array ? array->cbElements : 0;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  if (!array || !bound) return E_INVALIDARG;
  if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
  *bound = orxdb::Bounds(*array)[array->cDims - dimension].lLbound;
  return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  if (!array || !bound) return E_INVALIDARG;
  if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
  const SAFEARRAYBOUND& found = orxdb::Bounds(*array)[array->cDims - dimension];
  *bound = static_cast<LONG>(LONGLONG{found.lLbound} + found.cElements - 1);
  return S_OK;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
  if (!array || !type) return E_INVALIDARG;
  if (array->fFeatures & FADF_HAVEVARTYPE) {
    DWORD stored = 0;
    std::memcpy(&stored, PrefixOf(array) + kPrefixSize - sizeof stored, sizeof stored);
    *type = static_cast<VARTYPE>(stored);
  } else if (array->fFeatures & FADF_DISPATCH) {
    *type = VT_DISPATCH;
  } else if (array->fFeatures & FADF_UNKNOWN) {
    *type = VT_UNKNOWN;
  } else {
    return E_INVALIDARG;
  }
  return S_OK;
}

HRESULT SafeArrayGetIID(SAFEARRAY* array, GUID* iid) {
  if (!array || !iid || !(array->fFeatures & FADF_HAVEIID)) return E_INVALIDARG;
  std::memcpy(iid, PrefixOf(array), sizeof *iid);
  return S_OK;
}

HRESULT SafeArraySetIID(SAFEARRAY* array, REFGUID iid) {
  if (!array || !(array->fFeatures & FADF_HAVEIID)) return E_INVALIDARG;
  std::memcpy(PrefixOf(array), &iid, sizeof iid);
  return S_OK;
}

HRESULT SafeArrayLock(SAFEARRAY* array) {
  if (!array) return E_INVALIDARG;
  std::atomic_ref<ULONG> locks(array->cLocks);
  if (locks.fetch_add(1) >= kMostLocks) {
    locks.fetch_sub(1);
    return E_UNEXPECTED;
  }
  return S_OK;
}

HRESULT SafeArrayUnlock(SAFEARRAY* array) {
  if (!array) return E_INVALIDARG;
  std::atomic_ref<ULONG> locks(array->cLocks);
  ULONG held = locks.load();
  while (held > 0) {
    if (locks.compare_exchange_weak(held, held - 1)) return S_OK;
  }
  return E_UNEXPECTED;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
  if (!array || !data) return E_INVALIDARG;
  const HRESULT status = SafeArrayLock(array);
  *data = SUCCEEDED(status) ? array->pvData : nullptr;
  return status;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
  return SafeArrayUnlock(array);
}

LONGLONG AutomationLiveArrays() {
  return g_liveArrays.load(std::memory_order_relaxed);
}
