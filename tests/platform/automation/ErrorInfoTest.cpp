#include <thread>

#include "platform/automation/Bstr.h"
#include "platform/automation/ComPtr.h"
#include "platform/automation/ErrorInfo.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

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

}  // namespace
}  // namespace orxdb
