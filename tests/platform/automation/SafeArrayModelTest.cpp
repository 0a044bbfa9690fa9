// Random operations on arrays beside a map from indexes to texts that behaves as they must.
#include <map>
#include <random>
#include <string>
#include <vector>

#include "platform/automation/Variant.h"
#include "tests/platform/automation/LeakBalance.h"

namespace orxdb {
namespace {

using Indexes = std::vector<LONG>;

class SafeArrayModel {
 public:
  SafeArrayModel(std::mt19937& random, VARTYPE type) : m_random(random), m_type(type) {
    m_bounds.resize(Pick(1, 4));
    for (SAFEARRAYBOUND& bound : m_bounds) bound = RandomBound();
    m_array.attach(SafeArrayCreate(type, static_cast<UINT>(m_bounds.size()), m_bounds.data()));
  }

  void Step() {
    const int operation = Pick(0, 9);
    if (operation == 0) return Redim();
    if (operation == 1) return Copy();
    return operation < 5 ? Get() : Put();
  }

  /// Every element and every bound, through the element calls.
  void CheckAll() {
    ASSERT_EQ(SafeArrayGetDim(m_array.get()), m_bounds.size());
    std::size_t count = 1;
    for (UINT i = 0; i < m_bounds.size(); ++i) {
      LONG least = 0;
      LONG most = 0;
      ASSERT_EQ(SafeArrayGetLBound(m_array.get(), i + 1, &least), S_OK);
      ASSERT_EQ(SafeArrayGetUBound(m_array.get(), i + 1, &most), S_OK);
      EXPECT_EQ(least, m_bounds[i].lLbound);
      EXPECT_EQ(most - least + 1, static_cast<LONG>(m_bounds[i].cElements));
      count *= m_bounds[i].cElements;
    }
    for (std::size_t position = 0; position < count; ++position) {
      Indexes indexes;
      std::size_t rest = position;
      for (const SAFEARRAYBOUND& bound : m_bounds) {
        indexes.push_back(bound.lLbound + static_cast<LONG>(rest % bound.cElements));
        rest /= bound.cElements;
      }
      ASSERT_EQ(Read(m_array.get(), indexes), Expected(indexes));
      void* place = nullptr;
      ASSERT_EQ(SafeArrayPtrOfIndex(m_array.get(), indexes.data(), &place), S_OK);
      EXPECT_EQ(place, static_cast<char*>(m_array.get()->pvData) +
                           position * SafeArrayGetElemsize(m_array.get()));
    }
  }

 private:
  int Pick(int least, int most) { return std::uniform_int_distribution(least, most)(m_random); }
  SAFEARRAYBOUND RandomBound() {
    return {static_cast<ULONG>(Pick(0, 9) == 0 ? 0 : Pick(1, 4)), Pick(-5, 5)};
  }
  /// Indexes at and just outside the bounds.
  Indexes RandomIndexes() {
    Indexes indexes;
    for (const SAFEARRAYBOUND& bound : m_bounds) {
      indexes.push_back(bound.lLbound + Pick(-1, static_cast<int>(bound.cElements)));
      if (Pick(0, 3) != 0) indexes.back() = bound.lLbound;
    }
    return indexes;
  }
  bool IsInside(const Indexes& indexes) const {
    for (std::size_t i = 0; i < indexes.size(); ++i) {
      const LONG offset = indexes[i] - m_bounds[i].lLbound;
      if (offset < 0 || offset >= static_cast<LONG>(m_bounds[i].cElements)) return false;
    }
    return true;
  }
  std::u16string Expected(const Indexes& indexes) const {
    const auto found = m_texts.find(indexes);
    return found == m_texts.end() ? u"" : found->second;
  }

  /// An element as text; "!" when the index is refused.
  std::u16string Read(SAFEARRAY* array, const Indexes& indexes) {
    Variant value;
    void* place = m_type == VT_VARIANT ? static_cast<void*>(value.ptr()) : &value.ptr()->llVal;
    const HRESULT status = SafeArrayGetElement(array, indexes.data(), place);
    if (FAILED(status)) {
      EXPECT_EQ(status, DISP_E_BADINDEX);
      return u"!";
    }
    if (m_type != VT_VARIANT) value.ptr()->vt = m_type;
    if (value.empty() || (m_type == VT_I4 && value.get().lVal == 0)) return u"";
    EXPECT_EQ(VariantChangeType(value.ptr(), value.ptr(), 0, VT_BSTR), S_OK);
    return std::u16string(View(value.get().bstrVal));
  }

  void Put() {
    const Indexes indexes = RandomIndexes();
    const LONG number = Pick(1, 1000);
    const std::string digits = std::to_string(number);
    const std::u16string text(digits.begin(), digits.end());
    const Variant variant = Variant::FromText(text);
    const void* value = m_type == VT_VARIANT ? static_cast<const void*>(&variant.get())
                        : m_type == VT_BSTR  ? variant.get().bstrVal
                                             : static_cast<const void*>(&number);
    const bool inside = IsInside(indexes);
    EXPECT_EQ(SafeArrayPutElement(m_array.get(), indexes.data(), value),
              inside ? S_OK : DISP_E_BADINDEX);
    if (inside) m_texts[indexes] = text;
  }

  void Get() {
    const Indexes indexes = RandomIndexes();
    EXPECT_EQ(Read(m_array.get(), indexes), IsInside(indexes) ? Expected(indexes) : u"!");
  }

  /// Elements of the rightmost dimension keep their distance from its lower bound.
  void Redim() {
    const SAFEARRAYBOUND old = m_bounds.back();
    m_bounds.back() = RandomBound();
    ASSERT_EQ(SafeArrayRedim(m_array.get(), &m_bounds.back()), S_OK);
    std::map<Indexes, std::u16string> kept;
    for (const auto& [from, text] : m_texts) {
      Indexes indexes = from;
      indexes.back() += m_bounds.back().lLbound - old.lLbound;
      if (IsInside(indexes)) kept.emplace(indexes, text);
    }
    m_texts = std::move(kept);
  }

  /// Goes on with a copy; what is put there must not show in the original.
  void Copy() {
    SafeArray copy;
    ASSERT_EQ(SafeArrayCopy(m_array.get(), copy.put()), S_OK);
    const auto before = m_texts;
    std::swap(copy, m_array);
    for (int i = 0; i < 5; ++i) Put();
    for (const auto& [indexes, text] : before) EXPECT_EQ(Read(copy.get(), indexes), text);
  }

  std::mt19937& m_random;
  VARTYPE m_type;
  std::vector<SAFEARRAYBOUND> m_bounds;
  SafeArray m_array;
  std::map<Indexes, std::u16string> m_texts;
};

class SafeArrayModelTest : public LeakBalance, public testing::WithParamInterface<int> {};

TEST_P(SafeArrayModelTest, BehavesLikeAMap) {
  std::mt19937 random(static_cast<unsigned>(GetParam()));
  for (int round = 0; round < 60 && !HasFailure(); ++round) {
    SafeArrayModel model(random, static_cast<VARTYPE>(GetParam()));
    for (int step = 0; step < 60; ++step) model.Step();
    model.CheckAll();
  }
}

INSTANTIATE_TEST_SUITE_P(Types, SafeArrayModelTest, testing::Values(VT_I4, VT_BSTR, VT_VARIANT));

}  // namespace
}  // namespace orxdb
