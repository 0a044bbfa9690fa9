// Lists the kinds of tools of a database and how many there are of each: a host that knows names
// only, as a script does.
//
//   late_binding DATABASE
#include <cstdio>

#include "interface/ToolHost.h"
#include "platform/framework/Text.h"

int main(int argc, char** argv) {
  using namespace orxdb;
  if (argc != 2) {
    std::fputs("usage: late_binding DATABASE\n", stderr);
    return 2;
  }
  LateBound db(CreateByProgId<IDispatch>(u"ORXDB.OrxDbObj"));
  if (!db) {
    std::fputs("the tool database component is not installed\n", stderr);
    return 1;
  }
  db.call(u"SetMdbFile", Variant::FromBstr(WidenToBstr(argv[1])));
  Variant types;
  if (FAILED(db.call(u"GetToolTypes", &types))) return 1;
  const ArrayAccess<BSTR> texts(types.get().parray);
  for (std::size_t i = 0; i + 2 < texts.size(); i += 3) {
    const Variant table = Variant::FromText(View(texts[i + 2]));
    Variant count;
    if (FAILED(db.call(u"GetSelectedRecordCount", table, &count))) {
      std::fprintf(stderr, "%s\n", Narrow(db.error()).c_str());
      return 1;
    }
    std::printf("%s\t%s\t%s\t%d\n", NarrowBstr(texts[i]).c_str(), NarrowBstr(texts[i + 1]).c_str(),
                NarrowBstr(texts[i + 2]).c_str(), count.get().lVal);
  }
  return texts.size() == 0 ? 1 : 0;
}
