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

TEST_F(BStringTest, KeepsZerosInside) {
  const std::u16string_view text(u"a\0b\0", 4);
  const Bstr string(text);
  EXPECT_EQ(string.view(), text);
  EXPECT_EQ(SysStringLen(string.get()), 4U);
}

TEST_F(BStringTest, NullReadsAsEmptyAndTooLongIsRefused) {
  EXPECT_EQ(SysStringLen(nullptr), 0U);
  EXPECT_EQ(SysStringByteLen(nullptr), 0U);
  EXPECT_TRUE(View(nullptr).empty());
  EXPECT_TRUE(Bytes(nullptr).empty());
  SysFreeString(nullptr);
  EXPECT_EQ(SysAllocString(nullptr), nullptr);
  EXPECT_FALSE(SysReAllocString(nullptr, u"a"));
  EXPECT_FALSE(SysReAllocStringLen(nullptr, u"a", 1));
  // Lengths that the count of bytes cannot tell.
  EXPECT_EQ(SysAllocStringLen(nullptr, 0x80000000U), nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFFU), nullptr);
}

TEST_F(BStringTest, ReallocationReplaces) {
  Bstr string(u"drill");
  BSTR raw = string.detach();
  ASSERT_TRUE(SysReAllocStringLen(&raw, raw + 1, 3));  // from within the old text
  EXPECT_EQ(View(raw), u"ril");
  ASSERT_TRUE(SysReAllocStringLen(&raw, nullptr, 5));  // keeps what fits
  EXPECT_EQ(View(raw).substr(0, 3), u"ril");
  EXPECT_EQ(SysStringLen(raw), 5U);
  ASSERT_TRUE(SysReAllocString(&raw, u"tap"));
  EXPECT_EQ(View(raw), u"tap");
  ASSERT_TRUE(SysReAllocString(&raw, nullptr));
  EXPECT_EQ(raw, nullptr);
}

TEST_F(BStringTest, OwnerMovesAndHandsOver) {
  Bstr first(u"first");
  BSTR const raw = first.get();
  Bstr second(std::move(first));
  EXPECT_EQ(second.get(), raw);
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): moved-from is empty by contract
  second = Bstr::FromBytes("abc");
  EXPECT_EQ(second.bytes(), "abc");
  Bstr& same = second;
  second = std::move(same);
  EXPECT_EQ(second.bytes(), "abc");
  *second.put() = SysAllocString(u"put");
  EXPECT_EQ(second.view(), u"put");
  Bstr third;
  third.attach(second.detach());
  EXPECT_EQ(third.view(), u"put");
  EXPECT_TRUE(Bstr(u""));  // no characters, but a string
  EXPECT_TRUE(Bstr(std::u16string_view()));
}

}  // namespace
}  // namespace orxdb
