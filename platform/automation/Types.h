// The plain types of automation: fixed-width numbers, wide text, VARIANT and SAFEARRAY in the
// standard 64-bit layout. No functions live here; see BString.h, Variants.h and SafeArrays.h.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/automation/Guid.h"
#include "platform/automation/StatusCodes.h"

/// Marks what the shared library exports; everything else in it is hidden.
#define AUTOMATION_API __attribute__((visibility("default")))
/// Calling convention of interface methods: the system's only one here.
#define STDMETHODCALLTYPE
/// A literal of OLECHAR.
#define OLESTR(literal) u##literal

using OLECHAR = char16_t;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
/// Counted wide text: points behind its 32-bit byte count (see BString.h). Null reads as empty.
using BSTR = OLECHAR*;

using BYTE = std::uint8_t;
using CHAR = char;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using WORD = std::uint16_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using FLOAT = float;
using DOUBLE = double;
using BOOL = INT;
using PVOID = void*;

using DISPID = LONG;
using MEMBERID = DISPID;
using HREFTYPE = DWORD;
using LCID = DWORD;

/// Flag type of automation: all bits set for true.
using VARIANT_BOOL = SHORT;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

/// Days since 30 December 1899; the fraction is the time of day and counts forward also before
/// that day (-1.25 is 29 December 1899, 06:00).
using DATE = DOUBLE;

#ifdef __clang__
// The standard layout of unions has members without names, which are an extension of C++.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wnested-anon-types"
#endif

/// Currency: ten-thousandths in 64 bits.
union CY {
  __extension__ struct {
    ULONG Lo;
    LONG Hi;
  };
  LONGLONG int64;
};

/// A 96-bit whole number, a sign (0 or DECIMAL_NEG) and a power of ten to divide by (0 to 28).
/// `wReserved` is where a variant keeps its type.
struct DECIMAL {
  USHORT wReserved;
  union {
    __extension__ struct {
      BYTE scale;
      BYTE sign;
    };
    USHORT signscale;
  };
  ULONG Hi32;
  union {
    __extension__ struct {
      ULONG Lo32;
      ULONG Mid32;
    };
    ULONGLONG Lo64;
  };
};
inline constexpr BYTE DECIMAL_NEG = 0x80;

using VARTYPE = USHORT;
inline constexpr VARTYPE VT_EMPTY = 0;
inline constexpr VARTYPE VT_NULL = 1;
inline constexpr VARTYPE VT_I2 = 2;
inline constexpr VARTYPE VT_I4 = 3;
inline constexpr VARTYPE VT_R4 = 4;
inline constexpr VARTYPE VT_R8 = 5;
inline constexpr VARTYPE VT_CY = 6;
inline constexpr VARTYPE VT_DATE = 7;
inline constexpr VARTYPE VT_BSTR = 8;
inline constexpr VARTYPE VT_DISPATCH = 9;
inline constexpr VARTYPE VT_ERROR = 10;
inline constexpr VARTYPE VT_BOOL = 11;
inline constexpr VARTYPE VT_VARIANT = 12;
inline constexpr VARTYPE VT_UNKNOWN = 13;
inline constexpr VARTYPE VT_DECIMAL = 14;
inline constexpr VARTYPE VT_I1 = 16;
inline constexpr VARTYPE VT_UI1 = 17;
inline constexpr VARTYPE VT_UI2 = 18;
inline constexpr VARTYPE VT_UI4 = 19;
inline constexpr VARTYPE VT_I8 = 20;
inline constexpr VARTYPE VT_UI8 = 21;
inline constexpr VARTYPE VT_INT = 22;
inline constexpr VARTYPE VT_UINT = 23;
// From here on only type descriptions use them, except VT_RECORD.
inline constexpr VARTYPE VT_VOID = 24;
inline constexpr VARTYPE VT_HRESULT = 25;
inline constexpr VARTYPE VT_PTR = 26;
inline constexpr VARTYPE VT_SAFEARRAY = 27;
inline constexpr VARTYPE VT_CARRAY = 28;
inline constexpr VARTYPE VT_USERDEFINED = 29;
inline constexpr VARTYPE VT_LPSTR = 30;
inline constexpr VARTYPE VT_LPWSTR = 31;
inline constexpr VARTYPE VT_RECORD = 36;
inline constexpr VARTYPE VT_INT_PTR = 37;
inline constexpr VARTYPE VT_UINT_PTR = 38;
inline constexpr VARTYPE VT_FILETIME = 64;
inline constexpr VARTYPE VT_BLOB = 65;
inline constexpr VARTYPE VT_CLSID = 72;
inline constexpr VARTYPE VT_VECTOR = 0x1000;
inline constexpr VARTYPE VT_ARRAY = 0x2000;
inline constexpr VARTYPE VT_BYREF = 0x4000;
inline constexpr VARTYPE VT_RESERVED = 0x8000;
inline constexpr VARTYPE VT_TYPEMASK = 0x0FFF;

