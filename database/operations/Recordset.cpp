#include "database/operations/Recordset.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace orxdb {
namespace {

constexpr std::size_t kIdentityBytes = sizeof(std::uint64_t);
constexpr std::size_t kBookmarkBytes = kIdentityBytes + sizeof(std::int64_t);

[[noreturn]] void RaiseNoRecord() {
  throw CDaoException(DaoError::NoRecord, "There is no current record");
}

[[noreturn]] void RaiseDeleted() {
  throw CDaoException(DaoError::RecordDeleted, "The record has been deleted");
}

[[noreturn]] void RaiseBadBookmark() {
  throw CDaoException(DaoError::BadBookmark, "The bookmark is none of this query's records");
}

}  // namespace

Recordset::Recordset(std::shared_ptr<Connection> connection, SelectText select,
                     const std::string& name, bool snapshot)
    : m_connection(std::move(connection)),
      m_select(std::move(select)),
      m_source(QuerySource::Of(*m_connection, m_select, name)),
      m_reader(*m_connection, m_select, *m_source),
      m_snapshot(snapshot || m_source->table.empty()),
      m_block{RowBlock(static_cast<int>(m_source->fields.size()))},
      m_other{RowBlock(static_cast<int>(m_source->fields.size()))} {
  Requery();
}

void Recordset::Requery() {
  DropEdit();
  // Also when the query cannot run, the cursor leaves what may be a deleted record.
  m_all.reset();
  m_matching.reset();
  m_block.rows.Clear();
  m_other.rows.Clear();
  m_place = Place::First;
  m_reachedAll = false;
  m_reachedKey = std::numeric_limits<std::int64_t>::min();
  m_reachedCount = m_deletedCount = 0;
  if (m_snapshot) {
    m_copy = std::make_unique<SnapshotCopy>(m_connection, m_select, *m_source);
  } else {
    m_reader.Restart();
  }
}

CDaoFieldInfo Recordset::Describe(std::size_t field) {
  CDaoFieldInfo info = m_source->fields[field].info;
  if (info.m_nType != 0) return info;
  const SqlText rows = m_select.Ordered();
  const StatementUse first =
      m_connection->Use("SELECT * FROM (" + rows.text + ") LIMIT 1", Origin::Host);
  first->Bind(rows.values);
  info.m_nType = dbText;
  if (!first->Step()) return info;
  switch (sqlite3_column_type(first->Handle(), static_cast<int>(field))) {
    case SQLITE_INTEGER:
      info.m_nType = dbLong;
      break;
    case SQLITE_FLOAT:
      info.m_nType = dbDouble;
      break;
    case SQLITE_BLOB:
      info.m_nType = dbLongBinary;
      break;
    default:
      break;
  }
  return info;
}

// --- Moving and finding

/// Looks the first record up where that has been put off.
void Recordset::Settle() {
  if (m_place != Place::First) return;
  if (!Seek({}, Which::First)) m_place = Place::Nowhere;
}

void Recordset::MoveTo(Which which) {
  DropEdit();
  if (!Seek({}, which)) m_place = Place::Nowhere;
  if (which == Which::Last) m_reachedAll = true;
}

void Recordset::MoveNext() {
  DropEdit();
  Settle();
  if (m_place == Place::End || m_place == Place::Nowhere) RaiseNoRecord();
  if (!Seek({}, Which::Next)) {
    m_place = Place::End;
    m_reachedAll = true;
  }
}

bool Recordset::Find(const std::string& criteria, Which which) {
  DropEdit();
  const Criteria& wanted = Translate(criteria);
  if (which == Which::Next) {
    Settle();
    if (m_place == Place::End || m_place == Place::Nowhere) RaiseNoRecord();
  }
  const bool found = Seek(wanted, which);
  if (which == Which::Last) m_reachedAll = true;
  return found;
}

