#include "platform/automation/ClassObject.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

#include "platform/automation/Ascii.h"
#include "platform/automation/ClassFiles.h"
#include "platform/automation/ClassLibraries.h"
#include "platform/automation/ComPtr.h"

namespace {

/// Runs what may throw (memory, file names) behind an interface that must not.
template <typename Work>
HRESULT Guarded(Work&& work) noexcept {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

HRESULT ClassFromProgId(const std::string& progId, CLSID& clsid) {
  if (progId.empty()) return CO_E_CLASSSTRING;
  const auto found = orxdb::FindClass([&](const orxdb::ClassFile& file) {
    return orxdb::EqualNoCase(file.progId, progId) ||
           orxdb::EqualNoCase(file.versionIndependentProgId, progId);
  });
  if (!found) return CO_E_CLASSSTRING;
  clsid = found->clsid;
  return S_OK;
}

}  // namespace

HRESULT CLSIDFromProgID(const OLECHAR* progId, CLSID* clsid) {
  if (!progId || !clsid) return E_INVALIDARG;
  *clsid = CLSID_NULL;
  return Guarded([&] { return ClassFromProgId(orxdb::ToAscii(progId), *clsid); });
}

HRESULT ProgIDFromCLSID(REFCLSID clsid, LPOLESTR* progId) {
  if (!progId) return E_INVALIDARG;
  *progId = nullptr;
  return Guarded([&] {
    const auto found =
        orxdb::FindClass([&](const orxdb::ClassFile& file) { return file.clsid == clsid; });
    if (!found || found->progId.empty()) return REGDB_E_CLASSNOTREG;
    const std::string& text = found->progId;
    auto* copy = static_cast<OLECHAR*>(CoTaskMemAlloc((text.size() + 1) * sizeof(OLECHAR)));
    if (!copy) return E_OUTOFMEMORY;
    std::transform(text.begin(), text.end(), copy,
                   [](char c) { return static_cast<OLECHAR>(static_cast<unsigned char>(c)); });
    copy[text.size()] = 0;
    *progId = copy;
    return S_OK;
  });
}

HRESULT CLSIDFromString(const OLECHAR* text, CLSID* clsid) {
  if (!clsid) return E_INVALIDARG;
  *clsid = CLSID_NULL;
  if (!text) return S_OK;
  return Guarded([&] {
    const std::string ascii = orxdb::ToAscii(text);
    if (const auto parsed = orxdb::ParseGuid(ascii)) {
      *clsid = *parsed;
      return S_OK;
    }
    return ClassFromProgId(ascii, *clsid);
  });
}

HRESULT IIDFromString(const OLECHAR* text, IID* iid) {
  if (!iid) return E_INVALIDARG;
  *iid = IID_NULL;
  if (!text) return S_OK;
  return Guarded([&] {
    const auto parsed = orxdb::ParseGuid(orxdb::ToAscii(text));
    if (!parsed) return CO_E_IIDSTRING;
    *iid = *parsed;
    return S_OK;
  });
}

INT StringFromGUID2(REFGUID guid, OLECHAR* text, INT capacity) {
  constexpr INT kLength = 39;
  if (!text || capacity < kLength) return 0;
  const auto hex = [&text](std::uint32_t value, int digits) {
    for (int i = digits; i-- > 0; value >>= 4) text[i] = u"0123456789ABCDEF"[value & 0xF];
    text += digits;
  };
  *text++ = u'{';
  hex(guid.Data1, 8);
  *text++ = u'-';
  hex(guid.Data2, 4);
  *text++ = u'-';
  hex(guid.Data3, 4);
  *text++ = u'-';
  for (std::size_t i = 0; i < std::size(guid.Data4); ++i) {
    if (i == 2) *text++ = u'-';
    hex(guid.Data4[i], 2);
  }
  *text++ = u'}';
  *text = 0;
  return kLength;
}

HRESULT CoGetClassObject(REFCLSID clsid, DWORD context, void* reserved, REFIID iid, void** object) {
  if (!object) return E_INVALIDARG;
  *object = nullptr;
  if (reserved) return E_INVALIDARG;
  if (!(context & CLSCTX_INPROC_SERVER)) return REGDB_E_CLASSNOTREG;
  return Guarded([&] {
    const auto found =
        orxdb::FindClass([&](const orxdb::ClassFile& file) { return file.clsid == clsid; });
    return found ? orxdb::GetClassObjectFrom(found->library, clsid, iid, object)
                 : REGDB_E_CLASSNOTREG;
  });
}

HRESULT CoGetClassObjectFromFile(const char* path, REFCLSID clsid, REFIID iid, void** object) {
  if (!object) return E_INVALIDARG;
  *object = nullptr;
  if (!path || !*path) return E_INVALIDARG;
  return Guarded([&] {
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    // An absolute path keeps the loader from searching its own folders for a bare name.
    return orxdb::GetClassObjectFrom(std::filesystem::absolute(native), clsid, iid, object);
  });
}

HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid,
                         void** object) {
  if (!object) return E_INVALIDARG;
  *object = nullptr;
  orxdb::ComPtr<IClassFactory> factory;
  const HRESULT status =
      CoGetClassObject(clsid, context, nullptr, IClassFactory::iid, factory.putVoid());
  if (FAILED(status)) return status;
  return factory ? factory->CreateInstance(outer, iid, object) : CO_E_ERRORINDLL;
}

void CoFreeUnusedLibraries() {
  Guarded([] {
    orxdb::UnloadUnusedLibraries();
    return S_OK;
  });
}

void* CoTaskMemAlloc(std::size_t size) {
  return std::malloc(size ? size : 1);
}

void* CoTaskMemRealloc(void* memory, std::size_t size) {
  if (memory && size == 0) {
    std::free(memory);
    return nullptr;
  }
  return std::realloc(memory, size ? size : 1);
}

void CoTaskMemFree(void* memory) {
  std::free(memory);
}
