// Random calls of the component against a small model of its tables, cursors and filters.
//
// ORXDB_MODEL_SEED makes another run, ORXDB_MODEL_STEPS a longer one.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#include "platform/framework/MessageBox.h"
#include "tests/component/ComponentFixture.h"
#include "tests/component/ToolModel.h"

namespace orxdb::test {
namespace {

namespace fs = std::filesystem;

class ModelTest : public ComponentTest {
 protected:
  std::string With(const ModelTable& table, std::string text) const {
    for (std::size_t at = 0; (at = text.find_first_of("@~")) != text.npos;) {
      text.replace(at, 1, text[at] == '@' ? table.prefix : table.key);
    }
    return text;
  }
  int Pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
  int PickId(const ModelTable& table) { return Pick(table.nextId + 2); }
  Number PickNumber() { return Pick(5) ? Number(Pick(9)) : Number(); }
  Text PickName() {
    static constexpr const char* kNames[] = {"N1", "n1", "N2", "n3x", "N4", "n5", "X", "N1_1", ""};
    return Pick(8) ? Text(kNames[Pick(std::size(kNames))]) : Text();
  }

  static Variant ValueOf(Number number) {
    return number ? Variant::FromR8(*number) : Variant::Null();
  }
  /// Properties of a tool with a new name and numbers, which are those of `tool` afterwards.
  Properties Describe(const ModelTable& table, ModelTool& tool) {
    tool = {tool.id, PickName(), PickNumber(), PickNumber()};
    Properties properties;
    properties.Add(table.prefix + "_Min_Diameter", ValueOf(tool.low));
    properties.Add("Name", tool.name ? Variant::FromBstr(WidenToBstr(*tool.name)) : Variant());
    properties.Add(table.prefix + "_Max_Diameter", ValueOf(tool.high));
    return properties;
  }
  Record Expected(const ModelTable& table, const ModelTool* tool) const {
    if (!tool) return {};
    const auto text = [](Number number) {
      return number ? std::to_string(*number) + ".000000" : "NULL";
    };
    return {{table.key, std::to_string(tool->id)},
            {"Name", tool->name.value_or("NULL")},
            {table.prefix + "_Min_Diameter", text(tool->low)},
            {table.prefix + "_Max_Diameter", text(tool->high)}};
  }
  /// The tool's line in an exchange file.
  static std::string LineOf(const ModelTable& table, const ModelTool& tool) {
    const auto field = [](const std::string& text) { return '"' + text + "\"\t"; };
    const auto number = [&](Number value) {
      return field(value ? std::to_string(*value) + ".000000" : "");
    };
    std::string line = field(tool.name.value_or(""));
    if (!table.uniqueNames) line += number(tool.low) + number(tool.high);
    return line + "\r\n";
  }
  /// The name that the table's format gives a tool.
  static std::string DefaultName(const ModelTool& tool) {
    return tool.low ? "N*" + std::to_string(*tool.low) : "N*";
  }

  void Step(ModelTable& table);
  static bool Adds(ModelTable& table, ModelTool tool);
  void Export(ModelTable& table);
  void Import(ModelTable& table);
  void FindHeads();
  void StepInMaterials();

