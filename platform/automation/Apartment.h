// Starting and ending automation on a thread. Objects here need no start: these calls exist for
// hosts that make them first everywhere, and count how often they did.
#pragma once

#include "platform/automation/Types.h"

/// How calls reach the objects of a thread.
enum COINIT : DWORD {
  COINIT_MULTITHREADED = 0x0,
  COINIT_APARTMENTTHREADED = 0x2,
  COINIT_DISABLE_OLE1DDE = 0x4,
  COINIT_SPEED_OVER_MEMORY = 0x8
};

extern "C" {

/// Starts automation on this thread. S_OK for the first of the thread's starts that are not ended,
/// S_FALSE for the others, which count too; RPC_E_CHANGED_MODE, not counted, where the thread was
/// started with another model. E_INVALIDARG for unknown flags; `reserved` must be null.
AUTOMATION_API HRESULT CoInitializeEx(void* reserved, DWORD flags);

/// As CoInitializeEx with COINIT_APARTMENTTHREADED.
AUTOMATION_API HRESULT CoInitialize(void* reserved);

/// As CoInitialize.
AUTOMATION_API HRESULT OleInitialize(void* reserved);

/// Takes one start of this thread back; without one it does nothing. Objects live on.
AUTOMATION_API void CoUninitialize();
AUTOMATION_API void OleUninitialize();
}
