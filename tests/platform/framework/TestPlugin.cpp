// A library of its own, as components are: what it throws is caught in the program.
#include "platform/framework/Exception.h"
#include "platform/framework/ModuleState.h"

extern "C" AUTOMATION_API void ThrowOutOfMemory() {
  throw CMemoryException();
}

extern "C" AUTOMATION_API const void* ActiveStateSeenByPlugin() {
  return &orxdb::ActiveModuleState();
}
