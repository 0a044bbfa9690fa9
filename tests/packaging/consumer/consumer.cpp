// A host that finds the component by its name and prints its words for true and false.
#include <cstdio>

#include "interface/IOrxDbObj.h"
#include "platform/automation/ClassObject.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/Variant.h"
#include "platform/framework/Text.h"

int main() {
  using namespace orxdb;
  CLSID clsid{};
  ComPtr<IOrxDbObj> tools;
  if (FAILED(CLSIDFromProgID(u"ORXDB.OrxDbObj", &clsid)) ||
      FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IOrxDbObj::iid,
                              tools.putVoid()))) {
    return 1;
  }
  for (const bool value : {true, false}) {
    Variant flag = Variant::FromBool(value);
    Bstr word;
    if (FAILED(tools->VariantToUIString(flag.ptr(), word.put(), -1))) return 1;
    std::puts(NarrowBstr(word.get()).c_str());
  }
}
