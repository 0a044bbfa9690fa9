// Random calls of the component against a small model of its tables, cursors and filters.
//
// ORXDB_MODEL_SEED replays a run, ORXDB_MODEL_STEPS makes it longer.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <random>

#include "platform/framework/MessageBox.h"
#include "platform/framework/Text.h"
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
    return tool.low ? "N" + std::to_string(*tool.low) : "N";
  }

  void Step(ModelTable& table);
  static bool Adds(ModelTable& table, ModelTool tool);
  void Export(ModelTable& table);
  void Import(ModelTable& table);
  void FindHeads();
  void StepInMaterials();
  void CallBystanders(const ModelTable& table);

  std::mt19937 m_random{1};  // NOLINT(cert-msc32-c,cert-msc51-cpp): seeded by the test
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
  ASSERT_EQ(m_db->ExportToolRecordsToFile(WidenToBstr(table.name).get(),
                                          WidenToBstr(file.string()).get(), 0),
            S_OK);
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
  ASSERT_EQ(m_db->ImportToolRecordsFromFile(WidenToBstr((m_folder / "in.txt").string()).get(), 0),
            S_OK);
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
  std::vector<int> expected;
  for (const ModelTool* head = heads.records.empty() ? nullptr : heads.Select(0); head;
       head = heads.Select(heads.position + 1)) {
    expected.push_back(head->id);
  }
  Variant names;
  Variant ids;
  ASSERT_EQ(m_db->GetTappingHeadsForTap(Bstr(u"mm").get(), diameter, names.ptr(), ids.ptr()), S_OK);
  ASSERT_EQ(ids.empty(), expected.empty());
  if (!ids.empty()) {
    ASSERT_THAT(ArrayAccess<LONG>(ids.get().parray).elements(),
                testing::ElementsAreArray(expected));
  }
}

void ModelTest::StepInMaterials() {
  Variant names;
  Variant values;
  const Bstr wanted(std::u16string(1, static_cast<char16_t>(u'A' + Pick(4))));
  const int step = Pick(3);
  const bool behind = step == 1 && m_material >= 3;
  if (step == 0) m_material = 0;
  if (step == 1) ++m_material;
  const bool found = step == 2 ? wanted.get()[0] < u'D' : m_material < 3;
  if (step == 2 && found) m_material = static_cast<std::size_t>(wanted.get()[0] - u'A');
  ASSERT_EQ(step == 0   ? m_db->GetFirstStockMaterial(names.ptr(), values.ptr())
            : step == 1 ? m_db->GetNextStockMaterial(values.ptr())
                        : m_db->GetStockMaterialByName(wanted.get(), names.ptr(), values.ptr()),
            behind ? E_FAIL : S_OK);
  ASSERT_EQ(values.empty(), !found);
  if (found) {
    ASSERT_EQ(ArrayAccess<VARIANT>(values.get().parray)[0].lVal, static_cast<LONG>(m_material) + 1);
  }
}

/// Calls that answer whatever is asked and leave every position where it is.
void ModelTest::CallBystanders(const ModelTable& table) {
  const Bstr name = WidenToBstr(table.name);
  const Bstr property(u"Name");
  Properties tool;
  VARIANT* names = tool.Add("Name", "n").Names();
  VARIANT* values = tool.Values();
  Variant out[12];
  Bstr text[4];
  USHORT type = 0;
  VARIANT_BOOL hidden = 0;
  LONG index = 0;
  const HRESULT results[] = {
      m_db->SetMdbFile(Bstr(u"elsewhere").get()),
      m_db->OpenDefaultDataBase(),
      m_db->GetToolTypes(out[0].ptr()),
      m_db->GetToolTypesByStoredQuery(Bstr(u"TOOL_TYPES").get(), out[1].ptr()),
      m_db->GetPropsTypes(name.get(), out[2].ptr(), out[3].ptr()),
      m_db->GetFieldType(name.get(), property.get(), &type),
      m_db->GetSearchParamNames(name.get(), out[4].ptr()),
      m_db->IsHiddenProperty(property.get(), &hidden),
      m_db->FindPropByNameInArray(property.get(), names, values, out[5].ptr(), &index),
      m_db->VariantToSQLString(out[5].ptr(), text[0].put()),
      m_db->VariantToUIString(out[5].ptr(), text[1].put(), -1),
      m_db->FilterStrValueForQuery(property.get(), text[2].put()),
      m_db->GetPermissibleValues(name.get(), property.get(), 1, out[6].ptr()),
      m_db->GetPermissibleValues2(name.get(), names, values, property.get(), out[7].ptr(),
                                  out[8].ptr()),
      m_db->GetToolSubtypePreview(Bstr(u"NONE").get(), out[9].ptr()),
      m_db->GetPrimaryOpByTable(Bstr(u"NONE").get(), text[3].put()),
      m_db->GetRowByMaterialHardness(name.get(), property.get(), 1, out[10].ptr(), out[11].ptr()),
      m_db->GetFactorByTable(name.get(), 1, out[10].ptr(), out[11].ptr(), out[11].ptr()),
      m_db->GenFirstTool(name.get(), names, values, out[10].ptr(), out[11].ptr()),
      m_db->GenNextTool(name.get(), out[11].ptr())};
  ASSERT_THAT(results, testing::Each(S_OK));
  ASSERT_EQ(m_db->GetChosenDrillFeed(1, out[10].ptr(), out[11].ptr()), E_FAIL) << "no such columns";
  ASSERT_EQ(out[5].get().vt == VT_BSTR ? NarrowBstr(out[5].get().bstrVal) : "", "n");
}