bool Recordset::AtBeginning() {
  m_connection->Handle();
  if (m_onNewRecord) return false;
  if (m_place == Place::First && !m_copy && !m_source->inKeyOrder && !m_all) {
    // Whether an ordered set is empty is known without ordering it.
    if (!m_reader.HasAny()) m_place = Place::Nowhere;
    return m_place == Place::Nowhere;
  }
  Settle();
  return m_place == Place::Nowhere;
}

bool Recordset::AtEnd() {
  return AtBeginning() || (m_place == Place::End && !m_onNewRecord);
}

std::int64_t Recordset::Count() {
  if (AtBeginning()) return 0;
  if (m_copy) {
    return static_cast<std::int64_t>(m_reachedAll ? m_copy->Rows().Size() : m_reachedCount);
  }
  if (m_source->inKeyOrder) return m_reachedAll ? m_reader.Count() : m_reader.Count(m_reachedKey);
  if (m_place == Place::First) return 1;
  Listing& all = AllRecords();
  if (m_reachedAll) return static_cast<std::int64_t>(all.keys.Size() - m_deletedCount);
  if (const auto rank = all.keys.Rank(m_key)) m_reachedCount = std::max(m_reachedCount, *rank + 1);
  return static_cast<std::int64_t>(m_reachedCount - std::min(m_reachedCount, m_deletedCount));
}

/// Finds the record and makes it current; leaves everything as it is when there is none.
bool Recordset::Seek(const Criteria& criteria, Which which) {
  if (m_copy) {
    m_connection->Handle();
    return SeekInCopy(criteria, which);
  }
  const ChangeStamp stamp = m_connection->Stamp();
  return m_source->inKeyOrder ? SeekInKeyOrder(criteria, which, stamp)
                              : SeekInList(criteria, which, stamp);
}

bool Recordset::SeekInKeyOrder(const Criteria& criteria, Which which, ChangeStamp stamp) {
  std::size_t most = 1;
  if (which == Which::Next) {
    const bool inRun = m_block.rows.Size() > 0 && m_block.stamp == stamp && m_place == Place::On &&
                       m_block.rows.Key(m_row) == m_key && m_block.criteria == criteria;
    if (inRun && m_row + 1 < m_block.rows.Size()) {
      ComeTo(m_block.rows.Key(++m_row));
      return true;
    }
    // Where every block would mean sorting the rest again, the keys are listed once.
    const bool listed =
        m_matching && m_matching->stamp == stamp && m_matching->criteria == criteria;
    if (listed || (inRun && m_block.sorted)) {
      return Step(MatchingRecords(criteria, stamp), which, stamp);
    }
    // Who goes on walking gets more rows at a time.
    if (inRun) most = std::min(m_block.size * 4, RowReader::kBlockRows);
  }
  const bool sorted = m_reader.Read(criteria, which, m_key, most, Incoming());
  if (!Take(criteria, stamp)) return false;
  m_block.sorted = sorted;
  m_block.size = most;
  return true;
}

bool Recordset::SeekInList(const Criteria& criteria, Which which, ChangeStamp stamp) {
  if (criteria.text.empty()) return Step(AllRecords(), which, stamp);
  // One record is found without listing all that match, as long as no list says otherwise.
  if (which != Which::Next && (!m_all || m_all->stamp == stamp)) {
    m_reader.Read(criteria, which, 0, 1, Incoming());
    if (!Take(criteria, stamp)) return false;
    m_finding = {criteria, which};
    return true;
  }
  return Step(MatchingRecords(criteria, stamp), which, stamp);
}

bool Recordset::SeekInCopy(const Criteria& criteria, Which which) {
  const std::size_t rows = m_copy->Rows().Size();
  const std::size_t next = m_place == Place::On ? static_cast<std::size_t>(m_key) + 1 : 0;
  std::optional<std::size_t> found = which == Which::First  ? 0
                                     : which == Which::Last ? rows - 1
                                                            : next;
  if (!criteria.text.empty()) found = m_copy->Find(criteria, which, next);
  if (!found || *found >= rows) return false;
  ComeTo(static_cast<std::int64_t>(*found));
  m_reachedCount = std::max(m_reachedCount, *found + 1);
  return true;
}

