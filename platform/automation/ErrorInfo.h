// The error report of the last failed call, one per thread.
#pragma once

#include "platform/automation/Unknown.h"

extern "C" {

/// A new, empty error object to fill; the caller owns the reference. Ask it for IErrorInfo to set
/// it.
AUTOMATION_API HRESULT CreateErrorInfo(ICreateErrorInfo** created);

/// Makes `info` this thread's report in place of any other (the runtime holds its own reference);
/// null clears it. `reserved` must be 0.
AUTOMATION_API HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info);

/// Hands this thread's report over to the caller, who owns the reference, and clears it. S_FALSE
/// and null when there is none.
AUTOMATION_API HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info);
}
