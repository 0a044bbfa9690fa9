// Values as text and text as values: the forms used in queries, in exchange files and for people.
// Nothing here follows the process locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/automation/Types.h"

namespace orxdb {

/// The narrow text of a value in queries and exchange files: "NULL" for no value, integers plain
/// (VT_UI4 as if it were signed), reals with six decimals, "TRUE" or "FALSE", text as it is,
/// without quotes or escapes. Nothing for any other type.
std::optional<std::string> VariantText(const VARIANT& value);

/// `VariantText` as a new wide string, which the caller owns. E_FAIL, with `*text` untouched, for
/// null pointers and for types without a text.
HRESULT FormatVariantText(const VARIANT* value, BSTR* text);

/// Reads a value of the given type from narrow text; `value` is an initialised variant and its old
/// content is overwritten, not released.
///
/// Empty text gives VT_NULL whatever the type. Numbers are scanned: blanks in front are skipped,
/// what follows the number is ignored, and integers keep the low bits of the type (numbers beyond
/// 64 bits count as the nearest one). Without a number the result is E_FAIL and only the type is
/// set. A flag is true for exactly "TRUE". Text is copied, and the result is nevertheless E_FAIL:
/// callers use the value and ignore the status. E_FAIL, and VT_EMPTY, for null text and for any
/// other type.
HRESULT ParseVariantText(const char* text, VARTYPE type, VARIANT& value);

/// The texts that stand for a flag when shown to people.
struct FlagTexts {
  std::string_view yes;
  std::string_view no;
};

/// The narrow text of a value for people: empty for no value, `flagTexts` for flags, text as it
/// is, numbers as the automation runtime converts them. A real with a precision from 0 to 8 gets
/// that many decimals. Nothing for any other type.
std::optional<std::string> VariantDisplayText(const VARIANT& value, LONG precision,
                                              const FlagTexts& flagTexts);

/// Fixed notation with exactly `precision` (0 to 8) decimals and a full stop.
std::string DoubleToString(double value, int precision);

/// The text with every punctuation character that criteria could stumble over replaced by "?", the
/// any-one-character wildcard of LIKE.
std::string FilterPatternText(std::string text);

}  // namespace orxdb