void ModelTest::Step(ModelTable& table) {
  const Bstr name = WidenToBstr(table.name);
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
      ASSERT_EQ(m_db->GetToolTableBookmark(name.get(), table.bookmark.ptr()), S_OK);
      if (!table.AtEnd()) table.marked = table.records[table.position];
      break;
    case 4: {
      if (table.bookmark.empty()) break;
      const auto place = std::ranges::find(table.records, table.marked);
      const bool refused = !table.AtEnd() && place == table.records.end();
      ASSERT_EQ(m_db->SetToolTableBookmark(name.get(), table.bookmark.get()),
                refused ? E_FAIL : S_OK);
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
      ASSERT_EQ(m_db->DeleteTool(name.get(), id), E_FAIL);
      table.Delete(id);
      break;
    }
    case 10: {
      const std::string wanted = PickName().value_or("N9");
      VARIANT_BOOL unique = 5;
      ASSERT_EQ(m_db->IsToolNameUnique(name.get(), WidenToBstr(wanted).get(), &unique), S_OK);
      ASSERT_EQ(unique, table.Uses(wanted) ? VARIANT_FALSE : VARIANT_TRUE);
      break;
    }
    case 11: {
      Variant names;
      Variant values;
      const Number before = table.Bookmark();
      ASSERT_EQ(m_db->GetDefPropsValues(name.get(), names.ptr(), values.ptr()), S_OK);
      ASSERT_EQ(ArrayAccess<VARIANT>(values.get().parray)[0].lVal, table.nextId++);
      table.Requery();
      table.Reposition(before);
      break;
    }
    case 12: {
      const int id = PickId(table);
      Bstr made;
      ASSERT_EQ(m_db->GenerateDefToolName(name.get(), id, made.put()), S_OK);
      const bool found = table.Has(id);
      ASSERT_EQ(NarrowBstr(made.get()), found ? DefaultName(table.stored.at(id)) : "N");
      break;
    }
    case 13: {
      ModelTool tool{};
      Properties properties = Describe(table, tool);
      std::string expected = DefaultName(tool);
      for (int n = 1; table.uniqueNames && table.Uses(expected); ++n) {
        expected = DefaultName(tool) + "_" + std::to_string(n);
      }
      Bstr made;
      ASSERT_EQ(m_db->GenerateDefToolName2(name.get(), properties.Names(), properties.Values(),
                                           made.put()),
                S_OK);
      ASSERT_EQ(NarrowBstr(made.get()), expected);
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
      CallBystanders(table);
      break;
    default: {
      const ModelTool* next = table.AtEnd() ? nullptr : table.Select(table.position + 1);
      ASSERT_EQ(Next(table.name), Expected(table, next));
    }
  }
}

TEST_F(ModelTest, RandomCallsBehaveLikeListsWithAPosition) {
  const char* const chosen = std::getenv("ORXDB_MODEL_SEED");
  const char* const longer = std::getenv("ORXDB_MODEL_STEPS");
  const unsigned seed =
      chosen ? static_cast<unsigned>(std::strtoul(chosen, nullptr, 10)) : std::random_device()();
  const long steps = longer ? std::strtol(longer, nullptr, 10) : 2500;
  SCOPED_TRACE("ORXDB_MODEL_SEED=" + std::to_string(seed));
  m_random.seed(seed);
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

}  // namespace
}  // namespace orxdb::test
