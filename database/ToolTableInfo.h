#pragma once

#include <memory>
#include <string>
#include <vector>

#include "database/CommonProperty.h"
#include "database/records/DaoQueryDef.h"
#include "database/records/DaoRecordset.h"

/// What the catalogue tells of one tool table, and the table's cursor.
///
/// The data object's map of tool tables owns the cursor. A copy shares query and recordset with
/// the entry that it was made from and sees them closed once that entry is reset. The filter
/// belongs to the cursor's user, not to the description: copying leaves the target's as it is.
class CToolTableInfo {
 public:
  CToolTableInfo() = default;
  CToolTableInfo(const CToolTableInfo& other) { *this = other; }
  CToolTableInfo& operator=(const CToolTableInfo& other);
  virtual ~CToolTableInfo() = default;

  /// The tool recordset. Raises when there is none: a catalogue that loaded in part only has
  /// entries without one.
  CDaoRecordset& ToolSet() const;
  /// Whether the table's query shows the field from another table.
  bool IsLookupField(const CDaoFieldInfo& field) const noexcept;

  /// Opens the query and the recordset over the stored query of that name. After a failure the
  /// query is there but not open, or the recordset is missing or not open.
  void OpenCursor(CDaoDatabase& database, const std::string& queryName);

  /// Closes and lets go of recordset and query and empties the names and the name format; filter,
  /// template and search parameters stay.
  void Reset() noexcept;

  std::shared_ptr<CDaoRecordset> m_pToolSet;
  /// The query that `m_pToolSet` was opened over: the stored one, or a temporary one that orders
  /// it.
  std::shared_ptr<CDaoQueryDef> m_pToolQuery;
  std::string m_strTableName;
  std::string m_strToolType;
  std::string m_strToolSubtype;
  CPropertyList m_propList1;
  CPropertyList m_propList2;
  /// Criteria that a walk over the table stops at; empty for every record.
  std::string m_strFilter;
  std::vector<std::string> m_searchParamNames;
  std::string m_strDefNameFormat;
  std::string m_strTemplTabName;
};
