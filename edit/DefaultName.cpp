#include "edit/DefaultName.h"

#include <algorithm>

#include "browse/PropertyArrays.h"
#include "database/ToolRules.h"
#include "platform/framework/Text.h"
#include "resources/ComponentText.h"
#include "resources/StringTable.h"

namespace orxdb {
namespace {

void DeleteLastCharacter(std::string& text) {
  std::u16string wide = Widen(text);
  if (wide.empty()) return;
  const auto isHighSurrogate = [](char16_t unit) { return (unit & 0xFC00) == 0xD800; };
  wide.pop_back();
  if (!wide.empty() && isHighSurrogate(wide.back())) wide.pop_back();
  text = Narrow(wide);
}

void CollapseUnderscores(std::string& text) {
  const auto end = std::unique(text.begin(), text.end(),
                               [](char left, char right) { return left == '_' && right == '_'; });
  text.erase(end, text.end());
}

class NameBuilder {
 public:
  NameBuilder(const std::string& table, VARIANT* names, VARIANT* values, IOrxDbObj& own)
      : m_table(table), m_names(names), m_values(values), m_own(own) {}

  std::string Build(std::string_view format) const {
    std::string name;
    for (;;) {
      const std::size_t open = format.find('%');
      // What follows the last percent sign is dropped; a format without any is the name.
      if (open == format.npos) return name;
      name += format.substr(0, open);
      const std::size_t close = format.find('%', open + 1);
      if (close == format.npos) return name;
      AppendProperty(format.substr(open + 1, close - open - 1), name);
      format.remove_prefix(close + 1);
    }
  }

  /// Stores the name as the `Name` of the arrays unless there is a text.
  void WriteBackName(const std::string& name) const {
    Variant present;
    LONG index = -1;
    Find("Name", present, index);
    const bool named = present.type() == VT_BSTR && SysStringLen(present.get().bstrVal) > 0;
    if (index < 0 || named) return;
    Variant value = Variant::FromBstr(WidenToBstr(name));
    SafeArrayPutElement(CarriedArray(*m_values, VT_VARIANT), &index, value.ptr());
  }

 private:
  void Find(std::string_view property, Variant& value, LONG& index) const {
    m_own.FindPropByNameInArray(WidenToBstr(property).get(), m_names, m_values, value.ptr(),
                                &index);
  }

  void AppendProperty(std::string_view property, std::string& name) const {
    if (m_names->vt == VT_EMPTY || m_values->vt == VT_EMPTY) return;
    Variant value;
    LONG index = -1;
    Find(property, value, index);
    if (value.empty()) return;
    const std::string text = TextOf(value);
    if (text.empty()) return;
    if (text == "in") {
      name += ComponentString(IDS_INCH);
    } else if (text == "mm") {
      name += ComponentString(IsTapTable(m_table) ? IDS_METRIC_TAP : IDS_METRIC);
    } else if (text == ComponentString(IDS_ABSENT)) {
      DeleteLastCharacter(name);  // the separator before it
    } else {
      name += text;
    }
  }

  std::string TextOf(Variant& value) const {
    // Names do not follow the user's language here: they are stored, and others read them.
    if (value.type() == VT_BOOL) return value.get().boolVal ? "Yes" : "No";
    Bstr text;
    m_own.VariantToUIString(value.ptr(), text.put(), -1);
    return NarrowBstr(text.get());
  }

  const std::string& m_table;
  VARIANT* m_names;
  VARIANT* m_values;
  IOrxDbObj& m_own;
};

}  // namespace

std::string BuildDefaultToolName(const std::string& format, const std::string& table,
                                 VARIANT* names, VARIANT* values, IOrxDbObj& own) {
  const NameBuilder builder(table, names, values, own);
  std::string name = format.find('%') == format.npos ? format : builder.Build(format);
  CollapseUnderscores(name);
  builder.WriteBackName(name);
  return name;
}

std::string NameFormat(const CToolTableInfo& table) {
  const std::string& format = table.m_strDefNameFormat;
  return format.empty() ? format : format + "    ";
}

}  // namespace orxdb
