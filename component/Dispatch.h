// Late-bound calls.
#pragma once

#include "component/MethodTable.h"

namespace orxdb {

/// Calls a method of an object of the class by its identifier, by the rules of IDispatch::Invoke:
/// arguments reversed, named ones first, results written through references (see Argument.h).
/// Out-parameters are arguments, but for a method's result. `pVarResult`, when given, gets that
/// from a method that succeeds, and else is set to empty.
///
/// - DISP_E_MEMBERNOTFOUND for an unknown method and for flags that do not ask for a call.
/// - DISP_E_BADPARAMCOUNT, DISP_E_PARAMNOTFOUND (a name that is unknown or given twice),
///   DISP_E_PARAMNOTOPTIONAL and the statuses of Argument::Bind before the call; E_INVALIDARG for
///   null arrays of arguments. `*puArgErr` then is the index of the argument, where one is to
///   blame.
/// - DISP_E_EXCEPTION for a failing method, with `*pExcepInfo` from the thread's error information,
///   which stays set. So do exceptions of methods without a guard: hosts that call late cannot
///   catch them. What the method wrote before it failed is written through.
/// - The statuses of Argument::WriteBack for results that do not fit.
HRESULT InvokeMethod(const DescribedClass& type, IDispatch& object, DISPID dispIdMember,
                     WORD wFlags, DISPPARAMS* pDispParams, VARIANT* pVarResult,
                     EXCEPINFO* pExcepInfo, UINT* puArgErr) noexcept;

}  // namespace orxdb
