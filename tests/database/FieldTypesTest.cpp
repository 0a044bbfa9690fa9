#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

constexpr VARTYPE kBytes = VT_ARRAY | VT_UI1;

class FieldTypesTest : public RecordsetFixture {};

TEST_F(FieldTypesTest, StoredValuesReadByDeclaredType) {
  const struct {
    const char* declared;
    short code;
    VARTYPE type;  ///< VT_ERROR: the value is refused
    const char* stored;
    const char* shown;
  } cases[] = {
      {"BOOLEAN", dbBoolean, VT_BOOL, "1", "-1"},
      {"YESNO", dbBoolean, VT_BOOL, "0", "0"},
      {"BYTE", dbByte, VT_UI1, "255", "255"},
      {"BYTE", dbByte, VT_ERROR, "256", ""},
      {"SHORT", dbInteger, VT_I2, "-32768", "-32768"},
      {"SMALLINT", dbInteger, VT_ERROR, "40000", ""},
      {"LONG", dbLong, VT_I4, "2147483647", "2147483647"},
      {"INTEGER", dbLong, VT_ERROR, "2147483648", ""},
      {"LONG", dbLong, VT_I4, "2.5", "2"},
      {"LONG", dbLong, VT_ERROR, "'abc'", ""},
      {"LONG", dbLong, VT_ERROR, "x'00'", ""},
      {"CURRENCY", dbCurrency, VT_CY, "1.23456", "1.2346"},
      {"CURRENCY", dbCurrency, VT_ERROR, "1e300", ""},
      {"SINGLE", dbSingle, VT_R4, "0.1", "0.1"},
      {"SINGLE", dbSingle, VT_R4, "2", "2"},
      {"SINGLE", dbSingle, VT_ERROR, "1e300", ""},
      {"DOUBLE", dbDouble, VT_R8, "0.1", "0.1"},
      {"DATETIME", dbDate, VT_DATE, "'2024-03-05 18:00:00'", "2024-03-05 18:00:00"},
      {"DATETIME", dbDate, VT_DATE, "'2024-03-05'", "2024-03-05"},
      {"DATETIME", dbDate, VT_ERROR, "'yesterday'", ""},
      {"TEXT(10)", dbText, VT_BSTR, "'007'", "'007'"},
      {"TEXT(10)", dbText, VT_BSTR, "CAST(x'41ff42' AS TEXT)",
       "'A\xff"
       "B'"},
      {"VARCHAR(3)", dbText, VT_BSTR, "'longer than declared'", "'longer than declared'"},
      {"LONGTEXT", dbMemo, VT_BSTR, "'memo'", "'memo'"},
      {"LONGBINARY", dbLongBinary, kBytes, "x'010203'", "3 bytes"},
      {"LONGBINARY", dbLongBinary, kBytes, "x''", "0 bytes"},
      {"BINARY(4)", dbBinary, kBytes, "x'01020304'", "4 bytes"},
      {"GUID", dbGUID, kBytes, "zeroblob(16)", "16 bytes"},
      {"DOUBLE", dbDouble, VT_NULL, "NULL", "null"},
  };
  int number = 0;
  for (const auto& [declared, code, type, stored, shown] : cases) {
    const std::string table = "T" + std::to_string(++number);
    Execute("CREATE TABLE " + table + " (ID INTEGER PRIMARY KEY, V " + declared + ")");
    Execute("INSERT INTO " + table + " (V) VALUES (" + stored + ")");
    SCOPED_TRACE(std::string(declared) + " " + stored);
    const auto records = Open("SELECT * FROM " + table);
    CDaoFieldInfo info;
    records->GetFieldInfo("v", info);
    EXPECT_EQ(info.m_nType, code);
    if (type == VT_ERROR) {
      EXPECT_EQ(ErrorOf([&] { records->GetFieldValue("V"); }), DaoError::BadValue);
    } else {
      const Variant value = records->GetFieldValue(1);
      EXPECT_EQ(value.type(), type);
      EXPECT_EQ(Show(value), shown);
    }
  }
}

