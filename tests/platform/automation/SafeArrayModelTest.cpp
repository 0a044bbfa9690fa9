// Random operations on arrays beside the numbers that must be in them, in the order of memory.
#include <random>
#include <utility>
#include <vector>

#include "platform/automation/Variant.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

struct Elements {
  VARTYPE type;
  UINT size;
  int features;
};

class SafeArrayModel {
 public:
  SafeArrayModel(std::mt19937& random, const Elements& elements)
      : m_random(random), m_elements(elements), m_bounds(static_cast<std::size_t>(Pick(1, 4))) {
    for (SAFEARRAYBOUND& bound : m_bounds) bound = RandomBound();
    const auto dimensions = static_cast<UINT>(m_bounds.size());
    m_now.isVector = dimensions == 1 && Pick(0, 1) == 0;
    m_now.array.attach(
        m_now.isVector
            ? SafeArrayCreateVector(m_elements.type, m_bounds[0].lLbound, m_bounds[0].cElements)
            : SafeArrayCreate(m_elements.type, dimensions, m_bounds.data()));
    CheckShape();
  }

  void Step() {
    const int operation = Pick(0, 9);
    operation == 0 ? Redim() : operation == 1 ? Copy() : Touch();
  }

 private:
  struct State {
    SafeArray array;
    std::vector<LONG> numbers;
    bool isVector = false;
  };

  int Pick(int least, int most) { return std::uniform_int_distribution(least, most)(m_random); }
  SAFEARRAYBOUND RandomBound() {
    return {static_cast<ULONG>(Pick(0, 9) == 0 ? 0 : Pick(1, 4)), Pick(-5, 5)};
  }

  void CheckShape() {
    SAFEARRAY* const array = m_now.array.get();
    ASSERT_NE(array, nullptr);
    VARTYPE type = VT_EMPTY;
    EXPECT_EQ(SafeArrayGetVartype(array, &type), S_OK);
    EXPECT_EQ(type, m_elements.type);
    EXPECT_EQ(SafeArrayGetElemsize(array), m_elements.size);
    EXPECT_EQ(array->fFeatures & ~(FADF_CREATEVECTOR | FADF_FIXEDSIZE), m_elements.features);
    ASSERT_EQ(SafeArrayGetDim(array), m_bounds.size());
    EXPECT_EQ(array->rgsabound[0].cElements, m_bounds.back().cElements);
    std::size_t count = 1;
    for (UINT i = 0; i < m_bounds.size(); ++i) {
      const auto& [elements, lower] = m_bounds[i];
      LONG least = 0;
      LONG most = 0;
      EXPECT_EQ(SafeArrayGetLBound(array, i + 1, &least), S_OK);
      EXPECT_EQ(SafeArrayGetUBound(array, i + 1, &most), S_OK);
      EXPECT_EQ(least, lower);
      EXPECT_EQ(most - least + 1, static_cast<LONG>(elements));
      count *= elements;
    }
    m_now.numbers.resize(count);
  }

  /// Reads an element at or just outside the bounds and puts another; the variants hold texts.
  void Touch() {
    std::vector<LONG> indexes;
    ULONG position = 0;
    ULONG stride = 1;
    bool inside = true;
    for (const auto& [elements, lower] : m_bounds) {
      const int offset = Pick(0, 3) == 0 ? Pick(-1, static_cast<int>(elements)) : 0;
      indexes.push_back(lower + offset);
      inside = inside && offset >= 0 && static_cast<ULONG>(offset) < elements;
      position += static_cast<ULONG>(offset) * stride;
      stride *= elements;
    }
    SAFEARRAY* const array = m_now.array.get();
    const HRESULT status = inside ? S_OK : DISP_E_BADINDEX;
    const VARTYPE type = m_elements.type;
    const bool whole = type == VT_VARIANT || type == VT_DECIMAL;  // both fill a variant
    Variant old;
    void* place = whole ? static_cast<void*>(old.ptr()) : &old.ptr()->llVal;
    ASSERT_EQ(SafeArrayGetElement(array, indexes.data(), place), status);
    const LONG number = Pick(1, 255);
    Variant value = Variant::FromI4(number);
    ASSERT_EQ(VariantChangeType(value.ptr(), value.ptr(), 0, type == VT_VARIANT ? VT_BSTR : type),
              S_OK);
    const void* source = whole ? static_cast<const void*>(value.ptr()) : &value.get().llVal;
    if (type == VT_BSTR) source = value.get().bstrVal;
    ASSERT_EQ(SafeArrayPutElement(array, indexes.data(), source), status);
    if (!inside) return;
    if (type != VT_VARIANT) old.ptr()->vt = type;
    if (type == VT_BSTR && !old.get().bstrVal) old = Variant();
    EXPECT_EQ(VariantChangeType(old.ptr(), old.ptr(), 0, VT_I4), S_OK);
    EXPECT_EQ(old.get().lVal, std::exchange(m_now.numbers[position], number));
    EXPECT_EQ(SafeArrayPtrOfIndex(array, indexes.data(), &place), S_OK);
    EXPECT_EQ(place, static_cast<char*>(array->pvData) + std::size_t{position} * m_elements.size);
  }

  /// The rightmost dimension is the slowest: elements that stay keep their place. Vectors stay.
  void Redim() {
    const SAFEARRAYBOUND bound = RandomBound();
    ASSERT_EQ(SafeArrayRedim(m_now.array.get(), &bound), m_now.isVector ? E_INVALIDARG : S_OK);
    if (!m_now.isVector) m_bounds.back() = bound;
    CheckShape();
  }

  /// Goes on with either; what is put into the copy must not show in the original.
  void Copy() {
    State copy{{}, m_now.numbers, false};
    ASSERT_EQ(SafeArrayCopy(m_now.array.get(), copy.array.put()), S_OK);
    std::swap(copy, m_now);
    CheckShape();
    for (int i = 0; i < 5; ++i) Touch();
    if (Pick(0, 1) == 0) std::swap(copy, m_now);
  }

  std::mt19937& m_random;
  const Elements& m_elements;
  std::vector<SAFEARRAYBOUND> m_bounds;
  State m_now;
};

class SafeArrayModelTest : public LeakBalance {};

TEST_F(SafeArrayModelTest, BehavesLikeItsNumbers) {
  constexpr int kTyped = FADF_HAVEVARTYPE;
  const Elements types[] = {{VT_UI1, 1, kTyped},
                            {VT_I2, 2, kTyped},
                            {VT_R8, 8, kTyped},
                            {VT_DECIMAL, 16, kTyped},
                            {VT_BSTR, 8, kTyped | FADF_BSTR},
                            {VT_VARIANT, 24, kTyped | FADF_VARIANT}};
  std::mt19937 random(8);
  for (int round = 0; round < 360 && !HasFailure(); ++round) {
    SafeArrayModel model(random, types[round % 6]);
    for (int step = 0; step < 60; ++step) model.Step();
  }
}

}  // namespace
}  // namespace orxdb
