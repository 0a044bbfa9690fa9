#include "database/engine/DialectFunctions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <sqlite3.h>
#include <string>

#include "database/engine/TextSearch.h"
#include "platform/framework/DaoException.h"
#include "platform/framework/LetterCase.h"

namespace orxdb {
namespace {

/// Of SQLite's own LIKE and GLOB, whose time grows with the length of the text times this.
constexpr int kLongestPattern = 250;

// --- Arguments and results

std::string_view TextOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return text == nullptr
             ? std::string_view()
             : std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

void Answer(sqlite3_context* context, double real) {
  if (std::isnan(real)) {
    sqlite3_result_null(context);
  } else {
    sqlite3_result_double(context, real);
  }
}

void Answer(sqlite3_context* context, std::string_view text) {
  sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

/// Half to even at the given decimal, as the dialect rounds.
double RoundHalfEven(double value, int digits) {
  const double scale = std::pow(10.0, std::clamp(digits, 0, 15));
  const double scaled = value * scale;
  return std::isfinite(scaled) ? std::nearbyint(scaled) / scale : value;
}

/// Both operands of `\` and MOD, rounded to whole numbers; nothing when they cannot be.
std::optional<std::array<std::int64_t, 2>> WholeOperands(sqlite3_value** arguments) {
  std::array<std::int64_t, 2> whole{};
  for (std::size_t i = 0; i < 2; ++i) {
    const double rounded = RoundHalfEven(sqlite3_value_double(arguments[i]), 0);
    if (!(std::abs(rounded) < 9.0e18)) return std::nullopt;
    whole[i] = static_cast<std::int64_t>(rounded);
  }
  if (whole[1] == 0) return std::nullopt;
  return whole;
}

// --- Functions

void Like(sqlite3_context* context, sqlite3_value** arguments) {
  sqlite3_result_int(context, MatchesPattern(TextOf(arguments[0]), TextOf(arguments[1])) ? 1 : 0);
}

/// Whether a text has bytes of letters beyond A to Z.
void Beyond(sqlite3_context* context, sqlite3_value** arguments) {
  const std::string_view text = TextOf(arguments[0]);
  sqlite3_result_int(context, std::ranges::any_of(text, [](char c) {
                       return (static_cast<unsigned char>(c) & 0x80U) != 0;
                     }));
}

void Text(sqlite3_context* context, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) != SQLITE_FLOAT) {
    Answer(context, TextOf(arguments[0]));
    return;
  }
  std::array<char, 32> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                    sqlite3_value_double(arguments[0]), std::chars_format::general, 15);
  Answer(context, {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())});
}

void Val(sqlite3_context* context, sqlite3_value** arguments) {
  std::string text(TextOf(arguments[0]));
  std::erase(text, ' ');
  const std::size_t begin = text.starts_with('+') ? 1 : 0;
  double real = 0;
  std::from_chars(text.data() + begin, text.data() + text.size(), real);
  Answer(context, std::isfinite(real) ? real : 0.0);
}

void Floor(sqlite3_context* context, sqlite3_value** arguments) {
  Answer(context, std::floor(sqlite3_value_double(arguments[0])));
}

void Fix(sqlite3_context* context, sqlite3_value** arguments) {
  Answer(context, std::trunc(sqlite3_value_double(arguments[0])));
}

void Round(sqlite3_context* context, sqlite3_value** arguments) {
  Answer(context,
         RoundHalfEven(sqlite3_value_double(arguments[0]), sqlite3_value_int(arguments[1])));
}

void Power(sqlite3_context* context, sqlite3_value** arguments) {
  Answer(context, std::pow(sqlite3_value_double(arguments[0]), sqlite3_value_double(arguments[1])));
}

void WholeDivision(sqlite3_context* context, sqlite3_value** arguments) {
  if (const auto operands = WholeOperands(arguments)) {
    sqlite3_result_int64(context, (*operands)[0] / (*operands)[1]);
  }
}

void Remainder(sqlite3_context* context, sqlite3_value** arguments) {
  if (const auto operands = WholeOperands(arguments)) {
    sqlite3_result_int64(context, (*operands)[0] % (*operands)[1]);
  }
}

