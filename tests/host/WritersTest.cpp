// Tools written in every format, and read again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

#include "host/library/HostError.h"
#include "host/transfer/Readers.h"
#include "host/transfer/Writers.h"
#include "tests/support/TemporaryFolder.h"

namespace orxdb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Tools = std::vector<std::vector<Cell>>;

struct Written {
  std::map<std::string, std::string> files;
  std::vector<std::string> losses;
};

Written Write(const WriteOptions& options, const std::vector<std::string>& names,
              const Tools& tools) {
  Written written;
  const auto writer = MakeToolWriter(options, [&](const std::string& file, std::string_view text) {
    written.files[file] += text;
  });
  writer->Header(names);
  for (const auto& tool : tools) writer->Tool(tool);
  writer->End();
  written.losses = writer->Losses();
  return written;
}

std::vector<ToolDraft> Read(const std::filesystem::path& source) {
  std::vector<ToolDraft> drafts;
  const auto reader = OpenDrafts(source.string(), {});
  while (auto draft = reader->Next()) drafts.push_back(std::move(*draft));
  EXPECT_THAT(reader->Remarks(), IsEmpty());
  return drafts;
}

Cell Number(const char* text) {
  return {Cell::Kind::Number, text};
}

TEST(WritersTest, Rows) {
  const std::vector<std::string> names = {"Name", "D"};
  const Tools tools = {{Cell::Text("=1+1"), Number("-0.10")}, {Cell::Text(""), {}}};
  const auto written = [&](ToolFormat format, bool excel = false) {
    const auto [files, losses] = Write({.format = format, .excel = excel}, names, tools);
    EXPECT_THAT(losses, IsEmpty());
    return files.at("");
  };
  EXPECT_EQ(written(ToolFormat::Csv), "Name,D\r\n=1+1,-0.10\r\n\"\",\r\n");
  EXPECT_EQ(written(ToolFormat::Tsv), "Name\tD\r\n=1+1\t-0.10\r\n\"\"\t\r\n");
  EXPECT_EQ(written(ToolFormat::Csv, true), "\xEF\xBB\xBFName,D\r\n'=1+1,-0.10\r\n\"\",\r\n");
  EXPECT_EQ(written(ToolFormat::Json),
            "[\n  {\"Name\": \"=1+1\", \"D\": -0.10},\n  {\"Name\": \"\", \"D\": null}\n]\n");
  EXPECT_EQ(written(ToolFormat::Jsonl),
            "{\"Name\": \"=1+1\", \"D\": -0.10}\n{\"Name\": \"\", \"D\": null}\n");
  EXPECT_THROW(Write({.format = ToolFormat::Exchange}, names, tools), HostError);
}

TEST(WritersTest, RowsComeBackAsTheyWere) {
  std::mt19937_64 random(13);
  const auto below = [&](std::size_t end) { return static_cast<std::size_t>(random() % end); };
  const std::string_view pieces[] = {"=",  "+",  "-", "@",  "\t",    "\r",   "'",
                                     "\"", ",",  ";", "\n", "\\",    " ",    "5",
                                     "Ø",  "刀", "😀", "a",  "1/4\"", "null", "sep="};
  const auto anyCell = [&]() -> Cell {
    switch (below(5)) {
      case 0:
        return {};
      case 1:
        return Cell::Real(std::bit_cast<double>(random() >> 2 | random() << 63));
      case 2:
        return {Cell::Kind::Flag, below(2) == 0 ? "true" : "false"};
      default:
        std::string text;
        for (std::size_t i = below(6); i-- > 0;) text += pieces[below(std::size(pieces))];
        return Cell::Text(text);
    }
  };
  const TemporaryFolder folder;
  for (int round = 0; round < 120; ++round) {
    const std::size_t columns = 1 + below(4);
    std::vector<std::string> names;
    Tools tools(1 + below(8));
    for (std::size_t i = 0; i < columns; ++i) names.push_back("P" + std::to_string(i) + "_#");
    for (auto& tool : tools) {
      tool.push_back(Cell::Text("M" + std::to_string(below(9)) + ".5"));
      while (tool.size() < columns) tool.push_back(anyCell());
    }
    for (const auto& [format, file] : {std::pair{ToolFormat::Csv, "a.csv"},
                                       {ToolFormat::Tsv, "a.tsv"},
                                       {ToolFormat::Json, "a.json"},
                                       {ToolFormat::Jsonl, "a.jsonl"}}) {
      const WriteOptions options{.format = format, .excel = round % 2 == 0};
      const std::string text = Write(options, names, tools).files.at("");
      std::ofstream(folder / file, std::ios::binary) << text;
      const std::vector<ToolDraft> drafts = Read(folder / file);
      ASSERT_EQ(drafts.size(), tools.size()) << text;
      for (std::size_t i = 0; i < tools.size(); ++i) {
        std::vector<DraftValue> expected;
        for (std::size_t c = 0; c < columns; ++c) {
          const Cell& cell = tools[i][c];
          expected.push_back({names[c], cell.text, cell.kind == Cell::Kind::Null});
        }
        EXPECT_EQ(drafts[i].values, expected) << text;
      }
    }
  }
}

