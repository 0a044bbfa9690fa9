// Damaged database files. An input is a list of damages of the seeded file: three bytes for a
// place and one to write there, or, where the place's highest bit is set, to cut the file off.
#include "fuzz/FuzzHost.h"

namespace orxdb::test {
namespace {

std::string Damaged(std::string image, const std::uint8_t* damage, std::size_t size) {
  for (; size >= 4; damage += 4, size -= 4) {
    const auto place =
        static_cast<std::size_t>((damage[0] & 0x7F) << 16 | damage[1] << 8 | damage[2]);
    if (place >= image.size()) continue;
    image[place] = static_cast<char>(damage[3]);
    if (damage[0] & 0x80) image.resize(place);
  }
  return image;
}

}  // namespace
}  // namespace orxdb::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orxdb::test;
  FuzzHost host(Damaged(FuzzHost::SeededImage(), data, size));
  // Answers of a damaged file may be anything that is an answer, or what a method lets through.
  const auto call = [&](auto method, auto... arguments) {
    try {
      host.Gives(method, arguments...);
    } catch (const std::exception&) {
    }
  };
  Properties tool;
  VARIANT* const names = tool.Add("Name", "new").Names();
  VARIANT* const values = tool.Values();
  call(&Db::GetToolTypes);
  for (const std::string table : {"TAP", "MILL", "EMPTY"}) {
    for (const std::string order : {"", "Diameter, Name DESC"}) {
      call(&Db::SetTabFilter, table, nullptr, order);
      call(&Db::GetFirstTool, table);
      for (int i = 0; i < 20; ++i) call(&Db::GetNextTool, table);
    }
    call(&Db::GetToolProps, table, 2);
    call(&Db::GetPropsTypes, table);
    call(&Db::GetSelectedRecordCount, table);
    call(&Db::AddNewRecord, table, names, values);
    call(&Db::SetToolProps, table, 1, names, values);
    call(&Db::DeleteTool, table, 3);
  }
  return 0;
}
