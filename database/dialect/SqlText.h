#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "values/StoredValue.h"

namespace orxdb {

/// SQL text and the values of its question marks, in order of appearance.
struct SqlText {
  std::string text;
  std::vector<SqlValue> values;

  void Append(std::string_view more) { text += more; }
  void Append(const SqlText& more) {
    text += more.text;
    values.insert(values.end(), more.values.begin(), more.values.end());
  }
};

/// A name as SQL text: in double quotes, a double quote inside doubled.
std::string Quoted(std::string_view name);

/// Equal without regard to the case of the letters A to Z, as the database compares names.
bool SameName(std::string_view a, std::string_view b) noexcept;

/// The text with the letters A to Z in lower case: a key under which equal names meet.
std::string FoldedName(std::string_view name);

}  // namespace orxdb
