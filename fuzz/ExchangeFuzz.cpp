// The reader of exchange files. An input is a file; what it brings is exported and read again.
#include "fuzz/FuzzHost.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orxdb;
  test::FuzzHost host;
  const auto file = host.m_folder / "tools.txt";
  const Bstr path = WidenToBstr(file.string());
  std::ofstream(file, std::ios::binary) << std::string(data, data + size);
  EXPECT_EQ(host.m_db->ImportToolRecordsFromFile(path.get(), 0), S_OK);
  EXPECT_EQ(host.m_db->SetTabFilter(Bstr(u"TAP").get(), nullptr, Bstr(u"ID").get()), S_OK);
  EXPECT_EQ(host.m_db->ExportToolRecordsToFile(Bstr(u"TAP").get(), path.get(), 0), S_OK);
  const std::string exported = test::Contents(file);
  EXPECT_EQ(host.m_db->ImportToolRecordsFromFile(path.get(), 0), S_OK);
  EXPECT_EQ(exported.substr(0, 23), "ORX_tool_table_version=");
  EXPECT_EQ(test::QueryRows(host.m_file, "PRAGMA integrity_check"), "ok");
  return 0;
}
