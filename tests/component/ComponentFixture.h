// A small seeded database and the component as a host sees it: loaded by path, made by its class
// factory, used through its interface.
#pragma once

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "interface/IOrxDbObj.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/Variant.h"

namespace orxdb::test {

/// A folder of its own for one test.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();
  std::filesystem::path operator/(std::string_view name) const { return m_path / name; }

 private:
  std::filesystem::path m_path;
};

/// Runs SQL statements on a database file with SQLite itself.
void RunSql(const std::filesystem::path& file, const std::string& sql);

/// The bytes of a file; empty when there is none.
std::string Contents(const std::filesystem::path& file);

/// The SQL of a file beside this one, by its name without ".sql".
std::string Script(const std::string& name);

/// Makes a database by Seed.sql and then runs more SQL on it.
void SeedDatabase(const std::filesystem::path& file, const std::string& more = {});

/// One record by field name, every value as text for queries.
using Record = std::map<std::string, std::string>;

/// The first column of a query's rows as SQLite shows it, null as "NULL", rows parted by "|".
std::string QueryRows(const std::filesystem::path& file, const std::string& sql);

/// A pair of property arrays as hosts make them.
class Properties {
 public:
  Properties& Add(std::string_view name, Variant value);
  Properties& Add(std::string_view name, std::string_view text);
  Properties& Add(std::string_view name, double value);
  /// The arrays, from these lower bounds; they live as long as this.
  VARIANT* Names(LONG lowerBound = 0);
  VARIANT* Values(LONG lowerBound = 0);

 private:
  std::vector<std::string> m_givenNames;
  std::vector<Variant> m_givenValues;
  Variant m_names;
  Variant m_values;
};

/// The strings of a VT_ARRAY | VT_BSTR vector from 0, narrow.
std::vector<std::string> Strings(const VARIANT& array);

/// Takes this thread's error information away and tells it as "source: description"; empty when
/// there is none.
std::string TakeError();

/// The error information of a failing method of the (registered) class.
inline constexpr const char* kReportedError = "ORXDB.OrxDbObj.1: ORX DB Error";

/// Whether a library is in the process.
bool IsLoaded(const std::filesystem::path& library);

class ComponentTest : public testing::Test {
 protected:
  void SetUp() override;
  /// Releases the object and shows that every string and array has been freed.
  void TearDown() override;

  static ComPtr<IClassFactory> Factory();
  static ComPtr<IOrxDbObj> NewObject();

  void OpenSeeded(const std::string& more = {});
  static HRESULT SetMdbFile(IOrxDbObj& object, const std::filesystem::path& file);

  HRESULT SetFilter(std::string_view table, std::string_view where, std::string_view order = {});
  /// The first or next record; empty at the end. Failures are test failures.
  Record First(std::string_view table);
  Record Next(std::string_view table);
  /// One field of every record that a walk stops at.
  std::vector<std::string> Walk(std::string_view table, const std::string& field = "Name");
  /// The status of GetFirstTool alone.
  HRESULT FirstStatus(std::string_view table);
  LONG Count(std::string_view table);
  /// The tool with an identifier; empty when there is none. Failures are test failures.
  Record Tool(std::string_view table, LONG id);
  /// Status of adding; the identifier goes to `m_id`.
  HRESULT Add(std::string_view table, Properties& tool);
  HRESULT Add(std::string_view table, Properties&& tool) { return Add(table, tool); }
  HRESULT Set(std::string_view table, LONG id, Properties& tool);
  std::vector<std::string> ToolTypes();

  TemporaryFolder m_folder;
  std::filesystem::path m_file = m_folder / "tools.mdb";
  ComPtr<IOrxDbObj> m_db;
  LONG m_id = -1;  ///< of the last tool added

 private:
  Record ToRecord(std::string_view table, const Variant& values);

  std::map<std::string, std::vector<std::string>, std::less<>> m_names;  ///< by table
  LONGLONG m_strings = 0;
  LONGLONG m_arrays = 0;
};

}  // namespace orxdb::test
