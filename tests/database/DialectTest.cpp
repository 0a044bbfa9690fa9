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

  using Row = std::pair<const char*, std::string_view>;

  /// Finds the records that meet each criteria one after the other: criteria and the keys, or
  /// "refused" for a text that is not understood.
  void CheckCriteria(const char* query, std::initializer_list<Row> rows) {
    const auto records = Open(query);
    for (const auto& [criteria, keys] : rows) {
      std::string found;
      const auto find = [&, &criteria = criteria] {
        for (bool is = records->FindFirst(criteria); is; is = records->FindNext(criteria)) {
          found += Show(records->GetFieldValue(0));
        }
      };
      if (keys == "refused") {
        EXPECT_EQ(ErrorOf(find), DaoError::Syntax) << criteria;
      } else {
        EXPECT_NO_THROW(find()) << criteria;
        EXPECT_EQ(found, keys) << criteria;
      }
    }
  }
};

TEST_F(DialectTest, CriteriaSelectRecords) {
  CheckCriteria(
      "Q_MILL",
      {// Text: either quotes, doubled to escape, letter case aside.
       Row("Name = 'END MILL 6'", "1"), Row("[Name]=\"O'Brien \"\"x\"\"\"", "3"),
       Row("Name = 'O''Brien \"x\"'", "3"), Row("Name <> 'end mill 6'", "2345"),
       Row("Name IN ('END MILL 6', \"fräser\")", "15"), Row("Name NOT IN ('END MILL 6')", "2345"),
       Row("Name < 'F'", "124"), Row("Name BETWEEN 'fz' AND 'END'", "125"),
       Row("Coating = 'tin'", "14"),
       // Patterns.
       Row("Name LIKE 'end*'", "12"), Row("Name LIKE 'END MILL ##'", "2"),
       Row("Name LIKE '?nd m*'", "12"), Row("Name LIKE '*[!a-z0-9]x*'", "3"),
       Row("Name LIKE '[[]a]*'", "4"), Row("Name LIKE '*[#][?]'", "4"),
       Row("Name LIKE 'fr?ser'", "5"), Row("Name LIKE 'fr[à-ü]ser'", "5"),
       Row("Name LIKE '%mill%'", ""), Row("Name LIKE '*[6'", ""),
       Row("Name NOT LIKE '*mill*'", "345"), Row("D LIKE '6' OR D LIKE '2.?'", "13"),
       // Numbers, flags, dates, nulls.
       Row("D = 6.000000", "1"), Row("D BETWEEN 10 AND 2.5", "123"),
       Row("D BETWEEN 12 AND Flutes", "12"), Row("D IS NULL", "4"),
       Row("NOT D IS NULL AND Made IS NOT NULL", "1235"), Row("D = NULL", ""),
       Row("Fav = True", "13"), Row("Fav", "13"), Row("Fav = no", "24"),
       Row("Made = #3/1/24#", "1"), Row("Made > #2024-03-01#", "23"),
       Row("Made > #12/31/99#", "1235"), Row("Made <= #3/1/2024 1:30 PM#", "125"),
       Row("Year(Made) = 2024 AND Month(Made) = 12 AND Day(Made) = 31", "3"),
       Row("Made - #2/29/2024# = 1", "1"), Row("Made + 1 = DateSerial(2024, 3, 2)", "1"),
       Row("Made < Now() AND Made < Date()", "1235"),
       // Arithmetic and precedence.
       Row("Flutes * 2 + 1 = 5", "15"), Row("-2 ^ 2 = -4 AND ID = 1", "1"),
       Row("7 \\ 2 * 2 = 1 AND ID = 1", "1"), Row("17 MOD 10 \\ 4 = 1 AND ID = 1", "1"),
       Row("3 / 2 = 1.5 AND ID = 1", "1"), Row("ID = 1 OR ID = 2 AND D > 100", "1"),
       Row("NOT ID = 1 AND ID < 3", "2"), Row("ID = 1 XOR ID < 3", "2"),
       Row("(ID = 1) = True", "1"), Row("- (ID = 1) = 1", "1"),
       Row("Flutes & '/' & D = '2/6'", "1"), Row("Name + '!' = 'end mill 6!'", "1"),
       Row("'a' & NULL & 'b' = 'ab' AND ID = 2", "2"),
       // Functions.
       Row("Left(Name, 3) = 'end' AND Right(Name, 1) = '6' AND Mid(Name, 5, 4) = 'MILL'", "1"),
       Row("InStr(Name, 'MILL') = 5 AND Len(Trim('  x ')) = 1", "12"),
       Row("Val('12abc') = 12 AND UCase('ä' & Name) = 'äEND MILL 6'", "1"),
       Row("CInt(2.5) = 2 AND CLng(3.5) = 4 AND Round(2.45, 1) = 2.4 AND ID = 1", "1"),
       Row("Int(-2.5) = -3 AND Fix(-2.5) = -2 AND Sgn(-3) = -1 AND Abs(-3) = 3 AND ID = 1", "1"),
       Row("IIf(IsNull(D), 'none', 'some') = 'NONE'", "4"), Row("Nz([Rake #], 99) = 99", "3"),
       Row("CStr(D) = '2.5' AND CDbl('2.5') = D", "3"),
       // Names: brackets, base table fields, sub-selects.
       Row("[Rake #] < 0", "2"), Row("MILL.ID = 3", "3"), Row("[MILL.ID] = 3", "3"),
       Row("[MILL].[Flutes] = 7", "4"), Row("Q_MILL.D = 10", "2"),
       Row("COATING.Name = 'tialn'", "25"),
       Row("D > 3 AND [CoatingKey] IN (SELECT ID FROM COATING WHERE Name = 'TIN')", "1"),
       Row("EXISTS (SELECT * FROM COATING C WHERE C.Name = 'TiN' AND C.ID = CoatingKey)", "14"),
       Row("D = (SELECT Max(M.D) FROM MILL AS M)", "2"), Row("Twice = 12", "1"),
       // What is no condition.
       Row("", "refused"), Row("ID =", "refused"), Row("ID = 1 2", "refused"),
       Row("Nope = 1", "refused"), Row("MILL.Nope = 1", "refused"),
       Row("COATING.ID.Name = 1", "refused"), Row("SELECT = 1", "refused"),
       Row("Shell('x') = 1", "refused"), Row("Left(Name) = 'e'", "refused"),
       Row("Made = #2/30/2024#", "refused"), Row("Name = 'open", "refused")});
  // A key shown under a qualified name; ID alone is the tool's or the coating's.
  CheckCriteria("Q_HEAD", {Row("MILL.ID = 2", "2"), Row("[MILL.ID] = 2", "2"),
                           Row("CName = 'TiN' AND CID = 1", "14"), Row("ID = 2", "refused")});
}