TEST(WritersTest, LinuxCnc) {
  const std::vector<std::string> names = {"Name", "Unit", "Diameter", "Tool_Number", "Coating"};
  const auto tool = [](const char* name, const char* unit, const Cell& number,
                       const char* coating) {
    return std::vector<Cell>{Cell::Text(name), Cell::Text(unit), Number("0.125"), number,
                             Cell::Text(coating)};
  };
  const auto [files, losses] =
      Write({.format = ToolFormat::LinuxCnc, .table = "FLAT_END_MILL"}, names,
            {tool("1/8 end mill", "in", Number("2"), "TiN"), tool("EM\n4", "in", {}, ""),
             tool("End mill", "in", Number("0"), ""), tool("Metric end mill", "mm", {}, ""),
             tool("Same end mill", "in", Number("2"), "TiN")});
  EXPECT_EQ(files.at(""),
            "; Unit: inch\nT2 P2 D0.125 ;1/8 end mill\nT1 P1 D0.125 ;EM 4\n"
            "T3 P3 D0.125 ;End mill\n");
  EXPECT_THAT(losses,
              ElementsAre("1 tool is not written: their number is taken, or none.",
                          "1 tool is not written: their unit is not that of the first tool.",
                          "The format does not carry Coating of 1 tool.",
                          "The format does not carry Name of 1 tool.",
                          "The format does not carry the kind of 1 tool."));
  const TemporaryFolder folder;
  std::ofstream(folder / "a.tbl") << files.at("");
  const auto drafts = Read(folder / "a.tbl");
  ASSERT_EQ(drafts.size(), 3U);
  EXPECT_EQ(drafts[0].table, "FLAT_END_MILL");
  EXPECT_EQ(drafts[2].unit, "in");
}

TEST(WritersTest, FreeCad) {
  const std::vector<std::string> names = {"Name", "Unit", "Diameter", "Point_Angle", "Comment"};
  const Tools tools = {
      {Cell::Text("1/4\" drill"), Cell::Text("in"), Number("0.25"), Number("118"), Cell::Text("x")},
      {Cell::Text("1/4\" DRILL"), Cell::Text("mm"), Number("6.3500000001"), {}, Cell::Text("")},
      {Cell::Text(".."), {}, Number("6"), {}, {}}};
  const WriteOptions options{.format = ToolFormat::FreeCad, .table = "TWIST_DRILL"};
  const auto [files, losses] = Write(options, names, tools);
  EXPECT_THAT(losses, ElementsAre("The format does not carry Comment of 1 tool."));
  const TemporaryFolder folder;
  for (const auto& [file, text] : files) {
    std::filesystem::create_directories((folder / file).parent_path());
    std::ofstream(folder / file) << text;
  }
  const std::vector<ToolDraft> drafts = Read(folder / "");
  ASSERT_EQ(drafts.size(), 3U);
  EXPECT_THAT(drafts[0].values,
              ElementsAre(DraftValue{"Name", "1/4\" drill"}, DraftValue{"Diameter", "0.25 in"},
                          DraftValue{"TipAngle", "118 °"}, DraftValue{"Tool number", "1"}));
  EXPECT_THAT(drafts[1].values, ElementsAre(DraftValue{"Name", "1/4\" DRILL"},
                                            DraftValue{"Diameter", "6.3500000001 mm"},
                                            DraftValue{"Tool number", "2"}));
  EXPECT_EQ(drafts[2].values.front().text, "..");
  for (const ToolDraft& draft : drafts) EXPECT_EQ(draft.table, "TWIST_DRILL") << draft.problem;
  EXPECT_THROW(Write({.format = ToolFormat::FreeCad, .table = "FACE_MILL"}, names, tools),
               HostError);
}

}  // namespace
}  // namespace orxdb::test
