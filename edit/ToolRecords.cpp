#include "edit/ToolRecords.h"

#include <optional>

#include "browse/PropertyArrays.h"
#include "browse/ToolCursor.h"
#include "database/ToolRules.h"
#include "edit/ToolNames.h"
#include "platform/framework/CallNotes.h"
#include "platform/framework/Text.h"
#include "resources/ComponentText.h"
#include "resources/StringTable.h"
#include "values/StringVariants.h"
#include "values/ValueText.h"

namespace orxdb {
namespace {

/// The caller's arrays, locked and paired element by element.
class PropertyPairs {
 public:
  enum class ValueDimensions { One, Any };

  /// False when the arrays do not pair up: names of one dimension, as many values along theirs.
  PropertyPairs(const VARIANT& names, const VARIANT& values, ValueDimensions dimensions)
      : m_names(CarriedArray(names, VT_BSTR)), m_values(CarriedArray(values, VT_VARIANT)) {
    m_match = SafeArrayGetDim(names.parray) == 1 &&
              (dimensions == ValueDimensions::Any || SafeArrayGetDim(values.parray) == 1) &&
              m_names && m_values && m_names.size() <= m_values.size() &&
              Distance(names.parray) == Distance(values.parray);
  }

  explicit operator bool() const noexcept { return m_match; }
  std::size_t size() const noexcept { return m_names.size(); }
  std::string Name(std::size_t position) const { return NarrowBstr(m_names[position]); }
  /// A copy of the value, or of the one that a reference leads to. A reference that leads nowhere
  /// stays one, which no field takes.
  Variant Value(std::size_t position) const {
    Variant value;
    const HRESULT copied = VariantCopyInd(value.ptr(), &m_values[position]);
    if (copied == E_OUTOFMEMORY) throw CMemoryException();
    return SUCCEEDED(copied) ? std::move(value) : Variant::CopyOf(m_values[position]);
  }

 private:
  static std::optional<LONGLONG> Distance(SAFEARRAY* array) {
    LONG first = 0;
    LONG last = 0;
    if (FAILED(SafeArrayGetLBound(array, 1, &first)) || FAILED(SafeArrayGetUBound(array, 1, &last)))
      return std::nullopt;
    return LONGLONG{last} - first;
  }

