// Exchange files.
#include <utility>

#include "component/MethodFrame.h"
#include "component/OrxDbObj.h"
#include "exchange/RecordExport.h"
#include "exchange/RecordImport.h"

using orxdb::Guard;
using orxdb::IfLacking;
using orxdb::NarrowBstr;
using orxdb::RunOnData;
using orxdb::RunOnTable;
using orxdb::TextFile;

HRESULT OrxDbObj::ExportToolRecordsToFile(BSTR bstrToolTable, BSTR bstrFileName, LONG) {
  // Whatever there is not to export or to write to is no failure: hosts look at the file.
  const bool arguments = bstrToolTable && bstrFileName;
  return RunOnTable<Guard::Framework, IfLacking::Skip>(
      bstrToolTable, arguments, [&](CToolTableInfo& table) {
        if (!table.m_pToolSet || !table.m_pToolSet->IsOpen()) {
          return orxdb::NoteCause("The table cannot be read");
        }
        TextFile file = TextFile::OpenForWriting(NarrowBstr(bstrFileName));
        if (!file) return orxdb::NoteCause("The file cannot be written");
        orxdb::ExportRecords(NarrowBstr(bstrToolTable), *table.m_pToolSet, file);
        file.Close();
      });
}

HRESULT OrxDbObj::ImportToolRecordsFromFile(BSTR bstrFileName, LONG) {
  return RunOnData<Guard::None, IfLacking::Skip>(bstrFileName, [&](CToolDbData& data) {
    // What ends an import is told to nobody.
    orxdb::RunGuarded<Guard::Framework>([&] {
      TextFile file = TextFile::OpenForReading(NarrowBstr(bstrFileName));
      if (!file) return orxdb::NoteCause("The file cannot be read");
      orxdb::ImportRecords(data, *this, orxdb::ExchangeReader(std::move(file)));
    });
  });
}
