#pragma once

#include <string>

#include "platform/framework/Exception.h"

/// Why a database operation failed; hosts of the layer rarely look, the text tells people.
enum class DaoError {
  Engine,         ///< the engine refused: a damaged file, no space, a constraint, bad SQL
  Closed,         ///< the database, query or recordset is not open
  NotFound,       ///< no such stored query, table or file
  Busy,           ///< another process holds the file longer than the busy timeout
  NoRecord,       ///< there is no current record, or the move leads beyond the end
  RecordDeleted,  ///< the current record has been deleted
  BadBookmark,    ///< a bookmark of another query, of a deleted record, or no bookmark at all
  BadField,       ///< no such field
  BadValue,       ///< a value that the field's type cannot hold, or text too long
  ReadOnly,       ///< the field, the recordset or the file cannot be changed
  NotEditing,     ///< a field was set or stored without `AddNew` or `Edit`
  Syntax,         ///< a criteria or query text that the dialect does not know
};

/// The exception of every failing database operation.
class AUTOMATION_API CDaoException : public CException {
 public:
  CDaoException(DaoError error, std::string message);
  DaoError Error() const noexcept { return m_error; }
  std::string Message() const override { return m_message; }

 private:
  DaoError m_error;
  std::string m_message;
};
