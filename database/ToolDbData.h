#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/CatalogueRow.h"
#include "database/ToolTableInfo.h"
#include "database/records/DaoDatabase.h"
#include "database/records/DaoQueryDef.h"
#include "database/records/DaoRecordset.h"
#include "values/FieldTypes.h"

/// The database, its catalogue and everything opened with it.
///
/// Goes from closed to open once and stays open until it is destroyed. A catalogue that loads in
/// part stays as far as it came: entries without a recordset raise when they are used.
class CToolDbData {
 public:
  /// Maps order their names byte by byte, letter case included.
  using CToolTables = std::map<std::string, CToolTableInfo, std::less<>>;
  using CDataTables = std::map<std::string, std::unique_ptr<CDaoRecordset>, std::less<>>;

  CToolDbData() = default;
  CToolDbData(const CToolDbData&) = delete;
  CToolDbData& operator=(const CToolDbData&) = delete;
  virtual ~CToolDbData();

  /// Opens the file and the catalogue query. False when either fails; the file stays open when
  /// only the query is missing. An open database is left as it is, whatever the path.
  bool OpenDatabase(const std::string& path);
  bool IsOpen() const noexcept { return m_db.IsOpen(); }
  /// Whether the open database supports transactions, as found when it was opened.
  bool CanTransact() const noexcept { return m_bCanTransact; }

  /// Reads the catalogue and opens what it names; called once, after OpenDatabase. False when
  /// anything failed: the tool tables and stock materials go as far as their first failure, and so
  /// do, independently, the machining-data tables.
  bool LoadCatalogue();

  CDaoDatabase& Database() noexcept { return m_db; }
  /// A message is about to be shown, which lets the host run: it can end the data object, and it
  /// must not find a lock that it knows nothing of. Whoever holds one for a call of its own says
  /// how it is let go; the way of before is given back, to be put back afterwards.
  void BeforeMessage() const {
    if (m_beforeMessage) m_beforeMessage();
  }
  std::function<void()> SetBeforeMessage(std::function<void()> letGo) noexcept {
    return std::exchange(m_beforeMessage, std::move(letGo));
  }
  /// The rows of the catalogue in their order, a table named twice included twice.
  const std::vector<orxdb::CatalogueRow>& Rows() const noexcept { return m_rows; }
  CToolTables& ToolTables() noexcept { return m_toolTables; }
  /// The entry of a tool table; null when the catalogue does not name it.
  CToolTableInfo* FindToolTable(std::string_view name) noexcept;
  /// The type of a tool table's field; that of computed columns when table or field are unknown.
  const orxdb::FieldType& TypeOfField(std::string_view table, const std::string& field);
  /// The recordset of a machining-data table, named without "Q_"; null for an unknown name.
  CDaoRecordset* FindDataTable(std::string_view name) noexcept;
  /// The recordset over the catalogue query; closed before a database is open.
  CDaoRecordset& ToolTypesSet() noexcept { return m_toolTypesSet; }
  /// The recordset of the stock materials; closed when they could not be opened.
  CDaoRecordset& StockMaterialSet() noexcept { return m_stockMaterialSet; }

 private:
  /// Closes recordsets and queries before the database.
  void CloseAll() noexcept;
  void LoadToolTables();
  void ReadRows();
  void LoadDataTables();

  CDaoDatabase m_db;
  std::function<void()> m_beforeMessage;
  bool m_bCanTransact = false;
  CToolTables m_toolTables;
  CDataTables m_dataTables;
  CDaoRecordset m_toolTypesSet;
  std::unique_ptr<CDaoQueryDef> m_pToolTypesQuery;
  CDaoRecordset m_stockMaterialSet;
  std::vector<orxdb::CatalogueRow> m_rows;
};

/// The one data object behind all objects of the component; null while there is none. The newest
/// object of the component puts its data object here, and the release of any object destroys it.
extern CToolDbData* g_pToolDbData;
