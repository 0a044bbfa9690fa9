// What hosts of the tool database would otherwise each write themselves.
//
//   auto db = orxdb::CreateToolDatabase();                  // null when it is not installed
//   db->SetMdbFile(orxdb::Bstr(u"shop.mdb").get());
//   for (const orxdb::ToolType& type : orxdb::ToolTypes(*db)) {
//     for (const orxdb::Tool& tool : orxdb::ToolRange(*db, type.table)) {
//       VARIANT* name = tool.find(u"Name");
//     }
//   }
//
// Late-bound hosts, which know no more than names:
//
//   orxdb::LateBound db(orxdb::CreateByProgId<IDispatch>(u"ORXDB.OrxDbObj"));
//   db.call(u"SetMdbFile", orxdb::Variant::FromText(u"shop.mdb"));
#pragma once

#include <array>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "interface/IOrxDbObj.h"
#include "platform/automation/ClassObject.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/Variant.h"

namespace orxdb {

/// A new object of an installed class; null when there is none.
template <typename Interface>
ComPtr<Interface> CreateByProgId(const OLECHAR* progId) {
  CLSID clsid{};
  ComPtr<Interface> object;
  if (SUCCEEDED(CLSIDFromProgID(progId, &clsid))) {
    CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, Interface::iid, object.putVoid());
  }
  return object;
}

inline ComPtr<IOrxDbObj> CreateToolDatabase() {
  return CreateByProgId<IOrxDbObj>(kOrxDbVersionIndependentProgId);
}

struct ToolType {
  std::u16string type;
  std::u16string subtype;
  std::u16string table;
};

/// The kinds of tools in the catalogue; none without an open database.
inline std::vector<ToolType> ToolTypes(IOrxDbObj& db) {
  Variant types;
  std::vector<ToolType> found;
  if (FAILED(db.GetToolTypes(types.put())) || types.type() != (VT_ARRAY | VT_BSTR)) return found;
  const ArrayAccess<BSTR> texts(types.get().parray);
  for (std::size_t i = 0; i + 2 < texts.size(); i += 3) {
    found.push_back({std::u16string(View(texts[i])), std::u16string(View(texts[i + 1])),
                     std::u16string(View(texts[i + 2]))});
  }
  return found;
}

/// The property arrays of one tool.
class Tool {
 public:
  /// The value of a property, null when the tool has none of that name. Valid until the walk moves
  /// on.
  VARIANT* find(std::u16string_view property) const {
    const ArrayAccess<BSTR> names(m_names.get().parray);
    const ArrayAccess<VARIANT> values(m_values.get().parray);
    for (std::size_t i = 0; i < names.size() && i < values.size(); ++i) {
      if (View(names[i]) == property) return &values[i];
    }
    return nullptr;
  }
  const Variant& names() const noexcept { return m_names; }
  const Variant& values() const noexcept { return m_values; }

 private:
  friend class ToolRange;
  Variant m_names;
  Variant m_values;
};

/// Walks over the tools of a table that its filter selects, once: the table has one cursor. Ends
/// early when the component refuses to go on; `status()` then tells.
class ToolRange {
 public:
  ToolRange(IOrxDbObj& db, std::u16string_view table) : m_db(db), m_table(table) {}

  class iterator {
   public:
    const Tool& operator*() const noexcept { return m_range->m_tool; }
    iterator& operator++() {
      m_range->next();
      return *this;
    }
    bool operator==(std::default_sentinel_t) const noexcept {
      return m_range->m_tool.m_values.empty();
    }

   private:
    friend class ToolRange;
    explicit iterator(ToolRange& range) noexcept : m_range(&range) {}
    ToolRange* m_range;
  };

  iterator begin() {
    m_status = m_db.GetFirstTool(m_table.get(), m_tool.m_names.put(), m_tool.m_values.put());
    return iterator(*this);
  }
  static std::default_sentinel_t end() noexcept { return {}; }
  HRESULT status() const noexcept { return m_status; }

 private:
  void next() { m_status = m_db.GetNextTool(m_table.get(), m_tool.m_values.put()); }

  IOrxDbObj& m_db;
  Bstr m_table;
  Tool m_tool;
  HRESULT m_status = S_OK;
};

/// Calls methods by name. Pass values as `Variant`s, and addresses of `Variant`s for results.
class LateBound {
 public:
  explicit LateBound(ComPtr<IDispatch> object) noexcept : m_object(std::move(object)) {}
  explicit operator bool() const noexcept { return static_cast<bool>(m_object); }

  /// The status of the call; DISP_E_EXCEPTION when the method failed, which `error()` explains, and
  /// E_POINTER when there is no object to call.
  template <typename... Arguments>
  HRESULT call(std::u16string_view method, Arguments&&... arguments) {
    if (!m_object) return E_POINTER;
    std::u16string name(method);
    LPOLESTR names = name.data();
    DISPID id = DISPID_UNKNOWN;
    const HRESULT known = m_object->GetIDsOfNames(IID_NULL, &names, 1, 0, &id);
    if (FAILED(known)) return known;
    // Last argument first; the variants stay their owners'.
    std::array<VARIANT, sizeof...(Arguments)> reversed{};
    [[maybe_unused]] auto place = reversed.rbegin();
    ((*place++ = Argument(arguments)), ...);
    DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    EXCEPINFO exception{};
    const HRESULT status =
        m_object->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, &exception, nullptr);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    m_error.attach(exception.bstrDescription);
    return status;
  }

  /// What the last method that failed had to say.
  std::u16string_view error() const noexcept { return m_error.view(); }

 private:
  static VARIANT Argument(const Variant& value) noexcept { return value.get(); }
  static VARIANT Argument(Variant* result) noexcept {
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = result->put();
    return reference;
  }

  ComPtr<IDispatch> m_object;
  Bstr m_error;
};

}  // namespace orxdb
