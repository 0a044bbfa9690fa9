// Safe arrays: typed arrays of one or more dimensions that know their bounds. Indexes are given
// leftmost dimension first, dimensions are numbered from 1 (leftmost). Lower bounds may be any
// number and every dimension may have zero elements.
//
// Element rules: strings are copied, variants copied deeply, objects get a reference; destroying
// an array frees what its elements own. A lock pins the array: a locked one can be neither
// destroyed nor resized (DISP_E_ARRAYISLOCKED). Null arrays give E_INVALIDARG.
#pragma once

#include "platform/automation/Types.h"

extern "C" {

/// An array of `dimensions` bounds (leftmost first), every element zero or empty. Null for an
/// impossible element type, data beyond 4 GB or the memory, or bounds that leave the range of LONG.
AUTOMATION_API SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions,
                                          const SAFEARRAYBOUND* bounds);

/// As SafeArrayCreate for one dimension of `count` elements from `lowerBound`, descriptor and data
/// in one block. Such an array cannot be resized.
AUTOMATION_API SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count);

/// A bare descriptor without data whose element type is unknown; bounds, element size and features
/// are the caller's to fill.
AUTOMATION_API HRESULT SafeArrayAllocDescriptor(UINT dimensions, SAFEARRAY** array);

/// As SafeArrayAllocDescriptor with the element type, its size and its features filled in.
AUTOMATION_API HRESULT SafeArrayAllocDescriptorEx(VARTYPE type, UINT dimensions, SAFEARRAY** array);

/// Allocates zeroed data for a descriptor filled in before.
AUTOMATION_API HRESULT SafeArrayAllocData(SAFEARRAY* array);

/// Frees the descriptor; data of its own block (a vector's) goes with it, other data stays the
/// caller's. Null is harmless.
AUTOMATION_API HRESULT SafeArrayDestroyDescriptor(SAFEARRAY* array);

/// Frees what the elements own and the data (static data is only emptied).
AUTOMATION_API HRESULT SafeArrayDestroyData(SAFEARRAY* array);

/// Frees elements, data and descriptor. Null is harmless.
AUTOMATION_API HRESULT SafeArrayDestroy(SAFEARRAY* array);

/// A deep copy of the array, not locked. A null source gives a null copy.
AUTOMATION_API HRESULT SafeArrayCopy(SAFEARRAY* source, SAFEARRAY** copy);

/// Replaces the elements of `target` by copies of those of `source`, freeing what was there.
/// E_INVALIDARG, as for null arrays, when they differ in the size or kind of their elements or in
/// the number of elements in any dimension. On failure `target` is unchanged.
AUTOMATION_API HRESULT SafeArrayCopyData(SAFEARRAY* source, SAFEARRAY* target);

/// Changes the rightmost (slowest) dimension. Elements that stay keep their values, new ones are
/// zero, those cut off are freed.
AUTOMATION_API HRESULT SafeArrayRedim(SAFEARRAY* array, const SAFEARRAYBOUND* rightmost);

/// Number of dimensions; 0 for null.
AUTOMATION_API UINT SafeArrayGetDim(SAFEARRAY* array);

/// Bytes of one element; 0 for null.
AUTOMATION_API UINT SafeArrayGetElemsize(SAFEARRAY* array);

/// First index of a dimension; DISP_E_BADINDEX for a dimension that is not there.
AUTOMATION_API HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);

/// Last index of a dimension, one less than the first for zero elements.
AUTOMATION_API HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);

/// Type of the elements; E_INVALIDARG when the array does not know it.
AUTOMATION_API HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);

/// Identifier of the interface that an array of objects holds: IUnknown or IDispatch at first.
/// E_INVALIDARG for arrays of anything else.
AUTOMATION_API HRESULT SafeArrayGetIID(SAFEARRAY* array, GUID* iid);
AUTOMATION_API HRESULT SafeArraySetIID(SAFEARRAY* array, REFGUID iid);

/// Locks count; E_UNEXPECTED when there are too many, or when unlocking without a lock.
AUTOMATION_API HRESULT SafeArrayLock(SAFEARRAY* array);
AUTOMATION_API HRESULT SafeArrayUnlock(SAFEARRAY* array);

/// Locks the array and gives its elements in memory order; SafeArrayUnaccessData ends it.
AUTOMATION_API HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
AUTOMATION_API HRESULT SafeArrayUnaccessData(SAFEARRAY* array);

/// Stores a copy of `value` at the indexes, freeing what was there. `value` points to the element,
/// except for strings and objects, where it is the string or the object itself.
AUTOMATION_API HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indexes,
                                           const void* value);

/// Copies the element at the indexes to `value`, whose previous content is ignored. The caller
/// owns the copy.
AUTOMATION_API HRESULT SafeArrayGetElement(SAFEARRAY* array, const LONG* indexes, void* value);

/// Address of the element at the indexes; it holds while the caller keeps the array locked.
AUTOMATION_API HRESULT SafeArrayPtrOfIndex(SAFEARRAY* array, const LONG* indexes, void** element);

/// Number of array descriptors alive in this process; a debugging aid to balance allocations.
AUTOMATION_API LONGLONG AutomationLiveArrays();
}
