// Damaged database files. An input is a list of damages of the seeded file: three bytes for a
// place, one for a length, and that many bytes to write there; lengths above 15 cut the file off.
#include <algorithm>

#include "fuzz/FuzzHost.h"

namespace orxdb::test {
namespace {

std::string Damaged(std::string image, std::string_view damages) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(damages[i]); };
  while (damages.size() > 4 && !image.empty()) {
    const auto place =
        static_cast<std::size_t>(byte(0) << 16 | byte(1) << 8 | byte(2)) % image.size();
    const std::size_t length = byte(3);
    damages.remove_prefix(4);
    if (length > 15) {
      image.resize(place);
      continue;
    }
    const std::string_view bytes = damages.substr(0, std::min(length, image.size() - place));
    image.replace(place, bytes.size(), bytes);
    damages.remove_prefix(bytes.size());
  }
  return image;
}

void Use(IOrxDbObj& db) {
  // Answers of a damaged file may be anything that is an answer, or what a method lets through.
  const auto call = [&db](auto method, auto... arguments) {
    try {
      EXPECT_THAT((db.*method)(arguments...), testing::AnyOf(S_OK, E_FAIL));
    } catch (const std::exception&) {
    }
  };
  Variant types;
  call(&IOrxDbObj::GetToolTypes, types.ptr());
  for (const Bstr& table : {Bstr(u"TAP"), Bstr(u"MILL"), Bstr(u"EMPTY")}) {
    for (const std::u16string_view order : {u"", u"Diameter, Name DESC"}) {
      call(&IOrxDbObj::SetTabFilter, table.get(), nullptr, Bstr(order).get());
      Variant names;
      Variant values;
      call(&IOrxDbObj::GetFirstTool, table.get(), names.ptr(), values.ptr());
      for (int i = 0; i < 20 && !values.empty(); ++i) {
        call(&IOrxDbObj::GetNextTool, table.get(), values.put());
      }
    }
    LONG number = 0;
    Variant names;
    Variant values;
    Variant fields;
    Properties tool;
    tool.Add("Name", "new");
    call(&IOrxDbObj::GetToolProps, table.get(), LONG{2}, names.ptr(), values.ptr());
    call(&IOrxDbObj::GetPropsTypes, table.get(), names.put(), fields.ptr());
    call(&IOrxDbObj::GetSelectedRecordCount, table.get(), &number);
    call(&IOrxDbObj::AddNewRecord, table.get(), tool.Names(), tool.Values(), &number);
    call(&IOrxDbObj::SetToolProps, table.get(), LONG{1}, tool.Names(), tool.Values());
    call(&IOrxDbObj::DeleteTool, table.get(), LONG{3});
  }
}

}  // namespace
}  // namespace orxdb::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orxdb::test;
  const FuzzHost host(
      Damaged(FuzzHost::SeededImage(), {reinterpret_cast<const char*>(data), size}));
  Use(*host.m_db);
  return 0;
}
