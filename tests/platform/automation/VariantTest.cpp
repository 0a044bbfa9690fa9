#include <vector>

#include "platform/automation/Variant.h"
#include "tests/platform/automation/CountingObject.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

constexpr VARTYPE kTextArray = VT_ARRAY | VT_BSTR;

class VariantTest : public LeakBalance {};

VARIANT Reference(VARTYPE type, void* place) {
  VARIANT value{};
  value.vt = static_cast<VARTYPE>(VT_BYREF | type);
  value.byref = place;
  return value;
}

Variant TextArray() {
  SafeArray array = SafeArray::Vector(VT_BSTR, 2);
  ArrayAccess<BSTR>(array.get())[1] = Bstr(u"reamer").detach();
  return Variant::FromArray(VT_BSTR, std::move(array));
}

TEST_F(VariantTest, CopiesOwnTheirStringsArraysAndReferences) {
  CountingObject object;
  VARIANT holder{};
  holder.vt = VT_UNKNOWN;
  holder.punkVal = &object;
  const Variant text = Variant::FromText(u"tap");
  const Variant array = TextArray();
  {
    const Variant textCopy = text.Copy();
    EXPECT_NE(textCopy.get().bstrVal, text.get().bstrVal);
    EXPECT_EQ(View(textCopy.get().bstrVal), u"tap");

    const Variant arrayCopy = array.Copy();
    EXPECT_EQ(arrayCopy.type(), kTextArray);
    const ArrayAccess<BSTR> copied(arrayCopy.get().parray);
    const ArrayAccess<BSTR> original(array.get().parray);
    ASSERT_EQ(copied.size(), 2U);
    EXPECT_EQ(copied[0], nullptr);
    EXPECT_EQ(View(copied[1]), u"reamer");
    EXPECT_NE(copied[1], original[1]);

    const Variant objectCopy = Variant::CopyOf(holder);
    EXPECT_EQ(object.references(), 2U);
  }
  EXPECT_EQ(object.references(), 1U);
}

TEST_F(VariantTest, ClearLeavesByReferenceDataAlone) {
  Bstr text(u"kept");
  BSTR place = text.get();
  VARIANT reference = Reference(VT_BSTR, &place);
  EXPECT_EQ(VariantClear(&reference), S_OK);
  EXPECT_EQ(reference.vt, VT_EMPTY);
  EXPECT_EQ(text.view(), u"kept");
}