/// Goes to the first, next or last listed record that still exists.
bool Recordset::Step(Listing& listing, Which which, ChangeStamp stamp) {
  const std::size_t size = listing.keys.Size();
  if (which == Which::Last) {
    for (std::size_t index = size; index-- > 0;) {
      m_reader.ReadListed(listing.keys, index, 1, Incoming());
      if (Take(listing.criteria, stamp)) return true;
    }
    return false;
  }
  const bool next = which == Which::Next;
  std::size_t index = next ? IndexBehind(listing) : 0;
  if (next && index < size && m_block.stamp == stamp && m_row + 1 < m_block.rows.Size() &&
      m_block.rows.Key(m_row + 1) == listing.keys[index]) {
    ComeTo(m_block.rows.Key(++m_row));
    return true;
  }
  std::size_t most = next ? RowReader::kBlockRows : 1;
  for (; index < size; index += most) {
    m_reader.ReadListed(listing.keys, index, most, Incoming());
    if (Take(listing.criteria, stamp)) return true;
  }
  return false;
}

/// Index of the first listed record behind the current one, as far as the list itself tells.
std::optional<std::size_t> Recordset::KnownIndexBehind(Listing& listing) const {
  if (const auto index = listing.keys.Rank(m_key)) return *index + 1;
  if (listing.lost && listing.lost->first == m_key) return listing.lost->second;
  // Nothing that matches stands before the first match, nor behind the last.
  if (!m_finding || m_finding->criteria != listing.criteria) return std::nullopt;
  return m_finding->which == Which::First ? 0 : listing.keys.Size();
}

/// The same for a current record that need not be listed itself.
std::size_t Recordset::IndexBehind(Listing& listing) {
  if (const auto index = KnownIndexBehind(listing)) return *index;
  Listing& all = AllRecords();
  const auto rank = all.keys.Rank(m_key);
  if (!rank) RaiseDeleted();  // deleted elsewhere before its place among the others was known
  for (std::size_t index = 0; index < listing.keys.Size(); ++index) {
    if (all.keys.Rank(listing.keys[index]).value_or(0) > *rank) return index;
  }
  return listing.keys.Size();
}

Recordset::Listing& Recordset::AllRecords() {
  if (!m_all) {
    Listing all{{}, m_connection->Stamp(), {}, {}};
    m_reader.ReadKeys({}, all.keys);
    m_all = std::move(all);
  }
  return *m_all;
}

Recordset::Listing& Recordset::MatchingRecords(const Criteria& criteria, ChangeStamp stamp) {
  if (!m_matching || m_matching->stamp != stamp || m_matching->criteria != criteria) {
    Listing matching{criteria, stamp, {}, {}};
    m_reader.ReadKeys(criteria, matching.keys);
    if (m_all) {
      // Order and membership are those of the list of all records, if that is older.
      if (m_all->stamp != stamp) matching.keys.ArrangeAs(m_all->keys);
    } else if (m_matching && m_matching->criteria == criteria && !matching.keys.Rank(m_key)) {
      // The current record went away or matches no more; the list that it stood in tells where.
      if (auto old = KnownIndexBehind(*m_matching)) {
        std::optional<std::size_t> behind;
        for (; !behind && *old < m_matching->keys.Size(); ++*old) {
          behind = matching.keys.Rank(m_matching->keys[*old]);
        }
        matching.lost = {m_key, behind.value_or(matching.keys.Size())};
      }
    }
    m_matching = std::move(matching);
  }
  return *m_matching;
}

