// Finding the type descriptions of components. A component describes itself: its library is loaded
// and the class object of one of its classes asked for IProvideClassInfo, whose class leads to the
// whole. There are no files of descriptions.
#pragma once

#include "platform/automation/TypeInfo.h"

extern "C" {

/// The type library of that identifier and major version whose minor version is at least `minor`,
/// of the first class file that names it as its TypeLibrary. The locale is accepted and ignored.
/// TYPE_E_LIBNOTREGISTERED when no class has it in that version; TYPE_E_CANTLOADLIBRARY when the
/// component does not load or does not describe itself.
AUTOMATION_API HRESULT LoadRegTypeLib(REFGUID library, WORD major, WORD minor, LCID locale,
                                      ITypeLib** loaded);

/// The type library of a registered component by the path of its library, either `/` or `\`
/// between folders. TYPE_E_CANTLOADLIBRARY when no class file names that library or it cannot be
/// loaded.
AUTOMATION_API HRESULT LoadTypeLib(const OLECHAR* path, ITypeLib** loaded);
}
