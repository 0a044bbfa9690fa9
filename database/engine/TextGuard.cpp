#include "database/engine/TextGuard.h"

#include <chrono>
#include <sqlite3.h>
#include <string_view>
#include <utility>

#include "database/dialect/SqlText.h"
#include "database/engine/DialectFunctions.h"
#include "database/engine/EngineFunctions.h"
#include "platform/framework/DaoException.h"

namespace orxdb {
namespace {

/// So few steps add at most some twenty values to a temporary table.
constexpr int kStepsBetweenLooks = 256;
constexpr unsigned kLooksBetweenTimes = 64;  // asking the time costs more than asking for memory
constexpr std::int64_t kLongestStatement = 10'000'000'000;  // nanoseconds

[[noreturn]] void RaiseTooMuchMemory() {
  throw CDaoException(DaoError::Engine, "The statement takes more than 256 MiB of memory");
}

}  // namespace

void TextGuard::Protect(sqlite3* database) {
  sqlite3_set_authorizer(database, &TextGuard::OnAuthorize, this);
  sqlite3_progress_handler(database, kStepsBetweenLooks, &TextGuard::OnProgress, this);
  for (const auto& [option, on] : {std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                   {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                   {SQLITE_DBCONFIG_DQS_DML, 0},
                                   {SQLITE_DBCONFIG_DQS_DDL, 0},
                                   {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0}}) {
    sqlite3_db_config(database, option, on, nullptr);
  }
  sqlite3_limit(database, SQLITE_LIMIT_LENGTH, kLongestValue);
}

void TextGuard::Start() noexcept {
  m_looks = 0;
  m_startMemory = sqlite3_memory_used();
  m_tooMuchMemory = false;
}

void TextGuard::RaiseStopped() const {
  if (m_tooMuchMemory) RaiseTooMuchMemory();
  throw CDaoException(DaoError::Engine, "The statement takes longer than ten seconds");
}

void TextGuard::RequireRoom(std::size_t bytes) {
  if (bytes > kMostMemory) RaiseTooMuchMemory();
}

int TextGuard::Authorize(int action, const char* first, const char* second, const char* view) {
  if (m_origin == Origin::Own) return SQLITE_OK;
  if (view != nullptr && m_uses != nullptr) m_uses->views.insert(FoldedName(view));
  switch (action) {
    case SQLITE_SELECT:
      return SQLITE_OK;
    case SQLITE_READ:
      if (m_uses != nullptr) m_uses->tables.insert(FoldedName(first));
      return std::string_view(first).starts_with("sqlite_") ? SQLITE_DENY : SQLITE_OK;
    case SQLITE_FUNCTION: {
      const FunctionUse use = UseOfFunction(FoldedName(second));
      if (use == FunctionUse::OverRows && m_uses != nullptr) m_uses->overRows = true;
      return use == FunctionUse::Refused ? SQLITE_DENY : SQLITE_OK;
    }
    default:
      return SQLITE_DENY;
  }
}

int TextGuard::OnAuthorize(void* self, int action, const char* first, const char* second,
                           const char* /*database*/, const char* view) noexcept {
  try {
    return static_cast<TextGuard*>(self)->Authorize(action, first, second, view);
  } catch (...) {
    return SQLITE_DENY;
  }
}

bool TextGuard::MayGoOn() noexcept {
  m_tooMuchMemory = sqlite3_memory_used() - m_startMemory > kMostMemory;
  if (m_tooMuchMemory) return false;
  if (m_looks++ % kLooksBetweenTimes != 0) return true;
  const std::int64_t now =
      std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds(1);
  if (m_looks == 1) m_startTime = now;
  return now - m_startTime <= kLongestStatement;
}

int TextGuard::OnProgress(void* self) noexcept {
  return static_cast<TextGuard*>(self)->MayGoOn() ? 0 : 1;
}

}  // namespace orxdb
