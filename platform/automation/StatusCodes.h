// The status type of every runtime call and interface method, and the standard status values.
#pragma once

#include <cstdint>

using HRESULT = std::int32_t;
using SCODE = std::int32_t;

/// True for every status that is not a failure (S_FALSE is a success).
constexpr bool SUCCEEDED(HRESULT status) noexcept {
  return status >= 0;
}
constexpr bool FAILED(HRESULT status) noexcept {
  return status < 0;
}

namespace orxdb {
/// A status from the 32 bits under which it is documented.
constexpr HRESULT StatusFromBits(std::uint32_t bits) noexcept {
  return static_cast<HRESULT>(bits);
}
}  // namespace orxdb

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;

inline constexpr HRESULT E_NOTIMPL = orxdb::StatusFromBits(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = orxdb::StatusFromBits(0x80004002);
inline constexpr HRESULT E_POINTER = orxdb::StatusFromBits(0x80004003);
inline constexpr HRESULT E_ABORT = orxdb::StatusFromBits(0x80004004);
inline constexpr HRESULT E_FAIL = orxdb::StatusFromBits(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = orxdb::StatusFromBits(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = orxdb::StatusFromBits(0x80070005);
inline constexpr HRESULT E_HANDLE = orxdb::StatusFromBits(0x80070006);
inline constexpr HRESULT E_OUTOFMEMORY = orxdb::StatusFromBits(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = orxdb::StatusFromBits(0x80070057);

/// Some of several interfaces are there, and some are not.
inline constexpr HRESULT CO_S_NOTALLINTERFACES = 0x00080012;
inline constexpr HRESULT RPC_E_CHANGED_MODE = orxdb::StatusFromBits(0x80010106);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = orxdb::StatusFromBits(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = orxdb::StatusFromBits(0x80040111);
inline constexpr HRESULT REGDB_E_READREGDB = orxdb::StatusFromBits(0x80040150);
inline constexpr HRESULT REGDB_E_WRITEREGDB = orxdb::StatusFromBits(0x80040151);
inline constexpr HRESULT REGDB_E_KEYMISSING = orxdb::StatusFromBits(0x80040152);
inline constexpr HRESULT REGDB_E_INVALIDVALUE = orxdb::StatusFromBits(0x80040153);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = orxdb::StatusFromBits(0x80040154);
inline constexpr HRESULT REGDB_E_IIDNOTREG = orxdb::StatusFromBits(0x80040155);
inline constexpr HRESULT CO_E_NOTINITIALIZED = orxdb::StatusFromBits(0x800401F0);
inline constexpr HRESULT CO_E_CLASSSTRING = orxdb::StatusFromBits(0x800401F3);
inline constexpr HRESULT CO_E_IIDSTRING = orxdb::StatusFromBits(0x800401F4);
inline constexpr HRESULT CO_E_DLLNOTFOUND = orxdb::StatusFromBits(0x800401F8);
inline constexpr HRESULT CO_E_ERRORINDLL = orxdb::StatusFromBits(0x800401F9);
inline constexpr HRESULT SELFREG_E_TYPELIB = orxdb::StatusFromBits(0x80040200);
inline constexpr HRESULT SELFREG_E_CLASS = orxdb::StatusFromBits(0x80040201);

inline constexpr HRESULT DISP_E_UNKNOWNINTERFACE = orxdb::StatusFromBits(0x80020001);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = orxdb::StatusFromBits(0x80020003);
inline constexpr HRESULT DISP_E_PARAMNOTFOUND = orxdb::StatusFromBits(0x80020004);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = orxdb::StatusFromBits(0x80020005);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = orxdb::StatusFromBits(0x80020006);
inline constexpr HRESULT DISP_E_NONAMEDARGS = orxdb::StatusFromBits(0x80020007);
inline constexpr HRESULT DISP_E_BADVARTYPE = orxdb::StatusFromBits(0x80020008);
inline constexpr HRESULT DISP_E_EXCEPTION = orxdb::StatusFromBits(0x80020009);
inline constexpr HRESULT DISP_E_OVERFLOW = orxdb::StatusFromBits(0x8002000A);
inline constexpr HRESULT DISP_E_BADINDEX = orxdb::StatusFromBits(0x8002000B);
inline constexpr HRESULT DISP_E_UNKNOWNLCID = orxdb::StatusFromBits(0x8002000C);
inline constexpr HRESULT DISP_E_ARRAYISLOCKED = orxdb::StatusFromBits(0x8002000D);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = orxdb::StatusFromBits(0x8002000E);
inline constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = orxdb::StatusFromBits(0x8002000F);
inline constexpr HRESULT DISP_E_BADCALLEE = orxdb::StatusFromBits(0x80020010);
inline constexpr HRESULT DISP_E_NOTACOLLECTION = orxdb::StatusFromBits(0x80020011);
inline constexpr HRESULT DISP_E_DIVBYZERO = orxdb::StatusFromBits(0x80020012);
inline constexpr HRESULT DISP_E_BUFFERTOOSMALL = orxdb::StatusFromBits(0x80020013);

inline constexpr HRESULT TYPE_E_BUFFERTOOSMALL = orxdb::StatusFromBits(0x80028016);
inline constexpr HRESULT TYPE_E_FIELDNOTFOUND = orxdb::StatusFromBits(0x80028017);
inline constexpr HRESULT TYPE_E_INVDATAREAD = orxdb::StatusFromBits(0x80028018);
inline constexpr HRESULT TYPE_E_UNSUPFORMAT = orxdb::StatusFromBits(0x80028019);
inline constexpr HRESULT TYPE_E_REGISTRYACCESS = orxdb::StatusFromBits(0x8002801C);
inline constexpr HRESULT TYPE_E_LIBNOTREGISTERED = orxdb::StatusFromBits(0x8002801D);
inline constexpr HRESULT TYPE_E_UNDEFINEDTYPE = orxdb::StatusFromBits(0x80028027);
inline constexpr HRESULT TYPE_E_QUALIFIEDNAMEDISALLOWED = orxdb::StatusFromBits(0x80028028);
inline constexpr HRESULT TYPE_E_INVALIDSTATE = orxdb::StatusFromBits(0x80028029);
inline constexpr HRESULT TYPE_E_WRONGTYPEKIND = orxdb::StatusFromBits(0x8002802A);
inline constexpr HRESULT TYPE_E_ELEMENTNOTFOUND = orxdb::StatusFromBits(0x8002802B);
inline constexpr HRESULT TYPE_E_AMBIGUOUSNAME = orxdb::StatusFromBits(0x8002802C);
inline constexpr HRESULT TYPE_E_NAMECONFLICT = orxdb::StatusFromBits(0x8002802D);
inline constexpr HRESULT TYPE_E_UNKNOWNLCID = orxdb::StatusFromBits(0x8002802E);
inline constexpr HRESULT TYPE_E_DLLFUNCTIONNOTFOUND = orxdb::StatusFromBits(0x8002802F);
inline constexpr HRESULT TYPE_E_BADMODULEKIND = orxdb::StatusFromBits(0x800288BD);
inline constexpr HRESULT TYPE_E_DUPLICATEID = orxdb::StatusFromBits(0x800288C6);
inline constexpr HRESULT TYPE_E_TYPEMISMATCH = orxdb::StatusFromBits(0x80028CA0);
inline constexpr HRESULT TYPE_E_OUTOFBOUNDS = orxdb::StatusFromBits(0x80028CA1);
inline constexpr HRESULT TYPE_E_IOERROR = orxdb::StatusFromBits(0x80028CA2);
inline constexpr HRESULT TYPE_E_CANTLOADLIBRARY = orxdb::StatusFromBits(0x80029C4A);
inline constexpr HRESULT TYPE_E_CIRCULARTYPE = orxdb::StatusFromBits(0x80029C84);
