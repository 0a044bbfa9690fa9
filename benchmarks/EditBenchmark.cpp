// One tool at a time: reading, naming, adding, changing and deleting it. Everything that writes is
// one durable transaction on both sides (write-ahead log, full synchronisation).
#include <cstdio>
#include <stdexcept>
#include <string>
#include <utility>

#include "benchmarks/BenchDatabase.h"
#include "benchmarks/Hosting.h"
#include "benchmarks/PlainQuery.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

using orxdb::ArrayAccess;
using orxdb::Bstr;
using orxdb::Variant;
using orxdb::WidenToBstr;

namespace {

const Bstr& Table() {
  static const Bstr table = WidenToBstr(kBenchTable);
  return table;
}

std::int64_t FirstColumn(sqlite3_stmt* row) {
  return sqlite3_column_int64(row, 0);
}

/// A tool of the table as a host holds it, without its key, and the twin's statements for it.
class OneTool {
 public:
  OneTool(IOrxDbObj& component, sqlite3* plain) : m_component(component), m_plain(plain) {
    Check(component.GetToolProps(Table().get(), 7, m_names.put(), m_values.put()));
    const ArrayAccess<BSTR> names(m_names.get().parray);
    std::string columns;
    std::string places;
    std::string changes;
    for (std::size_t i = 1; i < names.size(); ++i) {
      const std::string name = orxdb::NarrowBstr(names[i]);
      columns += ", " + name;
      places += ", ?";
      changes += (i == 1 ? "" : ", ") + name + " = ?" + std::to_string(i + 1);
    }
    // The key is the database's; another name takes its place, without a value.
    SysFreeString(std::exchange(names[0], Bstr(u"Unit").detach()));
    VariantClear(&ArrayAccess<VARIANT>(m_values.get().parray)[0]);
    const std::string table = kBenchTable;
    m_insert =
        Prepare(plain, "INSERT INTO " + table + " (ID" + columns + ") VALUES (?" + places + ")");
    m_update = Prepare(plain, "UPDATE " + table + " SET " + changes + " WHERE ID = ?1");
    m_delete = Prepare(plain, "DELETE FROM " + table + " WHERE ID = ?");
  }

  LONG Add() {
    LONG id = 0;
    Check(m_component.AddNewRecord(Table().get(), m_names.ptr(), m_values.ptr(), &id));
    return id;
  }
  void Change(LONG id) {
    Check(m_component.SetToolProps(Table().get(), id, m_names.ptr(), m_values.ptr()));
  }
  void Delete(LONG id) { m_component.DeleteTool(Table().get(), id); }

  /// Stores the tool under a key of SQLite's choice, which is never used again, looking the two
  /// texts of other tables up.
  std::int64_t PlainAdd() {
    Step(m_begin.get());
    sqlite3_bind_null(m_insert.get(), 1);
    Store(m_insert.get());
    Step(m_commit.get());
    return sqlite3_last_insert_rowid(m_plain);
  }
  void PlainChange(std::int64_t id) {
    Step(m_begin.get());
    sqlite3_bind_int64(m_update.get(), 1, id);
    Store(m_update.get());
    Step(m_commit.get());
  }
  void PlainDelete(std::int64_t id) {
    sqlite3_bind_int64(m_delete.get(), 1, id);
    Step(m_delete.get());
  }
  /// The record of that key as property arrays.
  std::int64_t PlainRead(std::int64_t id) { return m_read(BuildArrays, id); }

 private:
  static void Step(sqlite3_stmt* statement) {
    if (sqlite3_step(statement) != SQLITE_DONE) throw std::runtime_error("the twin failed");
    sqlite3_reset(statement);
  }
  /// Binds everything but the key, and runs the statement.
  void Store(sqlite3_stmt* statement) {
    const ArrayAccess<VARIANT> values(m_values.get().parray);
    const std::size_t own = values.size() - 2;
    for (std::size_t i = 1; i < own; ++i) Bind(statement, static_cast<int>(i) + 1, values[i]);
    BindLookup(statement, static_cast<int>(own) + 1, m_coating, values[own]);
    BindLookup(statement, static_cast<int>(own) + 2, m_holder, values[own + 1]);
    Step(statement);
  }
  static void Bind(sqlite3_stmt* statement, int place, const VARIANT& value) {
    switch (value.vt) {
      case VT_BSTR:
        sqlite3_bind_text16(statement, place, value.bstrVal,
                            static_cast<int>(SysStringByteLen(value.bstrVal)), SQLITE_TRANSIENT);
        break;
      case VT_R8:
        sqlite3_bind_double(statement, place, value.dblVal);
        break;
      case VT_I4:
        sqlite3_bind_int(statement, place, value.lVal);
        break;
      case VT_I2:
      case VT_BOOL:
        sqlite3_bind_int(statement, place, value.iVal);
        break;
      case VT_CY:
        sqlite3_bind_double(statement, place, static_cast<double>(value.cyVal.int64) / 10000);
        break;
      default:
        sqlite3_bind_text(statement, place, "2024-03-01 12:00:00", -1, SQLITE_STATIC);
    }
  }
  static void BindLookup(sqlite3_stmt* statement, int place, PlainQuery& lookup,
                         const VARIANT& text) {
    sqlite3_bind_int64(statement, place, lookup(FirstColumn, orxdb::NarrowBstr(text.bstrVal)));
  }

