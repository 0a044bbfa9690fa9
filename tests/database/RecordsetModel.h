// What recordsets promise, in memory: a table, the queries over it, and a place among their
// records.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "database/records/DaoRecordset.h"
#include "platform/automation/Ascii.h"

namespace orxdb {

struct Tool {
  std::string name;
  std::optional<int> diameter;
  int coating = 0;  ///< two coatings exist

  /// As SQL writes it and as the fixture shows the two fields.
  std::string Text() const {
    return "'" + name + "', " + (diameter ? std::to_string(*diameter) : "null");
  }
  std::string Row() const { return "(" + Text() + ", " + std::to_string(coating) + ")"; }
};
using Table = std::map<int, Tool>;

struct Shape {
  const char* name;
  const char* query;
  bool listed = false;  ///< keys are listed when that is needed
  bool ordered = false;
  bool (*shows)(const Tool&) = [](const Tool&) { return true; };
  int type = dbOpenDynaset;

  friend void PrintTo(const Shape& shape, std::ostream* out) { *out << shape.name; }
};
inline constexpr bool (*kCoated)(const Tool&) = [](const Tool& tool) { return tool.coating != 0; };
inline constexpr Shape kShapes[] = {
    {"Table", "SELECT * FROM MILL"},
    {"StoredQuery", "Q_MILL"},
    {"Ordered", "SELECT * FROM Q_MILL ORDER BY D DESC, [Name]", true, true},
    {"Conditional", "SELECT * FROM MILL WHERE D >= 3", true, false,
     [](const Tool& tool) { return tool.diameter >= 3; }},
    {"Joined",
     "SELECT MILL.ID, MILL.Name, MILL.D FROM MILL INNER JOIN COATING ON COATING.ID = MILL.Coating",
     true, false, kCoated},
    {"JoinedAndOrdered",
     "SELECT MILL.ID, MILL.Name, MILL.D FROM MILL INNER JOIN COATING ON COATING.ID = MILL.Coating"
     " ORDER BY MILL.D DESC, MILL.Name",
     true, true, kCoated},
    {"Copy", "Q_MILL", false, false, [](const Tool&) { return true; }, dbOpenSnapshot}};

/// What the contract says, in memory: all members in their order, and a place among them.
class Model {
 public:
  Model(const Shape& shape, Table& table) : m_shape(shape), m_table(table) { Requery(); }

  void Requery() {
    m_settledInGroup = true;
    m_members.clear();
    for (const auto& [key, tool] : m_table) {
      if (m_shape.shows(tool)) m_members.push_back(key);
    }
    m_copy = m_table;
    if (m_shape.ordered) {
      std::ranges::stable_sort(m_members, {}, [&](int key) {
        const Tool& tool = m_table[key];
        return std::pair(-tool.diameter.value_or(-1), Folded(tool.name));  // none is the smallest
      });
    }
    m_furthest = 0;
    m_removed = 0;
    GoTo(m_members.empty() ? -1 : 0);
  }
  bool Exists(int key) const { return Rows().contains(key) && m_shape.shows(Rows().at(key)); }
  const Tool& Current() const { return Rows().at(Key()); }
  /// Where a key is among the members; behind the last one when it is none.
  int Place(int key) const {
    return static_cast<int>(std::ranges::find(m_members, key) - m_members.begin());
  }
  int Here() const { return m_at; }
  int Last() const { return static_cast<int>(m_members.size()) - 1; }
  bool IsEmpty() const { return m_at == -1; }
  bool HasPlace() const { return m_at >= 0 && m_at <= Last(); }
  bool IsDeleted() const { return m_deleted; }
  int Key() const { return m_members[static_cast<std::size_t>(m_at)]; }
  bool IsReadable() const { return HasPlace() && !m_deleted && Exists(Key()); }
  /// Of the records reached, those that are left: all but the own deletions where keys are listed.
  long Count() const {
    const auto reached = std::span(m_members).first(
        IsEmpty() ? 0 : static_cast<std::size_t>(std::min(m_furthest, Last()) + 1));
    if (m_shape.listed) return std::max(0L, static_cast<long>(reached.size()) - m_removed);
    return std::ranges::count_if(reached, [&](int key) { return Exists(key); });
  }

  template <typename Test>
  bool Find(Test test, int from, int step) {
    for (int at = from; at >= 0 && at <= Last(); at += step) {
      const int key = m_members[static_cast<std::size_t>(at)];
      if (!Exists(key) || !test(Rows().at(key))) continue;
      GoTo(at);
      return true;
    }
    return false;
  }
  void MoveFirst() {
    if (!Find(kAny, 0, 1)) GoTo(-1);
  }
  void MoveLast() {
    if (!Find(kAny, Last(), -1)) GoTo(-1);
    ReachAll();
  }
  void MoveNext() {
    if (!Find(kAny, m_at + 1, 1)) GoTo(Last() + 1);
  }
  void GoTo(int at) {
    m_at = at;
    m_deleted = false;
    m_furthest = std::max(m_furthest, at);
  }
  void ReachAll() { m_furthest = Last(); }
  void BeginGroup() { m_settledInGroup = false; }
  /// The table is again what it was; whether places changed.
  bool Cancel() {
    if (!m_settledInGroup) return false;
    const bool behind = m_at > Last();
    const int key = HasPlace() ? Key() : 0;
    const bool empty = IsEmpty();
    Requery();
    if (empty || IsEmpty()) return true;
    const int place = Place(key);
    if (behind || place > Last()) MoveLast();
    if (behind) GoTo(Last() + 1);
    if (!behind && place <= Last()) GoTo(place);
    return true;
  }
  void Delete() {
    m_settledInGroup = true;
    m_table.erase(Key());
    m_deleted = true;
    ++m_removed;
  }
  void Change(const Tool& tool) { m_table[Key()] = tool; }

 private:
  static constexpr auto kAny = [](const Tool&) { return true; };
  const Table& Rows() const { return m_shape.type == dbOpenSnapshot ? m_copy : m_table; }

  const Shape& m_shape;
  Table& m_table;
  Table m_copy;
  std::vector<int> m_members;
  int m_at = -1;
  bool m_deleted = false;
  bool m_settledInGroup = false;
  int m_furthest = 0;
  long m_removed = 0;
};

}  // namespace orxdb
