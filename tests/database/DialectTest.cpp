#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

class DialectTest : public RecordsetFixture {
 protected:
  DialectTest() {
    Execute(
        "INSERT INTO MILL (Name, D, Coating, Fav, Made, Flutes, [Rake #]) VALUES"
        " ('End Mill 6', 6, 1, -1, '2024-03-01 00:00:00', 2, 10),"
        " ('end mill 10', 10, 2, 0, '2024-03-01 13:30:00', 3, -7),"
        " ('O''Brien \"x\"', 2.5, NULL, 1, '2024-12-31', 4, NULL),"
        " ('[a]*1#?', NULL, 1, 0, NULL, 7, 3),"
        " ('Fräser', 0.1, 2, NULL, '2023-01-01 00:00:00', 2, 0);"
        "CREATE VIEW Q_HEAD AS SELECT M.ID AS [MILL.ID], M.Name AS Name, C.Name AS CName,"
        " C.ID AS CID FROM MILL AS M LEFT JOIN COATING AS C ON C.ID = M.Coating;");
  }

  /// The keys of the records that meet the criteria, found one after the other; "refused" for a
  /// text that is not understood.
  std::string Matches(CDaoRecordset& records, const std::string& criteria) {
    std::string keys;
    try {
      for (bool found = records.FindFirst(criteria); found; found = records.FindNext(criteria)) {
        keys += Show(records.GetFieldValue(0));
      }
    } catch (const CDaoException& exception) {
      EXPECT_EQ(exception.Error(), DaoError::Syntax) << exception.Message();
      return "refused";
    }
    return keys;
  }
};

TEST_F(DialectTest, CriteriaSelectRecords) {
  const struct {
    const char* criteria;
    const char* keys;
  } cases[] = {
      // Text: either quotes, doubled to escape, letter case aside.
      {"Name = 'END MILL 6'", "1"},
      {"[Name]=\"O'Brien \"\"x\"\"\"", "3"},
      {"Name = 'O''Brien \"x\"'", "3"},
      {"Name <> 'end mill 6'", "2345"},
      {"Name IN ('END MILL 6', \"fräser\")", "15"},
      {"Name NOT IN ('END MILL 6')", "2345"},
      {"Name < 'F'", "124"},
      {"Name BETWEEN 'fz' AND 'END'", "125"},
      {"Coating = 'tin'", "14"},
      // Patterns.
      {"Name LIKE 'end*'", "12"},
      {"Name LIKE 'END MILL ##'", "2"},
      {"Name LIKE '?nd m*'", "12"},
      {"Name LIKE '*[!a-z0-9]x*'", "3"},
      {"Name LIKE '[[]a]*'", "4"},
      {"Name LIKE '*[#][?]'", "4"},
      {"Name LIKE 'fr?ser'", "5"},
      {"Name LIKE 'fr[à-ü]ser'", "5"},
      {"Name LIKE '%mill%'", ""},
      {"Name LIKE '*[6'", ""},
      {"Name NOT LIKE '*mill*'", "345"},
      {"D LIKE '6' OR D LIKE '2.?'", "13"},
      // Numbers, flags, dates, nulls.
      {"D = 6.000000", "1"},
      {"D BETWEEN 10 AND 2.5", "123"},
      {"D BETWEEN 12 AND Flutes", "12"},
      {"D IS NULL", "4"},
      {"NOT D IS NULL AND Made IS NOT NULL", "1235"},
      {"D = NULL", ""},
      {"Fav = True", "13"},
      {"Fav", "13"},
      {"Fav = no", "24"},
      {"Made = #3/1/2024#", "1"},
      {"Made > #2024-03-01#", "23"},
      {"Made <= #3/1/2024 1:30 PM#", "125"},
      {"Year(Made) = 2024 AND Month(Made) = 12 AND Day(Made) = 31", "3"},
      {"Made - #2/29/2024# = 1", "1"},
      {"Made + 1 = DateSerial(2024, 3, 2)", "1"},
      {"Made < Now() AND Made < Date()", "1235"},
      // Arithmetic and precedence.
      {"Flutes * 2 + 1 = 5", "15"},
      {"-2 ^ 2 = -4 AND ID = 1", "1"},
      {"7 \\ 2 * 2 = 1 AND ID = 1", "1"},
      {"17 MOD 10 \\ 4 = 1 AND ID = 1", "1"},
      {"3 / 2 = 1.5 AND ID = 1", "1"},
      {"ID = 1 OR ID = 2 AND D > 100", "1"},
      {"NOT ID = 1 AND ID < 3", "2"},
      {"ID = 1 XOR ID < 3", "2"},
      {"(ID = 1) = True", "1"},
      {"- (ID = 1) = 1", "1"},
      {"Flutes & '/' & D = '2/6'", "1"},
      {"Name + '!' = 'end mill 6!'", "1"},
      {"'a' & NULL & 'b' = 'ab' AND ID = 2", "2"},
      // Functions.
      {"Left(Name, 3) = 'end' AND Right(Name, 1) = '6' AND Mid(Name, 5, 4) = 'MILL'", "1"},
      {"InStr(Name, 'MILL') = 5 AND Len(Trim('  x ')) = 1", "12"},
      {"Val('12abc') = 12 AND UCase('ä' & Name) = 'äEND MILL 6'", "1"},
      {"CInt(2.5) = 2 AND CLng(3.5) = 4 AND Round(2.45, 1) = 2.4 AND ID = 1", "1"},
      {"Int(-2.5) = -3 AND Fix(-2.5) = -2 AND Sgn(-3) = -1 AND Abs(-3) = 3 AND ID = 1", "1"},
      {"IIf(IsNull(D), 'none', 'some') = 'NONE'", "4"},
      {"Nz([Rake #], 99) = 99", "3"},
      {"CStr(D) = '2.5' AND CDbl('2.5') = D", "3"},
      // Names: brackets, base table fields, sub-selects.
      {"[Rake #] < 0", "2"},
      {"MILL.ID = 3", "3"},
      {"[MILL.ID] = 3", "3"},
      {"[MILL].[Flutes] = 7", "4"},
      {"Q_MILL.D = 10", "2"},
      {"COATING.Name = 'tialn'", "25"},
      {"D > 3 AND [CoatingKey] IN (SELECT ID FROM COATING WHERE Name = 'TIN')", "1"},
      {"EXISTS (SELECT * FROM COATING C WHERE C.Name = 'TiN' AND C.ID = CoatingKey)", "14"},
      {"D = (SELECT Max(M.D) FROM MILL AS M)", "2"},
      {"Twice = 12", "1"},
      // What is no condition.
      {"", "refused"},
      {"ID =", "refused"},
      {"ID = 1 2", "refused"},
      {"Nope = 1", "refused"},
      {"MILL.Nope = 1", "refused"},
      {"COATING.ID.Name = 1", "refused"},
      {"SELECT = 1", "refused"},
      {"Shell('x') = 1", "refused"},
      {"Left(Name) = 'e'", "refused"},
      {"Made = #2/30/2024#", "refused"},
      {"Name = 'open", "refused"},
  };
  const auto records = Open("Q_MILL");
  for (const auto& [criteria, keys] : cases) {
    EXPECT_EQ(Matches(*records, criteria), keys) << criteria;
  }
}

