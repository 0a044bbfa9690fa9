// The component as the host uses it: found beside the program or by its ProgID, then only through
// IOrxDbObj.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/library/Cell.h"
#include "host/library/HostError.h"
#include "interface/IOrxDbLibrary.h"
#include "interface/ToolHost.h"

namespace orxdb {

/// One kind of tool.
struct ToolKind {
  std::string type;
  std::string subtype;
  std::string table;
};

/// One property of a table's tools.
struct Property {
  std::string name;
  VARTYPE type = VT_NULL;  ///< VT_NULL for a type of the database that the component does not know
};

/// What a value of a property must keep to beside its type.
struct FieldLimits {
  LONG longest = 0;  ///< of a text, in Unicode characters; 0 for no limit
  bool required = false;
};

/// The property that a person names, in any case. Throws HostError, which names those that the
/// table's tools have, when there is none.
const Property& PropertyNamed(const std::string& table, const std::string& name,
                              const std::vector<Property>& properties);

/// The values of an array of variants; none for any other value.
std::vector<Cell> CellsOf(const Variant& array);

/// The property arrays of one tool or other record, or of none.
struct ToolProperties {
  Variant names;
  Variant values;

  explicit operator bool() const noexcept { return !values.empty(); }
  std::vector<std::string> Names() const;
  /// One for each name.
  std::vector<Cell> Cells() const;
  /// The value of that name; null when there is none.
  Cell Value(std::string_view name) const;
};

/// An open tool database. Operations throw HostError.
class ToolDatabase {
 public:
  /// Opens a file (either path separator). Opened means that there are tool tables: the component
  /// itself answers success for any file.
  explicit ToolDatabase(const std::string& file);

  IOrxDbObj& Component() const noexcept { return *m_component; }
  IOrxDbLibrary& Library() const noexcept { return *m_library; }
  /// Why the last call of the component failed, in sentences.
  std::string LastError() const;

  /// The file that is open.
  const std::filesystem::path& File() const noexcept { return m_file; }

  const std::vector<ToolKind>& Types() const noexcept { return m_types; }
  /// The table's exact name for a name in any case.
  std::string TableNamed(const std::string& name) const;

  /// Makes a filter and an order those of the next walks; empty ones keep what there is.
  void Select(const std::string& table, const std::string& where, const std::string& order);
  /// Number of all records, whatever the filter.
  LONG Count(const std::string& table);
  /// Whether the property is not meant for people.
  bool IsHidden(const std::string& property);

  /// All properties of the table's tools, in the table's order.
  std::vector<Property> Properties(const std::string& table);
  FieldLimits Limits(const std::string& table, const std::string& property);
  /// Names of the properties that tools are searched by.
  std::vector<std::string> SearchParams(const std::string& table);
  /// What a looked-up property may be; nothing for any other. With the diameter of a tap in
  /// millimetres, only the tapping heads that take it, then a null for none of them.
  std::optional<std::vector<Cell>> PermissibleValues(const std::string& table,
                                                     const std::string& property,
                                                     double tapDiameter = 0);
  /// The tool with that identifier; none when there is no such tool.
  ToolProperties Find(const std::string& table, LONG id);
  /// The same, for a tool that must be there.
  ToolProperties Get(const std::string& table, LONG id);

  /// The name that the table's name format gives to a stored tool.
  std::string DefaultName(const std::string& table, LONG id);
  /// The same for a new tool, not yet in use where names have to be unique.
  std::string DefaultName(const std::string& table, ToolProperties tool);
  /// Whether a property is the number that the database gives each tool of the table.
  static bool IsKey(const std::string& table, const std::string& property);

 private:
  ComPtr<IOrxDbObj> m_component;
  ComPtr<IOrxDbLibrary> m_library;
  std::filesystem::path m_file;
  std::vector<ToolKind> m_types;
};

/// A walk over the tools that a table's filter selects:
///
///   for (ToolWalk walk(database, "TAP", {}); walk; walk.Next()) Use(walk.Values({0}));
class ToolWalk {
 public:
  /// Stands on the first tool, if there is one. `filter` is for the message when it is refused.
  ToolWalk(ToolDatabase& database, const std::string& table, const std::string& filter);
  ToolWalk(ToolWalk&&) = delete;

  /// Whether there is a tool.
  explicit operator bool() const noexcept { return m_tool != ToolRange::end(); }
  void Next();

  /// Values of the tool at positions of the table's properties.
  std::vector<Cell> Values(const std::vector<std::size_t>& positions) const;
  /// All of the tool's properties.
  const Tool& Current() const noexcept { return *m_tool; }

 private:
  ToolDatabase& m_database;
  std::string m_table;
  ToolRange m_tools;
  ToolRange::iterator m_tool;
};

}  // namespace orxdb
