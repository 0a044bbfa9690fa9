// What every method of the component runs in.
#pragma once

#include <new>
#include <type_traits>

#include "component/ErrorReport.h"
#include "database/ToolDbData.h"
#include "platform/framework/CallNotes.h"
#include "platform/framework/Exception.h"
#include "platform/framework/ModuleState.h"
#include "platform/framework/Text.h"
#include "resources/ComponentText.h"

namespace orxdb {

/// Which exceptions a method turns into E_FAIL.
enum class Guard {
  None,       ///< none: they leave the method, for hosts to see; memory running out as the
              ///< framework's own, whoever raises it
  Framework,  ///< all, their messages noted
};

/// The status that work gives; S_OK for work that gives none.
template <typename Work, typename... Arguments>
HRESULT StatusOf(Work& work, Arguments&... arguments) {
  if constexpr (std::is_void_v<std::invoke_result_t<Work&, Arguments&...>>) {
    work(arguments...);
    return S_OK;
  } else {
    return work(arguments...);
  }
}

template <Guard guard, typename Work>
HRESULT RunGuarded(Work&& work) {
  if constexpr (guard == Guard::None) {
    try {
      return StatusOf(work);
    } catch (const std::bad_alloc&) {
      NoteCurrentException();
      throw CMemoryException();
    } catch (...) {
      NoteCurrentException();
      throw;
    }
  } else {
    try {
      return StatusOf(work);
    } catch (...) {
      NoteCurrentException();
      return E_FAIL;
    }
  }
}

/// Notes why a method lacks what it needs.
inline void NoteLacking() noexcept {
  const bool open = g_pToolDbData && g_pToolDbData->IsOpen();
  NoteCause(open ? "An argument is missing, or is not of the type that it should be"
                 : "No database is open");
}

/// Runs a method's work and reports a result other than S_OK. Without its preconditions the work is
/// skipped, which is E_FAIL. The module state stays the caller's.
template <Guard guard, typename Work>
HRESULT RunReported(const DescribedClass& type, bool preconditions, Work&& work) {
  const NotedCall call;
  if (!preconditions) NoteLacking();
  const HRESULT result = preconditions ? RunGuarded<guard>(work) : E_FAIL;
  if (result != S_OK) ReportError(type);
  return result;
}

/// The same under the component's own module state, as nearly every method of `OrxDbObj` runs.
template <Guard guard, typename Work>
HRESULT RunMethod(bool preconditions, Work&& work) {
  const ModuleStateSwitch active(ComponentModuleState());
  return RunReported<guard>(kOrxDbObj, preconditions, work);
}

/// What becomes of a method that lacks what it needs: the data object, its arguments, a table that
/// the catalogue names.
enum class IfLacking {
  Fail,              ///< E_FAIL
  SkipUnknownTable,  ///< S_OK without any work for an unknown table, else E_FAIL
  Skip,              ///< S_OK without any work: hosts look at what came out
};

/// Runs a method's work on the data object if its arguments are there.
template <Guard guard, IfLacking lacking = IfLacking::Fail, typename Work>
HRESULT RunOnData(bool arguments, Work&& work) {
  const bool ready = g_pToolDbData && arguments;
  if (lacking == IfLacking::Skip && !ready) return RunMethod<guard>(true, NoteLacking);
  return RunMethod<guard>(ready, [&] { return StatusOf(work, *g_pToolDbData); });
}

/// The catalogue's entry of a tool table; null, which is noted, for an unknown one and without a
/// data object.
inline CToolTableInfo* FindToolTable(BSTR name) {
  const std::string narrow = NarrowBstr(name);
  CToolTableInfo* const table = g_pToolDbData ? g_pToolDbData->FindToolTable(narrow) : nullptr;
  if (table) return table;
  const bool open = g_pToolDbData && g_pToolDbData->IsOpen();
  NoteCause(open ? "There is no table " + narrow : "No database is open");
  return nullptr;
}

/// Runs a method's work on a tool table likewise.
template <Guard guard, IfLacking lacking = IfLacking::Fail, typename Work>
HRESULT RunOnTable(BSTR name, bool arguments, Work&& work) {
  return RunOnData<guard, lacking>(arguments, [&](CToolDbData&) -> HRESULT {
    if (CToolTableInfo* table = FindToolTable(name)) return StatusOf(work, *table);
    return lacking == IfLacking::Fail ? E_FAIL : S_OK;
  });
}

/// Whether an out-parameter is there and empty, as most methods want it.
inline bool IsEmpty(const VARIANT* value) {
  return value && value->vt == VT_EMPTY;
}

}  // namespace orxdb
