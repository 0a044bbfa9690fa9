// Files of every format as drafts.
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "host/library/HostError.h"
#include "host/transfer/Readers.h"
#include "tests/support/TemporaryFolder.h"

namespace orxdb::test {
namespace {

using namespace std::string_literals;

/// A draft as "line 2 TAP mm: Name=a|Diameter~", with "~" for no value, or "line 2! problem".
std::string Shown(const ToolDraft& draft) {
  std::string text = draft.place;
  if (!draft.problem.empty()) return text + "! " + draft.problem;
  for (const std::string& part : {draft.table, draft.unit}) text += part.empty() ? "" : ' ' + part;
  std::string separator = ": ";
  for (const DraftValue& value : draft.values) {
    text += separator + value.name + (value.absent ? "~" : "=" + value.text);
    separator = "|";
  }
  return text;
}

/// Every draft and, behind "#", every remark on a line; of what cannot be read, why.
std::string Drafts(const std::filesystem::path& source, const ReadOptions& options = {}) {
  std::string text;
  try {
    const auto reader = OpenDrafts(source.string(), options);
    while (const auto draft = reader->Next()) {
      text += Shown(*draft) + '\n';
      EXPECT_FALSE(draft->source.empty());
      EXPECT_TRUE(reader->Done() >= 0 && reader->Done() <= 1) << reader->Done();
    }
    EXPECT_EQ(reader->Done(), 1);
    EXPECT_FALSE(reader->Next());
    for (const std::string& remark : reader->Remarks()) text += "# " + remark + '\n';
  } catch (const HostError& error) {
    text += "! "s + error.what() + '\n';
  }
  return text;
}

class ReadersTest : public testing::Test {
 protected:
  std::filesystem::path Write(std::string_view name, std::string_view bytes) const {
    std::filesystem::path file = m_folder / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
  }

  struct Case {
    const char* name;
    std::string bytes;
    const char* expected;
    ReadOptions options = {};
  };
  /// The folder of the test reads as ".".
  void Check(const std::vector<Case>& cases) const {
    for (const auto& [name, bytes, expected, options] : cases) {
      EXPECT_EQ(WithoutFolder(Drafts(Write(name, bytes), options)), expected) << name << bytes;
    }
  }
  std::string WithoutFolder(std::string text) const {
    const std::string folder = (m_folder / "").string();
    for (std::size_t at; (at = text.find(folder)) != text.npos;) text.erase(at, folder.size());
    return text;
  }

