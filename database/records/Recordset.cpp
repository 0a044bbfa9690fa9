#include "database/records/Recordset.h"

#include <cstring>
#include <tuple>
#include <utility>

#include "database/records/CopyWalk.h"
#include "database/records/KeyListWalk.h"
#include "database/records/KeyOrderWalk.h"

namespace orxdb {
namespace {

using At = Position::At;

constexpr std::size_t kIdentityBytes = sizeof(std::uint64_t);
constexpr std::size_t kBookmarkBytes = kIdentityBytes + sizeof(std::int64_t);

[[noreturn]] void RaiseNoRecord() {
  throw CDaoException(DaoError::NoRecord, "There is no current record");
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
      m_snapshot(snapshot || m_source->table.empty()) {
  if (m_snapshot) {
    m_walk = std::make_unique<CopyWalk>(m_connection, m_select, *m_source);
  } else if (m_source->inKeyOrder) {
    m_walk = std::make_unique<KeyOrderWalk>(m_connection, m_select, *m_source);
  } else {
    m_walk = std::make_unique<KeyListWalk>(m_connection, m_select, *m_source);
  }
  Requery();
  m_connection->Listeners().Add(*this);
}

Recordset::~Recordset() {
  m_connection->Listeners().Remove(*this);
}

void Recordset::Requery() {
  DropEdit();
  BeginAgain();
}

void Recordset::BeginAgain() {
  // Also when the query cannot run, the cursor leaves what may be a deleted record.
  m_position.reset();
  m_furthest = {};
  m_reachedAll = false;
  m_group = m_connection->GetTransactions().Group();
  m_walk->Restart();
}

CDaoFieldInfo Recordset::Describe(std::size_t field) {
  CDaoFieldInfo info = m_source->fields[field].info;
  if (info.m_nType != 0) return info;
  const RowBlock first = ReadFirstRow(*m_connection, m_select, *m_source);
  info.m_nType = ComputedType(first.Size() == 0 ? CellView() : first.Cell(0, field)).code;
  return info;
}

// --- Moving and finding

const Position& Recordset::Here() {
  if (!m_position) ComeTo(m_walk->Start());
  return *m_position;
}

/// The position, which must be at a record, be it deleted.
const Position& Recordset::CurrentRecord() {
  m_connection->Handle();
  const Position& here = Here();
  if (here.at == At::Before || here.at == At::Behind) RaiseNoRecord();
  return here;
}

bool Recordset::ComeTo(const std::optional<Position>& found) {
  if (!found) return false;
  m_position = found;
  if (std::tie(found->rank, found->key) > std::tie(m_furthest.rank, m_furthest.key) ||
      m_furthest.at == At::Before) {
    m_furthest = *found;
  }
  return true;
}

/// Settles which records there are before this component changes any. What another process
/// changes before that is as if it had been there at the opening.
void Recordset::BeforeChange(const Change& change) {
  if (m_position) return;
  // A new record has a key behind all those that were there.
  if (change.adding && change.table.name == m_source->table) return;
  if (!change.table.hasTriggers && !m_source->tables.contains(FoldedName(change.table.name)))
    return;
  try {
    Here();
  } catch (const CDaoException&) {
    // A query that cannot run says so when it is asked for records; others may still be changed.
  }
}

/// What was settled by what is no longer there is settled again. The current record stays; without
/// it the last one becomes current, at the end the end stays.
void Recordset::AfterCancel(std::int64_t group) noexcept {
  DropEdit();
  if (m_group != group) return;
  try {
    const std::optional<Position> before = m_position;
    BeginAgain();
    if (!before || before->at == At::Before || m_walk->IsEmpty()) return;
    const bool behind = before->at == At::Behind;
    if (behind || !ComeTo(m_walk->Find(before->key))) MoveTo(Which::Last);
    if (behind && m_position) m_position->at = At::Behind;
  } catch (...) {
    // The first record is current, as after a query that cannot run.
  }
}

void Recordset::MoveTo(Which which) {
  DropEdit();
  m_connection->Handle();
  if (!ComeTo(m_walk->Seek({}, which, {}))) m_position = Position();
  if (which == Which::Last) m_reachedAll = true;
}

void Recordset::MoveNext() {
  DropEdit();
  if (ComeTo(m_walk->Seek({}, Which::Next, CurrentRecord()))) return;
  m_position->at = At::Behind;
  m_reachedAll = true;
}

bool Recordset::Find(const std::string& criteria, Which which) {
  DropEdit();
  const Criteria& wanted = Translate(criteria);
  const bool found =
      ComeTo(m_walk->Seek(wanted, which, which == Which::Next ? CurrentRecord() : Position()));
  if (which == Which::Last) m_reachedAll = true;
  return found;
}

bool Recordset::AtBeginning() {
  m_connection->Handle();
  if (m_onNewRecord) return false;
  return m_position ? m_position->at == At::Before : m_walk->IsEmpty();
}

bool Recordset::AtEnd() {
  return AtBeginning() || (m_position && m_position->at == At::Behind && !m_onNewRecord);
}

std::int64_t Recordset::Count() {
  if (AtBeginning()) return 0;
  if (m_reachedAll) return m_walk->Count(nullptr);
  return m_position ? m_walk->Count(&m_furthest) : 1;
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

Position Recordset::GetPosition() {
  m_connection->Handle();
  return Here();
}

bool Recordset::ReturnTo(const Position& position) {
  DropEdit();
  m_connection->Handle();
  if (position.at != At::Record) return false;
  if (m_position && m_position->at == At::Deleted && m_position->key == position.key) return false;
  m_position = position;
  return true;
}

// --- Reading

RowView Recordset::CurrentRow() {
  const Position& here = CurrentRecord();
  if (here.at == At::Deleted) RaiseDeleted();
  return m_walk->Read(here);
}

CellView Recordset::CurrentCell(const RowView& view, std::size_t field) const {
  if (m_edit && (m_onNewRecord || !m_edit->IsAdding())) {
    if (const SqlValue* value = m_edit->Value(field)) return CellOf(*value);
  }
  return view.rows == nullptr ? CellView() : view.rows->Cell(view.row, field);
}

void Recordset::ReadField(std::size_t field, VARIANT& value) {
  const RowView view = m_onNewRecord ? RowView() : CurrentRow();
  ReadValue(m_source->fields[field], CurrentCell(view, field), value);
}

void Recordset::ReadFields(std::span<VARIANT> values) {
  const RowView view = m_onNewRecord ? RowView() : CurrentRow();
  for (std::size_t i = 0; i < values.size() && i < m_source->fields.size(); ++i) {
    ReadValue(m_source->fields[i], CurrentCell(view, i), values[i]);
  }
}

void Recordset::ReadFields(std::span<const int> fields, std::span<Variant> values) {
  const RowView view = m_onNewRecord ? RowView() : CurrentRow();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto field = static_cast<std::size_t>(fields[i]);
    ReadValue(m_source->fields.at(field), CurrentCell(view, field), *values[i].put());
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
  const Position& here = CurrentRecord();
  if (here.at == At::Deleted) RaiseDeleted();
  return BookmarkOf(here.key);
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
  m_connection->Handle();
  if (m_edit && m_edit->IsAdding() && m_edit->Key() == key) {
    m_onNewRecord = true;
    return;
  }
  if (!ComeTo(m_walk->Find(key))) RaiseBadBookmark();
  DropEdit();
}

// --- Edits

void Recordset::RequireTable() const {
  if (m_snapshot) throw CDaoException(DaoError::ReadOnly, "The records cannot be changed");
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
  m_edit = RecordEdit::Editing(*m_source, m_position->key);
}

void Recordset::SetField(std::size_t field, const VARIANT& value) {
  if (!m_edit) throw CDaoException(DaoError::NotEditing, "No record is being added or edited");
  m_edit->Set(field, value);
}

void Recordset::Update() {
  if (!m_edit) throw CDaoException(DaoError::NotEditing, "No record is being added or edited");
  m_edit->Store(*m_connection);
  m_lastModified = m_edit->Key();
  DropEdit();
}

void Recordset::Delete() {
  RequireTable();
  DropEdit();
  CurrentRow();
  RecordEdit::Remove(*m_connection, *m_source, m_position->key);
  m_position->at = At::Deleted;
  m_group = m_connection->GetTransactions().Group();
  m_walk->Removed();
}

}  // namespace orxdb
