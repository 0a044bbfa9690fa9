// The tools of a table as a transfer looks for them, by hashes of their values: looking for a tool
// costs the same in large tables, with and without an index, and 50 bytes a tool.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/library/ToolInput.h"

namespace orxdb {

/// Whether a value is the one of a tool; none and an empty text are not told apart.
bool IsSame(const Cell& left, const Cell& right);

/// Tools of one table, found by the values of some properties.
class KnownTools {
 public:
  /// The number of a tool that is planned, but not written.
  static constexpr LONG kPlanned = -1;

  KnownTools(ToolDatabase& database, std::string table);
  KnownTools(KnownTools&&) = delete;

  /// Takes up what others have added since; `changed` when they may have changed tools, too.
  void TakeUp(bool changed);

  /// A tool that has all of these values.
  std::optional<LONG> Same(const Assignments& values);
  /// Up to two tools that have the values of these properties, texts in any letter case. None when
  /// `values` lack one of them.
  std::vector<LONG> Matching(const Assignments& values, const std::vector<std::string>& properties);

  /// A tool has been written.
  void Add(const ToolProperties& tool, LONG id);
  void AddPlanned(const Assignments& values, const std::vector<std::string>& matched);

 private:
  using Clock = std::chrono::steady_clock;
  struct Ids {
    LONG first = 0;
    LONG second = 0;
  };
  /// Of the properties in this order.
  struct Index {
    std::vector<std::string> properties;
    std::vector<std::size_t> positions;  ///< of them in the arrays of tools
    bool folded = false;
    std::unordered_map<std::uint64_t, Ids> tools;

    void Insert(std::uint64_t hash, LONG id);
    std::uint64_t HashOf(const Variant& values) const;
  };

  Index& IndexOf(std::vector<std::string> properties, bool folded);
  /// Those of the index whose values are really these.
  std::vector<LONG> Look(const Index& index, const Assignments& values);
  void ReadFrom(LONG above, const std::vector<Index*>& into);

  ToolDatabase& m_database;
  std::string m_table;
  std::vector<Property> m_properties;
  std::map<std::string, Index> m_indices;
  LONG m_last = 0;  ///< the highest number seen
  Clock::time_point m_read;
  Clock::duration m_cost{};
};

}  // namespace orxdb
