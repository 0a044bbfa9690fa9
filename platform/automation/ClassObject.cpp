#include "platform/automation/ClassObject.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <sys/random.h>

#include "platform/automation/Ascii.h"
#include "platform/automation/ClassFiles.h"
#include "platform/automation/ClassLibraries.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/Guarded.h"

namespace {

using orxdb::Guarded;

/// Characters of an identifier's text with its final zero.
constexpr INT kGuidLength = 39;

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

/// Text of `length` characters for whoever frees it with CoTaskMemFree; null without memory.
LPOLESTR AllocateText(std::size_t length) {
  return static_cast<LPOLESTR>(CoTaskMemAlloc((length + 1) * sizeof(OLECHAR)));
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
    *progId = AllocateText(text.size());
    if (!*progId) return E_OUTOFMEMORY;
    std::transform(text.begin(), text.end(), *progId,
                   [](char c) { return static_cast<OLECHAR>(static_cast<unsigned char>(c)); });
    (*progId)[text.size()] = 0;
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
  if (!text || capacity < kGuidLength) return 0;
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
  return kGuidLength;
}

HRESULT StringFromCLSID(REFCLSID clsid, LPOLESTR* text) {
  if (!text) return E_INVALIDARG;
  *text = AllocateText(kGuidLength - 1);
  return StringFromGUID2(clsid, *text, kGuidLength) ? S_OK : E_OUTOFMEMORY;
}

HRESULT StringFromIID(REFIID iid, LPOLESTR* text) {
  return StringFromCLSID(iid, text);
}

HRESULT CoCreateGuid(GUID* guid) {
  if (!guid) return E_INVALIDARG;
  if (getrandom(guid, sizeof *guid, 0) != sizeof *guid) return E_UNEXPECTED;
  // The marks of identifiers that are drawn by chance: version 4 of the usual variant.
  guid->Data3 = static_cast<std::uint16_t>((guid->Data3 & 0x0FFF) | 0x4000);
  guid->Data4[0] = static_cast<std::uint8_t>((guid->Data4[0] & 0x3F) | 0x80);
  return S_OK;
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

HRESULT CoCreateInstanceEx(REFCLSID clsid, IUnknown* outer, DWORD context, COSERVERINFO* server,
                           DWORD count, MULTI_QI* results) {
  if (!results || count == 0 || (server && server->pwszName)) return E_INVALIDARG;
  DWORD given = 0;
  orxdb::ComPtr<IUnknown> object;
  const HRESULT status = CoCreateInstance(clsid, outer, context, IID_IUnknown, object.putVoid());
  for (MULTI_QI& result : std::span(results, count)) {
    result.pItf = nullptr;
    result.hr = E_INVALIDARG;
    if (FAILED(status)) {
      result.hr = status;
    } else if (result.pIID) {
      result.hr = object.QueryInterface(*result.pIID, reinterpret_cast<void**>(&result.pItf));
    }
    if (SUCCEEDED(result.hr)) ++given;
  }
  if (FAILED(status)) return status;
  return given == count ? S_OK : given > 0 ? CO_S_NOTALLINTERFACES : E_NOINTERFACE;
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
