#include <thread>

#include "platform/automation/Bstr.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/ErrorInfo.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

constexpr GUID kInterface = {0x12345678, 1, 2, {1, 2, 3, 4, 5, 6, 7, 8}};

class ErrorInfoTest : public LeakBalance {
 protected:
  static void Report(std::u16string description) {
    ComPtr<ICreateErrorInfo> created;
    ASSERT_EQ(CreateErrorInfo(created.put()), S_OK);
    ASSERT_EQ(created->SetDescription(description.data()), S_OK);
    ASSERT_EQ(SetErrorInfo(0, created.QueryInterface<IErrorInfo>().get()), S_OK);
  }

  /// The description of this thread's report, taken away; "none" without one.
  static std::u16string Take() {
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK) return u"none";
    Bstr text;
    EXPECT_EQ(info->GetDescription(text.put()), S_OK);
    return std::u16string(text.view());
  }
};

TEST_F(ErrorInfoTest, GettingTransfersTheNewestOfTheThread) {
  Report(u"first");
  Report(u"main");  // takes the place of the first
  std::thread([] {
    EXPECT_EQ(Take(), u"none");
    Report(u"worker");
    EXPECT_EQ(Take(), u"worker");
    Report(u"left behind");  // goes with the thread
  }).join();
  EXPECT_EQ(Take(), u"main");
  EXPECT_EQ(Take(), u"none");
  Report(u"dropped");
  EXPECT_EQ(SetErrorInfo(0, nullptr), S_OK);
  EXPECT_EQ(Take(), u"none");
}

TEST_F(ErrorInfoTest, CarriesAllOfTheReport) {
  ComPtr<ICreateErrorInfo> created;
  ASSERT_EQ(CreateErrorInfo(created.put()), S_OK);
  const ComPtr<IErrorInfo> info = created.QueryInterface<IErrorInfo>();
  ASSERT_TRUE(info);
  // One object has one identity, whichever interface is asked.
  EXPECT_EQ(created.QueryInterface<IUnknown>().get(), info.QueryInterface<IUnknown>().get());

  OLECHAR source[] = u"ORXDB";
  OLECHAR help[] = u"help.txt";
  EXPECT_EQ(created->SetGUID(kInterface), S_OK);
  EXPECT_EQ(created->SetSource(source), S_OK);
  EXPECT_EQ(created->SetHelpFile(help), S_OK);
  EXPECT_EQ(created->SetHelpContext(17), S_OK);
  source[0] = u'?';  // the report has its own copy

  GUID guid{};
  DWORD context = 0;
  Bstr text[3];
  EXPECT_EQ(info->GetGUID(&guid), S_OK);
  EXPECT_EQ(info->GetSource(text[0].put()), S_OK);
  EXPECT_EQ(info->GetHelpFile(text[1].put()), S_OK);
  EXPECT_EQ(info->GetDescription(text[2].put()), S_OK);
  EXPECT_EQ(info->GetHelpContext(&context), S_OK);
  EXPECT_EQ(guid, kInterface);
  EXPECT_EQ(text[0].view(), u"ORXDB");
  EXPECT_EQ(text[1].view(), u"help.txt");
  EXPECT_FALSE(text[2]) << "never set";
  EXPECT_EQ(context, 17U);
}

}  // namespace
}  // namespace orxdb
