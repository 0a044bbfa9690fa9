// Counted wide strings. The 32-bit number of bytes stands right before the text, the text starts
// at a pointer-aligned address and a zero follows it that is not counted. A string may hold zeros
// and, made by byte length, an odd number of bytes. Null reads as empty everywhere.
#pragma once

#include "platform/automation/Types.h"

extern "C" {

/// A copy of zero-terminated text. Null for null text or without memory.
AUTOMATION_API BSTR SysAllocString(const OLECHAR* text);

/// A string of `length` characters, copied from `text`; null `text` leaves them unset (for the
/// caller to fill in place). Null without memory.
AUTOMATION_API BSTR SysAllocStringLen(const OLECHAR* text, UINT length);

/// A string of `length` bytes, copied from `bytes`; null `bytes` leaves them unset. Null without
/// memory, and always for the last few lengths below 4 GB.
AUTOMATION_API BSTR SysAllocStringByteLen(const char* bytes, UINT length);

/// Replaces the string by a copy of zero-terminated `text`. False, and the string unchanged,
/// without memory.
AUTOMATION_API INT SysReAllocString(BSTR* string, const OLECHAR* text);

/// Replaces the string by `length` characters of `text`. Where `text` lies within the old string it
/// ends with that: further characters are left unset. Null `text` stands for the old string from
/// its beginning. False, and the string unchanged, without memory.
AUTOMATION_API INT SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length);

/// Frees the string. Null is harmless.
AUTOMATION_API void SysFreeString(BSTR string);

/// Number of whole characters, without the final zero.
AUTOMATION_API UINT SysStringLen(BSTR string);

/// Number of bytes, without the final zero.
AUTOMATION_API UINT SysStringByteLen(BSTR string);

/// Number of strings alive in this process; a debugging aid to balance allocations.
AUTOMATION_API LONGLONG AutomationLiveStrings();
}
