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
        " C.ID AS CID FROM MILL AS M LEFT JOIN COATING AS C ON C.ID = M.Coating;"
        "CREATE VIEW Q_NOTE AS SELECT ID AS ID, Name AS Name FROM COATING -- both of them;\n"
        "; CREATE VIEW Q_ONE AS SELECT ID AS ID FROM COATING ORDER BY Name -- the \n"
        " LIMIT 1 -- first\n; CREATE VIEW Q_MIN (ID, N) AS SELECT ID, min(Name) FROM COATING;"
        "CREATE VIEW EACH AS SELECT DISTINCT ID AS ID FROM COATING;"
        "CREATE VIEW Q_EACH AS SELECT ID AS ID FROM EACH;"
        "CREATE TABLE PRICE (ID INTEGER PRIMARY KEY, Price CURRENCY);"
        "INSERT INTO PRICE VALUES (1, 12.34567), (2, 0.00005), (3, -1), (4, NULL), (5, 12.3457)");
  }

  using Row = std::pair<const char*, std::string_view>;

  /// Finds the records that meet each criteria one after the other: criteria and the keys, or
  /// "refused" for a text that is not understood.
  void CheckCriteria(const char* query, std::initializer_list<Row> rows) {
    const auto records = Open(query);
    for (const auto& [criteria, keys] : rows) {
      std::string found;
      try {
        for (bool is = records->FindFirst(criteria); is; is = records->FindNext(criteria)) {
          found += Show(records->GetFieldValue(0));
        }
      } catch (const CDaoException& exception) {
        found = exception.Error() == DaoError::Syntax ? "refused" : exception.Message();
      }
      EXPECT_EQ(found, keys) << criteria;
    }
  }

  /// The first field of each row; behind it, whether the rows are but a copy. Before anybody looks
  /// at them, this component may add a record to another table.
  std::string Rows(const std::string& query, const std::string& added = {}) {
    std::string found = "refused";
    try {
      const auto records = Open(query);
      if (!added.empty()) {
        const auto others = Open(added);
        others->AddNew();
        others->Update();
      }
      long count = 0;
      for (found = ""; !records->IsEOF() && count < 99; records->MoveNext(), ++count) {
        found += Show(records->GetFieldValue(0));
      }
      records->MoveLast();
      EXPECT_EQ(records->GetRecordCount(), count) << query;
      records->MoveFirst();
      records->Edit();
    } catch (const CDaoException& exception) {
      if (exception.Error() == DaoError::ReadOnly) found += " copied";
    }
    return found;
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
       Row("Flutes * 2 + 1 = 5", "15"), Row("-2 ^ 2 = -4 AND 2 ^ -1 ^ 2 = 0.25 AND ID = 1", "1"),
       Row("7 \\ 2 * 2 = 1 AND 17 MOD 10 \\ 4 = 1 AND 3 / 2 = 1.5 AND ID = 1", "1"),
       Row("ID = 1 OR ID = 2 AND D > 100", "1"), Row("NOT ID = 1 AND ID < 3", "2"),
       Row("ID = 1 XOR ID < 3", "2"), Row("(ID = 1) = True AND - (ID = 1) = 1", "1"),
       Row("Flutes & NULL & '/' & D = '2/6'", "1"), Row("Name + '!' = 'end mill 6!'", "1"),
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
       Row("[MILL].[Flutes] = 7", "4"), Row("Q_MILL.D = 10", "2"), Row("Coating = 'tin'", "14"),
       Row("COATING.Name = 'tialn'", "25"),
       Row("D > 3 AND [CoatingKey] IN (SELECT ID FROM COATING WHERE Name = 'TIN')", "1"),
       Row("EXISTS (SELECT * FROM COATING C WHERE C.Name = 'TiN' AND C.ID = CoatingKey)", "14"),
       Row("D = (SELECT Max(M.D) FROM MILL AS M)", "2"),
       Row("Fav IN (SELECT Fav FROM MILL WHERE ID = 3)", "13"), Row("Twice = 12", "1"),
       // What is no condition.
       Row("", "refused"), Row("ID =", "refused"), Row("ID = 1 2", "refused"),
       Row("Nope = 1", "refused"), Row("MILL.Nope = 1", "refused"), Row("ID.ID.ID = 1", "refused"),
       Row("SELECT = 1", "refused"), Row("Shell('x') = 1", "refused"),
       Row("Left(D) = 1", "refused"), Row("Made = #2/30/24#", "refused"),
       Row("D = 'x", "refused")});
  CheckCriteria("SELECT * FROM PRICE",
                {Row("Price = 12.3457 AND Price IN (12.345700)", "15"),
                 Row("Price > 12.3456", "15"), Row("Price > 12.3457 OR Price = 0", "2"),
                 Row("Nz(Price) = 0", "24"), Row("Price BETWEEN 12.3457 AND 12.3457", "15"),
                 Row("Price IN (SELECT Price FROM PRICE WHERE ID = 1)", "15")});
  // A key shown under a qualified name; ID alone is the tool's or the coating's.
  CheckCriteria("Q_HEAD", {Row("MILL.ID = 2", "2"), Row("[MILL.ID] = 2", "2"),
                           Row("CName = 'TiN' AND CID = 1", "14"), Row("ID = 2", "refused")});
}

