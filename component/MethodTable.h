// What is told of the classes, their interfaces and the interfaces' methods: the one source of
// late-bound calls, the type description and the interface description file.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "interface/IOrxDbLibrary.h"
#include "interface/IOrxDbObj.h"
#include "platform/automation/TypeInfo.h"

namespace orxdb {

/// A type, or the library of them, as descriptions name it.
struct DescribedType {
  const GUID& guid;
  const OLECHAR* name;
  const OLECHAR* help;
};

inline constexpr DescribedType kDescribedLibrary{LIBID_ORXDBLib, u"ORXDBLib",
                                                 u"ORXDB 1.0 Type Library"};
inline constexpr WORD kLibraryMajor = 1;
inline constexpr WORD kLibraryMinor = 0;

inline constexpr std::size_t kMaxParameters = 6;

struct Parameter {
  const OLECHAR* name = nullptr;
  /// PARAMFLAG_FIN, PARAMFLAG_FOUT or, for two methods that declare no directions, neither;
  /// PARAMFLAG_FOPT with the default; PARAMFLAG_FRETVAL for a result.
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
  bool hasResult = false;  ///< the last parameter is no argument of late-bound calls: they give it
  /// Calls the method with one place per parameter: the pointer itself for a pointer, else the
  /// address of the value.
  HRESULT (*call)(IDispatch& object, void* const* places) = nullptr;

  constexpr std::span<const Parameter> parameters() const noexcept {
    return std::span(slots).first(parameterCount);
  }
  /// The parameters of late-bound calls.
  constexpr std::span<const Parameter> arguments() const noexcept {
    return std::span(slots).first(parameterCount - (hasResult ? 1 : 0));
  }
};

/// What descriptions say of a method.
inline std::u16string HelpOf(const Method& method) {
  return std::u16string(u"method ") + method.name;
}

/// A class and the interface that it has.
struct DescribedClass {
  DescribedType type;
  DescribedType interfaceType;
  const OLECHAR* progId;
  /// In the order of identifiers (from 1) and of the interface's slots.
  std::span<const Method> methods;

  /// Null for an unknown identifier or name. Letter case does not count in names.
  const Method* Find(DISPID id) const noexcept;
  const Method* Find(std::u16string_view name) const noexcept;

  /// Identifiers of a method (first name) and of its arguments (the other names): an argument's
  /// identifier is its position from 0. Unknown names get DISPID_UNKNOWN and the answer is then
  /// DISP_E_UNKNOWNNAME; arguments of an unknown method are unknown.
  HRESULT FindIdsOfNames(const LPOLESTR* names, UINT count, DISPID* ids) const noexcept;
};

extern const DescribedClass kOrxDbObj;
extern const DescribedClass kOrxDbLibrary;
inline constexpr std::array<const DescribedClass*, 2> kDescribedClasses = {&kOrxDbObj,
                                                                           &kOrxDbLibrary};

}  // namespace orxdb
