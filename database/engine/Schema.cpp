#include "database/engine/Schema.h"

#include <algorithm>
#include <sqlite3.h>
#include <utility>

#include "database/dialect/Lexer.h"
#include "database/engine/Connection.h"

namespace orxdb {
namespace {

constexpr std::size_t kMostDescriptions = 1000;

}  // namespace

const TableColumn* TableInfo::Find(std::string_view column) const noexcept {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const TableColumn& each) {
    return SameName(each.name, column);
  });
  return found == columns.end() ? nullptr : &*found;
}

void Schema::Clear() noexcept {
  m_version = -1;
  m_stamp = {};
  m_views.clear();
  m_tables.clear();
  m_descriptions.clear();
}

void Schema::Follow() {
  // The look comes before the reading: what is committed between them is met by the next look.
  const ChangeStamp stamp = m_connection.Stamp();
  if (stamp == m_stamp) return;
  std::int64_t version = 0;
  {
    const StatementUse schema = m_connection.Use("PRAGMA schema_version");
    schema->Step();
    version = schema->Integer(0);
  }
  if (version == m_version) {
    m_stamp = stamp;
    return;
  }
  Clear();
  const StatementUse rows = m_connection.Use(
      "SELECT type, tbl_name, sql FROM main.sqlite_schema"
      " WHERE type IN ('table', 'view', 'trigger') ORDER BY type");
  while (rows->Step()) {
    const std::string type = rows->Text(0);
    const std::string name = rows->Text(1);
    if (type == "view") {
      m_views[FoldedName(name)].definition = rows->Text(2);
    } else if (type == "table") {
      m_tables[FoldedName(name)].name = name;
    } else if (const auto table = m_tables.find(FoldedName(name)); table != m_tables.end()) {
      table->second.hasTriggers = true;
    }
  }
  m_version = version;
  m_stamp = stamp;
}

const StoredText* Schema::Definition(std::string_view name) {
  Follow();
  const auto found = m_views.find(FoldedName(name));
  if (found == m_views.end()) return nullptr;
  View& view = found->second;
  if (view.text) return &*view.text;
  StoredText text;
  Lexer lexer(view.definition, LexicalRules::Sqlite);
  Token token = lexer.Next();
  while (!token.IsWord("AS")) {
    if (token.kind == Token::Kind::End) {
      throw CDaoException(DaoError::Engine, "The stored query cannot be read");
    }
    text.namesColumns = text.namesColumns || token.IsSymbol("(");
    token = lexer.Next();
  }
  text.select = view.definition.substr(token.begin + 2);
  text.parts = AnalyseStoredSelect(text.select);
  return &view.text.emplace(std::move(text));
}

bool Schema::HasSource(std::string_view name) {
  Follow();
  const std::string key = FoldedName(name);
  return m_views.contains(key) || m_tables.contains(key);
}

const TableInfo& Schema::Table(std::string_view name) {
  Follow();
  const auto found = m_tables.find(FoldedName(name));
  if (found == m_tables.end()) {
    throw CDaoException(DaoError::NotFound, "There is no table " + std::string(name));
  }
  if (!found->second.columns.empty()) return found->second;

  TableInfo table;  // kept when it has been read to its end
  table.name = found->second.name;
  table.hasTriggers = found->second.hasTriggers;
  int keyColumns = 0;
  std::string key;
  Statement rows = m_connection.Prepare("PRAGMA main.table_xinfo(" + Quoted(table.name) + ")");
  while (rows.Step()) {
    table.columns.push_back(
        {rows.Text(1), rows.Text(2), rows.Text(4), rows.Integer(3) != 0, rows.Integer(6) != 0});
    if (rows.Integer(5) == 0) continue;
    ++keyColumns;
    if (SameName(rows.Text(2), "INTEGER")) key = rows.Text(1);
  }
  if (keyColumns == 1 && !key.empty()) {
    table.key = key;
    int autoIncrement = 0;
    sqlite3_table_column_metadata(m_connection.Handle(), "main", table.name.c_str(), key.c_str(),
                                  nullptr, nullptr, nullptr, nullptr, &autoIncrement);
    table.autoIncrement = autoIncrement != 0;
  }
  return found->second = std::move(table);
}

std::shared_ptr<const QuerySource> Schema::Description(const std::string& key) {
  Follow();
  const auto found = m_descriptions.find(key);
  return found == m_descriptions.end() ? nullptr : found->second;
}

void Schema::Keep(const std::string& key, std::shared_ptr<const QuerySource> description) {
  if (m_descriptions.size() >= kMostDescriptions) m_descriptions.clear();
  m_descriptions.emplace(key, std::move(description));
}

}  // namespace orxdb
