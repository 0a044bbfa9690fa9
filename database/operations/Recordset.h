#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "database/operations/Connection.h"
#include "database/operations/KeyList.h"
#include "database/operations/QuerySource.h"
#include "database/operations/RecordEdit.h"
#include "database/operations/RowBlock.h"
#include "database/operations/RowReader.h"
#include "database/operations/SnapshotCopy.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// The records of one open query: position, values, edits. `CDaoRecordset` tells the contract.
///
/// Three ways lead to the records, by what the query is:
/// - in key order (a table, or a stored query without an ordering): every step asks SQLite for the
///   rows behind the current key, a growing block at a time; nothing else is remembered;
/// - a key list (an ordering, a condition or an inner join): the keys are read once, when a move
///   first needs them, and rows are fetched by key, a block at a time;
/// - a copy (rows that are no records of one table, and snapshots): all rows, read at the opening.
///
/// A block of rows is good only as long as nobody has written to the file.
class Recordset {
 public:
  /// `name` is the stored query's name, empty for other texts.
  Recordset(std::shared_ptr<Connection> connection, SelectText select, const std::string& name,
            bool snapshot);
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  std::size_t FieldCount() const noexcept { return m_source->fields.size(); }
  const std::string& FieldName(std::size_t field) const noexcept {
    return m_source->fields[field].info.m_strName;
  }
  int FindField(std::string_view name) const noexcept { return m_source->Find(name); }
  /// The field's description; a computed field gets the type of its value in the first record.
  CDaoFieldInfo Describe(std::size_t field);

  void Requery();
  void MoveTo(Which which);  ///< first or last
  void MoveNext();
  bool Find(const std::string& criteria, Which which);
  bool AtBeginning();  ///< BOF: only a set without records has it
  bool AtEnd();
  std::int64_t Count();

  void ReadField(std::size_t field, VARIANT& value);
  void ReadFields(std::span<VARIANT> values);
  void ReadFields(std::span<const int> fields, std::span<Variant> values);

  bool CanUpdate() const noexcept { return !m_copy; }
  bool CanBookmark() const noexcept { return true; }
  std::vector<unsigned char> Bookmark();
  std::vector<unsigned char> LastModifiedBookmark() const;
  void GoTo(std::span<const unsigned char> bookmark);

  void AddNew();
  void Edit();
  void SetField(std::size_t field, const VARIANT& value);
  void Update();
  void Delete();

 private:
  enum class Place {
    First,    ///< on the first record, if there is any: not looked up yet
    On,       ///< on the record of `m_key`
    Deleted,  ///< on a record that was deleted through this recordset
    End,      ///< EOF
    Nowhere,  ///< BOF and EOF
  };
  /// Keys of records, and what they were chosen by and when.
  struct Listing {
    Criteria criteria;
    ChangeStamp stamp;
    KeyList keys;
    /// A current record that is no longer listed, and the index of the first one behind it.
    std::optional<std::pair<std::int64_t, std::size_t>> lost;
  };

  /// Rows, what chose them, how many were asked for, and when.
  struct Block {
    RowBlock rows;
    ChangeStamp stamp = {};
    Criteria criteria = {};
    std::size_t size = 1;
    bool sorted = false;  ///< SQLite had to sort before it gave them
  };

  // Moving and finding
  void Settle();
  bool Seek(const Criteria& criteria, Which which);
  bool SeekInKeyOrder(const Criteria& criteria, Which which, ChangeStamp stamp);
  bool SeekInList(const Criteria& criteria, Which which, ChangeStamp stamp);
  bool SeekInCopy(const Criteria& criteria, Which which);
  bool Step(Listing& listing, Which which, ChangeStamp stamp);
  std::size_t IndexBehind(Listing& listing);
  std::optional<std::size_t> KnownIndexBehind(Listing& listing) const;
  Listing& AllRecords();
  Listing& MatchingRecords(const Criteria& criteria, ChangeStamp stamp);
  const Criteria& Translate(const std::string& text);
  void ComeTo(std::int64_t key);
  RowBlock& Incoming();
  bool Take(const Criteria& criteria, ChangeStamp stamp);
  bool ComeToLoaded(std::int64_t key, ChangeStamp stamp);

  // Reading
  struct RowPlace {
    const RowBlock* rows;
    std::size_t row;
  };
  RowPlace CurrentRow();
  CellView CurrentCell(const RowPlace& place, std::size_t field) const;
  void RequireTable() const;
  std::vector<unsigned char> BookmarkOf(std::int64_t key) const;
  void DropEdit() noexcept;

  std::shared_ptr<Connection> m_connection;
  SelectText m_select;
  std::shared_ptr<const QuerySource> m_source;
  RowReader m_reader;
  bool m_snapshot;

  Place m_place = Place::First;
  std::int64_t m_key = 0;  ///< of the current record; of a copy, the row's index

  Block m_block;          ///< rows read ahead, or just the current one
  Block m_other;          ///< where rows are read; then the block before, for a way back
  std::size_t m_row = 0;  ///< the current record's row in the block

  std::string m_criteriaText;  ///< of the last find, as the host said it
  Criteria m_criteria;
  std::optional<Listing> m_all;
  std::optional<Listing> m_matching;
  /// How the current record was found, when that was without a list.
  struct Finding {
    Criteria criteria;
    Which which;
  };
  std::optional<Finding> m_finding;

  bool m_reachedAll = false;
  std::int64_t m_reachedKey = std::numeric_limits<std::int64_t>::min();
  std::size_t m_reachedCount = 0;
  std::size_t m_deletedCount = 0;

  std::unique_ptr<SnapshotCopy> m_copy;
  std::optional<RecordEdit> m_edit;
  bool m_onNewRecord = false;  ///< a bookmark led to the record being added
  std::optional<std::int64_t> m_lastModified;
};

}  // namespace orxdb
