#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "database/records/DaoDatabase.h"
#include "database/records/DaoQueryDef.h"
#include "database/records/DaoRecordset.h"
#include "platform/automation/Bstr.h"
#include "platform/framework/Text.h"
#include "tests/support/LeakBalance.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/TemporaryFolder.h"

namespace orxdb {

/// A small tool database in a file of its own, with a second, plain connection that stands for
/// another program.
class RecordsetFixture : public LeakBalance {
 protected:
  RecordsetFixture() {
    Execute(
        "PRAGMA journal_mode = WAL;"
        "CREATE TABLE COATING (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(20));"
        "INSERT INTO COATING (Name) VALUES ('TiN'), ('TiAlN');"
        "CREATE TABLE MILL (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(20),"
        " D DOUBLE DEFAULT 6, Coating LONG, Fav BOOLEAN DEFAULT 0, Made DATETIME,"
        " Flutes SHORT NOT NULL DEFAULT (1 + 1), [Rake #] LONG);"
        "CREATE INDEX MILL_NAME ON MILL (Name COLLATE NOCASE);"
        "CREATE VIEW Q_MILL AS SELECT T.ID AS ID, T.Name AS Name, T.D AS D, C.Name AS Coating,"
        " T.Fav AS Fav, T.Made AS Made, T.Flutes AS Flutes, T.[Rake #] AS [Rake #],"
        " C.ID AS CoatingKey, T.D * 2 AS Twice FROM MILL AS T LEFT JOIN COATING AS C"
        " ON C.ID = T.Coating;");
  }
  std::string Path(const std::string& name = "tools.mdb") const { return m_folder / name; }
  CDaoDatabase& Database() {
    if (!m_database.IsOpen()) m_database.Open(Path());
    return m_database;
  }
  /// A recordset over SQL text, or over the stored query of that name.
  std::unique_ptr<CDaoRecordset> Open(const std::string& query, int type = dbOpenDynaset) {
    auto records = std::make_unique<CDaoRecordset>(&Database());
    if (query.starts_with("SELECT")) {
      records->Open(type, query);
    } else {
      CDaoQueryDef definition(&Database());
      definition.Open(query);
      records->Open(&definition, type);
    }
    return records;
  }

  /// Runs SQL as another program would, and tells what it gives.
  void Execute(const std::string& sql) { m_other.Execute(sql); }
  std::string Ask(const std::string& sql) { return m_other.Ask(sql); }

  static Variant Text(std::string_view bytes) { return Variant::FromBstr(Bstr::FromBytes(bytes)); }
  /// A value as text people read; strings in quotes, byte arrays by their length.
  static std::string Show(const Variant& value) {
    if (value.isNull()) return "null";
    if (value.type() == VT_BSTR) return "'" + std::string(Bytes(value.get().bstrVal)) + "'";
    if ((value.type() & VT_ARRAY) != 0) {
      return std::to_string(value.get().parray->rgsabound[0].cElements) + " bytes";
    }
    Variant text;
    VariantChangeType(text.put(), &value.get(), 0, VT_BSTR);
    return Narrow(View(text.get().bstrVal));
  }
  /// Some fields of the current record, parted by commas.
  static std::string Values(const CDaoRecordset& records,
                            std::initializer_list<const char*> fields) {
    std::string all;
    for (const char* field : fields) {
      all += (all.empty() ? "" : ", ") + Show(records.GetFieldValue(field));
    }
    return all;
  }
  /// The error that work raises; fails the test when it raises none.
  template <typename Work>
  static DaoError ErrorOf(Work work) {
    try {
      work();
    } catch (const CDaoException& exception) {
      return exception.Error();
    }
    ADD_FAILURE() << "nothing was raised";
    return DaoError::Engine;
  }

  test::TemporaryFolder m_folder;
  test::OtherProgram m_other{Path()};
  CDaoDatabase m_database;
};

}  // namespace orxdb
