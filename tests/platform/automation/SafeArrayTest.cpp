// Arrays beside the numbers that must be in them, in the order of memory.
#include <deque>
#include <limits>

#include "tests/platform/automation/CountingObject.h"
#include "tests/support/LeakBalance.h"

namespace orxdb::test {
namespace {

using Bounds = std::vector<SAFEARRAYBOUND>;

class SafeArrayTest : public LeakBalance {
 protected:
  SafeArrayTest() {
    for (LONG number = 0; number < 200; ++number) m_objects.emplace_back(number);
  }

  /// A number as an element; variants hold texts.
  Variant Make(VARTYPE type, LONG number) {
    Variant value = Variant::FromI4(number);
    if (type == VT_DISPATCH || type == VT_UNKNOWN)
      return m_objects[static_cast<std::size_t>(number)].Value(type);
    EXPECT_EQ(VariantChangeType(value.ptr(), value.ptr(), 0, type == VT_VARIANT ? VT_BSTR : type),
              S_OK);
    return value;
  }

  /// Reads every element, and just outside, and puts another random number there.
  void Exchange(SAFEARRAY* array, VARTYPE type, const Bounds& bounds, std::vector<LONG>& numbers) {
    const auto place = [type](Variant& value) {
      const bool whole = type == VT_VARIANT || type == VT_DECIMAL;  // both fill a variant
      return whole ? static_cast<void*>(value.ptr()) : &value.ptr()->llVal;
    };
    for (std::size_t position = 0; position < numbers.size(); ++position) {
      std::vector<LONG> indexes;
      std::size_t rest = position;
      for (const auto& [elements, lower] : bounds) {
        indexes.push_back(lower + static_cast<LONG>(rest % elements));
        rest /= elements;
      }
      const auto number = static_cast<LONG>(1 + m_random() % 199);
      Variant old;
      ASSERT_EQ(SafeArrayGetElement(array, indexes.data(), place(old)), S_OK);
      if (type != VT_VARIANT && old.get().byref) old.ptr()->vt = type;
      if (old.type() == VT_UNKNOWN) old.ptr()->vt = VT_DISPATCH;  // it is both
      EXPECT_EQ(VariantChangeType(old.ptr(), old.ptr(), 0, VT_I4), S_OK);
      EXPECT_EQ(old.get().lVal, std::exchange(numbers[position], number)) << type;
      Variant value = Make(type, number);
      const bool isPointer = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN;
      void* const source = isPointer ? value.get().byref : place(value);
      ASSERT_EQ(SafeArrayPutElement(array, indexes.data(), source), S_OK);
      const std::size_t i = m_random() % bounds.size();
      for (const LONG outside : {-1, static_cast<LONG>(bounds[i].cElements)}) {
        indexes[i] = bounds[i].lLbound + outside;
        EXPECT_EQ(SafeArrayPutElement(array, indexes.data(), source), DISP_E_BADINDEX);
      }
    }
  }

