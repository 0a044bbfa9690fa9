#include "component/Dispatch.h"

#include <array>
#include <new>

#include "component/Argument.h"
#include "component/ErrorReport.h"
#include "component/MethodTable.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/ErrorInfo.h"

namespace orxdb {
namespace {

/// The status of a step and, where an argument is to blame, its index in the host's array.
struct Outcome {
  static constexpr UINT kNoArgument = ~0u;
  HRESULT status = S_OK;
  UINT index = kNoArgument;
};

/// The host's arguments in the order of the method's parameters.
class CallArguments {
 public:
  CallArguments(const Method& method, DISPPARAMS& params) : m_method(method), m_params(params) {
    m_indexes.fill(Outcome::kNoArgument);
  }

  /// Sorts the arguments out and prepares them.
  Outcome Bind() {
    if (const Outcome sorted = Sort(); FAILED(sorted.status)) return sorted;
    const std::size_t arguments = m_method.arguments().size();
    for (std::size_t i = 0; i < m_method.parameterCount; ++i) {
      const UINT index = m_indexes[i];
      VARIANTARG* const given = index == Outcome::kNoArgument ? nullptr : &m_params.rgvarg[index];
      const HRESULT status = i < arguments ? m_arguments[i].Bind(m_method.slots[i], given)
                                           : m_arguments[i].BindResult(m_method.slots[i]);
      if (FAILED(status)) return {status, index};
      m_places[i] = m_arguments[i].place();
    }
    return {};
  }

  void* const* places() const noexcept { return m_places.data(); }

  /// Hands out what the method gives back; nothing when it gives nothing.
  void TakeResult(VARIANT& result) noexcept {
    if (m_method.hasResult) m_arguments[m_method.parameterCount - 1].TakeResult(result);
  }

  /// Writes every result through that can be; tells of the first that cannot.
  Outcome WriteBack() {
    Outcome outcome;
    for (UINT i = 0; i < m_method.parameterCount; ++i) {
      const HRESULT status = m_arguments[i].WriteBack();
      if (FAILED(status) && SUCCEEDED(outcome.status)) outcome = {status, m_indexes[i]};
    }
    return outcome;
  }

 private:
  Outcome Sort() {
    const UINT count = m_params.cArgs;
    const UINT named = m_params.cNamedArgs;
    if (named > count || (count && !m_params.rgvarg) || (named && !m_params.rgdispidNamedArgs)) {
      return {E_INVALIDARG};
    }
    const auto most = static_cast<UINT>(m_method.arguments().size());
    if (count > most || count < most - m_method.optionalCount) {
      return {DISP_E_BADPARAMCOUNT};
    }
    for (UINT position = 0; position < count - named; ++position) {
      m_indexes[position] = count - 1 - position;
    }
    for (UINT index = 0; index < named; ++index) {
      const auto position = static_cast<UINT>(m_params.rgdispidNamedArgs[index]);
      if (position >= most || m_indexes[position] != Outcome::kNoArgument) {
        return {DISP_E_PARAMNOTFOUND, index};
      }
      m_indexes[position] = index;
    }
    return {};
  }

  const Method& m_method;
  DISPPARAMS& m_params;
  std::array<UINT, kMaxParameters> m_indexes{};
  std::array<Argument, kMaxParameters> m_arguments;
  std::array<void*, kMaxParameters> m_places{};
};

/// Hosts that ask for a value say both, "call" and "get", when they cannot know which it is.
bool AsksForCall(WORD flags) noexcept {
  return flags == DISPATCH_METHOD || flags == (DISPATCH_METHOD | DISPATCH_PROPERTYGET);
}

HRESULT CallUnexceptionally(const DescribedClass& type, const Method& method, IDispatch& object,
                            void* const* places) {
  try {
    return method.call(object, places);
  } catch (...) {
    ReportError(type);
    return E_FAIL;
  }
}

void Describe(HRESULT status, EXCEPINFO& exception) {
  exception = {};
  exception.scode = status;
  ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, info.put()) != S_OK) return;
  info->GetSource(&exception.bstrSource);
  info->GetDescription(&exception.bstrDescription);
  info->GetHelpFile(&exception.bstrHelpFile);
  info->GetHelpContext(&exception.dwHelpContext);
  SetErrorInfo(0, info.get());
}

Outcome Perform(const DescribedClass& type, const Method& method, IDispatch& object,
                DISPPARAMS& params, VARIANT* pVarResult, EXCEPINFO* pExcepInfo) {
  CallArguments arguments(method, params);
  if (const Outcome bound = arguments.Bind(); FAILED(bound.status)) return bound;
  const HRESULT status = CallUnexceptionally(type, method, object, arguments.places());
  const Outcome written = arguments.WriteBack();
  if (SUCCEEDED(status)) {
    if (pVarResult) arguments.TakeResult(*pVarResult);
    return written;
  }
  if (pExcepInfo) Describe(status, *pExcepInfo);
  return {DISP_E_EXCEPTION};
}

}  // namespace

HRESULT InvokeMethod(const DescribedClass& type, IDispatch& object, DISPID dispIdMember,
                     WORD wFlags, DISPPARAMS* pDispParams, VARIANT* pVarResult,
                     EXCEPINFO* pExcepInfo, UINT* puArgErr) noexcept try {
  if (pVarResult) VariantInit(pVarResult);
  const Method* const method = type.Find(dispIdMember);
  if (!method || !AsksForCall(wFlags)) return DISP_E_MEMBERNOTFOUND;
  if (!pDispParams) return E_INVALIDARG;
  const Outcome outcome = Perform(type, *method, object, *pDispParams, pVarResult, pExcepInfo);
  if (puArgErr && outcome.index != Outcome::kNoArgument) *puArgErr = outcome.index;
  return outcome.status;
} catch (...) {
  return E_OUTOFMEMORY;
}

}  // namespace orxdb
