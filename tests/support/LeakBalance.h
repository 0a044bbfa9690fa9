// What tests of values share.
#pragma once

#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

#include "platform/automation/BString.h"
#include "platform/automation/SafeArrays.h"

namespace orxdb::test {

/// A variant that refers to a place of that type.
inline VARIANT Reference(VARTYPE type, const void* place) {
  VARIANT reference{};
  reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
  reference.byref = const_cast<void*>(place);
  return reference;
}

}  // namespace orxdb::test

/// No test may leave strings or arrays behind.
class LeakBalance : public testing::Test {
 protected:
  /// Numbers that repeat from run to run, unless ORXDB_MODEL_SEED says others.
  static std::mt19937 Random(unsigned seed) {
    const char* const chosen = std::getenv("ORXDB_MODEL_SEED");
    return std::mt19937(chosen ? static_cast<unsigned>(std::strtoul(chosen, nullptr, 10)) : seed);
  }

  void SetUp() override {
    m_strings = AutomationLiveStrings();
    m_arrays = AutomationLiveArrays();
  }
  void TearDown() override {
    EXPECT_EQ(AutomationLiveStrings(), m_strings);
    EXPECT_EQ(AutomationLiveArrays(), m_arrays);
  }

 private:
  LONGLONG m_strings = 0;
  LONGLONG m_arrays = 0;
};