TEST_F(DialectTest, SelectsGiveRows) {
  for (const auto& [sql, rows] :
       {Row("SELECT * FROM Q_MILL ORDER BY Name", "42153"),
        Row("SELECT * FROM Q_MILL ORDER BY MILL.ID DESC", "54321"),
        Row("SELECT * FROM Q_HEAD ORDER BY [MILL.ID] DESC", "54321"),
        Row("SELECT * FROM Q_HEAD ORDER BY CName DESC, Name", "41253"),
        Row("SELECT * FROM PRICE ORDER BY Price DESC, ID", "15234"),
        Row("SELECT * FROM Q_NOTE ORDER BY 2", "21"),
        Row("Q_NOTE", "12"),
        Row("Q_ONE", "2 copied"),
        Row("Q_MIN", "2 copied"),
        Row("Q_EACH", "12 copied"),
        Row("SELECT ID, Left(Name, 3) AS X FROM MILL WHERE D > 3 ORDER BY X, ID DESC", "21"),
        Row("SELECT M.* FROM (MILL AS M LEFT JOIN COATING C ON M.Coating = C.ID) INNER JOIN COATING"
            " AS B ON B.ID = C.ID ORDER BY B.ID, M.ID",
            "1425"),
        Row("SELECT C.ID FROM MILL RIGHT JOIN COATING C ON Coating = C.ID AND D > 7", "12"),
        Row("SELECT Name FROM MILL WHERE Name LIKE 'e*' OR D = 0.1 ORDER BY 1 DESC",
            "'Fräser''End Mill 6''end mill 10' copied"),
        Row("SELECT [D] FROM Q_MILL WHERE [D]<=6.000000 ORDER BY [D]", "0.12.56 copied"),
        Row("SELECT DISTINCT Flutes FROM MILL WHERE D > 0 OR Fav ORDER BY 1 DESC;", "432 copied"),
        Row("SELECT TOP 2 ID, D * 2 AS Twice FROM MILL ORDER BY Twice DESC", "21 copied"),
        Row("SELECT C.Name, Count(*) FROM MILL AS M INNER JOIN COATING C ON M.Coating = C.ID"
            " GROUP BY C.Name HAVING Count(*) > 1 ORDER BY C.Name",
            "'TiAlN''TiN' copied"),
        Row("SELECT ID, Max(Name) AS N FROM MILL", "2 copied"),
        Row("SELECT ID FROM MILL WHERE ID < 3 UNION SELECT ID FROM COATING", "12 copied"),
        Row("SELECT * FROM Q_NOTE UNION ALL SELECT * FROM Q_NOTE", "1212 copied"),
        Row("SELECT * FROM COATING UNION SELECT ID, Name FROM MILL ORDER BY Name",
            "4215321 copied"),
        Row("SELECT X FROM (SELECT D AS X, Fav FROM MILL) S WHERE Fav = True", "62.5 copied"),
        Row("SELECT * FROM NOPE", "refused"),
        Row("SELECT Nope FROM MILL", "refused"),
        Row("SELECT N.* FROM MILL", "refused"),
        Row("SELECT ID FROM MILL, COATING", "refused"),
        Row("SELECT ID FROM MILL UNION SELECT TOP 1 ID FROM MILL", "refused"),
        Row("SELECT * FROM MILL; SELECT 1", "refused")}) {
    EXPECT_EQ(Rows(sql), rows) << sql;
  }
}

