#include "database/operations/DialectFunctions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "database/operations/DaoException.h"
#include "database/operations/SqlValue.h"

namespace orxdb {
namespace {

// --- Patterns

/// The character at a place, and where the next one begins. A stray byte counts as a character.
struct Character {
  char32_t code = 0;
  std::size_t next = 0;
};

Character CharacterAt(std::string_view text, std::size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  const std::size_t length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : lead >= 0xc0 ? 2 : 1;
  if (length == 1 || at + length > text.size()) {
    const bool upper = lead >= 'A' && lead <= 'Z';
    return {static_cast<char32_t>(upper ? lead + 32 : lead), at + 1};
  }
  char32_t code = lead & (0xffU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[at + i]);
    if ((byte & 0xc0U) != 0x80U) return {lead, at + 1};
    code = (code << 6U) | (byte & 0x3fU);
  }
  return {code, at + length};
}

/// One pattern element other than `*`: whether it takes the character, and where the next begins.
struct Element {
  bool matches = false;
  std::size_t next = 0;
};

Element MatchList(std::string_view pattern, std::size_t at, char32_t code) {
  std::size_t i = at + 1;
  const bool negated = i < pattern.size() && pattern[i] == '!';
  if (negated) ++i;
  const std::size_t close = pattern.find(']', i);
  if (close == std::string_view::npos) return {false, pattern.size()};
  bool member = false;
  while (i < close) {
    const Character low = CharacterAt(pattern, i);
    Character high = low;
    if (low.next + 1 < close && pattern[low.next] == '-') high = CharacterAt(pattern, low.next + 1);
    member = member || (code >= low.code && code <= high.code);
    i = high.next;
  }
  return {member != negated, close + 1};
}

Element MatchElement(std::string_view pattern, std::size_t at, char32_t code) {
  switch (pattern[at]) {
    case '?':
      return {true, at + 1};
    case '#':
      return {code >= '0' && code <= '9', at + 1};
    case '[':
      return MatchList(pattern, at, code);
    default: {
      const Character literal = CharacterAt(pattern, at);
      return {literal.code == code, literal.next};
    }
  }
}

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

/// InStr(start, text, part): the place of the part at or behind the start, from 1; 0 for none.
void InString(sqlite3_context* context, sqlite3_value** arguments) {
  const std::string text = FoldedName(TextOf(arguments[1]));
  const std::string part = FoldedName(TextOf(arguments[2]));
  std::size_t at = 0;
  for (std::int64_t place = 1; at <= text.size(); ++place) {
    if (place >= sqlite3_value_int64(arguments[0]) && text.compare(at, part.size(), part) == 0) {
      sqlite3_result_int64(context, place);
      return;
    }
    at = at < text.size() ? CharacterAt(text, at).next : at + 1;
  }
  sqlite3_result_int64(context, 0);
}

using FunctionBody = void (*)(sqlite3_context*, sqlite3_value**);

struct Function {
  const char* name;
  int arguments;
  FunctionBody body;
};

constexpr std::array kFunctions = {Function{"orx_like", 2, Like},
                                   Function{"orx_text", 1, Text},
                                   Function{"orx_val", 1, Val},
                                   Function{"orx_floor", 1, Floor},
                                   Function{"orx_fix", 1, Fix},
                                   Function{"orx_round", 2, Round},
                                   Function{"orx_power", 2, Power},
                                   Function{"orx_divide", 2, WholeDivision},
                                   Function{"orx_remainder", 2, Remainder},
                                   Function{"orx_instr", 3, InString}};

void Call(sqlite3_context* context, int count, sqlite3_value** arguments) {
  for (int i = 0; i < count; ++i) {
    if (sqlite3_value_type(arguments[i]) == SQLITE_NULL) return;
  }
  try {
    static_cast<const Function*>(sqlite3_user_data(context))->body(context, arguments);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

}  // namespace

bool MatchesPattern(std::string_view pattern, std::string_view text) {
  // Going back to the last star only is enough: an earlier star could take no less.
  std::size_t p = 0;
  std::size_t t = 0;
  std::size_t starPattern = std::string_view::npos;
  std::size_t starText = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      starPattern = ++p;
      starText = t;
      continue;
    }
    const Character character = CharacterAt(text, t);
    if (p < pattern.size()) {
      const Element element = MatchElement(pattern, p, character.code);
      if (element.matches) {
        p = element.next;
        t = character.next;
        continue;
      }
    }
    if (starPattern == std::string_view::npos) return false;
    p = starPattern;
    t = starText = CharacterAt(text, starText).next;
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

void RegisterDialectFunctions(sqlite3* database) {
  for (const Function& function : kFunctions) {
    const int code = sqlite3_create_function_v2(
        database, function.name, function.arguments,
        SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, const_cast<Function*>(&function),
        &Call, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) throw CDaoException(DaoError::Engine, sqlite3_errmsg(database));
  }
}

bool IsDialectFunction(std::string_view foldedName) noexcept {
  return std::any_of(kFunctions.begin(), kFunctions.end(),
                     [&](const Function& function) { return foldedName == function.name; });
}

}  // namespace orxdb
