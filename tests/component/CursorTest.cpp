// Kinds of tools, and the cursor: filter, order, walk, count, bookmarks.
#include <algorithm>
#include <sstream>

#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"

namespace orxdb::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using CursorTest = ComponentTest;

TEST_F(CursorTest, ToolTypesFollowTheRowsAndStopAtTheNumberOfTables) {
  OpenSeeded("INSERT INTO TYPES_DATA (ID, TOOLTABLE_NAME, TOOL_TYPE) VALUES (0, 'xxTAP', 'Again')");
  EXPECT_THAT(ToolTypes(), ElementsAre("Again", "", "TAP", "Threading", "Tap", "TAP", "Milling",
                                       "Fräser", "MILL"));
}

TEST_F(CursorTest, ToolTypesOfStoredQueries) {
  OpenSeeded(
      "CREATE VIEW SHORT AS SELECT 'Q' AS TOOLTABLE_NAME, 'a' AS TOOL_TYPE, NULL AS TOOL_SUBTYPE "
      "UNION ALL SELECT 'Q_MILL', 'b', 'c';"
      "CREATE VIEW NONE AS SELECT * FROM TOOL_TYPES WHERE ID < 0;"
      "CREATE VIEW LACKING AS SELECT TOOL_TYPE AS TOOL_TYPE FROM TYPES_DATA;"
      "CREATE VIEW ENDLESS AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
      "SELECT 'Q' || i AS TOOLTABLE_NAME, 'a' AS TOOL_TYPE, 'b' AS TOOL_SUBTYPE FROM n");
  Variant types;
  ASSERT_EQ(m_db->GetToolTypesByStoredQuery(Bstr(u"SHORT").get(), types.put()), S_OK);
  EXPECT_THAT(Strings(types.get()), ElementsAre("a", "", "", "b", "c", "MILL"));
  types = Variant::FromI4(5);
  EXPECT_EQ(m_db->GetToolTypesByStoredQuery(Bstr(u"NONE").get(), types.ptr()), S_OK);
  for (const auto* name : {u"LACKING", u"ENDLESS", u"NOWHERE", u"MILL; DROP TABLE TAP", u""}) {
    EXPECT_EQ(m_db->GetToolTypesByStoredQuery(Bstr(name).get(), types.ptr()), E_FAIL);
  }
  EXPECT_EQ(types.get().lVal, 5);
}

TEST_F(CursorTest, RecordsShowEveryFieldInItsType) {
  OpenSeeded();
  EXPECT_THAT(First("TAP"),
              ElementsAre(Pair("Coated", "TRUE"), Pair("Diameter", "3.000000"), Pair("Flutes", "2"),
                          Pair("ID", "1"), Pair("Material", "HSS"), Pair("Name", "M3"),
                          Pair("Note", "für Stahl"), Pair("Pitch", "0.500000")));
  const Record second = Next("TAP");
  EXPECT_EQ(second.at("Note"), "NULL");
  EXPECT_EQ(second.at("Material"), "Carbide");
  EXPECT_EQ(Next("TAP").at("Note"), "");
  EXPECT_THAT(Next("TAP"), IsEmpty());
  EXPECT_THAT(Walk("EMPTY"), IsEmpty());
  EXPECT_EQ(Count("EMPTY"), 0);
}

TEST_F(CursorTest, BookmarksOfOtherTablesAndUnknownTables) {
  OpenSeeded();
  Variant bookmark = Variant::FromText(u"old");
  EXPECT_EQ(m_db->GetToolTableBookmark(Bstr(u"NONE").get(), bookmark.ptr()), S_OK);
  EXPECT_EQ(View(bookmark.get().bstrVal), u"old");
  EXPECT_EQ(m_db->SetToolTableBookmark(Bstr(u"NONE").get(), bookmark.get()), S_OK);
  EXPECT_EQ(m_db->GetToolTableBookmark(Bstr(u"TAP").get(), bookmark.ptr()), S_OK);
  EXPECT_EQ(m_db->SetToolTableBookmark(Bstr(u"MILL").get(), bookmark.get()), E_FAIL);
  EXPECT_EQ(m_db->SetToolTableBookmark(Bstr(u"TAP").get(), Variant::FromI4(1).get()), E_FAIL);
  EXPECT_EQ(Count("NONE"), -1);
}

TEST_F(CursorTest, NonsenseAndHostileTextsFailAndHarmNothing) {
  OpenSeeded();
  std::stringstream texts(
      "1=1); DROP TABLE TAP; --~1=1; DELETE FROM TAP~ID IN (DELETE FROM TAP)~) OR (1=1~ID = ?~"
      "NoSuch = 1~ID = 1 --~'open~#13/45/2000#~" +
      std::string("ID = 1\0~", 8) + std::string(1'000'000, '('));
  for (std::string text; std::getline(texts, text, '~');) {
    SCOPED_TRACE(text.substr(0, 60));
    EXPECT_EQ(SetFilter("TAP", text), S_OK);
    TakeError();
    EXPECT_EQ(FirstStatus("TAP"), E_FAIL);
    EXPECT_EQ(TakeError(), kReportedError);
    EXPECT_EQ(SetFilter("TAP", "", text), E_FAIL);
    EXPECT_EQ(FirstStatus("TAP"), E_FAIL) << "closed until an order is accepted";
    EXPECT_EQ(SetFilter("TAP", "Diameter > 4", "Diameter"), S_OK);
    EXPECT_THAT(Walk("TAP"), ElementsAre("M6", "M10"));
  }
}

TEST_F(CursorTest, StepsOverRecordsThatOthersDelete) {
  OpenSeeded();
  int first = 1;
  for (const auto* filter : {"", "ID > 0"}) {
    for (const auto* order : {"", "Name"}) {
      ASSERT_EQ(SetFilter("MILL", filter, order), S_OK);
      EXPECT_EQ(First("MILL")["ID"], std::to_string(first));
      RunSql(m_file, "DELETE FROM MILL WHERE ID < " + std::to_string(first += 2));
      EXPECT_EQ(Next("MILL")["ID"], std::to_string(first)) << filter << '/' << order;
    }
  }
}

}  // namespace
}  // namespace orxdb::test
