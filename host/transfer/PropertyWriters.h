// Writers of formats that carry some properties only.
#pragma once

#include "host/transfer/Writers.h"

namespace orxdb {

/// A tool's values by the names of their properties. A writer takes what its format carries; the
/// rest counts as lost.
class NamedValues {
 public:
  NamedValues(const std::vector<std::string>& properties, const std::vector<Cell>& values) {
    for (std::size_t i = 0; i < properties.size(); ++i) {
      if (values[i].kind != Cell::Kind::Null) m_values.emplace(properties[i], &values[i]);
    }
  }

  /// The text of a value that is carried; empty when there is none.
  std::string Take(const std::string& property) {
    const auto value = m_values.find(property);
    if (value == m_values.end()) return {};
    std::string text = value->second->text;
    m_values.erase(value);
    return text;
  }
  /// The values that were not taken, by their properties. Empty texts are no loss.
  template <typename Visit>
  void ForEachLeft(Visit visit) const {
    for (const auto& [property, cell] : m_values) {
      if (!cell->text.empty()) visit(property);
    }
  }

 private:
  std::map<std::string, const Cell*> m_values;
};

std::unique_ptr<ToolWriter> MakeFreeCadWriter(const std::string& table, FileSink sink);
std::unique_ptr<ToolWriter> MakeLinuxCncWriter(const std::string& table, FileSink sink);

}  // namespace orxdb
