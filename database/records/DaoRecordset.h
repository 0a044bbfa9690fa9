#pragma once

#include <memory>
#include <span>
#include <string>

#include "database/records/DaoDatabase.h"
#include "database/records/Position.h"
#include "platform/automation/Variant.h"
#include "platform/framework/DaoException.h"
#include "values/DaoFieldInfo.h"

class CDaoQueryDef;

namespace orxdb {
class Recordset;
}

/// Recordset types.
inline constexpr int dbOpenDynaset = 2;
inline constexpr int dbOpenSnapshot = 4;
inline constexpr int AFX_DAO_USE_DEFAULT_TYPE = -1;  ///< a dynaset

/// A set of records with one current record.
///
/// A query that shows the integer primary key of a table gives an updatable dynaset: membership
/// and order are those of the opening (or of the last `Requery`), values are read fresh. Any other
/// query, and a snapshot, gives a read-only copy.
///
/// Position, move by move:
/// - after `Open` and `Requery` the first record is current; without records BOF and EOF hold;
/// - `MoveFirst`, `MoveLast` on an empty set leave BOF and EOF and do not raise;
/// - `MoveNext` from the last record leads to EOF; from EOF it raises `NoRecord`;
/// - records deleted elsewhere are stepped over, the current one keeps its place among the others;
/// - records added, elsewhere or through this recordset, are not seen before a `Requery`;
/// - a find without a match leaves the position as it was;
/// - after `Delete` the position is on the deleted record: reading raises, `MoveNext` goes on
///   behind it, BOF and EOF do not change;
/// - a refused `SetBookmark` leaves the position as it was.
///
/// When a group of changes is cancelled, records being added or edited are given up. A set that was
/// opened, queried again or deleted from in the group is queried again; its current record stays,
/// or the last one becomes current when it is gone, and an EOF stays.
///
/// Every failing operation raises `CDaoException`. No statement stays open between calls, so an
/// idle recordset never blocks another process.
class CDaoRecordset {
 public:
  explicit CDaoRecordset(CDaoDatabase* database = nullptr);
  ~CDaoRecordset();
  CDaoRecordset(const CDaoRecordset&) = delete;
  CDaoRecordset& operator=(const CDaoRecordset&) = delete;

  /// Opens over an open query definition, whose database the recordset takes.
  void Open(const CDaoQueryDef* query, int type = dbOpenDynaset, int options = 0);
  /// Opens over a SELECT in the query dialect on the database given at construction.
  void Open(int type, const std::string& sql, int options = 0);
  bool IsOpen() const noexcept;
  void Close() noexcept;

  void MoveFirst();
  void MoveNext();
  void MoveLast();
  bool IsBOF() const;
  bool IsEOF() const;

  /// Makes the first, next (behind the current record) or last record that meets the criteria
  /// current; false when none does.
  bool FindFirst(const std::string& criteria);
  bool FindNext(const std::string& criteria);
  bool FindLast(const std::string& criteria);

  /// The number of records reached so far: more than 0 exactly when the set is not empty, all of
  /// them after `MoveLast` and `FindLast`.
  long GetRecordCount() const;

  short GetFieldCount() const;
  /// Its name alone: describing a computed field may run the query.
  const std::string& GetFieldName(int index) const;
  void GetFieldInfo(int index, CDaoFieldInfo& info, int level = AFX_DAO_PRIMARY_INFO) const;
  /// Field names compare without regard to letter case.
  void GetFieldInfo(const std::string& name, CDaoFieldInfo& info,
                    int level = AFX_DAO_PRIMARY_INFO) const;

  /// The current record's value: null fields as `VT_NULL`, text as a byte-length string of narrow
  /// bytes, binary data and GUIDs as `VT_ARRAY | VT_UI1`.
  orxdb::Variant GetFieldValue(int index) const;
  orxdb::Variant GetFieldValue(const std::string& name) const;
  void GetFieldValue(int index, orxdb::Variant& value) const;
  void GetFieldValue(const std::string& name, orxdb::Variant& value) const;
  /// All values of the current record, read as one: never half of a change made elsewhere.
  /// `values` holds `GetFieldCount()` initialised, empty variants; the caller owns what they
  /// receive, also when the call raises part way.
  void GetFieldValues(std::span<VARIANT> values) const;
  /// The same for some fields, by index, in that order.
  void GetFieldValues(std::span<const int> fields, std::span<orxdb::Variant> values) const;

  /// Begins a new record; its key is reserved at once and shown, with the column defaults, by the
  /// record of `GetLastModifiedBookmark`. Without `Update` no row is left behind.
  void AddNew();
  /// Begins editing the current record.
  void Edit();
  /// Sets a field of the record being added or edited. Text is given as narrow bytes. A value that
  /// the field cannot hold raises and leaves the field as it was.
  void SetFieldValue(const std::string& name, const VARIANT& value);
  void SetFieldValueNull(const std::string& name);
  /// Stores the record being added or edited, in one transaction. The current record stays; a new
  /// record is none of the set's before a `Requery`.
  void Update();
  /// Deletes the current record at once.
  void Delete();
  /// Runs the query again; the first record becomes current.
  void Requery();

  /// An opaque byte array; it survives `Requery`.
  orxdb::Variant GetBookmark() const;
  void SetBookmark(const VARIANT& bookmark);
  orxdb::Variant GetLastModifiedBookmark() const;

  /// The place, to come back to before the next `Requery`. Unlike a bookmark it leads also to a
  /// record that has been deleted elsewhere meanwhile, behind which a walk goes on.
  orxdb::Position GetPosition() const;
  /// False, and nothing moves, when that is no record's place or the current record, just deleted
  /// through this recordset, was the one there.
  bool ReturnTo(const orxdb::Position& position);

 private:
  orxdb::Recordset& Opened() const;

  CDaoDatabase* m_database;
  std::unique_ptr<orxdb::Recordset> m_recordset;
};
