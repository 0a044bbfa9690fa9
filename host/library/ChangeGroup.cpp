#include "host/library/ChangeGroup.h"

#include "host/library/Cause.h"

namespace orxdb {

ChangeGroup::ChangeGroup(ToolDatabase& database) : m_database(database) {
  if (FAILED(database.Library().BeginChanges())) {
    throw HostError("The database cannot be changed now." + Cause(database));
  }
}

ChangeGroup::~ChangeGroup() {
  if (m_open) m_database.Library().CancelChanges();
}

void ChangeGroup::End() {
  m_open = false;
  if (FAILED(m_database.Library().EndChanges())) {
    throw HostError("The changes could not be stored." + Cause(m_database));
  }
}

}  // namespace orxdb
