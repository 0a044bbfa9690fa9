#include "platform/automation/LateBinding.h"

#include <algorithm>

#include "platform/automation/Variants.h"

HRESULT DispGetIDsOfNames(ITypeInfo* type, OLECHAR** names, UINT count, DISPID* ids) {
  return type ? type->GetIDsOfNames(names, count, ids) : E_INVALIDARG;
}

HRESULT DispInvoke(void* object, ITypeInfo* type, DISPID member, WORD flags, DISPPARAMS* params,
                   VARIANT* result, EXCEPINFO* exception, UINT* argument) {
  return type ? type->Invoke(object, member, flags, params, result, exception, argument)
              : E_INVALIDARG;
}

HRESULT DispGetParam(DISPPARAMS* params, UINT position, VARTYPE type, VARIANT* result,
                     UINT* argument) {
  if (!params || !result || params->cNamedArgs > params->cArgs) return E_INVALIDARG;
  const UINT named = params->cNamedArgs;
  if ((params->cArgs && !params->rgvarg) || (named && !params->rgdispidNamedArgs)) {
    return E_INVALIDARG;
  }
  UINT index = params->cArgs - 1 - position;  // they come in reverse, the named ones in front
  if (position >= params->cArgs - named) {
    const DISPID* const names = params->rgdispidNamedArgs;
    index =
        static_cast<UINT>(std::find(names, names + named, static_cast<DISPID>(position)) - names);
    if (index == named) return DISP_E_PARAMNOTFOUND;
  }
  const HRESULT status = VariantChangeType(result, &params->rgvarg[index], 0, type);
  if (FAILED(status) && argument) *argument = index;
  return status;
}