TEST_F(VariantTest, LockedArrayIsNeitherClearedNorReplaced) {
  Variant value = TextArray();
  {
    const ArrayAccess<BSTR> lock(value.get().parray);
    EXPECT_EQ(VariantClear(value.ptr()), DISP_E_ARRAYISLOCKED);
    const Variant other = Variant::FromText(u"other");
    EXPECT_EQ(VariantCopy(value.ptr(), &other.get()), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(VariantChangeType(value.ptr(), &other.get(), 0, VT_BSTR), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(value.type(), kTextArray);
    EXPECT_EQ(View(lock[1]), u"reamer");
  }
  EXPECT_EQ(VariantClear(value.ptr()), S_OK);
}

TEST_F(VariantTest, ImpossibleTypesAndNullsAreRefused) {
  Variant target = Variant::FromText(u"kept");
  for (int type : {VT_VARIANT + 0, 15, 24, 36, 72, 0x0FFF, 0x1003, 0x8003, VT_ARRAY + VT_EMPTY,
                   VT_BYREF + VT_NULL, VT_ARRAY + VT_VECTOR + VT_I4}) {
    VARIANT bad{};
    bad.vt = static_cast<VARTYPE>(type);
    EXPECT_EQ(VariantClear(&bad), DISP_E_BADVARTYPE) << type;
    EXPECT_EQ(VariantCopy(target.ptr(), &bad), DISP_E_BADVARTYPE) << type;
    EXPECT_EQ(VariantCopyInd(target.ptr(), &bad), DISP_E_BADVARTYPE) << type;
    EXPECT_EQ(VariantChangeType(target.ptr(), &bad, 0, VT_I4), DISP_E_BADVARTYPE) << type;
    EXPECT_EQ(VariantChangeType(target.ptr(), target.ptr(), 0, bad.vt), DISP_E_BADVARTYPE) << type;
  }
  EXPECT_EQ(View(target.get().bstrVal), u"kept");
  EXPECT_EQ(VariantClear(nullptr), E_INVALIDARG);
  EXPECT_EQ(VariantCopy(nullptr, target.ptr()), E_INVALIDARG);
  EXPECT_EQ(VariantCopyInd(target.ptr(), nullptr), E_INVALIDARG);
  EXPECT_EQ(VariantChangeType(target.ptr(), nullptr, 0, VT_I4), E_INVALIDARG);
  VariantInit(nullptr);
}

TEST_F(VariantTest, CopyIndFollowsReferences) {
  LONG number = 42;
  Variant copy;
  VARIANT toNumber = Reference(VT_I4, &number);
  ASSERT_EQ(VariantCopyInd(copy.ptr(), &toNumber), S_OK);
  EXPECT_EQ(copy.type(), VT_I4);
  EXPECT_EQ(copy.get().lVal, 42);

  VARIANT toVariant = Reference(VT_VARIANT, &toNumber);
  ASSERT_EQ(VariantCopyInd(copy.put(), &toVariant), S_OK);
  EXPECT_EQ(copy.get().lVal, 42);

  Variant array = TextArray();
  SAFEARRAY* place = array.get().parray;
  const VARIANT toArray = Reference(kTextArray, &place);
  ASSERT_EQ(VariantCopyInd(copy.put(), &toArray), S_OK);
  EXPECT_EQ(copy.type(), kTextArray);
  EXPECT_NE(copy.get().parray, place);

  DECIMAL decimal{};
  decimal.Lo64 = 7;
  const VARIANT toDecimal = Reference(VT_DECIMAL, &decimal);
  ASSERT_EQ(VariantCopyInd(copy.put(), &toDecimal), S_OK);
  EXPECT_EQ(copy.type(), VT_DECIMAL);
  EXPECT_EQ(copy.get().decVal.Lo64, 7U);

  // A target that owns what the source refers to gets the value, not the freed memory.
  Variant self = Variant::FromText(u"self");
  const VARIANT toSelf = Reference(VT_VARIANT, self.ptr());
  ASSERT_EQ(VariantCopyInd(self.ptr(), &toSelf), S_OK);
  EXPECT_EQ(View(self.get().bstrVal), u"self");

  VARIANT twice = Reference(VT_VARIANT, &toVariant);
  EXPECT_EQ(VariantCopyInd(copy.ptr(), &twice), E_INVALIDARG);
  const VARIANT nowhere = Reference(VT_I4, nullptr);
  EXPECT_EQ(VariantCopyInd(copy.ptr(), &nowhere), E_INVALIDARG);
  EXPECT_EQ(VariantChangeType(copy.ptr(), &nowhere, 0, VT_I2), E_INVALIDARG);
}

TEST_F(VariantTest, OwnerTakesAndHandsOver) {
  Variant first = Variant::FromText(u"text");
  Variant second = std::move(first);
  EXPECT_TRUE(first.empty());  // NOLINT(bugprone-use-after-move): moved-from is empty by contract
  VARIANT raw = second.detach();
  EXPECT_TRUE(second.empty());
  Variant third = Variant::FromText(u"old");
  third.attach(raw);
  EXPECT_EQ(raw.vt, VT_EMPTY);
  EXPECT_EQ(View(third.get().bstrVal), u"text");
  Variant& same = third;
  third = std::move(same);
  EXPECT_EQ(View(third.get().bstrVal), u"text");
  EXPECT_EQ(third.put()->vt, VT_EMPTY);
  EXPECT_TRUE(Variant::Null().isNull());
  EXPECT_EQ(Variant::FromBool(true).get().boolVal, VARIANT_TRUE);
  EXPECT_EQ(Variant::FromBstr(Bstr()).type(), VT_BSTR);
}

}  // namespace
}  // namespace orxdb
