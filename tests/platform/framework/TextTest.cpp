#include <gtest/gtest.h>
#include <random>

#include "platform/automation/BString.h"
#include "platform/framework/Text.h"

namespace orxdb {
namespace {

struct Pair {
  std::string narrow;
  std::u16string wide;
};

std::string Utf8(const char8_t* text) {
  return reinterpret_cast<const char*>(text);
}

/// Pieces whose narrow form is complete, so that any row of them is again a pair. The compiler's
/// own encodings are the reference.
const std::vector<Pair>& Pieces() {
  static const std::vector<Pair> pieces = {
      {"a", u"a"},
      {std::string(1, '\0'), std::u16string(1, u'\0')},
      {"twelve bytes", u"twelve bytes"},
      {"\x7F", u"\x7F"},
      {Utf8(u8"\u0080"), u"\u0080"},
      {Utf8(u8"Ø"), u"Ø"},
      {Utf8(u8"\u07FF\u0800"), u"\u07FF\u0800"},
      {Utf8(u8"刀具"), u"刀具"},
      {Utf8(u8"\uD7FF\uE000\uFFFF"), u"\uD7FF\uE000\uFFFF"},
      {Utf8(u8"\U00010000🔩\U0010FFFF"), u"\U00010000🔩\U0010FFFF"}};
  return pieces;
}

TEST(Text, WidensAndNarrowsValidText) {
  std::mt19937 random(1);
  for (int round = 0; round < 300; ++round) {
    Pair text;
    for (auto count = random() % 12; count > 0; --count) {
      const Pair& piece = Pieces()[random() % Pieces().size()];
      text.narrow += piece.narrow;
      text.wide += piece.wide;
    }
    EXPECT_EQ(Widen(text.narrow), text.wide);
    EXPECT_EQ(Narrow(text.wide), text.narrow);
    EXPECT_EQ(WidenedLength(text.narrow), text.wide.size());
    const Bstr counted = WidenToBstr(text.narrow);
    EXPECT_EQ(counted.view(), text.wide);
    EXPECT_EQ(NarrowBstr(counted.get()), text.narrow);
  }
}

TEST(Text, KeepsBytesThatAreNotUtf8) {
  const std::vector<Pair> cases = {
      {"\x80", u"\xDC80"},
      {"caf\xE9!", u"caf\xDCE9!"},                        // one-byte code page
      {"\xC0\xAF", u"\xDCC0\xDCAF"},                      // overlong
      {"\xE0\x9F\xBF", u"\xDCE0\xDC9F\xDCBF"},            // overlong
      {"\xED\xA0\x80", u"\xDCED\xDCA0\xDC80"},            // a surrogate
      {"\xF0\x8F\xBF\xBF", u"\xDCF0\xDC8F\xDCBF\xDCBF"},  // overlong
      {"\xF4\x90\x80\x80", u"\xDCF4\xDC90\xDC80\xDC80"},  // beyond the last character
      {"\xF5\xFF\xFE", u"\xDCF5\xDCFF\xDCFE"},            // never in UTF-8
      {"12345678\xE5\x88", u"12345678\xDCE5\xDC88"},      // cut short
      {"\xE5\x88\xE5\x88\x80", u"\xDCE5\xDC88\x5200"}};   // cut, then whole
  for (const Pair& text : cases) {
    EXPECT_EQ(Widen(text.narrow), text.wide);
    EXPECT_EQ(Narrow(text.wide), text.narrow);
  }
  EXPECT_EQ(Narrow(u"x\xDBFFy\xDD00"), "x\xED\xAF\xBFy\xED\xB4\x80") << "halves stay apart";
  // Bytes drawn from the interesting borders form cut, overlong and valid sequences alike.
  const std::string bytes = "a\x80\x8F\x90\x9F\xA0\xBF\xC0\xC2\xE0\xED\xEF\xF0\xF4\xF5\xFF";
  std::mt19937 random(2);
  for (int round = 0; round < 20000; ++round) {
    std::string narrow;
    for (auto count = random() % 14; count > 0; --count) {
      narrow += bytes[random() % bytes.size()];
    }
    const std::u16string wide = Widen(narrow);
    EXPECT_EQ(Narrow(wide), narrow);
    EXPECT_EQ(WidenedLength(narrow), wide.size());
  }
}

TEST(Text, WidenTextFillsBuffer) {
  const struct {
    const char* narrow;
    int length;
    std::u16string expected;
  } cases[] = {{"ORX", 8, u"ORX"}, {"ORX", 4, u"ORX"}, {"ORX", 3, u""}, {"", 1, u""},
               {nullptr, 8, u""},  {"🔩", 3, u"🔩"},     {"🔩", 2, u""}};
  for (const auto& test : cases) {
    OLECHAR buffer[9] = u"########";
    EXPECT_EQ(WidenText(buffer, test.narrow, test.length), buffer);
    EXPECT_EQ(std::u16string(buffer), test.expected) << test.length;
    EXPECT_EQ(buffer[test.expected.size() + 1], u'#') << "wrote behind the zero";
  }
  OLECHAR untouched = u'#';
  WidenText(&untouched, "x", 0);
  EXPECT_EQ(untouched, u'#');
  EXPECT_EQ(WidenText(nullptr, "x", 5), nullptr);
}

}  // namespace
}  // namespace orxdb
