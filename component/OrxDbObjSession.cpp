// Opening the database.
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "database/DefaultPath.h"
#include "platform/automation/Bstr.h"
#include "platform/framework/ExecutablePath.h"
#include "platform/framework/Text.h"

using orxdb::Bstr;
using orxdb::Guard;
using orxdb::RunMethod;

HRESULT OrxDbObj::SetMdbFile(BSTR bstrFileName) {
  return RunMethod<Guard::None>(true, [&] {
    const std::string path = orxdb::NarrowBstr(bstrFileName);
    ++m_nSetMdbFileCalls;
    if (g_pToolDbData && !g_pToolDbData->IsOpen() && g_pToolDbData->OpenDatabase(path) &&
        g_pToolDbData->LoadCatalogue()) {
      return S_OK;
    }
    // A database that does not open is no failure of this call: hosts offer the path they have
    // and learn from the calls that follow. Only a count that has wrapped around to 0 fails.
    return m_nSetMdbFileCalls == 0 ? E_FAIL : S_OK;
  });
}

HRESULT OrxDbObj::OpenDefaultDataBase() {
  return RunMethod<Guard::None>(true, [this] {
    const Bstr path = orxdb::WidenToBstr(orxdb::DefaultDatabasePath(orxdb::ExecutablePath()));
    return SetMdbFile(path.get());
  });
}
