#include "tests/dispatch/LateCall.h"

#include "platform/framework/Text.h"

namespace orxdb::test {

DISPID IdOf(IDispatch& object, std::u16string_view method) {
  std::u16string name(method);
  LPOLESTR names = name.data();
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &names, 1, 0, &id), S_OK) << Narrow(method);
  return id;
}

Answer Invoke(IDispatch& object, DISPID id, std::vector<VARIANT>& reversed,
              std::vector<DISPID> names, WORD flags) {
  DISPPARAMS params{reversed.data(), names.data(), static_cast<UINT>(reversed.size()),
                    static_cast<UINT>(names.size())};
  Answer answer;
  VARIANT result = Variant::FromI4(7).detach();
  EXCEPINFO exception{};
  answer.status =
      object.Invoke(id, IID_NULL, 0, flags, &params, &result, &exception, &answer.argument);
  EXPECT_EQ(result.vt, VT_EMPTY);
  EXPECT_EQ(exception.scode, answer.status == DISP_E_EXCEPTION ? E_FAIL : S_OK);
  Bstr source;
  source.attach(exception.bstrSource);
  Bstr description;
  description.attach(exception.bstrDescription);
  if (source) answer.exception = Narrow(source.view()) + ": " + Narrow(description.view());
  return answer;
}

Answer Call(IDispatch& object, std::u16string_view method, std::vector<VARIANT> arguments) {
  std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
  return Invoke(object, IdOf(object, method), reversed);
}

VARIANT Reference(VARTYPE type, void* place) {
  VARIANT reference{};
  reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
  reference.byref = place;
  return reference;
}

}  // namespace orxdb::test
