#include "platform/automation/TypeLibraries.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "platform/automation/ClassFiles.h"
#include "platform/automation/ClassLibraries.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/Guarded.h"

namespace {

using orxdb::ClassFile;
using orxdb::ComPtr;

/// What a component says of itself; null when it says nothing.
ComPtr<ITypeLib> DescriptionBy(const ClassFile& file) {
  ComPtr<IProvideClassInfo> provider;
  ComPtr<ITypeInfo> type;
  ComPtr<ITypeLib> library;
  if (SUCCEEDED(orxdb::GetClassObjectFrom(file.library, file.clsid, IProvideClassInfo::iid,
                                          provider.putVoid())) &&
      SUCCEEDED(provider->GetClassInfo(type.put()))) {
    type->GetContainingTypeLib(library.put(), nullptr);
  }
  return library;
}

bool IsVersion(ITypeLib& library, REFGUID id, WORD major, WORD minor) {
  TLIBATTR* attributes = nullptr;
  if (FAILED(library.GetLibAttr(&attributes))) return false;
  const bool fits = attributes->guid == id && attributes->wMajorVerNum == major &&
                    attributes->wMinorVerNum >= minor;
  library.ReleaseTLibAttr(attributes);
  return fits;
}

}  // namespace

HRESULT LoadRegTypeLib(REFGUID library, WORD major, WORD minor, LCID, ITypeLib** loaded) {
  if (!loaded) return E_INVALIDARG;
  *loaded = nullptr;
  return orxdb::Guarded([&] {
    const auto file = orxdb::FindClass([&](const ClassFile& candidate) {
      return orxdb::ParseGuid(candidate.typeLibrary) == library;
    });
    if (!file) return TYPE_E_LIBNOTREGISTERED;
    ComPtr<ITypeLib> found = DescriptionBy(*file);
    if (!found) return TYPE_E_CANTLOADLIBRARY;
    if (!IsVersion(*found, library, major, minor)) return TYPE_E_LIBNOTREGISTERED;
    *loaded = found.detach();
    return S_OK;
  });
}

HRESULT LoadTypeLib(const OLECHAR* path, ITypeLib** loaded) {
  if (!path || !loaded) return E_INVALIDARG;
  *loaded = nullptr;
  return orxdb::Guarded([&] {
    std::u16string native(path);
    std::ranges::replace(native, u'\\', u'/');
    const std::filesystem::path wanted(native);
    const auto file = orxdb::FindClass([&](const ClassFile& candidate) {
      std::error_code error;
      return std::filesystem::equivalent(candidate.library, wanted, error);
    });
    if (file) *loaded = DescriptionBy(*file).detach();
    return *loaded ? S_OK : TYPE_E_CANTLOADLIBRARY;
  });
}
