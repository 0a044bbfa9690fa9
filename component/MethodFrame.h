// What every method of the component runs in.
#pragma once

#include "component/ErrorReport.h"
#include "platform/framework/Exception.h"
#include "platform/framework/ModuleState.h"
#include "resources/ComponentText.h"

namespace orxdb {

/// Which exceptions a method turns into E_FAIL.
enum class Guard {
  None,       ///< none: they leave the method, for hosts to see
  Framework,  ///< all, fetching and dropping the message of the framework's own
};

template <Guard guard, typename Work>
HRESULT RunGuarded(Work&& work) {
  if constexpr (guard == Guard::None) {
    return work();
  } else {
    try {
      return work();
    } catch (const CException& exception) {
      DropMessage(exception);
      return E_FAIL;
    } catch (...) {
      return E_FAIL;
    }
  }
}

/// Runs a method's work and reports a result other than S_OK. Without its preconditions the work is
/// skipped, which is E_FAIL. The module state stays the caller's.
template <Guard guard, typename Work>
HRESULT RunReported(bool preconditions, Work&& work) {
  const HRESULT result = preconditions ? RunGuarded<guard>(work) : E_FAIL;
  if (result != S_OK) ReportError();
  return result;
}

/// The same under the component's own module state, as nearly every method runs.
template <Guard guard, typename Work>
HRESULT RunMethod(bool preconditions, Work&& work) {
  const ModuleStateSwitch active(ComponentModuleState());
  return RunReported<guard>(preconditions, work);
}

/// Whether an out-parameter is there and empty, as most methods want it.
inline bool IsEmpty(const VARIANT* value) {
  return value && value->vt == VT_EMPTY;
}

}  // namespace orxdb