TEST_F(DialectTest, SelectsGiveRows) {
  for (const auto& [sql, rows] :
       {// the first field of each row
        Row("SELECT * FROM Q_MILL ORDER BY Name", "42153"),
        Row("SELECT * FROM Q_MILL ORDER BY MILL.ID DESC", "54321"),
        Row("SELECT * FROM Q_HEAD ORDER BY [MILL.ID] DESC", "54321"),
        Row("SELECT * FROM Q_HEAD ORDER BY CName DESC, Name", "41253"),
        Row("SELECT Name FROM MILL WHERE Name LIKE 'e*' OR D = 0.1 ORDER BY 1 DESC",
            "'Fräser''End Mill 6''end mill 10'"),
        Row("SELECT [Name] FROM COATING ORDER BY [Name]", "'TiAlN''TiN'"),
        Row("SELECT [D] FROM Q_MILL WHERE [D]<=6.000000 AND [Flutes]>=2.000000 ORDER BY [D]",
            "0.12.56"),
        Row("SELECT * FROM MILL WHERE [Name] = 'END MILL 6'", "1"),
        Row("SELECT * FROM MILL WHERE ID = 42", ""),
        Row("SELECT DISTINCT Flutes FROM MILL WHERE D IS NOT NULL OR Fav IS NOT NULL ORDER BY 1 "
            "DESC;",
            "7432"),
        Row("SELECT TOP 2 ID, D * 2 AS Twice FROM MILL ORDER BY Twice DESC", "21"),
        Row("SELECT C.Name, Count(*) FROM MILL AS M INNER JOIN COATING C ON M.Coating = C.ID"
            " GROUP BY C.Name HAVING Count(*) > 1 ORDER BY C.Name",
            "'TiAlN''TiN'"),
        Row("SELECT ID FROM MILL WHERE ID < 3 UNION SELECT ID FROM COATING", "12"),
        Row("SELECT S.X FROM (SELECT D AS X FROM MILL WHERE D > 3) AS S", "610")}) {
    std::string found;
    for (const auto records = Open(sql); !records->IsEOF(); records->MoveNext()) {
      found += Show(records->GetFieldValue(0));
    }
    EXPECT_EQ(found, rows) << sql;
  }
  for (const char* bad :
       {"SELECT * FROM NOPE", "SELECT Nope FROM MILL", "SELECT *", "SELECT * FROM MILL ORDER BY",
        "SELECT ID FROM MILL, COATING", "SELECT ID FROM MILL UNION SELECT TOP 1 ID FROM MILL",
        "SELECT * FROM MILL; SELECT 1", "DELETE FROM MILL"}) {
    EXPECT_THROW(CDaoRecordset(&Database()).Open(dbOpenDynaset, bad), CDaoException) << bad;
  }
}

}  // namespace
}  // namespace orxdb
