// A host that adds, changes and deletes end mills until it is killed, or for a time. It writes a
// line before each operation, "add K", "set ID K" or "delete ID", and one after it, "done ID".
// Every tool holds its K in three properties that are written together. Without a time it goes on
// with the tools that killed hosts left; with one it shares the table and keeps to its own.
//
//   edit_loop LIBRARY DATABASE FIRST_K [SECONDS]
#include <chrono>
#include <cstdio>
#include <random>
#include <vector>

#include "interface/ToolHost.h"
#include "platform/framework/Text.h"

namespace {

using namespace orxdb;

struct Arrays {
  Variant names;
  Variant values;
};

Arrays ToolOf(int k) {
  SafeArray names = SafeArray::Vector(VT_BSTR, 3);
  SafeArray values = SafeArray::Vector(VT_VARIANT, 3);
  const auto put = [&](ULONG i, std::u16string_view name, Variant value) {
    ArrayAccess<BSTR>(names.get())[i] = Bstr(name).detach();
    ArrayAccess<VARIANT>(values.get())[i] = value.detach();
  };
  put(0, u"Name", Variant::FromBstr(WidenToBstr("T" + std::to_string(k))));
  put(1, u"Diameter", Variant::FromR8(k));
  put(2, u"Comment", Variant::FromBstr(WidenToBstr(std::to_string(k))));
  return {Variant::FromArray(VT_BSTR, std::move(names)),
          Variant::FromArray(VT_VARIANT, std::move(values))};
}

}  // namespace

int main(int count, char** arguments) {
  using Clock = std::chrono::steady_clock;
  const bool shares = count > 4;
  const auto end = shares ? Clock::now() + std::chrono::seconds(std::stoi(arguments[4]))
                          : Clock::time_point::max();
  ComPtr<IClassFactory> factory;
  ComPtr<IOrxDbObj> db;
  if (FAILED(CoGetClassObjectFromFile(arguments[1], CLSID_OrxDbObj, IClassFactory::iid,
                                      factory.putVoid())) ||
      FAILED(factory->CreateInstance(nullptr, IOrxDbObj::iid, db.putVoid()))) {
    return 1;
  }
  db->SetMdbFile(WidenToBstr(arguments[2]).get());
  const Bstr table(u"FLAT_END_MILL");
  db->SetTabFilter(table.get(), Bstr(u"Name LIKE 'T#*'").get(), nullptr);
  std::vector<LONG> ids;
  for (const Tool& tool : ToolRange(*db, table.view())) {
    if (!shares) ids.push_back(tool.find(u"ID")->lVal);
  }

  std::setvbuf(stdout, nullptr, _IOLBF, 1 << 12);
  int k = std::stoi(arguments[3]);
  for (std::mt19937 random(static_cast<unsigned>(k)); Clock::now() < end; ++k) {
    const unsigned choice = random() % 4;
    const std::size_t which = ids.empty() ? 0 : random() % ids.size();
    auto [names, values] = ToolOf(k);
    LONG id = 0;
    if (choice < 2 || ids.empty()) {
      std::printf("add %d\n", k);
      if (FAILED(db->AddNewRecord(table.get(), names.ptr(), values.ptr(), &id))) return 2;
      ids.push_back(id);
    } else if (id = ids[which]; choice == 2) {
      std::printf("set %d %d\n", id, k);
      if (FAILED(db->SetToolProps(table.get(), id, names.ptr(), values.ptr()))) return 3;
    } else {
      std::printf("delete %d\n", id);
      db->DeleteTool(table.get(), id);
      ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(which));
    }
    std::printf("done %d\n", id);
  }
}
