#include "benchmarks/BenchDatabase.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <unistd.h>
#include <vector>

#include "interface/KnownNames.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

namespace {

/// Stored queries over FEEDS: 10 rows beside the smallest tool table, 100,000 beside the others.
/// It also holds the tapping heads and the values that `Material` of OTHER_2 is looked up in.
const std::map<std::string, std::vector<std::string>> kFeedQueries = {
    {"DRILLING_FS", {"ID", "Material", "MinHB", "MaxHB", "Speed", "Source"}},
    {"DRILL_FEED", {"ID", "MinDiameter", "MaxDiameter", "Speed", "Source"}},
    {"T15c", {"ID", "MinDiameter", "Speed", "Source"}},
    {"STOCK_MATERIAL", {"ID", "DispType", "Speed", "Source"}}};

/// Removes the files of a run at its end.
struct Databases {
  std::map<std::int64_t, std::string> paths;
  std::vector<std::string> copies;
  ~Databases() {
    for (const auto& [tools, path] : paths) copies.push_back(path);
    for (const std::string& path : copies) {
      for (const char* suffix : {"", "-wal", "-shm"}) std::remove((path + suffix).c_str());
    }
  }
};

Databases& MadeDatabases() {
  static Databases databases;
  return databases;
}

void Run(sqlite3* database, const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    throw std::runtime_error(std::string(message) + " in " + sql);
  }
}

/// 36 columns of the table's own besides its key; with `Coating` and `Holder` looked up the stored
/// query has 38 fields, 11 of them text.
void MakeToolTable(sqlite3* database, const std::string& table, std::int64_t tools) {
  std::string columns = "ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(60)";
  std::string view = "T.ID AS ID, T.Name AS Name";
  std::string values = "printf('%s D%.3f L%d', '" + table + "', (n % 2000) / 100.0, n % 300)";
  const auto add = [&](const std::string& name, const char* type, const std::string& value) {
    columns += ", " + name + " " + type;
    view += ", T." + name + " AS " + name;
    values += ", " + value;
  };
  add("Diameter", "DOUBLE", "(n * 7919 % 2000) / 100.0");
  add("Unit", "TEXT(4)", "CASE n % 3 WHEN 0 THEN 'in' ELSE 'mm' END");
  add("Flutes", "SHORT", "2 + n % 6");
  add("IsFavorite", "BOOLEAN", "-(n % 10 = 0)");
  add("Changed", "DATETIME", "'2024-03-01 12:00:00'");
  add("Price", "CURRENCY", "(n % 10000) / 100.0");
  for (int i = 0; i < 18; ++i) {
    add("Length_" + std::to_string(i), "DOUBLE", "(n + " + std::to_string(i) + ") / 8.0");
  }
  for (int i = 0; i < 4; ++i) add("Count_" + std::to_string(i), "LONG", "n % 97");
  for (int i = 0; i < 6; ++i) {
    add("Note_" + std::to_string(i), "TEXT(50)",
        "'note " + std::to_string(i) + " of ' || (n % 50)");
  }
  columns += ", Coating LONG, Holder LONG";
  values += ", 1 + n % 8, 1 + n % 5";
  view += ", C.Name AS Coating, H.Name AS Holder";
  Run(database, "CREATE TABLE " + table + " (" + columns + ")");
  Run(database, "CREATE VIEW Q_" + table + " AS SELECT " + view + " FROM " + table +
                    " AS T LEFT JOIN COATING AS C ON C.ID = T.Coating"
                    " LEFT JOIN HOLDER AS H ON H.ID = T.Holder");
  Run(database, "CREATE INDEX " + table + "_DIAMETER ON " + table + " (Diameter)");
  Run(database, "CREATE INDEX " + table + "_NAME ON " + table + " (Name COLLATE NOCASE)");
  Run(database,
      "WITH RECURSIVE numbers(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM numbers WHERE "
      "n < " +
          std::to_string(tools) + ") INSERT INTO " + table + " SELECT n, " + values +
          " FROM numbers WHERE n <= " + std::to_string(tools));
  Run(database,
      "INSERT INTO TOOL_TYPES_DATA (TOOLTABLE_NAME, TOOL_TYPE, TOOL_SUBTYPE, "
      "SEARCH_PARAM, DEF_NAME_FORMAT) VALUES ('Q_" +
          table + "', 'Milling', 'Bench', 'Diameter', 'D%Diameter%_%Unit%')");
}

