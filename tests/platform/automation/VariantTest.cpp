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
  {
    const Variant text = Variant::FromText(u"tap");
    const Variant textCopy = text.Copy();
    EXPECT_NE(textCopy.get().bstrVal, text.get().bstrVal);
    EXPECT_EQ(View(textCopy.get().bstrVal), u"tap");
    const Variant objectCopy = Variant::CopyOf(holder);
    EXPECT_EQ(object.references(), 2U);
  }
  EXPECT_EQ(object.references(), 1U);
}

TEST_F(VariantTest, ImpossibleTypesAreRefused) {
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
}

TEST_F(VariantTest, CopyIndFollowsReferences) {
  LONG number = 42;
  VARIANT toNumber = Reference(VT_I4, &number);
  VARIANT toVariant = Reference(VT_VARIANT, &toNumber);
  Variant array = TextArray();
  SAFEARRAY* place = array.get().parray;
  DECIMAL decimal{};
  decimal.Lo64 = 42;
  for (const VARIANT& source : {toNumber, toVariant, array.get(), Reference(kTextArray, &place),
                                Reference(VT_DECIMAL, &decimal)}) {
    Variant copy;
    ASSERT_EQ(VariantCopyInd(copy.ptr(), &source), S_OK);
    const VARTYPE referred = static_cast<VARTYPE>(source.vt & ~VT_BYREF);
    EXPECT_EQ(copy.type(), referred == VT_VARIANT ? VT_I4 : referred);
    if (copy.type() == kTextArray) {
      EXPECT_NE(copy.get().parray, place);
      EXPECT_EQ(View(ArrayAccess<BSTR>(copy.get().parray)[1]), u"reamer");
    } else {
      EXPECT_EQ(copy.type() == VT_I4 ? copy.get().ulVal : copy.get().decVal.Lo64, 42U);
    }
    if (!(source.vt & VT_BYREF)) continue;
    VARIANT reference = source;
    EXPECT_EQ(VariantClear(&reference), S_OK);  // what is referred to stays
    EXPECT_EQ(reference.vt, VT_EMPTY);
  }

  // A target that owns what the source refers to gets the value, not the freed memory.
  Variant self = Variant::FromText(u"self");
  const VARIANT toSelf = Reference(VT_VARIANT, self.ptr());
  ASSERT_EQ(VariantCopyInd(self.ptr(), &toSelf), S_OK);
  EXPECT_EQ(View(self.get().bstrVal), u"self");

  const VARIANT twice = Reference(VT_VARIANT, &toVariant);
  EXPECT_EQ(VariantCopyInd(self.ptr(), &twice), E_INVALIDARG);
  const VARIANT nowhere = Reference(VT_I4, nullptr);
  EXPECT_EQ(VariantCopyInd(self.ptr(), &nowhere), E_INVALIDARG);
  EXPECT_EQ(VariantChangeType(self.ptr(), &nowhere, 0, VT_I2), E_INVALIDARG);
}

}  // namespace
}  // namespace orxdb