TEST_F(DialectTest, KeyShownUnderAQualifiedName) {
  const auto records = Open("Q_HEAD");
  EXPECT_EQ(Matches(*records, "MILL.ID = 2"), "2");
  EXPECT_EQ(Matches(*records, "[MILL.ID] = 2"), "2");
  EXPECT_EQ(Matches(*records, "CName = 'TiN' AND CID = 1"), "14");
  EXPECT_EQ(Matches(*records, "ID = 2"), "refused");  // of the tool or of the coating
}

TEST_F(DialectTest, SelectsGiveRows) {
  const struct {
    const char* sql;
    const char* rows;  ///< first field of each
  } cases[] = {
      {"SELECT * FROM Q_MILL ORDER BY Name", "42153"},
      {"SELECT * FROM Q_MILL ORDER BY MILL.ID DESC", "54321"},
      {"SELECT * FROM Q_HEAD ORDER BY [MILL.ID] DESC", "54321"},
      {"SELECT * FROM Q_HEAD ORDER BY CName DESC, Name", "41253"},
      {"SELECT Name FROM MILL WHERE Name LIKE 'e*' OR D = 0.1 ORDER BY 1 DESC",
       "'Fräser''End Mill 6''end mill 10'"},
      {"SELECT [Name] FROM COATING ORDER BY [Name]", "'TiAlN''TiN'"},
      {"SELECT [D] FROM Q_MILL WHERE [D]<=6.000000 AND [Flutes]>=2.000000 ORDER BY [D]", "0.12.56"},
      {"SELECT * FROM MILL WHERE [Name] = 'END MILL 6'", "1"},
      {"SELECT * FROM MILL WHERE ID = 42", ""},
      {"SELECT DISTINCT Flutes FROM MILL WHERE D IS NOT NULL OR Fav IS NOT NULL ORDER BY 1 DESC;",
       "7432"},
      {"SELECT TOP 2 ID, D * 2 AS Twice FROM MILL ORDER BY Twice DESC", "21"},
      {"SELECT C.Name, Count(*) FROM MILL AS M INNER JOIN COATING C ON M.Coating = C.ID"
       " GROUP BY C.Name HAVING Count(*) > 1 ORDER BY C.Name",
       "'TiAlN''TiN'"},
      {"SELECT ID FROM MILL WHERE ID < 3 UNION SELECT ID FROM COATING", "12"},
      {"SELECT S.X FROM (SELECT D AS X FROM MILL WHERE D > 3) AS S", "610"},
  };
  for (const auto& [sql, rows] : cases) {
    std::string found;
    for (const auto records = Open(sql); !records->IsEOF(); records->MoveNext()) {
      found += Show(records->GetFieldValue(0));
    }
    EXPECT_EQ(found, rows) << sql;
  }
  for (const char* bad :
       {"SELECT * FROM NOPE", "SELECT Nope FROM MILL", "SELECT *", "SELECT * FROM MILL ORDER BY",
        "SELECT ID FROM MILL, COATING", "SELECT * FROM MILL; SELECT 1", "DELETE FROM MILL"}) {
    EXPECT_THROW(CDaoRecordset(&Database()).Open(dbOpenDynaset, bad), CDaoException) << bad;
  }
}

}  // namespace
}  // namespace orxdb