const Criteria& Recordset::Translate(const std::string& text) {
  m_connection->Handle();
  if (m_criteria.text.empty() || text != m_criteriaText) {
    ConnectionColumns columns(*m_connection);
    SqlText sql = TranslateCriteria(text, m_source->scope, columns);
    m_criteria = {std::move(sql.text), std::move(sql.values)};
    m_criteriaText = text;
  }
  return m_criteria;
}

void Recordset::ComeTo(std::int64_t key) {
  m_place = Place::On;
  m_key = key;
  m_finding.reset();
  m_reachedKey = std::max(m_reachedKey, key);
}

/// Where the next rows are read; what was there no longer counts.
RowBlock& Recordset::Incoming() {
  m_other.stamp = {};
  return m_other.rows;
}

/// Makes rows just read the block and the first of them the current record; false without rows.
bool Recordset::Take(const Criteria& criteria, ChangeStamp stamp) {
  if (m_other.rows.Size() == 0) return false;
  std::swap(m_block, m_other);
  m_block.stamp = stamp;
  m_block.criteria = criteria;
  m_block.size = 1;
  m_block.sorted = false;
  m_row = 0;
  ComeTo(m_block.rows.Key(0));
  return true;
}

/// Makes a record current that has been read before and has not changed since.
bool Recordset::ComeToLoaded(std::int64_t key, ChangeStamp stamp) {
  for (Block* block : {&m_block, &m_other}) {
    const std::size_t row = block->stamp == stamp ? block->rows.Find(key) : block->rows.Size();
    if (row >= block->rows.Size()) continue;
    if (block != &m_block) std::swap(m_block, m_other);
    m_row = row;
    ComeTo(key);
    return true;
  }
  return false;
}

// --- Reading

Recordset::RowPlace Recordset::CurrentRow() {
  m_connection->Handle();
  Settle();
  if (m_place == Place::Deleted) RaiseDeleted();
  if (m_place != Place::On) RaiseNoRecord();
  if (m_copy) return {&m_copy->Rows(), static_cast<std::size_t>(m_key)};
  const ChangeStamp stamp = m_connection->Stamp();
  if (m_row >= m_block.rows.Size() || m_block.rows.Key(m_row) != m_key || m_block.stamp != stamp) {
    m_reader.ReadRecord(m_key, Incoming());
    if (!Take({}, stamp)) RaiseDeleted();
  }
  return {&m_block.rows, m_row};
}

CellView Recordset::CurrentCell(const RowPlace& place, std::size_t field) const {
  if (m_edit && (m_onNewRecord || !m_edit->IsAdding())) {
    if (const SqlValue* value = m_edit->Value(field)) return CellOf(*value);
  }
  return place.rows == nullptr ? CellView() : place.rows->Cell(place.row, field);
}

void Recordset::ReadField(std::size_t field, VARIANT& value) {
  const RowPlace place = m_onNewRecord ? RowPlace{} : CurrentRow();
  ReadValue(m_source->fields[field], CurrentCell(place, field), value);
}

void Recordset::ReadFields(std::span<VARIANT> values) {
  const RowPlace place = m_onNewRecord ? RowPlace{} : CurrentRow();
  for (std::size_t i = 0; i < values.size() && i < m_source->fields.size(); ++i) {
    ReadValue(m_source->fields[i], CurrentCell(place, i), values[i]);
  }
}

void Recordset::ReadFields(std::span<const int> fields, std::span<Variant> values) {
  const RowPlace place = m_onNewRecord ? RowPlace{} : CurrentRow();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto field = static_cast<std::size_t>(fields[i]);
    ReadValue(m_source->fields.at(field), CurrentCell(place, field), *values[i].put());
  }
}

// --- Bookmarks

std::vector<unsigned char> Recordset::BookmarkOf(std::int64_t key) const {
  std::vector<unsigned char> bookmark(kBookmarkBytes);
  std::memcpy(bookmark.data(), &m_source->identity, kIdentityBytes);
  std::memcpy(bookmark.data() + kIdentityBytes, &key, sizeof key);
  return bookmark;
}

