// Exchange files. Not available yet.
#include "component/OrxDbObj.h"

HRESULT OrxDbObj::ExportToolRecordsToFile(BSTR, BSTR, LONG) {
  return NotAvailable();
}
HRESULT OrxDbObj::ImportToolRecordsFromFile(BSTR, LONG) {
  return NotAvailable();
}
