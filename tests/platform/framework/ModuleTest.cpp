#include <gtest/gtest.h>
#include <thread>

#include "platform/framework/Exception.h"
#include "platform/framework/Library.h"
#include "platform/framework/MessageBox.h"
#include "platform/framework/ModuleState.h"
#include "platform/framework/Resources.h"

namespace orxdb {
namespace {

constexpr StringResource kEnglishTexts[] = {{101, "Yes"}, {102, "No"}, {102, "never seen"}};
constexpr ResourceTable kEnglish = {kEnglishTexts, std::size(kEnglishTexts)};
constexpr StringResource kGermanTexts[] = {{101, "Ja"}};
constexpr ResourceTable kGerman = {kGermanTexts, std::size(kGermanTexts)};

struct Talkative : CException {
  explicit Talkative(std::string text) : m_text(std::move(text)) {}
  std::string Message() const override { return m_text; }
  std::string m_text;
};

TEST(Exception, MessageIsCutToTheBuffer) {
  for (const unsigned length : {256U, 10U, 9U, 1U}) {
    std::string buffer(300, '#');
    EXPECT_TRUE(Talkative("disk full").GetErrorMessage(buffer.data(), length));
    EXPECT_EQ(std::string(buffer.c_str()), std::string("disk full").substr(0, length - 1));
    EXPECT_EQ(buffer[length], '#') << "wrote behind the buffer";
  }
  EXPECT_FALSE(Talkative("x").GetErrorMessage(nullptr, 256));
}

TEST(Library, LoadsFindsAndShares) {
  std::string path = FRAMEWORK_TEST_PLUGIN;
  std::replace(path.begin(), path.end(), '/', '\\');
  Library first = Library::Load(path);
  ASSERT_TRUE(first) << first.Message();
  EXPECT_EQ(first.Message(), "");
  EXPECT_EQ(first.FindSymbol("NoSuchFunction"), nullptr);

  Library library = std::move(first);
  auto* throwing = library.Find<void()>("ThrowOutOfMemory");
  ASSERT_NE(throwing, nullptr);
  try {
    throwing();
    FAIL() << "nothing thrown";
  } catch (const CException& e) {
    EXPECT_NE(dynamic_cast<const CMemoryException*>(&e), nullptr);
    EXPECT_FALSE(e.Message().empty());
  }

  CModuleState state;
  const ModuleStateSwitch active(state);
  auto* seen = library.Find<const void*()>("ActiveStateSeenByPlugin");
  ASSERT_NE(seen, nullptr);
  EXPECT_EQ(seen(), &state) << "program and library have one active state";
}

TEST(ModuleState, SwitchesNestAndEndOnEveryWayOut) {
  CModuleState& process = ActiveModuleState();
  CModuleState outer(&kEnglish, "Outer");
  CModuleState inner;
  {
    const ModuleStateSwitch toOuter(outer);
    try {
      const ModuleStateSwitch toInner(inner);
      const ResourceHandleSwitch german(&kGerman);
      EXPECT_EQ(&ActiveModuleState(), &inner);
      EXPECT_EQ(inner.CurrentResource(), &kGerman);
      throw CException();
    } catch (const CException&) {
      EXPECT_EQ(&ActiveModuleState(), &outer);
      EXPECT_EQ(inner.CurrentResource(), nullptr);
    }
    EXPECT_EQ(ActiveModuleState().Title(), "Outer");
    std::thread([&] { EXPECT_EQ(&ActiveModuleState(), &process); }).join();
  }
  EXPECT_EQ(&ActiveModuleState(), &process);
  EXPECT_EQ(process.CurrentResource(), nullptr);
}

TEST(MessageBox, HandlerReplacesTheLineOnStandardError) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(ShowMessageBox("Two\nlines", "Title", MB_ICONSTOP), IDOK);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Title: Two lines\n");

  std::string shown;
  EXPECT_FALSE(InstallMessageBoxHandler(
      [&](const std::string& text, const std::string& caption, unsigned style) {
        shown = caption + "/" + text + "/" + std::to_string(style);
        return 7;
      }));
  testing::internal::CaptureStderr();
  EXPECT_EQ(ShowMessageBox("Text", "Title", MB_ICONSTOP), 7);
  EXPECT_EQ(shown, "Title/Text/16");
  EXPECT_TRUE(InstallMessageBoxHandler({}));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace orxdb
