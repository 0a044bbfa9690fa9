// What objects use to serve late-bound calls, and what reads the arguments of such a call.
#pragma once

#include "platform/automation/TypeInfo.h"

extern "C" {

/// Identifiers of a method and its parameters by a type description, as
/// ITypeInfo::GetIDsOfNames.
AUTOMATION_API HRESULT DispGetIDsOfNames(ITypeInfo* type, OLECHAR** names, UINT count, DISPID* ids);

/// Calls a method of `object`, which must have the described interface, as ITypeInfo::Invoke.
AUTOMATION_API HRESULT DispInvoke(void* object, ITypeInfo* type, DISPID member, WORD flags,
                                  DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                                  UINT* argument);

/// Converts the argument of a call for the parameter at `position` (from 0) to `type`, as
/// VariantChangeType into `result`. Arguments without a name count from the first, the others by
/// the position that names them. DISP_E_PARAMNOTFOUND when the parameter got none. When the value
/// does not convert, `*argument`, unless that is null, is its index in `params`.
AUTOMATION_API HRESULT DispGetParam(DISPPARAMS* params, UINT position, VARTYPE type,
                                    VARIANT* result, UINT* argument);
}