std::vector<unsigned char> Recordset::Bookmark() {
  if (m_onNewRecord) return BookmarkOf(m_edit->Key());
  Settle();
  if (m_place == Place::Deleted) RaiseDeleted();
  if (m_place != Place::On) RaiseNoRecord();
  m_connection->Handle();
  return BookmarkOf(m_copy ? m_copy->Rows().Key(static_cast<std::size_t>(m_key)) : m_key);
}

std::vector<unsigned char> Recordset::LastModifiedBookmark() const {
  if (!m_lastModified) RaiseNoRecord();
  return BookmarkOf(*m_lastModified);
}

void Recordset::GoTo(std::span<const unsigned char> bookmark) {
  std::uint64_t identity = 0;
  std::int64_t key = 0;
  if (bookmark.size() != kBookmarkBytes) RaiseBadBookmark();
  std::memcpy(&identity, bookmark.data(), kIdentityBytes);
  std::memcpy(&key, bookmark.data() + kIdentityBytes, sizeof key);
  if (identity != m_source->identity) RaiseBadBookmark();
  if (m_edit && m_edit->IsAdding() && m_edit->Key() == key) {
    m_onNewRecord = true;
    return;
  }
  if (m_copy) {
    const std::size_t row = m_copy->Rows().Find(key);
    if (row >= m_copy->Rows().Size()) RaiseBadBookmark();
    DropEdit();
    ComeTo(static_cast<std::int64_t>(row));
    m_reachedCount = std::max(m_reachedCount, row + 1);
    return;
  }
  const ChangeStamp stamp = m_connection->Stamp();
  if (ComeToLoaded(key, stamp)) {
    DropEdit();
    return;
  }
  if (!m_reader.Admits(key) || (m_all && !m_all->keys.Rank(key))) RaiseBadBookmark();
  m_reader.ReadRecord(key, Incoming());
  if (!Take({}, stamp)) RaiseBadBookmark();
  DropEdit();
}

// --- Edits

void Recordset::RequireTable() const {
  if (!CanUpdate()) throw CDaoException(DaoError::ReadOnly, "The records cannot be changed");
}

void Recordset::DropEdit() noexcept {
  m_edit.reset();
  m_onNewRecord = false;
}

void Recordset::AddNew() {
  RequireTable();
  DropEdit();
  m_edit = RecordEdit::Adding(*m_connection, *m_source);
  m_lastModified = m_edit->Key();
}

void Recordset::Edit() {
  RequireTable();
  DropEdit();
  CurrentRow();
  m_edit = RecordEdit::Editing(*m_source, m_key);
}

void Recordset::SetField(std::size_t field, const VARIANT& value) {
  if (!m_edit) throw CDaoException(DaoError::NotEditing, "No record is being added or edited");
  m_edit->Set(field, value);
}

void Recordset::Update() {
  if (!m_edit) throw CDaoException(DaoError::NotEditing, "No record is being added or edited");
  // Behind which records a new one is listed must be known before it is there.
  if (m_edit->IsAdding() && !m_source->inKeyOrder) AllRecords();
  m_edit->Store(*m_connection);
  m_lastModified = m_edit->Key();
  if (m_edit->IsAdding()) {
    m_reader.Admit(m_edit->Key());
    if (m_all) m_all->keys.Add(m_edit->Key());
    if (m_onNewRecord) ComeTo(m_edit->Key());
    if (m_place == Place::Nowhere) m_place = Place::First;
  }
  DropEdit();
}

void Recordset::Delete() {
  RequireTable();
  DropEdit();
  CurrentRow();
  // Where a listed record stood must be known before it is gone.
  if (!m_source->inKeyOrder) AllRecords();
  RecordEdit::Remove(*m_connection, *m_source, m_key);
  m_place = Place::Deleted;
  ++m_deletedCount;
}

}  // namespace orxdb
