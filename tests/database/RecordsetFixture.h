#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <vector>

#include "database/operations/DaoDatabase.h"
#include "database/operations/DaoQueryDef.h"
#include "database/operations/DaoRecordset.h"
#include "platform/automation/Bstr.h"
#include "platform/framework/Text.h"

namespace orxdb {

/// A small tool database in a file of its own, with a second, plain connection that stands for
/// another program.
class RecordsetFixture : public ::testing::Test {
 protected:
  RecordsetFixture() {
    std::string folder = std::filesystem::temp_directory_path() / "orxdb-test-XXXXXX";
    m_folder = mkdtemp(folder.data());
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
  ~RecordsetFixture() override {
    m_database.Close();
    m_other.reset();
    std::filesystem::remove_all(m_folder);
  }

  std::string Path(const std::string& name = "tools.mdb") const { return m_folder + "/" + name; }
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

  /// Runs SQL as another program would.
  void Execute(const std::string& sql) {
    char* message = nullptr;
    ASSERT_EQ(sqlite3_exec(Other(), sql.c_str(), nullptr, nullptr, &message), SQLITE_OK) << message;
  }
  /// The first value that SQL gives, as text; "null" for none.
  std::string Ask(const std::string& sql) {
    std::string answer = "null";
    const auto take = [](void* place, int, char** values, char**) {
      *static_cast<std::string*>(place) = values[0] == nullptr ? "null" : values[0];
      return 0;
    };
    sqlite3_exec(Other(), sql.c_str(), take, &answer, nullptr);
    return answer;
  }
  sqlite3* Other() {
    if (!m_other) {
      sqlite3* handle = nullptr;
      sqlite3_open(Path().c_str(), &handle);
      sqlite3_busy_timeout(handle, 5000);
      sqlite3_exec(handle, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
      m_other.reset(handle, sqlite3_close_v2);
    }
    return m_other.get();
  }

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

  std::string m_folder;
  CDaoDatabase m_database;
  std::shared_ptr<sqlite3> m_other;
};

}  // namespace orxdb