void MakeFeeds(sqlite3* database, std::int64_t rows) {
  Run(database,
      "CREATE TABLE FEEDS (ID INTEGER PRIMARY KEY AUTOINCREMENT, Material TEXT(30), "
      "DispType TEXT(30), MinHB DOUBLE, MaxHB DOUBLE, MinDiameter DOUBLE, MaxDiameter DOUBLE, "
      "Speed DOUBLE, Source TEXT(30));"
      "INSERT INTO FEEDS (Material, DispType, MinHB, MaxHB, MinDiameter, MaxDiameter, Speed, "
      "Source) WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " +
          std::to_string(rows) +
          ") SELECT 'Material ' || (i / 10), 'Steel ' || i, i % 10 * 20, i % 10 * 20 + 15, i, "
          "i + 0.9, i / 7.0, 'measured' FROM n;"
          "CREATE INDEX FEEDS_MATERIAL ON FEEDS (Material COLLATE NOCASE, MinHB);"
          "CREATE INDEX FEEDS_DIAMETER ON FEEDS (MinDiameter)");
  for (const auto& [name, columns] : kFeedQueries) {
    std::string view;
    for (const std::string& column : columns) {
      view += (view.empty() ? "F." : ", F.") + column + " AS " + column;
    }
    Run(database, "DROP VIEW IF EXISTS Q_" + name + "; CREATE VIEW Q_" + name + " AS SELECT " +
                      view + " FROM FEEDS AS F");
  }
}