  IOrxDbObj& m_component;
  sqlite3* m_plain;
  Variant m_names;
  Variant m_values;
  PlainStatement m_begin = Prepare(m_plain, "BEGIN IMMEDIATE");
  PlainStatement m_commit = Prepare(m_plain, "COMMIT");
  PlainQuery m_coating{m_plain, "SELECT ID FROM COATING WHERE Name = ?"};
  PlainQuery m_holder{m_plain, "SELECT ID FROM HOLDER WHERE Name = ?"};
  PlainQuery m_read{m_plain, std::string("SELECT * FROM ") + kBenchQuery + " WHERE ID = ?"};
  PlainStatement m_insert;
  PlainStatement m_update;
  PlainStatement m_delete;
};

/// The two sides of a benchmark, each with a copy of the database of its own if it writes.
struct Sides {
  explicit Sides(benchmark::State& state, bool writing)
      : count(static_cast<LONG>(state.range(0))),
        plain(OpenPlain(writing ? BenchDatabaseCopy(count) : BenchDatabase(count))),
        object(OpenObject(writing ? BenchDatabaseCopy(count) : BenchDatabase(count))),
        tool(*object, plain.get()) {}

  /// Keys all over the table, the same for both sides.
  LONG Next(LONG& previous) const { return previous = (previous * 31 + 17) % count + 1; }

  LONG count;
  PlainDatabase plain;
  orxdb::ComPtr<IOrxDbObj> object;
  OneTool tool;
  LONG plainKey = 0;
  LONG key = 0;
};

void ToolById(benchmark::State& state) {
  Sides sides(state, false);
  Compare(
      state, 2.0, [&] { return sides.tool.PlainRead(sides.Next(sides.plainKey)); },
      [&] {
        Variant names;
        Variant values;
        Check(sides.object->GetToolProps(Table().get(), sides.Next(sides.key), names.put(),
                                         values.put()));
        return static_cast<std::int64_t>(values.get().parray->rgsabound[0].cElements);
      });
}

void NameInUse(benchmark::State& state) {
  Sides sides(state, false);
  PlainQuery query(sides.plain.get(), std::string("SELECT 1 FROM ") + kBenchTable +
                                          " WHERE Name = ? COLLATE NOCASE LIMIT 1");
  const std::string name = std::string(kBenchTable) + " D0.070 L7";
  Compare(
      state, 3.0, [&] { return query(FirstColumn, name); },
      [&] {
        VARIANT_BOOL unique = VARIANT_TRUE;
        Check(sides.object->IsToolNameUnique(Table().get(), WidenToBstr(name).get(), &unique));
        return std::int64_t{unique == VARIANT_FALSE};
      });
}

void DefaultName(benchmark::State& state) {
  Sides sides(state, false);
  PlainQuery query(sides.plain.get(),
                   std::string("SELECT * FROM ") + kBenchQuery + " WHERE ID = ?");
  Compare(
      state, 2.0,
      [&] {
        return query(
            [](sqlite3_stmt* row) {
              BuildArrays(row);
              char name[64];
              std::snprintf(name, sizeof name, "D%.15G_%s", sqlite3_column_double(row, 2),
                            *sqlite3_column_text(row, 3) == 'i' ? "i" : "m");
              return std::int64_t{WidenToBstr(name).get()[0]};
            },
            sides.Next(sides.plainKey));
      },
      [&] {
        Bstr name;
        Check(sides.object->GenerateDefToolName(Table().get(), sides.Next(sides.key), name.put()));
        return std::int64_t{name.get()[0]};
      });
}

void AddTool(benchmark::State& state) {
  Sides sides(state, true);
  const LONG first = sides.count;
  Compare(
      state, 2.0, [&] { return sides.tool.PlainAdd() > first ? 1 : 0; },
      [&] { return sides.tool.Add() > first ? 1 : 0; }, Durable::Yes);
}

void ChangeTool(benchmark::State& state) {
  Sides sides(state, true);
  Compare(
      state, 2.0,
      [&] {
        sides.tool.PlainChange(sides.Next(sides.plainKey));
        return 1;
      },
      [&] {
        sides.tool.Change(sides.Next(sides.key));
        return 1;
      },
      Durable::Yes);
}

void DeleteTool(benchmark::State& state) {
  Sides sides(state, true);
  Compare(
      state, 2.0,
      [&] {
        sides.tool.PlainDelete(++sides.plainKey);
        return 1;
      },
      [&] {
        sides.tool.Delete(++sides.key);
        return 1;
      },
      Durable::Yes);
}

/// A temporary tool is added, read and deleted again, for the twin in as many transactions.
void DefaultValues(benchmark::State& state) {
  Sides sides(state, true);
  Compare(
      state, 2.0,
      [&] {
        const std::int64_t id = sides.tool.PlainAdd();
        const std::int64_t fields = sides.tool.PlainRead(id);
        sides.tool.PlainDelete(id);
        return fields;
      },
      [&] {
        Variant names;
        Variant values;
        Check(sides.object->GetDefPropsValues(Table().get(), names.put(), values.put()));
        return static_cast<std::int64_t>(values.get().parray->rgsabound[0].cElements);
      },
      Durable::Yes);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(100000)->Arg(1000000)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

BENCHMARK(ToolById)->Apply(Sizes);
BENCHMARK(NameInUse)->Apply(Sizes);
BENCHMARK(DefaultName)->Apply(Sizes);
BENCHMARK(AddTool)->Apply(Sizes);
BENCHMARK(ChangeTool)->Apply(Sizes);
BENCHMARK(DefaultValues)->Apply(Sizes);
// Every run deletes tools that are there.
BENCHMARK(DeleteTool)->Apply(Sizes)->Iterations(500);

}  // namespace