  const TemporaryFolder m_folder;
};

/// Text as UTF-16 with a byte-order mark.
std::string Utf16(std::u16string_view text, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : u"\uFEFF" + std::u16string(text)) {
    const char parts[] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    bytes += {parts[bigEndian ? 1 : 0], parts[bigEndian ? 0 : 1]};
  }
  return bytes;
}

TEST_F(ReadersTest, Encodings) {
  const ReadOptions utf16{.encoding = Encoding::Utf16};
  const ReadOptions utf8{.encoding = Encoding::Utf8};
  const ReadOptions windows{.encoding = Encoding::Windows1252};
  Check({
      {"a.csv", "Ø,é\n5,刀😀\n", "line 2: Ø=5|é=刀😀\n"},
      {"a.csv", "\xEF\xBB\xBFØ,b\n5,6\n", "line 2: Ø=5|b=6\n"},
      {"a.csv", Utf16(u"Ø,é\r\n5,刀😀", false), "line 2: Ø=5|é=刀😀\n"},
      {"a.csv", Utf16(u"Ø,é\r\n5,刀😀", true), "line 2: Ø=5|é=刀😀\n"},
      {"a.csv", Utf16(u"a,b\n5,", false).append("\x00\xD8\x41", 3),
       "line 2: a=5|b=\uFFFD\n# 1 characters of a.csv are no UTF-16 and lost (U+FFFD).\n"},
      {"a.csv", Utf16(u"a,b\n5,6", false).substr(2), "line 2: a=5|b=6\n", utf16},
      {"a.csv",
       "\xD8,Stra\xDF"
       "e\n\x80,\x95\n",
       "line 2: Ø=€|Straße=•\n# a.csv is no UTF-8: it is read as Windows-1252.\n"},
      {"a.csv", "\xD8,b\n1,2\n", "line 2: Ø=1|b=2\n", windows},
      {"a.csv", "Ø\xE4,é\n5,刀\n",
       "line 2: Øä=5|é=刀\n# 1 bytes of a.csv are no UTF-8 and read as Windows-1252.\n"},
      {"a.csv", "\xD8,b\n1,2\xC3",
       "line 2: Ø=1|b=2Ã\n# 2 bytes of a.csv are no UTF-8 and read as Windows-1252.\n", utf8},
  });
  // What decides stands at the end of a large file; the quarter at its beginning would be UTF-8.
  const std::string large = Drafts(
      Write("a.csv", "a,b\n\xD8\xBC,1\n" + std::string(100000, '\n') + "\xE4,\xF6\n\xFC,2\n"));
  EXPECT_TRUE(large.starts_with("line 2: a=Ø¼|b=1\nline 100003: a=ä|b=ö\n")) << large;
  // Characters that lie across the blocks.
  for (const std::size_t before : {65530U, 65531U, 65532U, 65533U}) {
    const std::string name = std::string(before, 'x') + "😀ä";
    EXPECT_EQ(Drafts(Write("a.csv", "a\n" + name)), "line 2: a=" + name + '\n');
    const std::u16string wide = u"a\n" + std::u16string(before / 2, 'x') + u"😀ä";
    EXPECT_EQ(Drafts(Write("a.csv", Utf16(wide, false))),
              "line 2: a=" + std::string(before / 2, 'x') + "😀ä\n");
  }
}

TEST_F(ReadersTest, SeparatedText) {
  const ReadOptions inches{.unit = "in"};
  const ReadOptions tsv{.format = ToolFormat::Tsv};
  Check({
      {"a.csv", "Name,D\r\nM6,5.50\r\n", "line 2: Name=M6|D=5.50\n"},
      {"a.csv", "Name;D, mm\nM6;5\n", "line 2: Name=M6|D, mm=5\n"},
      {"a.txt", "Name\tD\rM6\t5\rM8\t6", "line 2 in: Name=M6|D=5\nline 3 in: Name=M8|D=6\n",
       inches},
      {"a.csv", "sep=;\nName,x;D\na,b;1\n", "line 3: Name,x=a,b|D=1\n"},
      {"a.csv", "Name\n1/4\" mill\n\n x \n", "line 2: Name=1/4\" mill\nline 4: Name= x \n"},
      {"a.csv", "A,B\na;b\tc,\"\"\n,\n\"\",\n", "line 2: A=a;b\tc|B=\nline 4: A=|B~\n"},
      {"a.csv", "A,B\n\"say \"\"hi\"\"\",\"1,2\r\n3\n\"\nb,c",
       "line 2: A=say \"hi\"|B=1,2\r\n3\n\nline 5: A=b|B=c\n"},
      {"a.csv", "A,,\n1,2,\n3,,,,\n",
       "line 2: A=1|Column 2=2|Column 3~\n"
       "line 3: A=3|Column 2~|Column 3~\n"},
      {"a.csv", "A,B\n1\n1,2,3\n4,5\n",
       "line 2! It has 1 fields, but there are 2 columns.\n"
       "line 3! It has 3 fields, but there are 2 columns.\n"
       "line 4: A=4|B=5\n"},
      {"a.csv", "A,B\n\"1,2\n3,4\n\"5\",6\n\"7\n8,9\n",
       "line 2! Text stands behind the closing quote of a field.\nline 3: A=3|B=4\n"
       "line 4: A=5|B=6\nline 5! A quote that begins a field is not closed.\nline 6: A=8|B=9\n"},
      {"a.csv", "A,B\n\"1\"x,2\n3,4\n",
       "line 2! Text stands behind the closing quote of a field.\n"
       "line 3: A=3|B=4\n"},
      {"a.csv", "\"A,B\n1,2\n",
       "! a.csv has no usable column names: A quote that begins a field is not closed.\n"},
      // A line that is read again stands for itself: else time would grow with the square.
      {"a.csv", "A\n\"1\n\"2\n3\"\n",
       "line 2! Text stands behind the closing quote of a field.\n"
       "line 3! A quote that begins a field is not closed.\nline 4: A=3\"\n"},
      {"a.csv", "", "! a.csv has no line of column names.\n"},
      {"a.csv", "\n\r\n", "! a.csv has no line of column names.\n"},
      {"a.csv", "A,B\n", ""},
      {"a.csv", "A;B\nx\t1;2\n", "line 2! It has 2 fields, but there are 1 columns.\n", tsv},
  });
  const std::string longest(1 << 20, 'x');
  Check({{"a.csv", "A\n" + longest + "x\n1\n", "line 2! It is longer than 1 MiB.\nline 3: A=1\n"},
         {"a.csv", "A\n\"" + longest + "\n2\"\n1\n",
          "line 2! It is longer than 1 MiB.\nline 3: A=2\"\nline 4: A=1\n"}});
}

TEST_F(ReadersTest, DecimalCommas) {
  const std::string said =
      "# a.csv writes decimals with a comma: they are read with a full stop.\n";
  const auto check = [&](const std::string& values, const std::string& expected) {
    EXPECT_EQ(WithoutFolder(Drafts(Write("a.csv", "A;B\n" + values))), expected) << values;
  };
  check("6,50;,5\nx,5;-1,25\n", "line 2: A=6.50|B=.5\nline 3: A=x,5|B=-1.25\n" + said);
  check("6,5;1,500\n", "line 2: A=6.5|B=1.500\n" + said);
  check("0,500;6\n", "line 2: A=0.500|B=6\n" + said);
  check("6,5;1.5\n", "line 2: A=6,5|B=1.5\n");
  check("1,500;123,456\n", "line 2: A=1,500|B=123,456\n");
  check("1234,567;2\n", "line 2: A=1234.567|B=2\n" + said);
  check("6,5;1,250,5\n", "line 2: A=6.5|B=1,250,5\n" + said);
  std::string many;
  for (int i = 0; i < 1000; ++i) many += "0,5;1\n";
  const std::string text = Drafts(Write("a.csv", "A;B\n" + many + "0,7;1.5\n0,8;2\n"));
  EXPECT_NE(text.find("line 1002! B: '1.5' has a full stop, but the file writes decimals with a "
                      "comma.\nline 1003: A=0.8|B=2\n"),
            text.npos);
}

TEST_F(ReadersTest, Json) {
  const ReadOptions lines{.format = ToolFormat::Jsonl};
  Check({
      {"a",
       "[\n  {\"A\": \"x\\n\\u00d8\", \"B\": 1.50, \"C\": null, \"D\": true, \"E\": \"\"},\n"
       "  {\"A\": 1e3, \"B\": -0.10000000000000000000001, \"C\": 99999999999999999999}\n]\n",
       "record 1: A=x\nØ|B=1.50|C~|D=true|E=\n"
       "record 2: A=1e3|B=-0.10000000000000000000001|C=99999999999999999999\n"},
      {"a", "{\n\"A\": 1}", "record 1: A=1\n"},
      {"a.json", "[]", ""},
      {"a.json", "", ""},
      {"a.json", "[{\"A\":1},{}][{\"A\":\"]},{\\\"\"}]",
       "record 1: A=1\nrecord 2\nrecord 3: A=]},{\"\n"},
      {"a", "[{\"A\":[1]},{\"A\":{}},7,{\"A\":{\"B\":{\"C\":2}}},{\"A\":2}]",
       "record 1! A is a list or an object, not a value.\n"
       "record 2! A is a list or an object, not a value.\n"
       "record 3! It is no object.\n"
       "record 4! A is a list or an object, not a value.\nrecord 5: A=2\n"},
      {"a", "{\"A\":1}\n\n{\"A\":\n{\"A\":3}\r\n[1]\n",
       "line 1: A=1\n"
       "line 3! It is no JSON: unexpected end of input; expected '[', '{', or a literal.\n"
       "line 4: A=3\nline 5! It is no object.\n"},
      {"a", "{\"A\":1} x",
       "line 1! It is no JSON: invalid literal; last read: '1} x'; expected end of input.\n",
       lines},
  });
  const std::string cut = Drafts(Write("a.json", "[{\"A\":1},{\"A\":2,"));
  EXPECT_TRUE(cut.starts_with("record 1: A=1\nrecord 2! It is no JSON: ")) << cut;
  EXPECT_EQ(Drafts(Write("a.json", "[{\"A\":1}, ")),
            "record 1: A=1\nline 1! The text ends before its list.\n");
  const std::string deep = Drafts(Write("a.json", "[{\"A\":" + std::string(200000, '[')));
  EXPECT_TRUE(deep.starts_with("record 1! Its values are nested too deeply.")) << deep;
  EXPECT_EQ(Drafts(Write("a.json", "[{\"A\":\"" + std::string(1 << 20, 'x') + "\"},{\"A\":2}]")),
            "record 1! It is longer than 1 MiB.\nrecord 2: A=2\n");
}

TEST_F(ReadersTest, LinuxCnc) {
  const ReadOptions inches{.unit = "in"};
  Check({
      {"a",
       "; shop\nT1 P2 Z+0.511 D0.125 ;1/8 end mill\n\nt20 p20 d6 z-1 x2 q9;\nT3 P3;;Spot drill\n",
       "line 2 FLAT_END_MILL in: Tool number=1|Pocket=2|Length offset=+0.511|Diameter=0.125|"
       "Name=1/8 end mill\n"
       "line 4 in: Tool number=20|Pocket=20|Diameter=6|Length offset=-1|X offset=2|Orientation=9\n"
       "line 5 SPOT_DRILL in: Tool number=3|Pocket=3|Name=;Spot drill\n",
       inches},
      {"a", ";Metric table (mm)\nT1 P1 D6\n", "line 2 mm: Tool number=1|Pocket=1|Diameter=6\n",
       inches},
      {"a", ";Lengths in mm\n;inches, not mm\nT1 P1\n", "line 3 mm: Tool number=1|Pocket=1\n"},
      {"a", "T1 P1\nT2 P2 K5\nT3 P3 D\nT4 P4 D1 D2\nT5 P5",
       "line 1: Tool number=1|Pocket=1\nline 2! 'K5' is no word of a tool table.\n"
       "line 3! 'D' is no word of a tool table.\nline 4! It has two words 'D'.\n"
       "line 5: Tool number=5|Pocket=5\n"},
      {"a", "POC FMS  LEN   DIAM COMMENT\n 1  10  2.5  0.25 drill, 1/4 in\n2 11\n3 12 1 2\n\n",
       "line 2 TWIST_DRILL: Pocket=1|Tool number=10|Length offset=2.5|Diameter=0.25|"
       "Name=drill, 1/4 in\nline 3! It has no Length offset.\n"
       "line 4: Pocket=3|Tool number=12|Length offset=1|Diameter=2\n"},
      {"a.tbl", "", ""},
  });
}

TEST_F(ReadersTest, KindsInComments) {
  for (const auto& [comment, table] : {
           std::pair{"3/8 Ball Nose End Mill", "BALL_END_MILL"},
           {"BALLNOSE 6mm", "BALL_END_MILL"},
           {"1/2 bull-nose endmill r.06", "BULL_NOSE_END_MILL"},
           {"#7 tap drill", "TWIST_DRILL"},
           {"tap 1/4-20", "TAP"},
           {"tapered thing", ""},
           {"drill and tap", ""},
           {"Gewindebohrer M6", "TAP"},
           {"Kugelfräser 6", "BALL_END_MILL"},
           {"2in face mill", "FACE_MILL"},
           {"center drill #3", "CENTER_DRILL"},
           {"chamfer end mill", "CHAMFER_MILL"},
           {"V-Bit 60", "V_BIT"},
           {"Engraving cutter 30 deg", "ENGRAVING_CUTTER"},
           {"single flute end mill", "SINGLE_FLUTE_ROUTER"},
           {"1/4 compression end mill", "COMPRESSION_ROUTER"},
           {"reamer", "REAMER"},
           {"probe", ""},
       }) {
    const std::string line = "line 1"s + (*table ? " "s + table : "") +
                             ": Tool number=1|Pocket=1|Name=" + comment + '\n';
    EXPECT_EQ(Drafts(Write("a.tbl", "T1 P1 ;"s + comment)), line);
  }
}

constexpr const char* kBit =
    "{\"version\":2,\"name\":\"5mm\",\"shape\":\"endmill.fcstd\",\"parameter\":{\"Length\":"
    "\"2 in\",\"Diameter\":\"5.0000 mm\",\"Tip\":\"118.0 °\",\"Flutes\":\"2\"},\"attribute\":{}}";

TEST_F(ReadersTest, FreeCad) {
  Check({
      {"a.fctb", kBit,
       " FLAT_END_MILL mm: Name=5mm|Length=2 in|Diameter=5.0000 mm|Tip=118.0 °|Flutes=2\n"},
      {"a", kBit,
       " FLAT_END_MILL mm: Name=5mm|Length=2 in|Diameter=5.0000 mm|Tip=118.0 °|Flutes=2\n"},
      {"Big Tool.fctb",
       "{\"shape-type\":\"ThreadMill\",\"id\":\"x\",\"parameter\":{\"Crest\":"
       "\"10.00 µm\",\"N\":3.10,\"M\":null},\"attribute\":{\"Vendor\":\"A\"}}",
       " THREAD_MILL mm: Name=Big Tool|Crest=10.00 µm|N=3.10|M~|Vendor=A\n"},
      {"a.fctb",
       "{\"name\":\"a\",\"parameter\":{\"Diameter\":\"0.25 in\"},"
       "\"attribute\":{\"ToolType\":\"V-Bit\"}}",
       " V_BIT in: Name=a|Diameter=0.25 in\n"},
      {"a.fctb",
       "{\"name\":\"a\",\"shape\":\"C:\\\\x\\\\probe.FCStd\",\"parameter\":{\"D\":6}}",
       " in: Name=a|D=6|Shape=C:\\x\\probe.FCStd\n",
       {.unit = "in"}},
      {"a.fctb", "{\"name\":\"a\"}", "! a.fctb is neither a tool bit nor a library of them.\n"},
  });
  const std::string damaged = Drafts(Write("a.fctb", std::string(kBit).substr(0, 60)));
  EXPECT_NE(damaged.find("a.fctb: It is no JSON: "), damaged.npos) << damaged;

  Write("Bit/5mm.fctb", kBit);
  Write("Bit/own.fctb", "{\"name\":\"own\",\"shape\":\"drill.fcstd\",\"parameter\":{}}");
  Write("Bit/notes.txt", "Nothing, really\nof interest\n");
  Write("Bit/z.fctb", "{");
  for (const auto* file : {"a", "a.fctb", "Big Tool.fctb"})
    std::filesystem::remove(m_folder / file);
  const auto library = Write("Library/shop.fctl",
                             "{\"tools\":[{\"nr\":7,\"path\":\"5mm.fctb\"},{\"nr\":8,\"path\":"
                             "\"gone.fctb\"},{\"path\":\"shop.fctl\"}],"
                             "\"version\":1}");
  const std::string listed =
      "tool 1 FLAT_END_MILL mm: Name=5mm|Length=2 in|Diameter=5.0000 mm|Tip=118.0 °|Flutes=2|"
      "Tool number=7\ntool 2! 'gone.fctb' is not there.\n"
      "tool 3! shop.fctl is neither a tool bit nor a library of them.\n";
  EXPECT_EQ(Drafts(library), listed);
  const std::string folder = WithoutFolder(Drafts(m_folder / ""));
  EXPECT_TRUE(folder.starts_with(" TWIST_DRILL: Name=own\n! Bit/z.fctb: It is no JSON: "))
      << folder;
  EXPECT_TRUE(folder.ends_with(listed + "# Passed over as no tool data: Bit/notes.txt.\n"))
      << folder;
}

constexpr const char* kHeader =
    "ORX_tool_table_version=1.0\r\nORX_tool_table_name=TAP\r\n"
    "ORX_table_export_type=ORX_exported_by_table\r\n\"Name\"\t\"D\"\t\r\n";

TEST_F(ReadersTest, Exchange) {
  const std::string header = kHeader;
  Check({
      {"a", header + "\"M6\"\t\"6.000000\"\t\r\n\"\"\t\"1\"\t\r\n",
       "line 5 TAP: Name=M6|D=6.000000\nline 6 TAP: Name~|D=1\n"},
      {"a",
       header + "\"1/4\\\"\"\t\"1\"\t\n\"1/4\"\"\t\"2\"\t\n\"a \"b\" c\"\t\"3\"\n\n"
                "\"x\\\\\"\t\"\\ny\\t\"\t\r\"one\"\t\n",
       "line 5 TAP: Name=1/4\"|D=1\nline 6 TAP: Name=1/4\"|D=2\nline 7 TAP: Name=a \"b\" c|D=3\n"
       "line 9 TAP: Name=x\\|D=\ny\t\nline 10! It has 1 fields, but there are 2 names.\n"},
      {"a",
       header + "\"" + std::string(70000, 'x') + std::string(1 << 20, 'x') + "\"\t\n\"\"\t\"1\"\t",
       "line 5! It is longer than 1 MiB.\nline 6 TAP: Name~|D=1\n"},
      {"a", header, ""},
      {"a", header.substr(0, 60), "! a is not an exchange file.\n"},
      {"a", "ORX_tool_table_version=2.0" + header.substr(26),
       "! a is of version '2.0'; only 1.0 is imported.\n"},
  });
  const std::string text(70000, 'x');
  EXPECT_EQ(Drafts(Write("a", header + "\"" + text + "\"\t\"1\"\t\n")),
            "line 5 TAP: Name=" + text + "|D=1\n");
}

TEST_F(ReadersTest, WhatIsNoToolData) {
  Check({{"a", "", "! a holds no tool data of a known format.\n"},
         {"a", "Some text, and\nmore\n", "! a holds no tool data of a known format.\n"},
         {"a.csv", "a,b\n1,\0002\n"s, "! a.csv holds no tool data of a known format.\n"}});
  EXPECT_EQ(WithoutFolder(Drafts(m_folder / "gone.csv")),
            "! gone.csv cannot be read: No such file or directory.\n");
  std::filesystem::remove(m_folder / "a.csv");
  const std::string empty = Drafts(m_folder / "");
  EXPECT_TRUE(empty.ends_with(" holds no tool data of a known format.\n")) << empty;
}

/// Whatever becomes of a file, its reading ends, and records before a cut are as they were.
TEST_F(ReadersTest, DamagedFiles) {
  std::mt19937 random(20);
  const auto below = [&](std::size_t end) { return random() % end; };
  std::string rows = "Name;D\n";
  std::string objects = "[";
  std::string table;
  std::string exchange = kHeader;
  for (const char* name : {"a", "\"b\"", "c;c", "Ø d", "e"}) {
    rows += name + ";0,5\n"s;
    objects += "\n{\"A\": \""s + (*name == '"' ? "b" : name) + "\", \"D\": 1.50},";
    table += "T1 P1 D2 ;"s + name + '\n';
    exchange += "\""s + name + "\"\t\"0.5\"\t\n";
  }
  for (const auto& [file, whole] : {std::pair{"a.csv", rows},
                                    {"a.json", objects},
                                    {"a.tbl", table},
                                    {"a.txt", exchange},
                                    {"a.fctb", std::string(kBit)}}) {
    const std::string all = Drafts(Write(file, whole));
    for (int i = 0; i < 60; ++i) {
      const std::size_t cut = below(whole.size());
      std::istringstream part(Drafts(Write(file, whole.substr(0, cut))));
      std::vector<std::string> good;
      for (std::string line;
           std::getline(part, line) && line.find('!') == line.npos && !line.starts_with('#');) {
        good.push_back(line + '\n');
      }
      for (std::size_t line = 0; line + 1 < good.size(); ++line) {
        EXPECT_NE(all.find(good[line]), all.npos) << file << cut;
      }
      std::string damaged = whole;
      for (int byte = 0; byte < 4; ++byte) {
        damaged[below(damaged.size())] = "\"\n;\\{}[]\t\xFF\x00,"[below(12)];
      }
      Drafts(Write(file, damaged));
    }
  }
}

}  // namespace
}  // namespace orxdb::test
