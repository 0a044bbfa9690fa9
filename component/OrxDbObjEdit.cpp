// Adding, changing and deleting tools, and their names. Not available yet.
#include "component/OrxDbObj.h"

HRESULT OrxDbObj::AddNewRecord(BSTR, VARIANT*, VARIANT*, LONG*) {
  return NotAvailable();
}
HRESULT OrxDbObj::SetToolProps(BSTR, LONG, VARIANT*, VARIANT*) {
  return NotAvailable();
}
HRESULT OrxDbObj::DeleteTool(BSTR, LONG) {
  return NotAvailable();
}
HRESULT OrxDbObj::IsToolNameUnique(BSTR, BSTR, VARIANT_BOOL*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GenerateDefToolName(BSTR, LONG, BSTR*) {
  return NotAvailable();
}
HRESULT OrxDbObj::GenerateDefToolName2(BSTR, VARIANT*, VARIANT*, BSTR*) {
  return NotAvailable();
}