// A join that meets more rows shows its record once. What this component adds to a joined table, if
// by a trigger, counts from the next Requery on.
TEST_F(DialectTest, JoinsShowTheRecordsOfTheirOpening) {
  Execute(
      "CREATE TABLE HEAD (ID INTEGER PRIMARY KEY, Mill LONG DEFAULT 3, H TEXT(5) DEFAULT 'zz');"
      "CREATE TRIGGER MORE AFTER INSERT ON PRICE BEGIN INSERT INTO HEAD (Mill) VALUES (3); END;"
      "INSERT INTO HEAD (Mill, H) VALUES (1, 'x'), (2, 'y'), (1, 'z'), (2, 'w');"
      "CREATE VIEW Q_HEADS AS SELECT M.ID AS ID, M.Name AS Name, H.H AS H"
      " FROM MILL AS M LEFT JOIN HEAD AS H ON H.Mill = M.ID;");
  for (const auto& [sql, rows] :
       {Row("Q_HEADS", "12345"), Row("SELECT * FROM Q_HEADS ORDER BY Name", "42153"),
        Row("SELECT * FROM Q_HEADS ORDER BY H", "34521"),
        Row("SELECT MILL.ID FROM MILL INNER JOIN HEAD ON HEAD.Mill = MILL.ID", "12")}) {
    for (const char* added : {"SELECT * FROM HEAD", "SELECT * FROM PRICE"}) {
      EXPECT_EQ(Rows(sql, added), rows) << sql << added;
      Execute("DELETE FROM HEAD WHERE Mill = 3");
    }
  }
}

TEST_F(DialectTest, StoredQueriesCallWhatIsHarmless) {
  for (const auto& [computed, rows] :
       {Row("floor(pi()) + ceil(sqrt(ID)) + log2(8) + mod(7, 4)", "'10.0''11.0'"),
        Row("degrees(radians(180)) || substring(ID, 1) || soundex('x')",
            "'180.01X000''180.02X000'"),
        Row("max(ID, 2, 0)", "'2''2'"), Row("min(ID)", "'1' copied"), Row("sum(ID)", "'3' copied"),
        Row("rank() OVER (ORDER BY ID DESC)", "'1''2' copied"),
        Row("lag(ID) OVER (ORDER BY ID DESC)", "null'2' copied"),
        Row("sum(ID) OVER ()", "'3''3' copied"),
        Row("(SELECT max(rootpage) FROM sqlite_schema)", "refused"),
        Row("sqlite_compileoption_get(1)", "refused"), Row("load_extension('x')", "refused")}) {
    Execute("DROP VIEW IF EXISTS Q_X; CREATE VIEW Q_X AS SELECT CAST(" + std::string(computed) +
            " AS TEXT) AS X, ID AS ID FROM COATING -- the end");
    EXPECT_EQ(Rows("Q_X"), rows) << computed;
  }
}

}  // namespace
}  // namespace orxdb
