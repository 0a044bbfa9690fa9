#include <limits>
#include <utility>
#include <vector>

#include "platform/automation/ComPtr.h"
#include "platform/automation/SafeArray.h"
#include "platform/automation/Variant.h"
#include "tests/platform/automation/CountingObject.h"
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

TEST_F(SafeArrayTest, ElementsCountReferences) {
  CountingObject object;
  const LONG index = 1;
  for (const auto& [type, feature] :
       {std::pair(VT_UNKNOWN, FADF_UNKNOWN), std::pair(VT_DISPATCH, FADF_DISPATCH)}) {
    const SafeArray array = SafeArray::Vector(type, 2);
    for (int puts = 0; puts < 2; ++puts) {  // the second replaces
      ASSERT_EQ(SafeArrayPutElement(array.get(), &index, &object), S_OK);
      EXPECT_EQ(object.references(), 2U);
    }
    SafeArray copy;
    ASSERT_EQ(SafeArrayCopy(array.get(), copy.put()), S_OK);
    EXPECT_EQ(copy.get()->fFeatures, FADF_HAVEIID | feature);
    VARTYPE found = VT_EMPTY;
    EXPECT_EQ(SafeArrayGetVartype(copy.get(), &found), S_OK);
    EXPECT_EQ(found, type);
    EXPECT_EQ(object.references(), 3U);
    ComPtr<IDispatch> got;
    ASSERT_EQ(SafeArrayGetElement(copy.get(), &index, got.putVoid()), S_OK);
    EXPECT_EQ(object.references(), 4U);
  }
  EXPECT_EQ(object.references(), 1U);
}

TEST_F(SafeArrayTest, DescriptorsAreFilledByHand) {
  SAFEARRAY* array = nullptr;
  ASSERT_EQ(SafeArrayAllocDescriptorEx(VT_BSTR, 2, &array), S_OK);
  array->rgsabound[0] = {2, 0};
  (&array->rgsabound[0])[1] = {2, 0};
  ASSERT_EQ(SafeArrayAllocData(array), S_OK);
  EXPECT_EQ(SafeArrayAllocData(array), E_INVALIDARG);  // there already
  const LONG indexes[] = {1, 1};
  const Bstr text(u"text");
  ASSERT_EQ(SafeArrayDestroyData(array), S_OK);
  EXPECT_EQ(SafeArrayPutElement(array, indexes, text.get()), E_UNEXPECTED);
  ASSERT_EQ(SafeArrayAllocData(array), S_OK);
  ASSERT_EQ(SafeArrayPutElement(array, indexes, text.get()), S_OK);
  EXPECT_EQ(SafeArrayDestroy(array), S_OK);

  // Memory that is not the runtime's is emptied, never freed.
  BSTR place[1] = {Bstr(u"static").detach()};
  SAFEARRAY onStack{1, FADF_AUTO | FADF_BSTR, sizeof(BSTR), 0, place, {{1, 0}}};
  EXPECT_EQ(SafeArrayRedim(&onStack, &onStack.rgsabound[0]), E_INVALIDARG);
  SafeArray copy;
  ASSERT_EQ(SafeArrayCopy(&onStack, copy.put()), S_OK);
  EXPECT_EQ(View(ArrayAccess<BSTR>(copy.get())[0]), u"static");
  EXPECT_EQ(SafeArrayDestroy(&onStack), S_OK);
  EXPECT_EQ(place[0], nullptr);
}

TEST_F(SafeArrayTest, WrongDimensionsAndElementsGiveStatuses) {
  const SafeArray array = SafeArray::Vector(VT_I4, 0);
  LONG bound = 0;
  EXPECT_EQ(SafeArrayGetLBound(array.get(), 0, &bound), DISP_E_BADINDEX);
  EXPECT_EQ(SafeArrayGetUBound(array.get(), 2, &bound), DISP_E_BADINDEX);
  EXPECT_TRUE(ArrayAccess<LONG>(array.get()));
  EXPECT_FALSE(ArrayAccess<double>(array.get()));  // elements of another size
  EXPECT_FALSE(ArrayAccess<LONG>(nullptr));
  EXPECT_EQ(array.get()->cLocks, 0U);
  SAFEARRAY* untyped = nullptr;
  VARTYPE type = VT_EMPTY;
  ASSERT_EQ(SafeArrayAllocDescriptor(1, &untyped), S_OK);
  EXPECT_EQ(SafeArrayGetVartype(untyped, &type), E_INVALIDARG);
  EXPECT_EQ(SafeArrayDestroyDescriptor(untyped), S_OK);
}

}  // namespace
}  // namespace orxdb
