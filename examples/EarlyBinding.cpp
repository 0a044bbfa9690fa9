// Lists tools of a database: a host that knows the interface.
//
//   early_binding DATABASE TABLE [CRITERIA]
#include <cstdio>

#include "interface/ToolHost.h"
#include "platform/framework/Text.h"

int main(int argc, char** argv) {
  using namespace orxdb;
  if (argc < 3) {
    std::fputs("usage: early_binding DATABASE TABLE [CRITERIA]\n", stderr);
    return 2;
  }
  const auto db = CreateToolDatabase();
  if (!db) {
    std::fputs("the tool database component is not installed\n", stderr);
    return 1;
  }
  const Bstr table = WidenToBstr(argv[2]);
  db->SetMdbFile(WidenToBstr(argv[1]).get());
  if (argc > 3 && FAILED(db->SetTabFilter(table.get(), WidenToBstr(argv[3]).get(), nullptr))) {
    std::fprintf(stderr, "no table %s\n", argv[2]);
    return 1;
  }
  const auto show = [&](const Tool& tool, std::u16string_view property) {
    Bstr text;
    if (VARIANT* value = tool.find(property)) db->VariantToUIString(value, text.put(), -1);
    return NarrowBstr(text.get());
  };
  ToolRange tools(*db, table.view());
  for (const Tool& tool : tools) {
    std::printf("%s\t%s\n", show(tool, u"Name").c_str(), show(tool, u"Diameter").c_str());
  }
  if (FAILED(tools.status())) {
    std::fprintf(stderr, "cannot list %s\n", argv[2]);
    return 1;
  }
  return 0;
}
