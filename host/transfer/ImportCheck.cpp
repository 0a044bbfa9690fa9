#include "host/transfer/ImportCheck.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

#include "platform/framework/Text.h"

namespace orxdb {
namespace {

/// The type of a column that the table does not have.
constexpr VARTYPE kUnknown = VT_EMPTY;

/// Types whose values the component compares with those of the tools that are there. Long texts,
/// which it does not, cannot be told from others here.
bool IsCompared(VARTYPE type) {
  return type != VT_CY && type != VT_DATE && type != VT_CLSID && !(type & VT_ARRAY);
}

}  // namespace

void LineList::Add(long long number) {
  constexpr std::size_t kShown = 5;
  ++count;
  if (first.size() < kShown) first.push_back(number);
}

std::string LineList::Text() const {
  std::string text = count == 1 ? "line " : "lines ";
  for (std::size_t i = 0; i < first.size(); ++i) {
    const bool last = static_cast<long long>(i) + 1 == count;
    text += (i == 0 ? "" : last ? " and " : ", ") + std::to_string(first[i]);
  }
  const long long more = count - static_cast<long long>(first.size());
  return more > 0 ? text + " and " + std::to_string(more) + " more" : text;
}

ImportColumns::ImportColumns(ToolDatabase& database, const ExchangeFile& file)
    : m_table(file.Table()) {
  const std::vector<Property> properties = database.Properties(m_table);
  for (const std::string& name : file.Names()) {
    const auto property = std::ranges::find_if(
        properties, [&name](const Property& p) { return EqualNoCase(p.name, name); });
    const VARTYPE type = property == properties.end() ? kUnknown : property->type;
    m_columns.push_back({.name = name, .type = type, .isCompared = IsCompared(type)});
  }
}

std::string ImportColumns::Obstacle(const std::vector<std::string>& fields) const {
  bool compared = false;
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    const ExchangeColumn& column = m_columns[i];
    if (column.type == kUnknown) return m_table + " has no property " + Cited(column.name) + '.';
    if (!column.isCompared) continue;
    compared = true;
    if (column.type != VT_BSTR && fields[i].empty()) return column.name + " has no value.";
  }
  return compared ? "" : "It holds no property by which tools are told apart.";
}

std::string ImportColumns::Criteria(const std::vector<std::string>& fields) const {
  return SameToolCriteria(m_columns, fields);
}

ImportCheck::ImportCheck(ToolDatabase& database, const ExchangeFile& file)
    : m_database(database), m_table(file.Table()), m_columns(database, file) {
  m_lastBefore = HighestId();
}

/// By halving, since asking for an order would keep it for the import.
LONG ImportCheck::HighestId() {
  const auto isAbove = [this](LONGLONG id) {
    const auto found = Find(m_table + ".ID > " + std::to_string(id));
    if (!found) throw HostError("The tools of " + m_table + " cannot be read.");
    return *found != 0;
  };
  LONGLONG low = 0;
  LONGLONG high = 1;
  while (isAbove(high)) std::tie(low, high) = std::pair(high, high * 2);
  while (low < high) {
    const LONGLONG middle = (low + high) / 2;
    if (isAbove(middle)) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return static_cast<LONG>(low);
}

std::optional<LONG> ImportCheck::Find(const std::string& criteria) {
  ToolProperties tool;
  const Bstr table = WidenToBstr(m_table);
  if (FAILED(
          m_database.Component().SetTabFilter(table.get(), WidenToBstr(criteria).get(), nullptr)) ||
      FAILED(
          m_database.Component().GetFirstTool(table.get(), tool.names.put(), tool.values.put()))) {
    return std::nullopt;
  }
  if (!tool) return 0;
  for (const std::string& name : {std::string("ID"), m_table + ".ID"}) {
    const Cell key = tool.Value(name);
    if (key.kind == Cell::Kind::Number) {
      return static_cast<LONG>(std::strtol(key.text.c_str(), nullptr, 10));
    }
  }
  throw HostError("The tools of " + m_table + " have no number.");
}

void ImportCheck::Take(const ExchangeLine& line, ImportResult& result) {
  ++result.records;
  if (result.stoppedAt != 0) {
    ++result.unread;
  } else if (line.kind == ExchangeLine::Kind::TooLong) {
    result.tooLong.Add(line.number);
  } else if (line.kind == ExchangeLine::Kind::WrongFields) {
    result.wrongFields.Add(line.number);
  } else {
    result.reason = m_columns.Obstacle(line.fields);
    const auto tool = result.reason.empty() ? Find(m_columns.Criteria(line.fields)) : std::nullopt;
    if (!tool) {
      result.stoppedAt = line.number;
      if (result.reason.empty()) result.reason = "The database does not accept its values.";
    } else if (*tool == 0) {
      result.missing.Add(line.number);
    } else if (*tool > m_lastBefore && m_claimed.insert(*tool).second) {
      ++result.found;
    } else {
      ++result.present;
    }
  }
}

}  // namespace orxdb
