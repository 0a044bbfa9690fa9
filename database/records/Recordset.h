#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "database/engine/Connection.h"
#include "database/engine/QuerySource.h"
#include "database/engine/RecordEdit.h"
#include "database/records/Position.h"
#include "database/records/Walk.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// The records of one open query: a position on a walk, and the record being added or edited.
/// `CDaoRecordset` tells the contract.
class Recordset final : private ChangeListener {
 public:
  /// `name` is the stored query's name, empty for other texts.
  Recordset(std::shared_ptr<Connection> connection, SelectText select, const std::string& name,
            bool snapshot);
  ~Recordset();

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

  Position GetPosition();
  bool ReturnTo(const Position& position);

  void ReadField(std::size_t field, VARIANT& value);
  void ReadFields(std::span<VARIANT> values);
  void ReadFields(std::span<const int> fields, std::span<Variant> values);

  std::vector<unsigned char> Bookmark();
  std::vector<unsigned char> LastModifiedBookmark() const;
  void GoTo(std::span<const unsigned char> bookmark);

  void AddNew();
  void Edit();
  void SetField(std::size_t field, const VARIANT& value);
  void Update();
  void Delete();

 private:
  const Position& Here();
  const Position& CurrentRecord();
  bool ComeTo(const std::optional<Position>& found);
  const Criteria& Translate(const std::string& text);
  void BeforeChange(const Change& change) override;
  void AfterCancel(std::int64_t group) noexcept override;
  void BeginAgain();

  RowView CurrentRow();
  CellView CurrentCell(const RowView& view, std::size_t field) const;
  void RequireTable() const;
  std::vector<unsigned char> BookmarkOf(std::int64_t key) const;
  void DropEdit() noexcept;

  std::shared_ptr<Connection> m_connection;
  SelectText m_select;
  std::shared_ptr<const QuerySource> m_source;
  bool m_snapshot;
  std::unique_ptr<Walk> m_walk;

  /// Nothing stands for the walk's first record, until a call or a change depends on which it is.
  std::optional<Position> m_position;
  Position m_furthest;  ///< of the records reached
  bool m_reachedAll = false;
  std::int64_t m_group = 0;  ///< of changes, in which the records were settled or one was deleted

  std::string m_criteriaText;  ///< of the last find, as the host said it
  Criteria m_criteria;

  std::optional<RecordEdit> m_edit;
  bool m_onNewRecord = false;  ///< a bookmark led to the record being added
  std::optional<std::int64_t> m_lastModified;
};

}  // namespace orxdb
