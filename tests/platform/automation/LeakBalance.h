// Fixture: no test may leave strings or arrays behind.
#pragma once

#include <gtest/gtest.h>

#include "platform/automation/BString.h"
#include "platform/automation/SafeArrays.h"

class LeakBalance : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(AutomationLiveStrings(), m_strings);
    EXPECT_EQ(AutomationLiveArrays(), m_arrays);
  }

 private:
  LONGLONG m_strings = AutomationLiveStrings();
  LONGLONG m_arrays = AutomationLiveArrays();
};