  /// By default a tool is changed so that another comes first, while the cursor is on the first.
  std::mt19937 m_random = Random(2813695422U);
  ModelTable m_tables[2] = {{.name = "DRILL", .prefix = "D", .key = "ID"},
                            {.name = "TAPPING_HEAD",
                             .prefix = "AUX_Metric",
                             .key = "TAPPING_HEAD.ID",
                             .uniqueNames = true}};
  std::size_t m_material = 0;  ///< position among the stock materials A, B and C
};

/// Whether the tool is added; its number is used up in any case.
bool ModelTest::Adds(ModelTable& table, ModelTool tool) {
  tool.id = table.nextId++;
  if (table.uniqueNames && tool.name && table.Uses(tool.name)) return false;
  table.stored[tool.id] = tool;
  table.Requery();
  return true;
}

void ModelTest::Export(ModelTable& table) {
  const fs::path file = m_folder / "out.txt";
  ASSERT_EQ(Gives(&Db::ExportToolRecordsToFile, table.name, file.string(), 0), "");
  std::string expected;
  for (std::size_t i = 0; i < table.records.size() && !table.AtEnd(); ++i) {
    expected += LineOf(table, table.At(i));
  }
  table.position = table.records.size();
  std::string lines = Contents(file);
  for (int header = 0; header < 4; ++header) lines.erase(0, lines.find('\n') + 1);
  ASSERT_EQ(lines, expected);
}

void ModelTest::Import(ModelTable& table) {
  std::vector<ModelTool> tools(1 + static_cast<std::size_t>(Pick(3)));
  std::string text = "ORX_tool_table_version=1.0\nORX_tool_table_name=" + table.name +
                     "\nORX_table_export_type=ORX_exported_by_table\n\"Name\"";
  if (!table.uniqueNames) text += With(table, "\"@_Min_Diameter\"\"@_Max_Diameter\"");
  text += '\n';
  for (ModelTool& tool : tools) {
    Describe(table, tool);
    if (tool.name == "") tool.name.reset();
    if (table.uniqueNames) tool.low = tool.high = {};
    text += LineOf(table, tool);
  }
  std::ofstream(m_folder / "in.txt") << text;
  ASSERT_EQ(Gives(&Db::ImportToolRecordsFromFile, (m_folder / "in.txt").string(), 0), "");
  tools.push_back(tools.back());  // the last line counts twice
  for (const ModelTool& tool : tools) {
    if (!table.uniqueNames && !(tool.low && tool.high)) return;  // an empty number ends it
    const auto same = [&](int id) {
      const ModelTool& other = table.stored.at(id);
      return (tool.name ? SameText(tool.name, other.name) : other.name.value_or("").empty()) &&
             (table.uniqueNames || (tool.low == other.low && tool.high == other.high));
    };
    const auto found = std::ranges::find_if(table.records, same);
    if (found == table.records.end()) {
      Adds(table, tool);
    } else {
      table.position = static_cast<std::size_t>(found - table.records.begin());
    }
  }
}

void ModelTest::FindHeads() {
  ModelTable& heads = m_tables[1];
  const int diameter = Pick(9);
  heads.filter = {"by diameter", [diameter](const ModelTool& head) {
                    return head.low && head.high && *head.low <= diameter && diameter <= *head.high;
                  }};
  std::string expected;
  for (const ModelTool* head = heads.records.empty() ? nullptr : heads.Select(0); head;
       head = heads.Select(heads.position + 1)) {
    expected += (expected.empty() ? "" : "|") + std::to_string(head->id);
  }
  const std::string heading = Gives(&Db::GetTappingHeadsForTap, "mm", diameter);
  ASSERT_EQ(heading.substr(heading.rfind('/') + 1), expected.empty() ? "nothing" : expected);
}

void ModelTest::StepInMaterials() {
  const std::string wanted(1, static_cast<char>('A' + Pick(4)));
  const int step = Pick(3);
  if (step == 2 && wanted < "D") m_material = static_cast<std::size_t>(wanted[0] - 'A');
  const bool behind = step == 1 && m_material >= 3;
  if (step == 0) m_material = 0;
  if (step == 1) ++m_material;
  const bool found = step == 2 ? wanted < "D" : m_material < 3;
  const std::string values =
      std::to_string(m_material + 1) + '|' + static_cast<char>('A' + m_material);
  ASSERT_EQ(step == 0   ? Gives(&Db::GetFirstStockMaterial)
            : step == 1 ? Gives(&Db::GetNextStockMaterial)
                        : Gives(&Db::GetStockMaterialByName, wanted),
            behind      ? "fails"
            : found     ? (step == 1 ? "" : "ID|DispType/") + values
            : step == 1 ? "nothing"
                        : "nothing/nothing");
}

void ModelTest::Step(ModelTable& table) {
  switch (Pick(20)) {
    case 0: {  // a filter, perhaps with an order
      table.filter = kFilters[Pick(std::size(kFilters))];
      const auto& order = kOrders[Pick(std::size(kOrders))];
      const bool ordered = Pick(2);
      ASSERT_EQ(SetFilter(table.name, With(table, table.filter.criteria),
                          ordered ? With(table, order.first) : ""),
                S_OK);
      if (!ordered) break;
      table.less = order.second;
      table.bookmark.clear();
      table.Requery();
      break;
    }
    case 1: {
      const ModelTool* first = table.records.empty() ? nullptr : table.Select(0);
      Record expected = Expected(table, first);
      if (first && first->name.value_or("").empty()) expected["Name"] = DefaultName(*first);
      ASSERT_EQ(First(table.name), expected);
      break;
    }
    case 2:
      ASSERT_EQ(Count(table.name), table.AtEnd() ? 0 : static_cast<LONG>(table.records.size()));
      break;
    case 3:
      ASSERT_EQ(Gives(&Db::GetToolTableBookmark, table.name, table.bookmark.ptr()), "");
      if (!table.AtEnd()) table.marked = table.records[table.position];
      break;
    case 4: {
      if (table.bookmark.empty()) break;
      const auto place = std::ranges::find(table.records, table.marked);
      const bool refused = !table.AtEnd() && place == table.records.end();
      ASSERT_EQ(Gives(&Db::SetToolTableBookmark, table.name, table.bookmark.get()),
                refused ? "fails" : "");
      if (!table.AtEnd() && !refused) table.Reposition(table.marked);
      break;
    }
    case 5: {
      const int id = PickId(table);
      const bool found = table.Has(id);
      ASSERT_EQ(Tool(table.name, id), Expected(table, found ? &table.stored.at(id) : nullptr));
      break;
    }
    case 6:
    case 7: {
      ModelTool tool{.id = table.nextId, .name = {}, .low = {}, .high = {}};
      Properties properties = Describe(table, tool);
      const bool added = Adds(table, tool);
      ASSERT_EQ(ComponentTest::Add(table.name, properties), added ? S_OK : E_FAIL);
      ASSERT_EQ(m_id, tool.id);
      break;
    }
    case 8: {
      ModelTool tool{.id = PickId(table), .name = {}, .low = {}, .high = {}};
      Properties properties = Describe(table, tool);
      const bool found = table.stored.contains(tool.id);
      ASSERT_EQ(Set(table.name, tool.id, properties), found ? S_OK : E_FAIL);
      if (!found) break;
      table.stored[tool.id] = tool;
      const Number before = table.Bookmark();
      table.Requery();
      table.Reposition(before);
      break;
    }
    case 9: {
      const int id = PickId(table);
      ASSERT_EQ(Gives(&Db::DeleteTool, table.name, id), "fails");
      table.Delete(id);
      break;
    }
    case 10: {
      const std::string wanted = PickName().value_or("N9");
      ASSERT_EQ(Gives(&Db::IsToolNameUnique, table.name, wanted), table.Uses(wanted) ? "0" : "-1");
      break;
    }
    case 11: {
      const Number before = table.Bookmark();
      const std::string values = Gives(&Db::GetDefPropsValues, table.name);
      ASSERT_EQ(std::stoi(values.substr(values.find('/') + 1)), table.nextId++);
      table.Requery();
      table.Reposition(before);
      break;
    }
    case 12: {
      const int id = PickId(table);
      ASSERT_EQ(Gives(&Db::GenerateDefToolName, table.name, id),
                table.Has(id) ? DefaultName(table.stored.at(id)) : "N*");
      break;
    }
    case 13: {
      ModelTool tool{};
      Properties properties = Describe(table, tool);
      std::string expected = DefaultName(tool);
      for (int n = 1; table.uniqueNames && table.Uses(expected); ++n) {
        expected = DefaultName(tool) + "_" + std::to_string(n);
      }
      ASSERT_EQ(
          Gives(&Db::GenerateDefToolName2, table.name, properties.Names(), properties.Values()),
          expected);
      break;
    }
    case 14:
      Export(table);
      break;
    case 15:
      Import(table);
      break;
    case 16:
      FindHeads();
      StepInMaterials();
      EXPECT_EQ(m_db->SetMdbFile(Bstr(u"elsewhere").get()), S_OK);
      break;
    default: {
      const ModelTool* next = table.AtEnd() ? nullptr : table.Select(table.position + 1);
      ASSERT_EQ(Next(table.name), Expected(table, next));
    }
  }
}

TEST_F(ModelTest, RandomCallsBehaveLikeListsWithAPosition) {
  const char* const longer = std::getenv("ORXDB_MODEL_STEPS");
  const long steps = longer ? std::strtol(longer, nullptr, 10) : 2500;
  auto earlier = InstallMessageBoxHandler(
      [](const std::string&, const std::string&, unsigned) { return IDOK; });
  OpenSeeded(Script("Model"));
  for (long step = 0; step < steps && !HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step(m_tables[Pick(2)]);
  }
  for (ModelTable& table : m_tables) {
    std::string ids;
    for (const auto& [id, tool] : table.stored)
      ids += (ids.empty() ? "" : "|") + std::to_string(id);
    EXPECT_EQ(QueryRows(m_file, "SELECT ID FROM " + table.name), ids);
    table.bookmark.clear();
  }
  InstallMessageBoxHandler(std::move(earlier));
}

/// Where walks go on while tools are changed. The calls: F the first tool, N the next one, C the
/// count, B a bookmark taken and set, U a name looked for, ?2 the properties of tool 2, 2:9 its
/// diameter set to 9, !2 it is deleted; and by another program: 2=9 and -2.
TEST_F(ModelTest, WalksKeepTheirPlaceWhileToolsChange) {
  using Walk = std::tuple<std::string, std::string, const char*, const char*>;
  const char* const all = "[D_Min_Diameter] > 0";
  const char* const order = "[D_Min_Diameter]";
  for (const auto& [where, by, calls, given] :
       {Walk(all, order, "F ?3 -1 N N N N", "1 2 3 4 -"),
        Walk(all, order, "F U -1 N ?4 -2 N", "1 2 3"), Walk(all, order, "F B -1 N", "1 2"),
        Walk(all, order, "F -1 ?3 N U N", "1 2 3"), Walk("", "", "F -1 ?3 N U N", "1 2 3"),
        Walk("", order, "3:0 N N N", "2 4 -"), Walk("", order, "4=0 2:9 N N", "1 3"),
        Walk(all, order, "F 1=9 N 2=9 N 3=1 N N", "1 2 3 4 -"),
        Walk(all, order, "F 2=0 N 4=1 N N", "1 3 4 -"), Walk("", "", "-1 N N", "2 3"),
        Walk(all, "", "-1 N N", "2 3"), Walk("", "", "F N -2 C N C N N", "1 2 3 3 3 4 -"),
        Walk(all, "", "F N -2 C N", "1 2 3 3"),
        Walk(all, order, "F N -2 C N C N N", "1 2 4 3 4 4 -"), Walk("", order, "F -1 -2 N", "1 3"),
        Walk(all, "", "F -1 -2 N", "1 3"), Walk("", order, "F !1 N", "1 -"),
        Walk("", order, "F !3 N N", "1 2 4")}) {
    OpenSeeded(
        Script("Model") +
        "INSERT INTO DRILL (Name, D_Min_Diameter) VALUES ('a', 1), ('b', 2), ('c', 3), ('d', 4)");
    if (!(where + by).empty()) {
      ASSERT_EQ(SetFilter("DRILL", where, by), S_OK);
    }
    std::string told;
    std::istringstream words(calls);
    for (std::string call; words >> call;) {
      const int digit = call.back() - '0';
      const std::string tool = " WHERE ID = " + call.substr(call[0] == '-', 1);
      std::string result;
      Variant bookmark;
      if (call == "F" || call == "N") {
        Record record = call == "F" ? First("DRILL") : Next("DRILL");
        result = record.empty() ? "-" : record["ID"];
      } else if (call == "C") {
        result = std::to_string(Count("DRILL"));
      } else if (call == "B") {
        EXPECT_EQ(Gives(&Db::GetToolTableBookmark, "DRILL", bookmark.ptr()), "");
        EXPECT_EQ(Gives(&Db::SetToolTableBookmark, "DRILL", bookmark.get()), "");
      } else if (call == "U") {
        EXPECT_EQ(Gives(&Db::IsToolNameUnique, "DRILL", "c"), "0");
      } else if (call[0] == '?') {
        EXPECT_FALSE(Tool("DRILL", digit).empty());
      } else if (call[0] == '!') {
        EXPECT_EQ(Gives(&Db::DeleteTool, "DRILL", digit), "fails");
      } else if (call[0] == '-') {
        Sql("DELETE FROM DRILL" + tool);
      } else if (call[1] == '=') {
        Sql("UPDATE DRILL SET D_Min_Diameter = " + call.substr(2) + tool);
      } else {
        Properties properties;
        EXPECT_EQ(Set("DRILL", call[0] - '0', properties.Add("D_Min_Diameter", digit)), S_OK);
      }
      if (!result.empty()) told += (told.empty() ? "" : " ") + result;
    }
    EXPECT_EQ(told, given) << where << '/' << by << '/' << calls;
  }
}

}  // namespace
}  // namespace orxdb::test
