#pragma once

#include <cstdint>
#include <memory>
#include <sqlite3.h>
#include <string>

#include "platform/automation/Bstr.h"

/// The walked tool table: 38 fields in its stored query, two of them looked up in other tables.
inline constexpr const char* kBenchTable = "BENCH_MILL";
inline constexpr const char* kBenchQuery = "Q_BENCH_MILL";
/// Besides it the catalogue names 39 further tool tables of 20 tools each.
inline constexpr int kToolTables = 40;

/// Path of a tool database whose `BENCH_MILL` holds that many tools; made when first asked for and
/// kept in the temporary folder for the other benchmarks of the run.
const std::string& BenchDatabase(std::int64_t tools);

/// A copy of that database which one benchmark may change; removed at the end of the run.
std::string BenchDatabaseCopy(std::int64_t tools);

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using PlainDatabase = std::unique_ptr<sqlite3, CloseDatabase>;
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using PlainStatement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// The plain twin's connection, opened as the component opens its own: without SQLite's locks, for
/// one thread.
PlainDatabase OpenPlain(const std::string& path);
PlainStatement Prepare(sqlite3* database, const std::string& sql);
/// Reads every column of the current row by its type, as a careful program would.
std::int64_t ReadRow(sqlite3_stmt* row);
/// Makes the current row an array of values, as a program that hands them on would, and gives the
/// number of fields.
std::int64_t BuildValues(sqlite3_stmt* row);
/// The same beside an array of the columns' names.
std::int64_t BuildArrays(sqlite3_stmt* row);
/// A text column as a counted string.
orxdb::Bstr TextOf(sqlite3_stmt* row, int column);