  std::mt19937 m_random = Random(8);
  std::deque<CountingObject> m_objects;
};

TEST_F(SafeArrayTest, BehavesLikeItsNumbers) {
  for (const VARTYPE type :
       {VT_UI1, VT_R8, VT_DECIMAL, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_UNKNOWN}) {
    for (Bounds bounds :
         {Bounds{{4, -2}}, {{3, 0}, {2, 7}}, {{2, -5}, {1, 0}, {3, 9}}, {{2, 1}, {0, 3}}}) {
      SafeArray array;
      array.attach(SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data()));
      std::vector<LONG> numbers;
      // The rightmost dimension is the slowest: elements that stay keep their place.
      for (const ULONG elements : {bounds.back().cElements, 5u, 2u}) {
        bounds.back().cElements = elements;
        EXPECT_EQ(SafeArrayRedim(array.get(), &bounds.back()), S_OK);
        LONG first = 0;
        LONG last = 0;
        EXPECT_EQ(SafeArrayGetLBound(array.get(), SafeArrayGetDim(array.get()), &first), S_OK);
        EXPECT_EQ(SafeArrayGetUBound(array.get(), SafeArrayGetDim(array.get()), &last), S_OK);
        EXPECT_EQ(first, bounds.back().lLbound);
        EXPECT_EQ(last, first + static_cast<LONG>(elements) - 1);
        std::size_t count = 1;
        for (const SAFEARRAYBOUND& bound : bounds) count *= bound.cElements;
        numbers.resize(count);
        Exchange(array.get(), type, bounds, numbers);
      }
      // A locked array stays, and its copy is free; each has values of its own.
      EXPECT_EQ(SafeArrayUnlock(array.get()), E_UNEXPECTED);
      for (int i = 0; i < 2; ++i) EXPECT_EQ(SafeArrayLock(array.get()), S_OK);
      EXPECT_EQ(SafeArrayUnlock(array.get()), S_OK);
      for (const auto refused :
           {SafeArrayDestroy, SafeArrayDestroyData, SafeArrayDestroyDescriptor}) {
        EXPECT_EQ(refused(array.get()), DISP_E_ARRAYISLOCKED);
      }
      EXPECT_EQ(SafeArrayRedim(array.get(), bounds.data()), DISP_E_ARRAYISLOCKED);
      SafeArray copy;
      std::vector<LONG> others = numbers;
      const HRESULT asObjects = type == VT_DISPATCH || type == VT_UNKNOWN ? S_OK : E_INVALIDARG;
      for (const GUID& iid : {type == VT_UNKNOWN ? IID_IUnknown : IID_IDispatch, IID_IErrorInfo}) {
        GUID copied{};
        ASSERT_EQ(SafeArrayCopy(array.get(), copy.put()), S_OK);
        EXPECT_EQ(SafeArrayGetIID(copy.get(), &copied), asObjects);
        EXPECT_EQ(copied, asObjects == S_OK ? iid : IID_NULL);
        EXPECT_EQ(SafeArraySetIID(array.get(), IID_IErrorInfo), asObjects);
      }
      VARTYPE stored = VT_EMPTY;
      EXPECT_EQ(SafeArrayGetVartype(copy.get(), &stored), S_OK);
      EXPECT_EQ(stored, type);
      Exchange(copy.get(), type, bounds, others);
      Exchange(array.get(), type, bounds, numbers);
      EXPECT_EQ(SafeArrayCopyData(array.get(), copy.get()), S_OK);
      Exchange(copy.get(), type, bounds, others = numbers);
      EXPECT_EQ(SafeArrayUnlock(array.get()), S_OK);

      const SafeArray vector = SafeArray::Vector(type, 3);
      numbers.assign(3, 0);
      for (int i = 0; i < 2; ++i) Exchange(vector.get(), type, {{3, 0}}, numbers);
      EXPECT_EQ(SafeArrayRedim(vector.get(), bounds.data()), E_INVALIDARG);
      EXPECT_EQ(SafeArrayCopyData(array.get(), vector.get()), E_INVALIDARG);
    }
  }
  for (const CountingObject& object : m_objects) EXPECT_EQ(object.m_references, 1U);
}

TEST_F(SafeArrayTest, ImpossibleArraysAreRefused) {
  for (int type : {0, 1, 15, 24, 36, 72, VT_ARRAY + VT_I4, VT_BYREF + VT_I4}) {
    EXPECT_EQ(SafeArrayCreateVector(static_cast<VARTYPE>(type), 0, 1), nullptr) << type;
  }
  EXPECT_EQ(SafeArrayCreateVector(VT_VARIANT, 0, 0x40000000), nullptr);
  constexpr LONG kLeast = std::numeric_limits<LONG>::min();
  const SAFEARRAYBOUND many{0x10000, 0};
  // The last index above LONG, below it; too many elements, too many dimensions; no elements.
  for (const Bounds& bounds : {Bounds{},
                               {{0x80000000U, 1}},
                               {{0, kLeast}},
                               {many, many},
                               {many, many, many, many},
                               Bounds(0x10000),
                               {many, {0, 0}, many}}) {
    SafeArray array;
    array.attach(SafeArrayCreate(VT_UI1, static_cast<UINT>(bounds.size()), bounds.data()));
    EXPECT_EQ(static_cast<bool>(array), bounds.size() == 3);
  }
}

}  // namespace
}  // namespace orxdb::test
