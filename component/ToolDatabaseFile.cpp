#include "component/ToolDatabaseFile.h"

#include <filesystem>

#include "component/MethodFrame.h"
#include "database/StarterDatabase.h"
#include "database/engine/DatabaseFile.h"
#include "database/engine/NetworkFolder.h"
#include "platform/framework/ExecutablePath.h"

namespace orxdb {
namespace {

std::filesystem::path PathOf(BSTR file) {
  return NativePath(NarrowBstr(file));
}

/// Runs the work when its arguments are there; a failure gives its reason.
template <typename Work>
HRESULT RunWithReason(bool arguments, BSTR* reason, Work&& work) {
  if (!reason || !arguments) return E_INVALIDARG;
  *reason = nullptr;
  return RunGuarded<Guard::Framework>([&] {
    try {
      work();
      return S_OK;
    } catch (const CException& exception) {
      *reason = WidenToBstr(exception.Message()).detach();
      return E_FAIL;
    }
  });
}

}  // namespace

HRESULT ToolDatabaseFile::CreateStarter(BSTR bstrNewFile, BSTR* pReason) {
  return RunWithReason(bstrNewFile, pReason, [&] { CreateStarterDatabase(PathOf(bstrNewFile)); });
}

HRESULT ToolDatabaseFile::Copy(BSTR bstrFile, BSTR bstrNewFile, BSTR* pReason) {
  return RunWithReason(bstrFile && bstrNewFile, pReason,
                       [&] { CopyDatabase(PathOf(bstrFile), PathOf(bstrNewFile)); });
}

HRESULT ToolDatabaseFile::Check(BSTR bstrFile, BSTR* pReason) {
  return RunWithReason(bstrFile, pReason, [&] { CheckDatabase(PathOf(bstrFile)); });
}

HRESULT ToolDatabaseFile::Replace(BSTR bstrFile, BSTR bstrNewFile, BSTR bstrKept,
                                  VARIANT_BOOL bCertain, BSTR* pReason) {
  return RunWithReason(bstrFile && bstrNewFile, pReason, [&] {
    ReplaceDatabase(PathOf(bstrFile), PathOf(bstrNewFile), PathOf(bstrKept),
                    bCertain != VARIANT_FALSE);
  });
}

HRESULT ToolDatabaseFile::GetJournal(BSTR bstrFile, VARIANT_BOOL* pbLog, BSTR* pNetwork,
                                     BSTR* pReason) {
  return RunWithReason(bstrFile && pbLog && pNetwork, pReason, [&] {
    const std::filesystem::path file = PathOf(bstrFile);
    const bool log = JournalOf(file) == Journal::Log;
    *pNetwork = WidenToBstr(NetworkOf(file)).detach();
    *pbLog = log ? VARIANT_TRUE : VARIANT_FALSE;
  });
}

HRESULT ToolDatabaseFile::SetJournal(BSTR bstrFile, VARIANT_BOOL bLog, BSTR* pReason) {
  return RunWithReason(bstrFile, pReason, [&] {
    orxdb::SetJournal(PathOf(bstrFile), bLog != VARIANT_FALSE ? Journal::Log : Journal::Rollback);
  });
}

HRESULT ToolDatabaseFile::GetState(BSTR bstrFile, DatabaseFileState* pState) {
  if (!bstrFile || !pState) return E_INVALIDARG;
  return RunGuarded<Guard::Framework>([&] { *pState = StateOfFile(PathOf(bstrFile)); });
}

}  // namespace orxdb
