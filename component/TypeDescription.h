// The type library: what the component tells hosts about its classes and their interfaces.
#pragma once

#include "component/MethodTable.h"
#include "platform/automation/TypeInfo.h"

namespace orxdb {

/// The description of a class's interface as late-bound hosts see it, with a reference for the
/// caller; its containing library describes the class too. References keep the module in memory.
///
/// The library has two types for each class, its interface (0, 2) and itself (1, 3). The
/// interface's partner that early-bound hosts see, with HRESULT results, is its implemented type
/// -1. Inherited methods are not listed. Binding by ITypeComp, looking names up in the library and
/// creation from a description are not offered (E_NOTIMPL).
ITypeInfo* DescribeInterface(const DescribedClass& described) noexcept;

/// The description of the class, likewise.
ITypeInfo* DescribeClass(const DescribedClass& described) noexcept;

}  // namespace orxdb
