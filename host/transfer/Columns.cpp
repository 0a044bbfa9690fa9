#include "host/transfer/Columns.h"

#include <algorithm>
#include <utility>

#include "host/library/Names.h"
#include "host/transfer/Synonyms.h"

namespace orxdb {
namespace {

/// The name and the unit of a column such as "Length (mm)", "D [in]" and "Diameter_mm".
std::pair<std::string, Unit> SplitUnit(const std::string& name) {
  const std::size_t end = name.find_last_not_of(" )]");
  const std::size_t start = name.find_last_of("([_ ", end);
  if (end == name.npos || start == name.npos || start == 0) return {name, Unit::None};
  const Unit unit = LengthUnitNamed(name.substr(start + 1, end - start));
  return unit == Unit::None ? std::pair(name, unit) : std::pair(name.substr(0, start), unit);
}

}  // namespace

Columns::Columns(std::vector<Property> properties, std::vector<ColumnMapping> mappings)
    : m_properties(std::move(properties)), m_mappings(std::move(mappings)) {}

std::optional<Column> Columns::Find(const std::string& name) {
  auto known = m_known.find(name);
  if (known == m_known.end()) known = m_known.emplace(name, Look(name)).first;
  return known->second;
}

std::optional<Column> Columns::Look(const std::string& name) const {
  const auto [bare, unit] = SplitUnit(name);
  for (const ColumnMapping& mapping : m_mappings) {
    if (mapping.column != name && NameKey(mapping.column) != NameKey(name)) continue;
    const Property* property = Named(NameKey(mapping.property));
    if (!property) return std::nullopt;
    return Column{property, unit};
  }
  if (const Property* property = Named(NameKey(name))) return Column{property, Unit::None};
  for (const std::string& key : {NameKey(name), NameKey(bare)}) {
    const Property* property = Named(key);
    if (!property) property = Meant(key);
    if (property) return Column{property, unit};
  }
  return std::nullopt;
}

const Property* Columns::Named(const std::string& key) const {
  const auto found = std::ranges::find_if(
      m_properties, [&key](const Property& property) { return NameKey(property.name) == key; });
  return found == m_properties.end() ? nullptr : &*found;
}

const Property* Columns::Meant(const std::string& key) const {
  for (const std::string_view meant : PropertiesMeantBy(key)) {
    const auto found = std::ranges::find(m_properties, meant, &Property::name);
    if (found != m_properties.end()) return &*found;
  }
  return nullptr;
}

}  // namespace orxdb
