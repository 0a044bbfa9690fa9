#include "host/transfer/KnownTools.h"

#include <algorithm>
#include <functional>

#include "platform/automation/Ascii.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

constexpr char kBetween = '\x1f';

void Append(std::string& key, const Cell& cell, bool folded) {
  key += folded ? Folded(cell.text) : cell.text;
  key += kBetween;
}

const Assignment* Given(const Assignments& values, const std::string& property) {
  const auto found = std::ranges::find(values, property, &Assignment::property);
  return found == values.end() ? nullptr : &*found;
}

std::optional<std::uint64_t> HashOfGiven(const Assignments& values,
                                         const std::vector<std::string>& properties, bool folded) {
  std::string key;
  for (const std::string& property : properties) {
    const Assignment* given = Given(values, property);
    if (!given) return std::nullopt;
    Append(key, given->shown, folded);
  }
  return std::hash<std::string>()(key);
}

std::vector<std::string> PropertiesOf(const Assignments& values) {
  std::vector<std::string> properties;
  for (const Assignment& value : values) properties.push_back(value.property);
  std::ranges::sort(properties);
  return properties;
}

}  // namespace

bool IsSame(const Cell& left, const Cell& right) {
  return left == right || (left.text.empty() && right.text.empty());
}

void KnownTools::Index::Insert(std::uint64_t hash, LONG id) {
  Ids& ids = tools[hash];
  if (ids.first == 0 || ids.first == id) {
    ids.first = id;
  } else if (ids.second == 0) {
    ids.second = id;
  }
}

std::uint64_t KnownTools::Index::HashOf(const Variant& values) const {
  const ArrayAccess<VARIANT> all(values.get().parray);
  std::string key;
  for (const std::size_t position : positions) {
    Append(key, position < all.size() ? Cell::Of(all[position]) : Cell(), folded);
  }
  return std::hash<std::string>()(key);
}

KnownTools::KnownTools(ToolDatabase& database, std::string table)
    : m_database(database), m_table(std::move(table)), m_properties(database.Properties(m_table)) {}

void KnownTools::TakeUp(bool changed) {
  // Reading all of a large table again for every group would take longer than the transfer.
  constexpr int kShareOfTime = 10;
  std::vector<Index*> all;
  for (auto& [key, index] : m_indices) all.push_back(&index);
  if (changed && Clock::now() - m_read > kShareOfTime * m_cost) {
    for (Index* index : all) index->tools.clear();
    m_last = 0;
  }
  ReadFrom(m_last, all);
}

void KnownTools::ReadFrom(LONG above, const std::vector<Index*>& into) {
  if (into.empty()) return;
  const auto start = Clock::now();
  const std::string where = above == 0 ? "" : m_table + ".ID > " + std::to_string(above);
  const auto key = std::ranges::find_if(m_properties, [this](const Property& property) {
    return ToolDatabase::IsKey(m_table, property.name);
  });
  if (key == m_properties.end()) throw HostError("The tools of " + m_table + " have no number.");
  const auto keyPosition = static_cast<std::size_t>(key - m_properties.begin());
  m_database.Select(m_table, where, {});
  for (ToolWalk walk(m_database, m_table, where); walk; walk.Next()) {
    const Variant& values = walk.Current().values();
    const LONG id = ArrayAccess<VARIANT>(values.get().parray)[keyPosition].lVal;
    for (Index* index : into) index->Insert(index->HashOf(values), id);
    m_last = std::max(m_last, id);
  }
  if (above == 0) {
    m_read = Clock::now();
    m_cost = m_read - start;
  }
}

KnownTools::Index& KnownTools::IndexOf(std::vector<std::string> properties, bool folded) {
  std::string key = folded ? "folded" : "";
  for (const std::string& property : properties) key += kBetween + property;
  const auto [place, isNew] = m_indices.try_emplace(key);
  Index& index = place->second;
  if (isNew) {
    for (const std::string& property : properties) {
      const auto found = std::ranges::find(m_properties, property, &Property::name);
      index.positions.push_back(static_cast<std::size_t>(found - m_properties.begin()));
    }
    index.properties = std::move(properties);
    index.folded = folded;
    ReadFrom(0, {&index});
  }
  return index;
}

std::vector<LONG> KnownTools::Look(const Index& index, const Assignments& values) {
  const auto hash = HashOfGiven(values, index.properties, index.folded);
  const auto found = hash ? index.tools.find(*hash) : index.tools.end();
  std::vector<LONG> ids;
  if (found == index.tools.end()) return ids;
  for (const LONG id : {found->second.first, found->second.second}) {
    if (id == kPlanned) ids.push_back(id);
    if (id <= 0) continue;
    const ToolProperties tool = m_database.Find(m_table, id);
    if (tool && index.HashOf(tool.values) == hash) ids.push_back(id);
  }
  return ids;
}

std::optional<LONG> KnownTools::Same(const Assignments& values) {
  const std::vector<LONG> ids = Look(IndexOf(PropertiesOf(values), false), values);
  return ids.empty() ? std::nullopt : std::optional(ids.front());
}

std::vector<LONG> KnownTools::Matching(const Assignments& values,
                                       const std::vector<std::string>& properties) {
  const bool all = std::ranges::all_of(properties, [&values](const std::string& property) {
    const Assignment* given = Given(values, property);
    return given && !given->shown.text.empty();
  });
  if (!all || properties.empty()) return {};
  return Look(IndexOf(properties, true), values);
}

void KnownTools::Add(const ToolProperties& tool, LONG id) {
  for (auto& [key, index] : m_indices) index.Insert(index.HashOf(tool.values), id);
  m_last = std::max(m_last, id);
}

void KnownTools::AddPlanned(const Assignments& values, const std::vector<std::string>& matched) {
  for (Index* index : {&IndexOf(PropertiesOf(values), false), &IndexOf(matched, true)}) {
    if (const auto hash = HashOfGiven(values, index->properties, index->folded)) {
      index->Insert(*hash, kPlanned);
    }
  }
}

}  // namespace orxdb
