// Which property of a kind of tool a source means by a name.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/library/Quantity.h"
#include "host/library/ToolDatabase.h"

namespace orxdb {

/// What the person says: a column is a property.
struct ColumnMapping {
  std::string column;
  std::string property;
};

/// A property as a column gives it.
struct Column {
  const Property* property = nullptr;
  Unit unit = Unit::None;  ///< of its values, where the name of the column tells it: "D (mm)"
};

/// The properties of one kind of tool, found by the names of columns: by what the person says, by
/// their own names in any usual spelling, and by what others call them.
class Columns {
 public:
  Columns(std::vector<Property> properties, std::vector<ColumnMapping> mappings);
  Columns(Columns&&) = delete;

  const std::vector<Property>& Properties() const noexcept { return m_properties; }
  /// Nothing when the column is none of the properties.
  std::optional<Column> Find(const std::string& name);

 private:
  std::optional<Column> Look(const std::string& name) const;
  const Property* Named(const std::string& key) const;
  const Property* Meant(const std::string& key) const;

  std::vector<Property> m_properties;
  std::vector<ColumnMapping> m_mappings;
  std::map<std::string, std::optional<Column>> m_known;
};

}  // namespace orxdb
