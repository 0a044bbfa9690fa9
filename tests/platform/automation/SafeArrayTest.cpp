#include <limits>
#include <vector>

#include "platform/automation/SafeArray.h"
#include "platform/automation/Variant.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

constexpr LONG kLeast = std::numeric_limits<LONG>::min();
constexpr LONG kMost = std::numeric_limits<LONG>::max();

class SafeArrayTest : public LeakBalance {};

SafeArray Create(VARTYPE type, const std::vector<SAFEARRAYBOUND>& bounds) {
  SafeArray array;
  array.attach(SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data()));
  return array;
}

TEST_F(SafeArrayTest, ImpossibleArraysAreRefused) {
  const SAFEARRAYBOUND one{1, 0};
  for (int type : {0, 1, 15, 24, 36, 72, VT_ARRAY + VT_I4, VT_BYREF + VT_I4}) {
    EXPECT_EQ(SafeArrayCreate(static_cast<VARTYPE>(type), 1, &one), nullptr) << type;
    EXPECT_EQ(SafeArrayCreateVector(static_cast<VARTYPE>(type), 0, 1), nullptr) << type;
  }
  EXPECT_EQ(SafeArrayCreate(VT_I4, 0, &one), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_I4, 0x10000, &one), nullptr);
  EXPECT_EQ(SafeArrayCreate(VT_I4, 1, nullptr), nullptr);
  EXPECT_EQ(SafeArrayCreateVector(VT_VARIANT, 0, 0x40000000), nullptr);
  EXPECT_EQ(SafeArrayCreateVector(VT_UI1, 1, 0x80000000U), nullptr);  // last index above LONG
  EXPECT_EQ(SafeArrayCreateVector(VT_UI1, kLeast, 0), nullptr);       // last index below LONG
  const SAFEARRAYBOUND many{0x10000, 0};
  EXPECT_FALSE(Create(VT_I4, {many, many}));
  EXPECT_FALSE(Create(VT_UI1, {many, many, many, many}));
  EXPECT_TRUE(Create(VT_I4, {many, {0, 0}, many}));  // no elements at all
  EXPECT_TRUE(Create(VT_UI1, {{2, kMost - 1}}));
}

TEST_F(SafeArrayTest, LockedArraysStay) {
  SafeArray array = Create(VT_BSTR, {{3, 0}});
  const SAFEARRAYBOUND smaller{1, 0};
  EXPECT_EQ(SafeArrayUnlock(array.get()), E_UNEXPECTED);
  ASSERT_EQ(SafeArrayLock(array.get()), S_OK);
  ASSERT_EQ(SafeArrayLock(array.get()), S_OK);
  for (int locks = 2; locks > 0; --locks) {
    for (const auto refused :
         {SafeArrayDestroy, SafeArrayDestroyData, SafeArrayDestroyDescriptor}) {
      EXPECT_EQ(refused(array.get()), DISP_E_ARRAYISLOCKED);
    }
    EXPECT_EQ(SafeArrayRedim(array.get(), &smaller), DISP_E_ARRAYISLOCKED);
    SafeArray copy;  // starts unlocked
    ASSERT_EQ(SafeArrayCopy(array.get(), copy.put()), S_OK);
    EXPECT_EQ(copy.get()->cLocks, 0U);
    EXPECT_EQ(SafeArrayUnlock(array.get()), S_OK);
  }
  EXPECT_EQ(SafeArrayRedim(array.get(), &smaller), S_OK);
  for (int i = 0; i < 0xFFFF; ++i) ASSERT_EQ(SafeArrayLock(array.get()), S_OK);
  EXPECT_EQ(SafeArrayLock(array.get()), E_UNEXPECTED);
  for (int i = 0; i < 0xFFFF; ++i) ASSERT_EQ(SafeArrayUnlock(array.get()), S_OK);
}

}  // namespace
}  // namespace orxdb
