// Identifiers of the classes of the test library.
#pragma once

#include "platform/automation/Types.h"

inline constexpr CLSID kTestClass = {
    0x6F9619FF, 0x8B86, 0xD011, {0xB4, 0x2D, 0x00, 0xC0, 0x4F, 0xC9, 0x64, 0xFF}};
/// Asking for it throws, as no library should.
inline constexpr CLSID kFaultyClass = {0xFA017, 0, 0, {}};
