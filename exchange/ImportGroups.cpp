#include "exchange/ImportGroups.h"

#include <thread>
#include <utility>

namespace orxdb {
namespace {

constexpr int kMostRecords = 500;
constexpr std::chrono::milliseconds kLongest(100);
/// Longer than those who wait for the lock sleep between two looks.
constexpr std::chrono::milliseconds kTurnOfOthers(3);

}  // namespace

ImportGroups::ImportGroups(CToolDbData& data)
    : m_data(data), m_outer(data.SetBeforeMessage([this] { EndBeforeMessage(); })) {}

ImportGroups::~ImportGroups() {
  if (!HasData()) return;
  m_data.SetBeforeMessage(std::move(m_outer));
  if (m_open && m_data.Database().IsChanging()) m_data.Database().CancelChanges();
}

bool ImportGroups::Enter() {
  if (m_open) return false;
  if (m_data.Database().IsChanging()) return !std::exchange(m_joined, true);
  m_joined = false;
  if (m_records > 0) std::this_thread::sleep_for(kTurnOfOthers);
  m_data.Database().BeginChanges();
  m_open = true;
  m_records = 0;
  m_begin = Clock::now();
  return true;
}

void ImportGroups::Leave() {
  ++m_records;
  if (m_failure) std::rethrow_exception(std::exchange(m_failure, nullptr));
  if (m_joined && HasData() && m_data.Database().HasLostChanges()) {
    throw CDaoException(DaoError::Engine, "The group of changes around the import is lost");
  }
}

bool ImportGroups::IsFull() const {
  return m_open && (m_records >= kMostRecords || Clock::now() - m_begin >= kLongest);
}

bool ImportGroups::TakeLoss() {
  if (!m_open || !m_data.Database().HasLostChanges()) return false;
  m_open = false;
  m_data.Database().CancelChanges();
  return true;
}

void ImportGroups::End() {
  if (std::exchange(m_open, false)) m_data.Database().EndChanges();
}

void ImportGroups::EndBeforeMessage() noexcept {
  try {
    End();
  } catch (...) {
    m_failure = std::current_exception();
  }
}

}  // namespace orxdb