/// InStr(start, text, part), letter case aside.
void InString(sqlite3_context* context, sqlite3_value** arguments) {
  const std::string text = FoldLetters(TextOf(arguments[1]));
  const std::string part = FoldLetters(TextOf(arguments[2]));
  sqlite3_result_int64(context, PlaceOf(part, text, sqlite3_value_int64(arguments[0])));
}

// SQLite's own functions whose time grows with the product of their arguments, in linear time. They
// have to give the same as those, since files may hold indexes over them.

/// instr(text, part): the place of the part, from 1; 0 for none.
void SqliteInString(sqlite3_context* context, sqlite3_value** arguments) {
  const bool bytes = sqlite3_value_type(arguments[0]) == SQLITE_BLOB &&
                     sqlite3_value_type(arguments[1]) == SQLITE_BLOB;
  const std::string_view text = TextOf(arguments[0]);
  const std::string_view part = TextOf(arguments[1]);
  sqlite3_result_int64(
      context, bytes ? static_cast<std::int64_t>(FirstOf(part, text)) + 1 : PlaceOf(part, text));
}

void Replace(sqlite3_context* context, sqlite3_value** arguments) {
  sqlite3* const database = sqlite3_context_db_handle(context);
  const auto limit = static_cast<std::size_t>(sqlite3_limit(database, SQLITE_LIMIT_LENGTH, -1));
  const auto text =
      Replaced(TextOf(arguments[0]), TextOf(arguments[1]), TextOf(arguments[2]), limit);
  if (text) {
    Answer(context, *text);
  } else {
    sqlite3_result_error_toobig(context);
  }
}

template <bool left, bool right>
void Trim(sqlite3_context* context, sqlite3_value** arguments) {
  Answer(context, TrimmedOf(TextOf(arguments[0]), TextOf(arguments[1]), left, right));
}

using FunctionBody = void (*)(sqlite3_context*, sqlite3_value**);

struct Function {
  const char* name;
  int arguments;
  FunctionBody body;
};

constexpr std::array kFunctions = {Function{"orx_like", 2, Like},
                                   Function{"orx_beyond", 1, Beyond},
                                   Function{"orx_text", 1, Text},
                                   Function{"orx_val", 1, Val},
                                   Function{"orx_floor", 1, Floor},
                                   Function{"orx_fix", 1, Fix},
                                   Function{"orx_round", 2, Round},
                                   Function{"orx_power", 2, Power},
                                   Function{"orx_divide", 2, WholeDivision},
                                   Function{"orx_remainder", 2, Remainder},
                                   Function{"orx_instr", 3, InString},
                                   Function{"instr", 2, SqliteInString},
                                   Function{"replace", 3, Replace},
                                   Function{"trim", 2, Trim<true, true>},
                                   Function{"ltrim", 2, Trim<true, false>},
                                   Function{"rtrim", 2, Trim<false, true>}};

void Call(sqlite3_context* context, int count, sqlite3_value** arguments) {
  for (int i = 0; i < count; ++i) {
    if (sqlite3_value_type(arguments[i]) == SQLITE_NULL) return;
  }
  try {
    static_cast<const Function*>(sqlite3_user_data(context))->body(context, arguments);
  } catch (const CDaoException& exception) {
    sqlite3_result_error(context, exception.Message().c_str(), -1);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

/// The dialect's order of texts, for statements alone: no file may need it.
int CompareTexts(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return CompareLetters({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                        {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

}  // namespace

void RegisterDialectFunctions(sqlite3* database) {
  sqlite3_limit(database, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, kLongestPattern);
  for (const Function& function : kFunctions) {
    const int code = sqlite3_create_function_v2(
        database, function.name, function.arguments,
        SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, const_cast<Function*>(&function),
        &Call, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) throw CDaoException(DaoError::Engine, sqlite3_errmsg(database));
  }
  const int code = sqlite3_create_collation_v2(database, "orx_letters", SQLITE_UTF8, nullptr,
                                               &CompareTexts, nullptr);
  if (code != SQLITE_OK) throw CDaoException(DaoError::Engine, sqlite3_errmsg(database));
}

bool IsDialectFunction(std::string_view foldedName) noexcept {
  return std::any_of(kFunctions.begin(), kFunctions.end(),
                     [&](const Function& function) { return foldedName == function.name; });
}

}  // namespace orxdb
