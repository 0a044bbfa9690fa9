#include "edit/ToolRecords.h"

#include <optional>

#include "browse/PropertyArrays.h"
#include "browse/ToolCursor.h"
#include "database/ToolRules.h"
#include "edit/ToolNames.h"
#include "platform/framework/Text.h"
#include "resources/ComponentText.h"
#include "resources/StringTable.h"
#include "values/StringVariants.h"

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

bool IsNoValue(const VARIANT& value) {
  return value.vt == VT_EMPTY || value.vt == VT_NULL;
}

/// The text of a value that has to be one; anything else reads as empty.
BSTR TextOf(const VARIANT& value) {
  return value.vt == VT_BSTR ? value.bstrVal : nullptr;
}

/// What a lookup makes of a text that no record has.
enum class LookupMiss {
  KeepText,
  Raise,
};

/// Replaces the text by the `ID` of the first record that has it in the lookup field's source.
void ResolveLookup(CDaoDatabase& database, const CDaoFieldInfo& field, LookupMiss miss,
                   Variant& value) {
  const std::string text = NarrowBstr(TextOf(value.get()));
  if (text == ComponentString(IDS_ABSENT)) return;
  CDaoRecordset sources(&database);
  sources.Open(dbOpenSnapshot, "SELECT * FROM " + field.m_strSourceTable + " WHERE [" +
                                   field.m_strSourceField + "] = '" + text + "'");
  if (miss == LookupMiss::KeepText && !HasCurrentRecord(sources)) return;
  sources.MoveFirst();
  sources.GetFieldValue("ID", value);  // raises without a record
}

/// Brings a value into the form in which the database takes it and sets the field. What the field
/// refuses is passed over: the tool keeps the other values.
void WriteField(CDaoRecordset& record, const std::string& name, Variant& value) {
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
  if (!pairs) return E_FAIL;
  CDaoFieldInfo field;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const std::string name = pairs.Name(i);
    if (IsUnwrittenField(table.m_strTableName, name)) continue;
    Variant value = pairs.Value(i);
    if (name == "Name" && table.m_strTableName == kTappingHeadTable &&
        !IsHeadNameFree(TextOf(value.get()), own)) {
      return E_FAIL;  // at once: the message lets the host run, which may have ended the database
    }
    if (IsNoValue(value.get())) continue;
    tools.GetFieldInfo(name, field, AFX_DAO_SECONDARY_INFO);
    if (table.IsLookupField(field)) ResolveLookup(database, field, LookupMiss::KeepText, value);
    WriteField(record, name, value);
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
  if (!HasCurrentRecord(record)) return E_FAIL;
  record.Edit();

  const PropertyPairs pairs(names, values, PropertyPairs::ValueDimensions::Any);
  if (!pairs) return E_FAIL;
  CDaoFieldInfo field;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    const std::string name = pairs.Name(i);
    if (IsUnwrittenField(table.m_strTableName, name)) continue;
    Variant value = pairs.Value(i);
    tools.GetFieldInfo(name, field, AFX_DAO_ALL_INFO);
    if (table.IsLookupField(field) && !IsNoValue(value.get())) {
      ResolveLookup(database, field, LookupMiss::Raise, value);
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
  UseFoundTool(tools, ToolCriteria(table.m_strTableName, id), [&tools](bool found) {
    if (found) tools.Delete();
  });
}

}  // namespace orxdb
