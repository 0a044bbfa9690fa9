// Texts as values of the properties of one kind of tool, by their type and limits.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/library/Quantity.h"
#include "host/library/ToolInput.h"

namespace orxdb {

/// The unit of a tool, and how it is known.
struct ToolUnit {
  Unit unit = Unit::None;
  bool fromLengths = false;  ///< only by some length that has it; others then need one, too
};

class FieldValues {
 public:
  FieldValues(ToolDatabase& database, std::string table);

  /// Whether the property is a length in the unit of the tool.
  static bool IsLength(const Property& property);
  /// The unit of a length: the one behind its number, or else that of its column.
  static Unit UnitOf(const std::string& text, Unit column);

  /// The value of a property without a list. Throws HostError with the end of a sentence that
  /// begins with the text.
  Assignment Read(const Property& property, const std::string& text, Unit column,
                  const ToolUnit& unit);

  bool HasList(const Property& property);
  /// The entry of the property's list that a text means; nothing when there is none. Throws
  /// HostError likewise for a text that may mean several.
  std::optional<Assignment> Choose(const Property& property, const std::string& text);
  /// The entries that are most like it, for a message.
  std::string NearestIn(const Property& property, const std::string& text);
  /// Throws HostError likewise for a text that is too long.
  void CheckLength(const Property& property, const std::string& text);
  bool IsRequired(const Property& property) { return LimitsOf(property).required; }
  void ForgetLists() { m_lists.clear(); }

 private:
  const std::optional<std::vector<std::string>>& ListOf(const Property& property);
  const FieldLimits& LimitsOf(const Property& property);
  static std::string NumberOf(const Property& property, const std::string& text, Unit column,
                              const ToolUnit& unit);

  ToolDatabase& m_database;
  std::string m_table;
  std::map<std::string, std::optional<std::vector<std::string>>> m_lists;
  std::map<std::string, FieldLimits> m_limits;
};

}  // namespace orxdb
