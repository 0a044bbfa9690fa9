// Exchange files.
#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "exchange/ToolRecordExchange.h"
#include "platform/framework/Text.h"

using orxdb::Guard;
using orxdb::NarrowBstr;
using orxdb::RunMethod;
using orxdb::TextFile;
using orxdb::ToolRecordExchange;

HRESULT OrxDbObj::ExportToolRecordsToFile(BSTR bstrToolTable, BSTR bstrFileName, LONG) {
  return RunMethod<Guard::Framework>(true, [&] {
    // Whatever there is not to export or to write to is no failure: hosts look at the file.
    if (!g_pToolDbData || !bstrToolTable || !bstrFileName) return S_OK;
    const CToolTableInfo* table = FindToolTable(bstrToolTable);
    if (!table || !table->m_pToolSet || !table->m_pToolSet->IsOpen()) return S_OK;
    TextFile file = TextFile::OpenForWriting(NarrowBstr(bstrFileName));
    if (!file) return S_OK;
    ToolRecordExchange(NarrowBstr(bstrToolTable)).ExportTable(table->m_pToolSet.get(), file);
    file.Close();
    return S_OK;
  });
}

HRESULT OrxDbObj::ImportToolRecordsFromFile(BSTR bstrFileName, LONG) {
  return RunMethod<Guard::None>(true, [&] {
    if (!g_pToolDbData || !bstrFileName) return S_OK;
    // What ends an import is told to nobody.
    orxdb::RunGuarded<Guard::Framework>([&] {
      TextFile file = TextFile::OpenForReading(NarrowBstr(bstrFileName));
      if (file) ToolRecordExchange().ImportRecords(*g_pToolDbData, *this, file);
      return S_OK;
    });
    return S_OK;
  });
}