  ArrayAccess<BSTR> m_names;
  ArrayAccess<VARIANT> m_values;  ///< along the first dimension first
  bool m_match = false;
};

HRESULT Failed(const std::string& cause) {
  NoteCause(cause);
  return E_FAIL;
}

std::string NoSuchTool(LONG id) {
  return "There is no tool with the ID " + std::to_string(id);
}

bool IsNoValue(const VARIANT& value) {
  return value.vt == VT_EMPTY || value.vt == VT_NULL;
}

/// The text of a value that has to be one; anything else reads as empty.
BSTR TextOf(const VARIANT& value) {
  return value.vt == VT_BSTR ? value.bstrVal : nullptr;
}

/// Replaces the text by the `ID` of the first record that has it in the lookup field's source.
/// False when no record has it, with the value as it was.
bool ResolveLookup(CDaoDatabase& database, const CDaoFieldInfo& field, Variant& value) {
  const std::string text = NarrowBstr(TextOf(value.get()));
  if (text == ComponentString(IDS_ABSENT)) return true;
  CDaoRecordset sources(&database);
  sources.Open(dbOpenSnapshot, "SELECT * FROM " + field.m_strSourceTable + " WHERE [" +
                                   field.m_strSourceField + "] = '" + text + "'");
  if (!HasCurrentRecord(sources)) return false;
  sources.MoveFirst();
  sources.GetFieldValue("ID", value);
  return true;
}

std::string NotInList(const std::string& field, const VARIANT& value) {
  return "Field " + field + ": '" + NarrowBstr(TextOf(value)) + "' is not in its list";
}

/// Whether a value that the field refuses is the one that it has, so that nothing is lost.
bool IsThereAlready(const CDaoRecordset& record, const std::string& name, const VARIANT& value) {
  try {
    Variant same;
    const Variant present = record.GetFieldValue(name);
    return !present.isNull() &&
           SUCCEEDED(VariantChangeType(same.ptr(), &value, 0, present.type())) &&
           VariantText(same.get()) == VariantText(present.get());
  } catch (...) {
    return false;
  }
}

/// Brings a value into the form in which the database takes it and sets the field. What the field
/// refuses is passed over and noted, with `cause` if there is one: the tool keeps the other values.
void WriteField(CDaoRecordset& record, const std::string& name, Variant& value,
                const std::string& cause = {}) {
  if (value.type() == VT_BSTR) {
    NarrowStringVariant(value.ptr());
    if (name == "TappingHead" && Bytes(value.get().bstrVal) == ComponentString(IDS_ABSENT))
      value.clear();
  }
  try {
    if (IsNoValue(value.get())) {
      record.SetFieldValueNull(name);
    } else {
      record.SetFieldValue(name, value.get());
    }
  } catch (...) {
    // The field stays as it was.
    if (!cause.empty()) {
      NoteCause(cause);
    } else if (!IsThereAlready(record, name, value.get())) {
      NoteCurrentException();
    }
  }
}

}  // namespace

HRESULT AddTool(CDaoDatabase& database, const CToolTableInfo& table, const VARIANT& names,
                const VARIANT& values, LONG& id, IOrxDbObj& own) {
  CDaoRecordset& tools = table.ToolSet();
  CDaoRecordset record(&database);
  record.Open(AFX_DAO_USE_DEFAULT_TYPE, "SELECT * FROM " + table.m_strTableName);
  record.AddNew();
  record.SetBookmark(record.GetLastModifiedBookmark().get());
  id = record.GetFieldValue("ID").get().lVal;

  const PropertyPairs pairs(names, values, PropertyPairs::ValueDimensions::One);
  if (!pairs) return Failed("The names and the values do not pair up");
  CDaoFieldInfo field;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const std::string name = pairs.Name(i);
    if (IsUnwrittenField(table.m_strTableName, name)) continue;
    Variant value = pairs.Value(i);
    if (name == "Name" && table.m_strTableName == kTappingHeadTable &&
        !IsHeadNameFree(TextOf(value.get()), own)) {
      // At once: the message lets the host run, which may have ended the database.
      return Failed(ComponentString(IDS_HEAD_NAME_IN_USE));
    }
    if (IsNoValue(value.get())) continue;
    tools.GetFieldInfo(name, field, AFX_DAO_SECONDARY_INFO);
    const bool known = !table.IsLookupField(field) || ResolveLookup(database, field, value);
    WriteField(record, name, value, known ? "" : NotInList(name, value.get()));
  }
  record.Update();
  record.Close();
  tools.Requery();
  return S_OK;
}

HRESULT ChangeTool(CDaoDatabase& database, const CToolTableInfo& table, LONG id,
                   const VARIANT& names, const VARIANT& values) {
  CDaoRecordset& tools = table.ToolSet();
  CDaoRecordset record(&database);
  record.Open(AFX_DAO_USE_DEFAULT_TYPE,
              "SELECT * FROM " + table.m_strTableName + " WHERE ID = " + std::to_string(id));
  record.MoveFirst();
  if (!HasCurrentRecord(record)) return Failed(NoSuchTool(id));
  record.Edit();

  const PropertyPairs pairs(names, values, PropertyPairs::ValueDimensions::Any);
  if (!pairs) return Failed("The names and the values do not pair up");
  CDaoFieldInfo field;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const std::string name = pairs.Name(i);
    if (IsUnwrittenField(table.m_strTableName, name)) continue;
    Variant value = pairs.Value(i);
    tools.GetFieldInfo(name, field, AFX_DAO_ALL_INFO);
    if (table.IsLookupField(field) && !IsNoValue(value.get()) &&
        !ResolveLookup(database, field, value)) {
      throw CDaoException(DaoError::NoRecord, NotInList(name, value.get()));
    }
    WriteField(record, name, value);
  }
  record.Update();
  record.Close();
  const Variant position = ToolPosition(tools);
  tools.Requery();
  RepositionToolCursor(tools, &position.get());
  return S_OK;
}

void DeleteTool(const CToolTableInfo& table, LONG id) {
  CDaoRecordset& tools = table.ToolSet();
  UseFoundTool(tools, ToolCriteria(table.m_strTableName, id), [&tools, id](bool found) {
    if (found) {
      tools.Delete();
    } else {
      NoteCause(NoSuchTool(id));
    }
  });
}

}  // namespace orxdb
