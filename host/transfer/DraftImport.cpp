#include "host/transfer/DraftImport.h"

#include <algorithm>
#include <chrono>
#include <set>

#include "host/library/Names.h"

namespace orxdb {
namespace {

using Clock = std::chrono::steady_clock;

/// Of records that are carried out together: others wait no longer than that, and a transaction
/// costs little beside so many tools.
constexpr std::size_t kLargestGroup = 300;
constexpr auto kLongestGroup = std::chrono::milliseconds(100);

std::string Sentences(const std::vector<std::string>& reasons) {
  std::string text;
  for (const std::string& reason : reasons) text += (text.empty() ? "" : " ") + reason;
  return text;
}

long long Expected(long long records, double done) {
  return done > 0 ? static_cast<long long>(static_cast<double>(records) / done) : 0;
}

}  // namespace

DraftImport::DraftImport(ToolDatabase& database, DraftImportOptions options, PlanListener listener)
    : m_database(database),
      m_options(std::move(options)),
      m_listener(std::move(listener)),
      m_understanding(database, m_options),
      m_store(database) {}

void DraftImport::Read(DraftReader& source, const Progress& progress) {
  std::vector<Record> group;
  auto start = Clock::now();
  try {
    while (std::optional<ToolDraft> draft = source.Next()) {
      if (group.empty()) start = Clock::now();
      UnderstoodTool tool = m_understanding.Read(*draft);
      PlanLine line{Outcome::Refused, std::move(draft->source), std::move(draft->place), tool.table,
                    Sentences(tool.reasons)};
      group.push_back({std::move(line), std::move(tool)});
      if (group.size() < kLargestGroup && Clock::now() - start < kLongestGroup) continue;
      CarryOut(group);
      const long long records = m_counts.Records();
      progress(m_options.dryRun ? "Planning" : "Importing", records,
               Expected(records, source.Done()));
    }
  } catch (const HostError&) {
    CarryOut(group);
    throw;
  }
  CarryOut(group);
}

void DraftImport::CarryOut(std::vector<Record>& group) {
  if (!m_options.dryRun) {
    std::set<std::string> tables;
    for (const Record& record : group) {
      if (!record.tool.table.empty()) tables.insert(record.tool.table);
    }
    for (const std::string& table : tables) {
      m_store.Requery(table);
      TableOf(table).known.TakeUp(false);
    }
  }
  for (Record& record : group) {
    CarryOut(record);
    ++m_counts[record.line.outcome];
    m_listener(record.line);
  }
  group.clear();
}

void DraftImport::CarryOut(Record& record) {
  if (!record.tool.reasons.empty()) return;
  try {
    Decide(record, TableOf(record.tool.table));
  } catch (const HostError& e) {
    record.line.outcome = Outcome::Refused;
    record.line.reason = e.what();
  }
}

void DraftImport::Decide(Record& record, Table& table) {
  if (table.known.Same(record.tool.values)) {
    record.line.outcome = Outcome::Present;
    return;
  }
  const std::vector<LONG> tools = table.known.Matching(record.tool.values, table.match);
  if (tools.empty()) {
    Add(record, table);
  } else {
    Change(record, table, tools);
  }
}

void DraftImport::Add(Record& record, Table& table) {
  if (m_options.dryRun) {
    table.known.AddPlanned(record.tool.values, table.match);
  } else {
    const ToolStore::Stored stored = m_store.Add(record.tool);
    table.known.Add(stored.tool, stored.id);
  }
  record.line.outcome = Outcome::Added;
}

void DraftImport::Change(Record& record, Table& table, const std::vector<LONG>& tools) {
  const LONG id = tools.front();
  record.line.reason = Differences(record, id);
  if (!m_options.update) {
    record.line.outcome = Outcome::Differs;
    return;
  }
  if (tools.size() > 1) {
    throw HostError("Several tools are the same by " + Listed(table.match) +
                    "; it is not clear which to update.");
  }
  if (m_options.dryRun) {
    table.known.AddPlanned(record.tool.values, table.match);
  } else {
    const ToolStore::Stored stored = m_store.Update(id, record.tool);
    table.known.Add(stored.tool, id);
  }
  record.line.outcome = Outcome::Updated;
}

std::string DraftImport::Differences(const Record& record, LONG id) {
  if (id == KnownTools::kPlanned) return "An earlier record is the same tool with other values.";
  const ToolProperties tool = m_database.Get(record.tool.table, id);
  std::string differences;
  for (const Assignment& value : record.tool.values) {
    const Cell there = tool.Value(value.property);
    if (IsSame(there, value.shown)) continue;
    const auto text = [](const Cell& cell) {
      return cell.text.empty() ? std::string("nothing") : Cited(cell.text);
    };
    differences += (differences.empty() ? "" : ", ") + value.property + " is " + text(there) +
                   " there and " + text(value.shown) + " here";
  }
  return "Tool " + std::to_string(id) + " of " + record.tool.table + ": " + differences + '.';
}

DraftImport::Table& DraftImport::TableOf(const std::string& name) {
  std::unique_ptr<Table>& table = m_tables[name];
  if (!table) {
    std::vector<std::string> match;
    const std::vector<Property> properties = m_database.Properties(name);
    for (const std::string& property : m_options.match) {
      match.push_back(PropertyNamed(name, property, properties).name);
    }
    table = std::make_unique<Table>(m_database, name, std::move(match));
  }
  return *table;
}

std::vector<std::string> DraftImport::Remarks() const {
  std::vector<std::string> remarks = m_understanding.Remarks();
  std::ranges::copy(m_store.Remarks(), std::back_inserter(remarks));
  return remarks;
}

}  // namespace orxdb
