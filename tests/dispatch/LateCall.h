// Late-bound calls with every detail in the caller's hand.
#pragma once

#include "tests/component/ComponentFixture.h"

namespace orxdb::test {

struct Answer {
  HRESULT status = S_OK;
  UINT argument = 99;  ///< untouched
  std::string exception;
};

/// Identifier of a method, by its name.
DISPID IdOf(IDispatch& object, std::u16string_view method);

/// Calls with the arguments as they stand in DISPPARAMS: reversed, those named by `names` first.
Answer Invoke(IDispatch& object, DISPID id, std::vector<VARIANT>& reversed,
              std::vector<DISPID> names = {}, WORD flags = DISPATCH_METHOD);

/// Calls with arguments from left to right; the variants stay the caller's.
Answer Call(IDispatch& object, std::u16string_view method, std::vector<VARIANT> arguments);

/// A variant that refers to a place of that type.
VARIANT Reference(VARTYPE type, void* place);

}  // namespace orxdb::test
