// Narrow and wide text. Narrow text is in the system code page, UTF-8.
//
// Nothing is lost on the way narrow, wide, narrow: a byte that is not part of valid UTF-8 becomes
// the lone low surrogate U+DC00 + byte (U+DC80 to U+DCFF) and comes back as that byte. Every other
// surrogate without its partner narrows to its three-byte form, so wide text that is not valid
// UTF-16 stays distinguishable in narrow form, but does not come back as it was.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/automation/Bstr.h"

namespace orxdb {

/// Number of wide characters that `narrow` becomes; never more than it has bytes.
AUTOMATION_API std::size_t WidenedLength(std::string_view narrow) noexcept;

/// Writes the wide form of `narrow` to `wide`, which has room for WidenedLength(narrow)
/// characters, and returns the place behind the last one. No zero is added.
AUTOMATION_API OLECHAR* WidenTo(std::string_view narrow, OLECHAR* wide) noexcept;

AUTOMATION_API std::u16string Widen(std::string_view narrow);

/// As Widen, into a string whose memory is used again.
AUTOMATION_API void WidenInto(std::string_view narrow, std::u16string& wide);

/// As Widen, straight into a counted string. Throws std::bad_alloc.
AUTOMATION_API Bstr WidenToBstr(std::string_view narrow);

AUTOMATION_API std::string Narrow(std::u16string_view wide);

/// Appends the narrow form of `wide`.
AUTOMATION_API void NarrowInto(std::u16string_view wide, std::string& narrow);

/// Narrow form of a counted string; null gives empty text.
AUTOMATION_API std::string NarrowBstr(BSTR wide);

/// Writes the wide form of the zero-terminated `narrow`, its zero included, to `buffer` of `length`
/// characters and returns `buffer`. What does not fit, and null text, leaves an empty string; a
/// null buffer or one without length is left alone.
AUTOMATION_API OLECHAR* WidenText(OLECHAR* buffer, const char* narrow, int length) noexcept;

}  // namespace orxdb
