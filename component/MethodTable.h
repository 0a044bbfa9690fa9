// What late-bound calls, the type description and their hosts know of the interface's methods.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "interface/IOrxDbObj.h"
#include "platform/automation/TypeInfo.h"

namespace orxdb {

inline constexpr std::size_t kMethodCount = 41;
inline constexpr std::size_t kMaxParameters = 6;

struct Parameter {
  const OLECHAR* name = nullptr;
  /// PARAMFLAG_FIN, PARAMFLAG_FOUT or, for two methods that declare no directions, neither;
  /// PARAMFLAG_FOPT with the default.
  USHORT flags = PARAMFLAG_NONE;
  LONG defaultValue = 0;
  /// The type of the value, for a pointer that of what it points to.
  VARTYPE type = VT_EMPTY;
  bool byReference = false;
};

struct Method {
  DISPID id = 0;
  const OLECHAR* name = nullptr;
  std::array<Parameter, kMaxParameters> slots{};
  UINT parameterCount = 0;
  UINT optionalCount = 0;
  /// Calls the method with one place per parameter: the pointer itself for a pointer, else the
  /// address of the value.
  HRESULT (*call)(IOrxDbObj& object, void* const* places) = nullptr;

  constexpr std::span<const Parameter> parameters() const noexcept {
    return std::span(slots).first(parameterCount);
  }
};

/// Every method, in the order of identifiers (from 1) and of the interface's slots.
std::span<const Method> Methods() noexcept;

/// Null for an unknown identifier or name. Letter case does not count in names.
const Method* FindMethod(DISPID id) noexcept;
const Method* FindMethod(std::u16string_view name) noexcept;

/// Identifiers of a method (first name) and of its parameters (the other names): a parameter's
/// identifier is its position from 0. Unknown names get DISPID_UNKNOWN and the answer is then
/// DISP_E_UNKNOWNNAME; parameters of an unknown method are unknown.
HRESULT FindIdsOfNames(const LPOLESTR* names, UINT count, DISPID* ids) noexcept;

}  // namespace orxdb
