#include "platform/automation/Apartment.h"

namespace {

struct Starts {
  ULONG count = 0;
  DWORD model = COINIT_MULTITHREADED;  ///< of the first one
};

thread_local Starts t_starts;

}  // namespace

HRESULT CoInitializeEx(void* reserved, DWORD flags) {
  constexpr DWORD kKnown =
      COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE | COINIT_SPEED_OVER_MEMORY;
  if (reserved || (flags & ~kKnown)) return E_INVALIDARG;
  const DWORD model = flags & COINIT_APARTMENTTHREADED;
  if (t_starts.count == 0) t_starts.model = model;
  if (t_starts.model != model) return RPC_E_CHANGED_MODE;
  return ++t_starts.count == 1 ? S_OK : S_FALSE;
}

HRESULT CoInitialize(void* reserved) {
  return CoInitializeEx(reserved, COINIT_APARTMENTTHREADED);
}

HRESULT OleInitialize(void* reserved) {
  return CoInitialize(reserved);
}

void CoUninitialize() {
  if (t_starts.count > 0) --t_starts.count;
}

void OleUninitialize() {
  CoUninitialize();
}
