#include <limits>
#include <vector>

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

TEST_F(SafeArrayTest, TypesDecideSizeAndFeatures) {
  const struct {
    VARTYPE type;
    USHORT size;
    USHORT features;
  } cases[] = {{VT_UI1, 1, FADF_HAVEVARTYPE},
               {VT_BOOL, 2, FADF_HAVEVARTYPE},
               {VT_R8, 8, FADF_HAVEVARTYPE},
               {VT_DECIMAL, 16, FADF_HAVEVARTYPE},
               {VT_BSTR, 8, FADF_HAVEVARTYPE | FADF_BSTR},
               {VT_VARIANT, 24, FADF_HAVEVARTYPE | FADF_VARIANT},
               {VT_UNKNOWN, 8, FADF_HAVEIID | FADF_UNKNOWN},
               {VT_DISPATCH, 8, FADF_HAVEIID | FADF_DISPATCH}};
  for (const auto& [type, size, features] : cases) {
    const SafeArray array = Create(type, {{2, 5}, {3, -1}});
    EXPECT_EQ(array.get()->rgsabound[0].cElements, 3U) << "the rightmost dimension comes first";
    const SafeArray vector = SafeArray::Vector(type, 4);
    SafeArray copy;
    ASSERT_EQ(SafeArrayCopy(vector.get(), copy.put()), S_OK);
    for (SAFEARRAY* raw : {array.get(), vector.get(), copy.get()}) {
      ASSERT_NE(raw, nullptr);
      VARTYPE found = VT_EMPTY;
      EXPECT_EQ(SafeArrayGetElemsize(raw), size);
      EXPECT_EQ(raw->fFeatures & ~(FADF_CREATEVECTOR | FADF_FIXEDSIZE), features);
      EXPECT_EQ(SafeArrayGetVartype(raw, &found), S_OK);
      EXPECT_EQ(found, type);
    }
  }
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
  EXPECT_FALSE(Create(VT_I4, {{0x10000, 0}, {0x10000, 0}}));
  EXPECT_FALSE(Create(VT_UI1, {{0x10000, 0}, {0x10000, 0}, {0x10000, 0}, {0x10000, 0}}));
  EXPECT_TRUE(Create(VT_UI1, {{2, kMost - 1}}));
  EXPECT_TRUE(Create(VT_I4, {{0x10000, 0}, {0, 0}, {0x10000, 0}}));  // no elements at all
}

TEST_F(SafeArrayTest, LockedArraysStay) {
  SafeArray array = Create(VT_BSTR, {{3, 0}});
  const SAFEARRAYBOUND smaller{1, 0};
  EXPECT_EQ(SafeArrayUnlock(array.get()), E_UNEXPECTED);
  ASSERT_EQ(SafeArrayLock(array.get()), S_OK);
  ASSERT_EQ(SafeArrayLock(array.get()), S_OK);
  for (int locks = 2; locks > 0; --locks) {
    EXPECT_EQ(SafeArrayDestroy(array.get()), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayDestroyData(array.get()), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayDestroyDescriptor(array.get()), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(SafeArrayRedim(array.get(), &smaller), DISP_E_ARRAYISLOCKED);
    SafeArray copy;  // a copy starts unlocked
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
  {
    const SafeArray array = SafeArray::Vector(VT_UNKNOWN, 2);
    ASSERT_EQ(SafeArrayPutElement(array.get(), &index, &object), S_OK);
    ASSERT_EQ(SafeArrayPutElement(array.get(), &index, &object), S_OK);  // replaces
    EXPECT_EQ(object.references(), 2U);
    SafeArray copy;
    ASSERT_EQ(SafeArrayCopy(array.get(), copy.put()), S_OK);
    EXPECT_EQ(object.references(), 3U);
    IUnknown* got = nullptr;
    ASSERT_EQ(SafeArrayGetElement(copy.get(), &index, &got), S_OK);
    EXPECT_EQ(object.references(), 4U);
    got->Release();
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
  EXPECT_EQ(SafeArrayGetUBound(array.get(), 1, &bound), S_OK);
  EXPECT_EQ(bound, -1);
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