void MakeDatabase(const std::string& path, std::int64_t tools) {
  std::filesystem::remove(path);
  sqlite3* handle = nullptr;
  sqlite3_open(path.c_str(), &handle);
  const PlainDatabase database(handle);
  Run(handle, "PRAGMA journal_mode = WAL");
  Run(handle, "PRAGMA synchronous = OFF");
  Run(handle, "BEGIN");
  Run(handle,
      "CREATE TABLE TOOL_TYPES_DATA (ID INTEGER PRIMARY KEY AUTOINCREMENT, TOOLTABLE_NAME TEXT(64),"
      " TOOL_TYPE TEXT(64), TOOL_SUBTYPE TEXT(64), SEARCH_PARAM LONGTEXT, COMMENT TEXT(255),"
      " TEMPL_TAB_NAME TEXT(64), DEF_NAME_FORMAT TEXT(255), PRIMARY_OP TEXT(64), ICON LONGBINARY);"
      "CREATE VIEW TOOL_TYPES AS SELECT T.ID AS ID, T.TOOLTABLE_NAME AS TOOLTABLE_NAME,"
      " T.TOOL_TYPE AS TOOL_TYPE, T.TOOL_SUBTYPE AS TOOL_SUBTYPE, T.SEARCH_PARAM AS SEARCH_PARAM,"
      " T.COMMENT AS COMMENT, T.TEMPL_TAB_NAME AS TEMPL_TAB_NAME,"
      " T.DEF_NAME_FORMAT AS DEF_NAME_FORMAT, T.PRIMARY_OP AS PRIMARY_OP, T.ICON AS ICON"
      " FROM TOOL_TYPES_DATA AS T;"
      "CREATE TABLE COATING (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(30));"
      "INSERT INTO COATING (Name) VALUES ('Bright'), ('TiN'), ('TiCN'), ('TiAlN'), ('AlCrN'),"
      " ('DLC'), ('Diamond'), ('ZrN');"
      "CREATE TABLE HOLDER (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(30));"
      "INSERT INTO HOLDER (Name) VALUES ('ER16'), ('ER25'), ('ER32'), ('Weldon'), ('Shrink');");
  for (const std::string_view name : orxdb::kMachiningTables) {
    const std::string table(name);
    Run(handle, "CREATE TABLE " + table +
                    " (ID INTEGER PRIMARY KEY AUTOINCREMENT, Low DOUBLE, High DOUBLE);"
                    "INSERT INTO " +
                    table +
                    " (Low, High) VALUES (1, 2), (2, 3);"
                    "CREATE VIEW Q_" +
                    table +
                    " AS SELECT F.ID AS ID, F.Low AS Low, F.High AS High"
                    " FROM " +
                    table + " AS F");
  }
  MakeFeeds(handle, tools > 1000 ? 100000 : 10);
  MakeToolTable(handle, kBenchTable, tools);
  for (int i = 2; i < kToolTables; ++i) MakeToolTable(handle, "OTHER_" + std::to_string(i), 20);
  MakeToolTable(handle, "TAPPING_HEAD", 20);
  Run(handle,
      "DROP VIEW Q_TAPPING_HEAD; CREATE VIEW Q_TAPPING_HEAD AS SELECT F.ID AS \"TAPPING_HEAD.ID\","
      " F.DispType AS Name, F.MinDiameter AS AUX_Metric_Min_Diameter,"
      " F.MinDiameter + 4.9 AS AUX_Metric_Max_Diameter FROM FEEDS AS F;"
      "DROP VIEW Q_OTHER_2; CREATE VIEW Q_OTHER_2 AS SELECT T.ID AS ID, T.Name AS Name,"
      " F.DispType AS Material FROM OTHER_2 AS T LEFT JOIN FEEDS AS F ON F.ID = T.Holder");
  Run(handle, "ANALYZE");
  Run(handle, "COMMIT");
  Run(handle, "PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace

const std::string& BenchDatabase(std::int64_t tools) {
  std::string& path = MadeDatabases().paths[tools];
  if (path.empty()) {
    path = std::filesystem::temp_directory_path() /
           ("orxdb-bench-" + std::to_string(tools) + "-" + std::to_string(getpid()) + ".mdb");
    MakeDatabase(path, tools);
  }
  return path;
}

std::string BenchDatabaseCopy(std::int64_t tools) {
  std::vector<std::string>& copies = MadeDatabases().copies;
  copies.push_back(BenchDatabase(tools) + "-copy" + std::to_string(copies.size()));
  std::filesystem::copy_file(BenchDatabase(tools), copies.back());
  sync();  // or the copy would be written out while something is timed
  return copies.back();
}

PlainDatabase OpenPlain(const std::string& path) {
  sqlite3* handle = nullptr;
  if (sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                      nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot open " + path);
  }
  return PlainDatabase(handle);
}

PlainStatement Prepare(sqlite3* database, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
    throw std::runtime_error(std::string(sqlite3_errmsg(database)) + " in " + sql);
  }
  return PlainStatement(statement);
}

std::int64_t ReadRow(sqlite3_stmt* row) {
  std::int64_t sum = 0;
  const int columns = sqlite3_column_count(row);
  for (int i = 0; i < columns; ++i) {
    // One call finds the column, the others read what was found.
    sqlite3_value* value = sqlite3_column_value(row, i);
    switch (sqlite3_value_type(value)) {
      case SQLITE_INTEGER:
        sum += sqlite3_value_int64(value);
        break;
      case SQLITE_FLOAT:
        sum += static_cast<std::int64_t>(sqlite3_value_double(value));
        break;
      case SQLITE_TEXT:
        sum += sqlite3_value_text(value)[0] + sqlite3_value_bytes(value);
        break;
      default:
        break;
    }
  }
  return sum;
}

orxdb::Bstr TextOf(sqlite3_stmt* row, int column) {
  sqlite3_value* value = sqlite3_column_value(row, column);
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return orxdb::WidenToBstr({text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
}

std::int64_t BuildValues(sqlite3_stmt* row) {
  using namespace orxdb;
  const int count = sqlite3_column_count(row);
  const SafeArray values = SafeArray::Vector(VT_VARIANT, static_cast<ULONG>(count));
  const ArrayAccess<VARIANT> value(values.get());
  for (int i = 0; i < count; ++i) {
    VARIANT& field = value[static_cast<std::size_t>(i)];
    sqlite3_value* column = sqlite3_column_value(row, i);
    switch (sqlite3_value_type(column)) {
      case SQLITE_INTEGER:
        field.vt = VT_I4;
        field.lVal = sqlite3_value_int(column);
        break;
      case SQLITE_FLOAT:
        field.vt = VT_R8;
        field.dblVal = sqlite3_value_double(column);
        break;
      case SQLITE_TEXT:
        field.vt = VT_BSTR;
        field.bstrVal = TextOf(row, i).detach();
        break;
      default:
        field.vt = VT_NULL;
    }
  }
  benchmark::DoNotOptimize(values.get());
  return count;
}

std::int64_t BuildArrays(sqlite3_stmt* row) {
  using namespace orxdb;
  const auto count = static_cast<ULONG>(sqlite3_column_count(row));
  const SafeArray names = SafeArray::Vector(VT_BSTR, count);
  const ArrayAccess<BSTR> name(names.get());
  for (ULONG i = 0; i < count; ++i) {
    name[i] = WidenToBstr(sqlite3_column_name(row, static_cast<int>(i))).detach();
  }
  benchmark::DoNotOptimize(names.get());
  return BuildValues(row);
}
