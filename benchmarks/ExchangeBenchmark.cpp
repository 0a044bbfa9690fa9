// Exporting a table and importing tools that it does not hold yet.
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "benchmarks/BenchDatabase.h"
#include "benchmarks/Hosting.h"
#include "benchmarks/PlainQuery.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

using orxdb::Variant;
using orxdb::WidenToBstr;

namespace {

std::string TemporaryPath(const std::string& name) {
  return std::filesystem::temp_directory_path() /
         ("orxdb-bench-" + std::to_string(getpid()) + name);
}

struct RemovedFile {
  explicit RemovedFile(const std::string& name) : path(TemporaryPath(name)) {}
  RemovedFile(const RemovedFile&) = delete;
  RemovedFile& operator=(const RemovedFile&) = delete;
  ~RemovedFile() { std::remove(path.c_str()); }
  std::string path;
};

/// The fields of the table's query that an export writes, by their index.
std::vector<int> ExportedColumns(sqlite3_stmt* rows) {
  std::vector<int> columns;
  for (int i = 0; i < sqlite3_column_count(rows); ++i) {
    const std::string name = sqlite3_column_name(rows, i);
    if (name != "ID" && name != "IsFavorite") columns.push_back(i);
  }
  return columns;
}

/// Text with a backslash before each quote and backslash, copied in pieces.
void AppendEscaped(std::string_view value, std::string& text) {
  for (std::size_t special; (special = value.find_first_of("\"\\")) != value.npos;) {
    text.append(value.substr(0, special)) += '\\';
    text += value[special];
    value.remove_prefix(special + 1);
  }
  text += value;
}

std::int64_t PlainExport(sqlite3* plain, const std::string& path) {
  const PlainStatement rows = Prepare(plain, std::string("SELECT * FROM ") + kBenchQuery);
  const std::vector<int> columns = ExportedColumns(rows.get());
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"),
                                                             &std::fclose);
  constexpr std::size_t kBlock = 1 << 16;
  std::int64_t count = 0;
  std::string text;
  char number[400];
  for (; sqlite3_step(rows.get()) == SQLITE_ROW; ++count) {
    for (const int i : columns) {
      text += '"';
      sqlite3_value* value = sqlite3_column_value(rows.get(), i);
      switch (sqlite3_value_type(value)) {
        case SQLITE_FLOAT:
          text.append(number, std::to_chars(number, std::end(number), sqlite3_value_double(value),
                                            std::chars_format::fixed, 6)
                                  .ptr);
          break;
        case SQLITE_INTEGER:
          text.append(number,
                      std::to_chars(number, std::end(number), sqlite3_value_int64(value)).ptr);
          break;
        case SQLITE_NULL:
          break;
        default:
          AppendEscaped({reinterpret_cast<const char*>(sqlite3_value_text(value)),
                         static_cast<std::size_t>(sqlite3_value_bytes(value))},
                        text);
      }
      text += "\"\t";
    }
    text += "\r\n";
    if (text.size() < kBlock) continue;
    std::fwrite(text.data(), 1, text.size(), file.get());
    text.clear();
  }
  std::fwrite(text.data(), 1, text.size(), file.get());
  return count;
}

void Export(benchmark::State& state) {
  const std::string& path = BenchDatabase(state.range(0));
  const PlainDatabase plain = OpenPlain(path);
  const auto object = OpenObject(path);
  const RemovedFile plainFile("-plain.txt");
  const RemovedFile file(".txt");
  const auto exportTools = [&] {
    Check(object->ExportToolRecordsToFile(WidenToBstr(kBenchTable).get(),
                                          WidenToBstr(file.path).get(), 0));
    return 0;
  };
  // An export leaves the cursor behind the last tool; from there the next would be empty.
  const auto goToFirst = [&] {
    Variant names;
    Variant values;
    Check(object->GetFirstTool(WidenToBstr(kBenchTable).get(), names.put(), values.put()));
  };
  const auto countLines = [&] {
    std::ifstream text(file.path);
    std::int64_t lines = -4;
    for (std::string line; std::getline(text, line);) ++lines;
    return lines;
  };
  Compare(
      state, 2.5, [&] { return PlainExport(plain.get(), plainFile.path); },
      Work(exportTools, goToFirst, countLines));
}

/// Columns of imported tools; the last two are texts of other tables.
const std::vector<std::string> kColumns = {"Name",     "Diameter", "Unit",     "Flutes",
                                           "Length_0", "Length_1", "Length_2", "Count_0",
                                           "Note_0",   "Note_1",   "Coating",  "Holder"};

