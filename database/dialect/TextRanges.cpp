#include "database/dialect/TextRanges.h"

#include <algorithm>
#include <span>
#include <utility>

#include "database/dialect/Operations.h"
#include "platform/automation/Ascii.h"
#include "platform/framework/LetterCase.h"

namespace orxdb {
namespace {

constexpr std::size_t kMostBeginnings = 8;  // of one text: three letters in either case
constexpr std::size_t kMostRanges = 32;
constexpr std::size_t kLongestBeginning = 64;  // bytes

const std::string* TextOf(const Expression& expression) {
  const auto* const literal = std::get_if<SqlValue>(&expression.node);
  return literal == nullptr ? nullptr : std::get_if<std::string>(literal);
}

/// What texts begin with that a text or a pattern stands for, in all cases of letters beyond A to
/// Z, as far as these are not too many.
std::vector<std::string> BeginningsOf(std::string_view text, bool pattern) {
  std::vector<std::string> beginnings = {""};
  for (std::size_t at = 0; at < text.size() && at < kLongestBeginning;) {
    if (pattern && std::string_view("*?#[").find(text[at]) != std::string_view::npos) break;
    const TextCharacter character = CharacterAt(text, at);
    at = character.next;
    const std::vector<char32_t> letters =
        character.code < 0x80 ? std::vector<char32_t>{character.code} : LettersLike(character.code);
    if (beginnings.size() * letters.size() > kMostBeginnings) break;
    std::vector<std::string> longer;
    for (const std::string& beginning : beginnings) {
      for (const char32_t letter : letters) longer.push_back(beginning + Utf8Of(letter));
    }
    beginnings = std::move(longer);
  }
  if (beginnings.front().empty()) beginnings.clear();
  return beginnings;
}

Expression CallOf(const char* name, std::vector<Expression> operands) {
  Expression call{Call{name, std::move(operands), &OperationNamed(name)}};
  call.kind = ValueKind::Condition;
  return call;
}

Expression Compare(const char* name, const FieldName& field, std::string text) {
  std::vector<Expression> operands;
  operands.push_back({field, ValueKind::Text});
  operands.push_back({SqlValue(std::move(text)), ValueKind::Text});
  return CallOf(name, std::move(operands));
}

/// The field's text begins like this by the engine's rule.
Expression BeginsWith(const FieldName& field, const std::string& beginning) {
  // The least text behind all of them, give or take: bytes are compared.
  std::string behind = Folded(beginning);
  while (behind.back() == '\xff') behind.pop_back();  // stray bytes
  if (!behind.empty()) ++behind.back();
  std::vector<Expression> both;
  both.push_back(Compare("IN RANGE FROM", field, beginning));
  if (!behind.empty()) both.push_back(Compare("IN RANGE BELOW", field, std::move(behind)));
  return both.size() == 1 ? std::move(both.front()) : CallOf("AND", std::move(both));
}

/// The ranges in which texts like the literals are; empty where one of them may be anywhere.
std::vector<Expression> RangesOf(const FieldName& field, std::span<const Expression> literals,
                                 bool pattern) {
  std::vector<Expression> ranges;
  for (const Expression& literal : literals) {
    const std::string* const text = TextOf(literal);
    if (text == nullptr) return {};
    const std::vector<std::string> beginnings = BeginningsOf(*text, pattern);
    if (beginnings.empty() || ranges.size() + beginnings.size() > kMostRanges) return {};
    for (const std::string& beginning : beginnings) {
      ranges.push_back(BeginsWith(field, beginning));
    }
  }
  return ranges;
}

}  // namespace

bool IsPlainLiteral(const Expression& expression) {
  if (!std::holds_alternative<SqlValue>(expression.node)) return false;
  const std::string* const text = TextOf(expression);
  return text == nullptr ||
         std::ranges::all_of(*text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void AddTextRanges(Expression& expression) {
  const auto& call = std::get<Call>(expression.node);
  const bool pattern = call.name == "LIKE";
  if (!pattern && call.name != "=" && call.name != "IN") return;
  const auto* const field = std::get_if<FieldName>(&call.operands.front().node);
  if (field == nullptr || call.operands.front().kind != ValueKind::Text) return;
  const std::span literals = std::span(call.operands).subspan(1);
  if (!pattern && std::ranges::all_of(literals, IsPlainLiteral)) return;
  std::vector<Expression> ranges = RangesOf(*field, literals, pattern);
  if (ranges.empty()) return;
  std::vector<Expression> both;
  both.push_back(ranges.size() == 1 ? std::move(ranges.front()) : CallOf("OR", std::move(ranges)));
  both.push_back(std::move(expression));
  expression = CallOf("AND", std::move(both));
}

}  // namespace orxdb