/// One dimension of a safe array: the number of elements and the index of the first.
struct SAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
};

/// Descriptor of a safe array. `rgsabound` holds `cDims` entries, the rightmost dimension first;
/// the leftmost index varies fastest in `pvData`.
struct SAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;
  ULONG cbElements;
  ULONG cLocks;
  PVOID pvData;
  SAFEARRAYBOUND rgsabound[1];
};
static_assert(sizeof(SAFEARRAY) == 32 && offsetof(SAFEARRAY, pvData) == 16 &&
              offsetof(SAFEARRAY, rgsabound) == 24);

inline constexpr USHORT FADF_AUTO = 0x0001;
inline constexpr USHORT FADF_STATIC = 0x0002;
inline constexpr USHORT FADF_EMBEDDED = 0x0004;
inline constexpr USHORT FADF_FIXEDSIZE = 0x0010;
inline constexpr USHORT FADF_RECORD = 0x0020;
inline constexpr USHORT FADF_HAVEIID = 0x0040;
inline constexpr USHORT FADF_HAVEVARTYPE = 0x0080;
inline constexpr USHORT FADF_BSTR = 0x0100;
inline constexpr USHORT FADF_UNKNOWN = 0x0200;
inline constexpr USHORT FADF_DISPATCH = 0x0400;
inline constexpr USHORT FADF_VARIANT = 0x0800;
/// Descriptor and data share one block of memory.
inline constexpr USHORT FADF_CREATEVECTOR = 0x2000;

struct IUnknown;
struct IDispatch;
struct IRecordInfo;

/// A value with its type. `vt` tells which member of the union holds; a decimal overlays the whole.
struct VARIANT {
  union {
    __extension__ struct {
      VARTYPE vt;
      WORD wReserved1;
      WORD wReserved2;
      WORD wReserved3;
      union {
        LONGLONG llVal;
        LONG lVal;
        BYTE bVal;
        SHORT iVal;
        FLOAT fltVal;
        DOUBLE dblVal;
        VARIANT_BOOL boolVal;
        SCODE scode;
        CY cyVal;
        DATE date;
        BSTR bstrVal;
        IUnknown* punkVal;
        IDispatch* pdispVal;
        SAFEARRAY* parray;
        BYTE* pbVal;
        SHORT* piVal;
        LONG* plVal;
        LONGLONG* pllVal;
        FLOAT* pfltVal;
        DOUBLE* pdblVal;
        VARIANT_BOOL* pboolVal;
        SCODE* pscode;
        CY* pcyVal;
        DATE* pdate;
        BSTR* pbstrVal;
        IUnknown** ppunkVal;
        IDispatch** ppdispVal;
        SAFEARRAY** pparray;
        VARIANT* pvarVal;
        PVOID byref;
        CHAR cVal;
        USHORT uiVal;
        ULONG ulVal;
        ULONGLONG ullVal;
        INT intVal;
        UINT uintVal;
        DECIMAL* pdecVal;
        CHAR* pcVal;
        USHORT* puiVal;
        ULONG* pulVal;
        ULONGLONG* pullVal;
        INT* pintVal;
        UINT* puintVal;
        __extension__ struct {
          PVOID pvRecord;
          IRecordInfo* pRecInfo;
        };
      };
    };
    DECIMAL decVal;
  };
};
using VARIANTARG = VARIANT;
static_assert(sizeof(CY) == 8 && sizeof(DECIMAL) == 16 && sizeof(VARIANT) == 24);
static_assert(offsetof(VARIANT, vt) == 0 && offsetof(VARIANT, llVal) == 8 &&
              offsetof(VARIANT, pRecInfo) == 16 && offsetof(VARIANT, decVal) == 0);
static_assert(offsetof(DECIMAL, scale) == 2 && offsetof(DECIMAL, Hi32) == 4 &&
              offsetof(DECIMAL, Mid32) == 12);

#ifdef __clang__
#pragma clang diagnostic pop
#endif
