// A library as no component should be: what hosts ask it for throws.
#include "platform/automation/Types.h"
#include "platform/framework/Exception.h"
#include "platform/framework/ModuleState.h"

extern "C" AUTOMATION_API HRESULT DllGetClassObject(REFCLSID, REFIID, void**) {
  throw CMemoryException();
}

extern "C" AUTOMATION_API const void* ActiveStateSeenByLibrary() {
  return &orxdb::ActiveModuleState();
}
