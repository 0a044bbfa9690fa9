// Finding and creating classes.
//
// A class is known by one small text file, `<anything>.class`, in a class folder:
//
//   [Class]
//   ClassId = {5CFEC078-5A02-4476-BD65-EDDE95DC124C}
//   ProgId = Vendor.Thing.1
//   VersionIndependentProgId = Vendor.Thing
//   Description = Thing Class
//   Library = /opt/vendor/lib/libthing.so
//   ThreadingModel = Apartment
//   TypeLibrary = {7DA8ADAE-5A17-44B3-AF41-C9C4F1B26029}
//   TypeLibraryName = VendorLib
//   [End]
//
// ClassId and Library (an absolute path) must be there, the rest may be absent; unknown keys are
// ignored. Text is UTF-8, blanks around keys and values do not count, lines that start with `#` or
// `;` are comments, ends of line are LF or CR LF. Keys and programmatic identifiers are compared
// without regard to case. The last line must be `[End]`: a file without it was cut short. A file
// that is not of this form, or larger than 64 KB, is passed over.
//
// The class folders, first match wins: `$XDG_DATA_HOME/automation/classes.d` (`~/.local/share` by
// default), then the same under every folder of `$XDG_DATA_DIRS` (`/usr/local/share:/usr/share` by
// default). The environment variable AUTOMATION_CLASS_PATH, a colon-separated list of class
// folders, replaces them all. Within a folder files are looked at in the order of their names.
#pragma once

#include <cstddef>

#include "platform/automation/Unknown.h"

inline constexpr DWORD CLSCTX_INPROC_SERVER = 0x1;
inline constexpr DWORD CLSCTX_ALL = 0x17;

/// Another machine to create objects on.
struct COSERVERINFO {
  DWORD dwReserved1;
  LPOLESTR pwszName;
  void* pAuthInfo;
  DWORD dwReserved2;
};

/// An interface asked for, the reference got and the status of asking.
struct MULTI_QI {
  const IID* pIID;
  IUnknown* pItf;
  HRESULT hr;
};

extern "C" {

/// Class identifier of a programmatic identifier, with or without version. CO_E_CLASSSTRING when
/// no class has it.
AUTOMATION_API HRESULT CLSIDFromProgID(const OLECHAR* progId, CLSID* clsid);

/// Versioned programmatic identifier of a class; free it with CoTaskMemFree. REGDB_E_CLASSNOTREG
/// when the class is unknown or has none.
AUTOMATION_API HRESULT ProgIDFromCLSID(REFCLSID clsid, LPOLESTR* progId);

/// Reads "{8-4-4-4-12 hexadecimal digits}"; any other text is looked up as a programmatic
/// identifier. Null text gives the null identifier.
AUTOMATION_API HRESULT CLSIDFromString(const OLECHAR* text, CLSID* clsid);

/// Reads "{8-4-4-4-12 hexadecimal digits}" only; CO_E_IIDSTRING for anything else.
AUTOMATION_API HRESULT IIDFromString(const OLECHAR* text, IID* iid);

/// Writes "{…}" in capitals with its final zero. Gives 39, or 0 when `capacity` is smaller.
AUTOMATION_API INT StringFromGUID2(REFGUID guid, OLECHAR* text, INT capacity);

/// As StringFromGUID2, in new text; free it with CoTaskMemFree.
AUTOMATION_API HRESULT StringFromCLSID(REFCLSID clsid, LPOLESTR* text);
AUTOMATION_API HRESULT StringFromIID(REFIID iid, LPOLESTR* text);

/// A new identifier, drawn by chance.
AUTOMATION_API HRESULT CoCreateGuid(GUID* guid);

/// The class factory (or another interface of the class object) of a registered class.
/// REGDB_E_CLASSNOTREG when no class file names it or `context` leaves out in-process servers;
/// CO_E_DLLNOTFOUND when its library does not load; CO_E_ERRORINDLL when the library has no
/// DllGetClassObject. `reserved` must be null.
AUTOMATION_API HRESULT CoGetClassObject(REFCLSID clsid, DWORD context, void* reserved, REFIID iid,
                                        void** object);

/// As CoGetClassObject for a library given by its path, registered or not. Both `/` and `\` may
/// part folders.
AUTOMATION_API HRESULT CoGetClassObjectFromFile(const char* path, REFCLSID clsid, REFIID iid,
                                                void** object);

/// A new object of a registered class through its class factory, aggregated into `outer` unless
/// that is null.
AUTOMATION_API HRESULT CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid,
                                        void** object);

/// As CoCreateInstance for several interfaces of one new object: S_OK when it has them all,
/// CO_S_NOTALLINTERFACES for some and E_NOINTERFACE for none, each with its own status. `server`
/// must not name another machine.
AUTOMATION_API HRESULT CoCreateInstanceEx(REFCLSID clsid, IUnknown* outer, DWORD context,
                                          COSERVERINFO* server, DWORD count, MULTI_QI* results);

/// Unloads the libraries that say that they are no longer used. Class objects and objects of
/// theirs must be gone from this thread's stack.
AUTOMATION_API void CoFreeUnusedLibraries();

/// Memory that passes from the one who allocates it to the one who frees it.
AUTOMATION_API void* CoTaskMemAlloc(std::size_t size);
AUTOMATION_API void* CoTaskMemRealloc(void* memory, std::size_t size);
AUTOMATION_API void CoTaskMemFree(void* memory);
}