std::vector<std::string> Tool(int run, int number) {
  const std::string n = std::to_string(number);
  return {"Import " + std::to_string(run) + "/" + n,
          n + ".500000",
          "mm",
          "4",
          "1.250000",
          "2.500000",
          "5.000000",
          n,
          "note " + n,
          "other",
          "TiN",
          "ER25"};
}

void WriteImport(const std::string& path, int run, int tools) {
  std::ofstream file(path, std::ios::binary);
  file << "ORX_tool_table_version=1.0\r\nORX_tool_table_name=" << kBenchTable
       << "\r\nORX_table_export_type=ORX_exported_by_table\r\n";
  const auto write = [&file](const std::vector<std::string>& fields) {
    for (const std::string& field : fields) file << '"' << field << "\"\t";
    file << "\r\n";
  };
  write(kColumns);
  for (int i = 0; i < tools; ++i) write(Tool(run, i));
}

/// Select, then insert what is not there, all in one durable transaction.
class PlainImport {
 public:
  explicit PlainImport(sqlite3* plain) : m_plain(plain) {
    std::string columns;
    std::string places;
    std::string same;
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
      const std::string place = "?" + std::to_string(i + 1);
      columns += (i ? ", " : "") + kColumns[i];
      places += (i ? ", " : "") + place;
      same +=
          (i ? " AND T." : "T.") + kColumns[i] + " = " + place + (i == 0 ? " COLLATE NOCASE" : "");
    }
    const std::string table = kBenchTable;
    m_select = Prepare(plain, "SELECT 1 FROM " + table + " AS T WHERE " + same);
    m_insert =
        Prepare(plain, "INSERT INTO " + table + " (" + columns + ") VALUES (" + places + ")");
  }

  std::int64_t Run(int run, int tools) {
    std::int64_t added = 0;
    Step(m_begin.get());
    for (int i = 0; i < tools; ++i) {
      std::vector<std::string> tool = Tool(run, i);
      for (std::size_t lookup = tool.size() - 2; lookup < tool.size(); ++lookup) {
        PlainQuery& query = lookup + 1 == tool.size() ? m_holder : m_coating;
        tool[lookup] = std::to_string(
            query([](sqlite3_stmt* row) { return sqlite3_column_int64(row, 0); }, tool[lookup]));
      }
      if (!Step(m_select.get(), tool)) {
        Step(m_insert.get(), tool);
        ++added;
      }
    }
    Step(m_commit.get());
    return added;
  }

 private:
  /// Whether there is a row.
  static bool Step(sqlite3_stmt* statement, const std::vector<std::string>& values = {}) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      sqlite3_bind_text(statement, static_cast<int>(i) + 1, values[i].c_str(), -1, SQLITE_STATIC);
    }
    const int result = sqlite3_step(statement);
    sqlite3_reset(statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE) throw std::runtime_error("the twin failed");
    return result == SQLITE_ROW;
  }

  sqlite3* m_plain;
  PlainStatement m_begin = Prepare(m_plain, "BEGIN IMMEDIATE");
  PlainStatement m_commit = Prepare(m_plain, "COMMIT");
  PlainQuery m_coating{m_plain, "SELECT ID FROM COATING WHERE Name = ?"};
  PlainQuery m_holder{m_plain, "SELECT ID FROM HOLDER WHERE Name = ?"};
  PlainStatement m_select;
  PlainStatement m_insert;
};

void Import(benchmark::State& state) {
  constexpr int kTools = 10000;
  const PlainDatabase plain = OpenPlain(BenchDatabaseCopy(state.range(0)));
  const auto object = OpenObject(BenchDatabaseCopy(state.range(0)));
  PlainImport plainImport(plain.get());
  const RemovedFile file(".txt");
  int plainRun = 0;
  int run = 0;
  const auto count = [&] {
    LONG tools = 0;
    Check(object->GetSelectedRecordCount(WidenToBstr(kBenchTable).get(), &tools));
    return tools;
  };
  LONG before = 0;
  const auto prepare = [&] {
    WriteImport(file.path, ++run, kTools);
    before = count();
  };
  const auto import = [&] {
    Check(object->ImportToolRecordsFromFile(WidenToBstr(file.path).get(), 0));
    return 0;
  };
  Compare(
      state, 4.0, [&] { return plainImport.Run(++plainRun, kTools); },
      Work(import, prepare, [&] { return std::int64_t{count() - before}; }), Durable::Yes);
}

BENCHMARK(Export)->Arg(1000)->Arg(100000)->Arg(1000000)->UseManualTime()->Unit(
    benchmark::kMillisecond);
BENCHMARK(Import)->Arg(1000)->Arg(100000)->Arg(1000000)->Iterations(1)->UseManualTime()->Unit(
    benchmark::kMillisecond);

}  // namespace
