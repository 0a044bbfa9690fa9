#pragma once

#include <cstdint>
#include <vector>

namespace orxdb {

struct TableInfo;

/// What is about to be done to a table through its connection.
struct Change {
  const TableInfo& table;
  bool adding;  ///< a record is added; no other one is touched, unless by a trigger
};

/// Whoever has to look at the database before it is changed through the connection, and when
/// changes have been taken back.
class ChangeListener {
 public:
  ChangeListener(const ChangeListener&) = delete;
  ChangeListener& operator=(const ChangeListener&) = delete;
  virtual void BeforeChange(const Change& change) = 0;
  /// The group of changes of that number is over, and nothing of it was stored.
  virtual void AfterCancel(std::int64_t group) noexcept = 0;

 protected:
  ChangeListener() = default;
  ~ChangeListener() = default;
};

/// Those who listen to one connection; each leaves before it dies.
class ChangeListeners {
 public:
  void Add(ChangeListener& listener) { m_listeners.push_back(&listener); }
  void Remove(ChangeListener& listener) noexcept { std::erase(m_listeners, &listener); }
  void Tell(const Change& change) const {
    for (ChangeListener* listener : m_listeners) listener->BeforeChange(change);
  }
  void TellCancelled(std::int64_t group) const noexcept {
    for (ChangeListener* listener : m_listeners) listener->AfterCancel(group);
  }

 private:
  std::vector<ChangeListener*> m_listeners;
};

}  // namespace orxdb
