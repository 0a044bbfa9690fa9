// Fields by their declared types: what is read, what may be set, what a new record starts with.
#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

constexpr VARTYPE kBytes = VT_ARRAY | VT_UI1;

struct FieldTypesTest : RecordsetFixture {
  /// A record whose field V has that type, and holds what SQL says.
  std::unique_ptr<CDaoRecordset> OpenField(const std::string& declared, const std::string& stored) {
    Execute("DROP TABLE IF EXISTS T; CREATE TABLE T (ID INTEGER PRIMARY KEY, V " + declared +
            "); INSERT INTO T (V) VALUES (" + stored + ")");
    return Open("SELECT * FROM T");
  }
};

TEST_F(FieldTypesTest, StoredValuesReadByDeclaredType) {
  // Declared type, the variant's type (VT_ERROR: refused), stored as, shown as.
  using Case = std::tuple<const char*, VARTYPE, const char*, const char*>;
  const Case cases[] = {
      // Flags and whole numbers.
      Case("BOOLEAN", VT_BOOL, "1", "-1"), Case("YESNO", VT_BOOL, "0", "0"),
      Case("BYTE", VT_UI1, "255", "255"), Case("BYTE", VT_ERROR, "256", ""),
      Case("SHORT", VT_I2, "-32768", "-32768"), Case("SMALLINT", VT_ERROR, "40000", ""),
      Case("LONG", VT_I4, "2147483647", "2147483647"), Case("LONG", VT_I4, "2.5", "2"),
      Case("INTEGER", VT_ERROR, "2147483648", ""), Case("LONG", VT_ERROR, "'abc'", ""),
      Case("LONG", VT_ERROR, "x'00'", ""), Case("", VT_I4, "-2147483648", "-2147483648"),
      Case("", VT_R8, "4294967296", "4294967296"),
      // Other numbers.
      Case("CURRENCY", VT_CY, "1.23456", "1.2346"), Case("CURRENCY", VT_ERROR, "1e300", ""),
      Case("SINGLE", VT_R4, "0.1", "0.1"), Case("SINGLE", VT_ERROR, "1e300", ""),
      Case("DOUBLE", VT_R8, "0.1", "0.1"), Case("DOUBLE", VT_NULL, "NULL", "null"),
      // Dates.
      Case("DATETIME", VT_DATE, "'2024-03-05 18:00:00'", "2024-03-05 18:00:00"),
      Case("DATETIME", VT_DATE, "'2024-03-05'", "2024-03-05"),
      Case("DATETIME", VT_ERROR, "'yesterday'", ""),
      // Text and bytes.
      Case("TEXT(10)", VT_BSTR, "CAST(x'41ff42' AS TEXT)", "'A\377B'"),
      Case("VARCHAR(3)", VT_BSTR, "'007 and more'", "'007 and more'"),
      Case("LONGTEXT", VT_BSTR, "'memo'", "'memo'"), Case("LONGBINARY", kBytes, "x''", "0 bytes"),
      Case("BINARY(4)", kBytes, "x'01020304'", "4 bytes"),
      Case("GUID", kBytes, "zeroblob(16)", "16 bytes")};
  for (const auto& [declared, type, stored, shown] : cases) {
    SCOPED_TRACE(std::string(declared) + " " + stored);
    const auto records = OpenField(declared, stored);
    if (type == VT_ERROR) {
      EXPECT_EQ(ErrorOf([&] { records->GetFieldValue("V"); }), DaoError::BadValue);
    } else {
      EXPECT_EQ(records->GetFieldValue("v").type(), type);
      EXPECT_EQ(Values(*records, {"V"}), shown);
    }
  }
}

TEST_F(FieldTypesTest, GivenValuesAreConvertedOrRefused) {
  const auto bytes = [] { return Variant::FromArray(VT_UI1, SafeArray::Vector(VT_UI1, 2)); };
  const auto whole = [](VARTYPE type, LONGLONG bits) {
    Variant value = Variant::FromI4(0);
    value.ptr()->llVal = bits;
    value.ptr()->vt = type;
    return value;
  };
  using Case = std::tuple<const char*, Variant, const char*>;  // stored as; null: refused
  const Case cases[] = {
      // Flags and whole numbers.
      Case("BOOLEAN", Variant::FromI4(5), "-1"), Case("BOOLEAN", Text("False"), "0"),
      Case("BOOLEAN", whole(VT_BOOL, 1), "-1"), Case("BOOLEAN", Text("perhaps"), nullptr),
      Case("BYTE", Variant::FromI4(300), nullptr), Case("BYTE", Variant::FromR8(2.5), "2"),
      Case("SHORT", Text("-12"), "-12"), Case("SHORT", Text("12 mm"), nullptr),
      Case("LONG", Variant::FromR8(3e9), nullptr), Case("LONG", bytes(), nullptr),
      Case("LONG", whole(VT_UI4, 4294967295), nullptr), Case("LONG", whole(VT_UINT, 7), "7"),
      Case("BYTE", whole(VT_I1, 255), nullptr),
      // Other numbers.
      Case("CURRENCY", Text("1.23456"), "1.2346"), Case("SINGLE", Variant::FromR8(1e300), nullptr),
      Case("DOUBLE", Variant::FromBool(true), "-1.0"),
      Case("DOUBLE", Variant::FromR8(std::numeric_limits<double>::quiet_NaN()), nullptr),
      // Dates, text and bytes.
      Case("DATETIME", Variant::FromDate(45356.75), "'2024-03-05 18:00:00'"),
      Case("DATETIME", Text("soon"), nullptr), Case("TEXT(5)", Text("äöüäö"), "'äöüäö'"),
      Case("TEXT(5)", Text("123456"), nullptr), Case("TEXT(5)", Variant::FromR8(0.5), "'0.5'"),
      Case("LONGBINARY", bytes(), "X'0000'"), Case("LONGBINARY", Text("text"), nullptr),
      // Nothing.
      Case("DOUBLE", Variant::Null(), "NULL"), Case("TEXT(5)", Variant(), "NULL")};
  for (const auto& [declared, given, stored] : cases) {
    SCOPED_TRACE(std::string(declared) + " " + Show(given));
    const auto records = OpenField(declared, "1");
    const std::string before = Ask("SELECT quote(V) FROM T");
    records->Edit();
    if (stored == nullptr) {
      EXPECT_THROW(records->SetFieldValue("V", given.get()), CDaoException);
    } else {
      records->SetFieldValue("V", given.get());
    }
    records->Update();
    EXPECT_EQ(Ask("SELECT quote(V) FROM T"), stored == nullptr ? before : stored);
  }
}

