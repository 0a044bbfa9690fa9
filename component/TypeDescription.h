// The type library: what the component tells hosts about its class and its interface.
#pragma once

#include "platform/automation/TypeInfo.h"

namespace orxdb {

/// The description of the interface as late-bound hosts see it, with a reference for the caller;
/// its containing library describes the class too. References keep the module in memory.
///
/// The library has two types: the interface (0) and the class (1). The interface's partner that
/// early-bound hosts see, with HRESULT results, is its implemented type -1. Inherited methods are
/// not listed. Binding by ITypeComp, looking names up in the library and creation from a
/// description are not offered (E_NOTIMPL).
ITypeInfo* DescribeInterface() noexcept;

/// The description of the class, likewise.
ITypeInfo* DescribeClass() noexcept;

}  // namespace orxdb
