// A tool table in memory: tools, and the list with a position that a cursor is.
#pragma once

#include <algorithm>
#include <cctype>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/automation/Ascii.h"
#include "platform/automation/Variant.h"

namespace orxdb::test {

using Text = std::optional<std::string>;
using Number = std::optional<int>;

struct ModelTool {
  int id = 0;
  Text name;
  Number low, high;
};

inline bool SameText(const Text& left, const Text& right) {
  return left && right && EqualNoCase(*left, *right);
}

struct Filter {
  std::string criteria;
  std::function<bool(const ModelTool&)> selects;
};
inline const Filter kFilters[] = {
    {"", [](const ModelTool&) { return true; }},
    {"[@_Min_Diameter] > 4", [](const ModelTool& tool) { return tool.low && *tool.low > 4; }},
    {"Name LIKE 'N[1-4]*' AND NOT [@_Max_Diameter] IS NULL",
     [](const ModelTool& tool) {
       return tool.name && tool.name->size() > 1 && std::toupper((*tool.name)[0]) == 'N' &&
              (*tool.name)[1] >= '1' && (*tool.name)[1] <= '4' && tool.high;
     }},
    {"[~] = -1", [](const ModelTool&) { return false; }}};

using Less = bool (*)(const ModelTool&, const ModelTool&);
inline const std::pair<const char*, Less> kOrders[] = {
    {"[~]", [](const ModelTool& a, const ModelTool& b) { return a.id < b.id; }},
    {"[~] DESC", [](const ModelTool& a, const ModelTool& b) { return a.id > b.id; }},
    {"[@_Min_Diameter], [~] DESC", [](const ModelTool& a, const ModelTool& b) {
       return a.low != b.low ? a.low < b.low : a.id > b.id;
     }}};

/// A tool table as a list of tools and a position in the list that the cursor knows.
struct ModelTable {
  std::string name;
  std::string prefix;  ///< of its columns
  std::string key;     ///< the name of the ID in the stored query
  bool uniqueNames = false;
  std::map<int, ModelTool> stored = {};
  int nextId = 1;
  Filter filter = kFilters[0];
  Less less = kOrders[0].second;
  std::vector<int> records = {};
  std::size_t position = 0;
  Variant bookmark = {};
  int marked = 0;

  bool AtEnd() const { return position >= records.size(); }
  const ModelTool& At(std::size_t place) const { return stored.at(records[place]); }

  void Requery() {
    records.clear();
    for (const auto& [id, tool] : stored) records.push_back(id);
    std::ranges::sort(records, [this](int a, int b) { return less(stored.at(a), stored.at(b)); });
    position = 0;
  }
  Number Bookmark() const { return AtEnd() ? Number() : Number(records[position]); }
  void Reposition(Number id) {
    if (AtEnd()) return;
    const auto place = id ? std::ranges::find(records, *id) : records.end();
    position = place != records.end() ? static_cast<std::size_t>(place - records.begin())
                                      : records.size() - 1;
  }
  /// Whether a record meets the condition; the cursor goes there and comes back.
  bool Find(const std::function<bool(const ModelTool&)>& condition) {
    const Number before = Bookmark();
    const auto found =
        std::ranges::find_if(records, [&](int id) { return condition(stored.at(id)); });
    if (found == records.end()) {
      Reposition(before);
      return false;
    }
    position = static_cast<std::size_t>(found - records.begin());
    Reposition(before);
    return true;
  }
  bool Has(int id) {
    return Find([id](const ModelTool& tool) { return tool.id == id; });
  }
  bool Uses(const Text& toolName) {
    return Find([&](const ModelTool& tool) { return SameText(tool.name, toolName); });
  }
  /// Moves to the first selected record from a place on.
  const ModelTool* Select(std::size_t from) {
    for (std::size_t place = from; place < records.size(); ++place) {
      if (!filter.selects(At(place))) continue;
      position = place;
      return &At(place);
    }
    if (filter.criteria.empty()) position = records.size();
    return nullptr;
  }
  void Delete(int id) {
    const Number before = Bookmark();
    if (!Has(id)) return;
    stored.erase(id);
    std::erase(records, id);
    position = 0;
    Reposition(before);
  }
};

}  // namespace orxdb::test