TEST_F(FieldTypesTest, LongValuesAreKeptUpToALimit) {
  const auto pictures = OpenField("LONGBINARY", "zeroblob(16000000)), (zeroblob(20000000)");
  const auto store = [&](ULONG bytes) {
    pictures->SetFieldValue("V",
                            Variant::FromArray(VT_UI1, SafeArray::Vector(VT_UI1, bytes)).get());
    pictures->Update();
  };
  EXPECT_EQ(Values(*pictures, {"V"}), "16000000 bytes");
  pictures->Edit();
  EXPECT_EQ(ErrorOf([&] { store(17000000); }), DaoError::Engine);
  EXPECT_EQ(Ask("SELECT length(V) FROM T"), "16000000|20000000");
  store(15000000);
  EXPECT_EQ(Values(*pictures, {"V"}), "15000000 bytes");
  EXPECT_EQ(ErrorOf([&] { pictures->MoveNext(); }), DaoError::Engine)
      << "stored by another program";
}

TEST_F(FieldTypesTest, DefaultsAreThoseOfAPlainInsert) {
  // Texts, words, names that stand for texts, and what is computed.
  for (const std::string text : {"'it''s'", "\"quoted\"", "[a name]", "word", "\"true\"", "TRUE",
                                 "NULL", "-5.5", "x'41'", "(1 -- one\n + 1)", "(2 -- two\n)",
                                 "(sqrt(16) || pi())", "CURRENT_DATE", "(date('now', '+1 day'))"}) {
    const auto records = OpenField("LONGTEXT DEFAULT " + text, "0");
    Execute("DELETE FROM T; INSERT INTO T DEFAULT VALUES");
    records->AddNew();
    records->SetBookmark(records->GetLastModifiedBookmark().get());
    const std::string shown = Values(*records, {"V"});
    records->Update();
    records->Requery();
    EXPECT_EQ(Values(*records, {"V"}), shown) << text;
    EXPECT_EQ(Ask("SELECT count(*) || count(DISTINCT quote(V)) FROM T"), "21") << text;
  }
}

TEST_F(FieldTypesTest, GeneratedColumnsAreReadOnly) {
  Execute(
      "CREATE TABLE ODD (ID INTEGER PRIMARY KEY AUTOINCREMENT, Twice LONG AS (ID * 2) NOT NULL,"
      " More LONG AS (ID + 1) STORED, Made DATETIME DEFAULT CURRENT_TIMESTAMP)");
  const auto records = Open("SELECT * FROM ODD");
  records->AddNew();
  for (const char* field : {"Twice", "More"}) {
    EXPECT_EQ(ErrorOf([&] { records->SetFieldValueNull(field); }), DaoError::ReadOnly);
  }
  records->Update();
  EXPECT_EQ(Ask("SELECT Twice || More FROM ODD WHERE Made > '2020'"), "22");
}

TEST_F(FieldTypesTest, OnlyFieldsOfTheOwnTableCanBeSet) {
  Execute("INSERT INTO MILL (Name, Coating) VALUES ('a', 1)");
  const auto mills = Open("Q_MILL");
  EXPECT_EQ(ErrorOf([&] { mills->SetFieldValueNull("D"); }), DaoError::NotEditing);
  EXPECT_EQ(ErrorOf([&] { mills->Update(); }), DaoError::NotEditing);
  mills->Edit();
  EXPECT_EQ(ErrorOf([&] { mills->SetFieldValueNull("Nope"); }), DaoError::BadField);
  for (const char* field : {"ID", "Coating", "CoatingKey", "Twice"}) {
    EXPECT_EQ(ErrorOf([&] { mills->SetFieldValueNull(field); }), DaoError::ReadOnly) << field;
  }
  mills->SetFieldValue("d", Variant::FromI4(4).get());
  mills->Update();
  EXPECT_EQ(Show(mills->GetFieldValue("Twice")), "8");
  EXPECT_EQ(Ask("SELECT Name FROM COATING WHERE ID = 1"), "TiN");
}

}  // namespace
}  // namespace orxdb
