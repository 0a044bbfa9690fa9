#include <cstdint>
#include <string>

#include "platform/automation/BString.h"
#include "platform/automation/Bstr.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

class BStringTest : public LeakBalance {};

TEST_F(BStringTest, CountStandsBeforeAlignedTerminatedText) {
  for (UINT length : {0U, 1U, 2U, 3U, 7U, 8U, 255U, 256U, 65537U}) {
    const std::string bytes(length, 'x');
    BSTR string = SysAllocStringByteLen(bytes.data(), length);
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(string) % alignof(void*), 0U);
    EXPECT_EQ(reinterpret_cast<const ULONG*>(string)[-1], length);
    EXPECT_EQ(SysStringByteLen(string), length);
    EXPECT_EQ(SysStringLen(string), length / 2);
    EXPECT_EQ(Bytes(string), bytes);
    // A reader of whole characters finds the zero also behind an odd byte.
    EXPECT_EQ(string[(length + 1) / 2], 0);
    SysFreeString(string);
  }
}

TEST_F(BStringTest, NullReadsAsEmptyAndTooLongIsRefused) {
  EXPECT_EQ(SysStringLen(nullptr), 0U);
  EXPECT_TRUE(View(nullptr).empty());
  EXPECT_TRUE(Bstr(u"")) << "no characters, but a string";
  // Lengths that the count of bytes cannot tell.
  EXPECT_EQ(SysAllocStringLen(nullptr, 0x80000000U), nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFFU), nullptr);
}

}  // namespace
}  // namespace orxdb
