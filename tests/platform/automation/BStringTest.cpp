// Random operations on a string beside the bytes that must be in it.
#include <cstring>

#include "platform/automation/Bstr.h"
#include "platform/automation/VariantOperators.h"
#include "tests/support/LeakBalance.h"

namespace orxdb::test {
namespace {

using BStringTest = LeakBalance;

std::string AsBytes(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), 2 * text.size()};
}

TEST_F(BStringTest, BehavesLikeItsBytes) {
  std::mt19937 random = Random(5);
  const auto below = [&](std::size_t limit) { return static_cast<UINT>(random() % limit); };
  BSTR string = nullptr;
  std::string expected;
  for (int step = 0; step < 5000 && !HasFailure(); ++step) {
    const UINT length = below(below(9) ? 12 : 70000);
    std::u16string other(length, u'x');
    if (length) other[below(length)] = static_cast<OLECHAR>(below(3));
    const std::string bytes = AsBytes(other).substr(0, length);
    const UINT start = below(SysStringLen(string) + 1);
    std::size_t size = 0;
    switch (const UINT operation = below(6)) {
      case 0:
        SysFreeString(std::exchange(string, SysAllocStringByteLen(bytes.data(), length)));
        expected = bytes;
        break;
      case 1:
        EXPECT_TRUE(SysReAllocString(&string, other.c_str()));
        expected = AsBytes(other.c_str());
        break;
      case 2:
        EXPECT_TRUE(SysReAllocStringLen(&string, other.c_str(), length));
        expected = AsBytes(other);
        break;
      case 3: {
        expected = std::string(Bytes(string)) + bytes;
        BSTR both = nullptr;
        EXPECT_EQ(VarBstrCat(string, Bstr::FromBytes(bytes).get(), &both), S_OK);
        SysFreeString(std::exchange(string, both));
        break;
      }
      default:  // a part of its own, which ends where the old string ends
        expected = AsBytes(View(string).substr(operation == 4 ? 0 : start, length));
        EXPECT_TRUE(SysReAllocStringLen(
            &string, operation == 4 || !string ? nullptr : string + start, length));
        size = std::size_t{2} * length;
    }
    size = std::max(size, expected.size());
    ASSERT_NE(string, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(string) % alignof(void*), 0U);
    EXPECT_EQ(reinterpret_cast<const ULONG*>(string)[-1], size);
    EXPECT_EQ(SysStringLen(string), size / 2);
    EXPECT_EQ(Bytes(string).substr(0, expected.size()), expected);
    EXPECT_EQ(string[(size + 1) / 2], 0) << "for readers of characters, also behind an odd byte";
    std::memset(reinterpret_cast<char*>(string) + expected.size(), 'n', size - expected.size());
  }
  SysFreeString(string);
}

TEST_F(BStringTest, NullReadsAsEmptyAndTooLongIsRefused) {
  EXPECT_EQ(SysStringByteLen(nullptr), 0U);
  EXPECT_TRUE(Bstr(u"")) << "no characters, but a string";
  // Lengths that the count of bytes cannot tell, and what would reach 4 GB with it.
  for (const UINT length : {0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(SysAllocStringLen(nullptr, length), nullptr);
  }
  EXPECT_EQ(SysAllocStringByteLen(nullptr, 0xFFFFFFFFU), nullptr);
}

}  // namespace
}  // namespace orxdb::test
