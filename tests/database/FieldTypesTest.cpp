#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

constexpr VARTYPE kBytes = VT_ARRAY | VT_UI1;

class FieldTypesTest : public RecordsetFixture {};

TEST_F(FieldTypesTest, StoredValuesReadByDeclaredType) {
  // Declared type, its code, the variant's type (VT_ERROR: refused), stored as, shown as.
  using Case = std::tuple<const char*, short, VARTYPE, const char*, const char*>;
  const Case cases[] = {
      // Flags and whole numbers.
      Case("BOOLEAN", dbBoolean, VT_BOOL, "1", "-1"), Case("YESNO", dbBoolean, VT_BOOL, "0", "0"),
      Case("BYTE", dbByte, VT_UI1, "255", "255"), Case("BYTE", dbByte, VT_ERROR, "256", ""),
      Case("SHORT", dbInteger, VT_I2, "-32768", "-32768"),
      Case("SMALLINT", dbInteger, VT_ERROR, "40000", ""),
      Case("LONG", dbLong, VT_I4, "2147483647", "2147483647"),
      Case("INTEGER", dbLong, VT_ERROR, "2147483648", ""), Case("LONG", dbLong, VT_I4, "2.5", "2"),
      Case("LONG", dbLong, VT_ERROR, "'abc'", ""), Case("LONG", dbLong, VT_ERROR, "x'00'", ""),
      // Other numbers.
      Case("CURRENCY", dbCurrency, VT_CY, "1.23456", "1.2346"),
      Case("CURRENCY", dbCurrency, VT_ERROR, "1e300", ""),
      Case("SINGLE", dbSingle, VT_R4, "0.1", "0.1"), Case("SINGLE", dbSingle, VT_R4, "2", "2"),
      Case("SINGLE", dbSingle, VT_ERROR, "1e300", ""),
      Case("DOUBLE", dbDouble, VT_R8, "0.1", "0.1"),
      // Dates.
      Case("DATETIME", dbDate, VT_DATE, "'2024-03-05 18:00:00'", "2024-03-05 18:00:00"),
      Case("DATETIME", dbDate, VT_DATE, "'2024-03-05'", "2024-03-05"),
      Case("DATETIME", dbDate, VT_ERROR, "'yesterday'", ""),
      // Text and bytes.
      Case("TEXT(10)", dbText, VT_BSTR, "'007'", "'007'"),
      Case("TEXT(10)", dbText, VT_BSTR, "CAST(x'41ff42' AS TEXT)", "'A\377B'"),
      Case("VARCHAR(3)", dbText, VT_BSTR, "'longer than declared'", "'longer than declared'"),
      Case("LONGTEXT", dbMemo, VT_BSTR, "'memo'", "'memo'"),
      Case("LONGBINARY", dbLongBinary, kBytes, "x'010203'", "3 bytes"),
      Case("LONGBINARY", dbLongBinary, kBytes, "x''", "0 bytes"),
      Case("BINARY(4)", dbBinary, kBytes, "x'01020304'", "4 bytes"),
      Case("GUID", dbGUID, kBytes, "zeroblob(16)", "16 bytes"),
      Case("DOUBLE", dbDouble, VT_NULL, "NULL", "null")};
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
  using Case = std::tuple<const char*, Variant, const char*>;  // stored as; null: refused
  const Case cases[] = {
      // Flags and whole numbers.
      Case("B", Variant::FromI4(5), "-1"), Case("B", Text("False"), "0"),
      Case("B", Text("perhaps"), nullptr), Case("Y", Variant::FromI4(300), nullptr),
      Case("Y", Variant::FromR8(2.5), "2"), Case("S", Text("-12"), "-12"),
      Case("S", Text("12 mm"), nullptr), Case("L", Variant::FromR8(3e9), nullptr),
      Case("L", bytes(), nullptr),
      // Other numbers.
      Case("C", Text("1.23456"), "1.2346"), Case("F", Variant::FromR8(1e300), nullptr),
      Case("D", Variant::FromBool(true), "-1.0"),
      Case("D", Variant::FromR8(std::numeric_limits<double>::quiet_NaN()), nullptr),
      // Dates, text and bytes.
      Case("W", Variant::FromDate(45356.75), "2024-03-05 18:00:00"),
      Case("W", Text("soon"), nullptr), Case("T", Text("12345"), "12345"),
      Case("T", Text("äöüäö"), "äöüäö"), Case("T", Text("123456"), nullptr),
      Case("T", Variant::FromR8(0.5), "0.5"), Case("X", bytes(), "0000"),
      Case("X", Text("text"), nullptr),
      // Nothing, and a key.
      Case("D", Variant::Null(), "null"), Case("T", Variant(), "null"),
      Case("ID", Variant::FromI4(7), nullptr)};
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

}  // namespace
}  // namespace orxdb