TEST_F(FieldTypesTest, GivenValuesAreConvertedOrRefused) {
  Execute(
      "CREATE TABLE ALLTYPES (ID INTEGER PRIMARY KEY AUTOINCREMENT, B BOOLEAN, Y BYTE, S SHORT,"
      " L LONG, C CURRENCY, F SINGLE, D DOUBLE, W DATETIME, T TEXT(5), X LONGBINARY);"
      "INSERT INTO ALLTYPES VALUES (1, -1, 1, 1, 1, 1, 1, 1, '2024-01-01 00:00:00', 't', x'01')");
  const auto bytes = [] { return Variant::FromArray(VT_UI1, SafeArray::Vector(VT_UI1, 2)); };
  const struct {
    const char* field;
    Variant given;
    const char* stored;  ///< null: refused
  } cases[] = {
      {"B", Variant::FromI4(5), "-1"},
      {"B", Text("False"), "0"},
      {"B", Text("perhaps"), nullptr},
      {"Y", Variant::FromI4(300), nullptr},
      {"Y", Variant::FromR8(2.5), "2"},
      {"S", Text("-12"), "-12"},
      {"S", Text("12 mm"), nullptr},
      {"L", Variant::FromR8(3e9), nullptr},
      {"L", bytes(), nullptr},
      {"C", Text("1.23456"), "1.2346"},
      {"F", Variant::FromR8(1e300), nullptr},
      {"D", Variant::FromBool(true), "-1.0"},
      {"D", Variant::FromR8(std::numeric_limits<double>::quiet_NaN()), nullptr},
      {"W", Variant::FromDate(45356.75), "2024-03-05 18:00:00"},
      {"W", Text("soon"), nullptr},
      {"T", Text("12345"), "12345"},
      {"T", Text("äöüäö"), "äöüäö"},
      {"T", Text("123456"), nullptr},
      {"T", Variant::FromR8(0.5), "0.5"},
      {"X", bytes(), "0000"},
      {"X", Text("text"), nullptr},
      {"D", Variant::Null(), "null"},
      {"T", Variant(), "null"},
      {"ID", Variant::FromI4(7), nullptr},
  };
  const auto records = Open("SELECT * FROM ALLTYPES");
  for (const auto& [field, given, stored] : cases) {
    SCOPED_TRACE(std::string(field) + " " + Show(given));
    Execute("UPDATE ALLTYPES SET B = -1, Y = 1, S = 1, L = 1, C = 1, F = 1, D = 1, T = 't'");
    const std::string column = *field == 'X' ? "hex(X)" : field;
    const std::string before = Ask("SELECT " + column + " FROM ALLTYPES");
    records->Edit();
    if (stored == nullptr) {
      EXPECT_THROW(records->SetFieldValue(field, given.get()), CDaoException);
    } else {
      records->SetFieldValue(field, given.get());
    }
    records->Update();
    EXPECT_EQ(Ask("SELECT " + column + " FROM ALLTYPES"), stored == nullptr ? before : stored);
  }
  records->Edit();
  EXPECT_EQ(ErrorOf([&] { records->SetFieldValueNull("Nope"); }), DaoError::BadField);
}

TEST_F(FieldTypesTest, OriginsAreSeenThroughViewsJoinsAndSubSelects) {
  Execute(
      "CREATE VIEW Q_OVER AS SELECT Q.ID AS ID, Q.Coating AS Skin, Q.Twice AS Twice"
      " FROM (SELECT * FROM Q_MILL) AS Q;"
      "INSERT INTO MILL (D) VALUES (1.5)");
  const struct {
    const char* query;
    const char* field;
    const char* origin;
    short type;
  } cases[] = {{"Q_MILL", "ID", "MILL.ID", dbLong},
               {"Q_MILL", "Coating", "COATING.Name", dbText},
               {"Q_MILL", "Flutes", "MILL.Flutes", dbInteger},
               {"Q_OVER", "Skin", "COATING.Name", dbText},
               {"Q_OVER", "Twice", ".", dbDouble},
               {"SELECT Name AS N FROM MILL", "N", "MILL.Name", dbText}};
  for (const auto& [query, field, origin, type] : cases) {
    CDaoFieldInfo info;
    Open(query)->GetFieldInfo(field, info, AFX_DAO_SECONDARY_INFO);
    EXPECT_EQ(info.m_strSourceTable + "." + info.m_strSourceField, origin) << query;
    EXPECT_EQ(info.m_nType, type) << query;
  }
}

}  // namespace
}  // namespace orxdb
