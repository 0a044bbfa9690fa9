// Texts without regard to the case of letters of any alphabet.
#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <random>

#include "database/engine/Connection.h"
#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

/// A character, and the code by which it is compared.
struct Piece {
  std::string_view bytes;
  int order;
};

constexpr std::array kPieces = {
    Piece{"a", 'a'},         Piece{"A", 'a'},         Piece{"k", 'k'},
    Piece{"K", 'k'},         Piece{"\u212a", 0x212a},  // of Kelvin: no k
    Piece{"s", 's'},         Piece{"\u017f", 0x17f},   // long: no s
    Piece{"ä", 0xe4},        Piece{"Ä", 0xe4},        Piece{"ø", 0xf8},
    Piece{"Ø", 0xf8},        Piece{"ß", 0xdf},        Piece{"\u1e9e", 0xdf},
    Piece{"σ", 0x3c3},       Piece{"ς", 0x3c3},       Piece{"Σ", 0x3c3},
    Piece{"\u023a", 0x2c65}, Piece{"\u2c65", 0x2c65},  // of two and three bytes
    Piece{"{", '{'},         Piece{"@", '@'},         Piece{"刀", 0x5200},
    Piece{"\xc4", 0x1100c4}};

struct Sample {
  std::string text;
  std::vector<int> order;

  auto operator<=>(const Sample& other) const { return order <=> other.order; }
  bool operator==(const Sample& other) const { return order == other.order; }
  bool BeginsWith(const Sample& other) const {
    return std::ranges::mismatch(other.order, order).in1 == other.order.end();
  }
};

class LetterCaseTest : public RecordsetFixture {
 protected:
  Sample Draw(std::size_t longest) {
    Sample sample;
    for (auto length = m_random() % (longest + 1); length > 0; --length) {
      const Piece& piece = kPieces[m_random() % kPieces.size()];
      sample.text += piece.bytes;
      sample.order.push_back(piece.order);
    }
    return sample;
  }

  std::mt19937 m_random{11};
};

TEST_F(LetterCaseTest, TextsAreFoundAndOrderedAlike) {
  std::map<std::string, Sample> rows;
  const auto mills = Open("SELECT * FROM MILL");
  for (int id = 1; id <= 400; ++id) {
    const Sample sample = Draw(3);
    mills->AddNew();
    mills->SetFieldValue("Name", Text(sample.text).get());
    mills->Update();
    rows[std::to_string(id)] = sample;
  }
  const auto quoted = [](const std::string& text) { return "'" + text + "'"; };
  for (int round = 0; round < 300; ++round) {
    const std::array<Sample, 3> drawn = {Draw(2), Draw(3), Draw(3)};
    const Sample& one = drawn[0];
    const Sample& two = drawn[1];
    const Sample& three = drawn[2];
    const std::string first = quoted(one.text);
    const std::string both = first + " AND " + quoted(two.text);
    const std::string list =
        " IN (" + first + ", " + quoted(two.text) + ", " + quoted(three.text) + ")";
    using Holds = std::function<bool(const Sample&)>;
    const auto isOneOf = [&](const Sample& name) { return std::ranges::count(drawn, name) > 0; };
    const std::pair<std::string, Holds> conditions[] = {
        {"Name = " + first, [&](const Sample& name) { return name == one; }},
        {"NOT (" + first + " = Name)", [&](const Sample& name) { return name != one; }},
        {"Name < " + first, [&](const Sample& name) { return name < one; }},
        {"Name >= " + first, [&](const Sample& name) { return name >= one; }},
        {"Name BETWEEN " + both,
         [&](const Sample& name) {
           return name >= std::min(one, two) && name <= std::max(one, two);
         }},
        {"Name" + list, isOneOf},
        {"Name NOT" + list, std::not_fn(isOneOf)},
        {"Name LIKE '" + one.text + "*'", [&](const Sample& name) { return name.BeginsWith(one); }},
        {"NOT Name LIKE " + quoted(two.text), [&](const Sample& name) { return name != two; }},
        {"InStr(Name, " + first + ") = 1",
         [&](const Sample& name) { return name.BeginsWith(one); }}};
    const auto& condition = conditions[static_cast<std::size_t>(round) % std::size(conditions)];
    const std::string& criteria = condition.first;
    const Holds& test = condition.second;
    const auto found = Open("SELECT ID, Name FROM MILL WHERE " + criteria + " ORDER BY Name");
    std::vector<Sample> names;
    for (; !found->IsEOF(); found->MoveNext()) {
      names.push_back(rows.at(Show(found->GetFieldValue(0))));
      EXPECT_TRUE(test(names.back())) << criteria << " finds " << names.back().text;
    }
    EXPECT_TRUE(std::ranges::is_sorted(names)) << criteria;
    EXPECT_EQ(static_cast<long>(names.size()),
              std::ranges::count_if(rows, [&](const auto& row) { return test(row.second); }))
        << criteria;
  }
}

TEST_F(LetterCaseTest, WholeTablesAreInOrderWhateverTheyHold) {
  const auto mills = Open("SELECT * FROM MILL ORDER BY Coating DESC, Name");
  for (const auto& [added, order] :
       {std::pair("('b'), ('B2'), ('a'), ('Zz')", "'a'|'b'|'B2'|'Zz'|"),
        {"('z'), ('Ø'), ('ø1'), ('Ä'), ('äb')", "'a'|'b'|'B2'|'z'|'Zz'|'Ä'|'äb'|'Ø'|'ø1'|"}}) {
    Execute("INSERT INTO MILL (Name) VALUES " + std::string(added));
    mills->Requery();
    std::string names;
    for (; !mills->IsEOF(); mills->MoveNext()) names += Show(mills->GetFieldValue("Name")) + "|";
    EXPECT_EQ(names, order);
  }
}

TEST_F(LetterCaseTest, IndexesOfOtherProgramsAreUsed) {
  struct NoSources : SourceColumns {
    std::vector<ScopeColumn> ColumnsOf(const std::string&) override { return {}; }
  } none;
  const NameScope scope{"MILL", "MILL", {{"Name", ValueKind::Text, "MILL", "Name"}}};
  for (const auto& [criteria, plan] :
       {std::pair("Name = 'plain'", "SEARCH MILL USING INDEX MILL_NAME (Name=?)"),
        {"Name = 'Böhrer'", "MULTI-INDEX OR"},
        {"NOT Name <> 'x' AND Name = 'B-öhrer'", "MULTI-INDEX OR"},
        {"Name LIKE 'Tap M*'", "SEARCH MILL USING INDEX MILL_NAME (Name>? AND Name<?)"},
        {"Name LIKE 'Ø?'", "MULTI-INDEX OR"},
        {"Name IN ('plain', 'äöü', 'ß')", "MULTI-INDEX OR"},
        {"Name >= 'm' AND Name < 'n'", "SEARCH MILL USING INDEX MILL_NAME (Name>? AND Name<?)"},
        {"Name LIKE '*ö'", "SCAN MILL"},
        {"Name = Name & 'ö'", "SCAN MILL"}}) {
    const SqlText sql = TranslateCriteria(criteria, scope, none);
    Statement explained = Database().GetConnection()->Prepare(
        "EXPLAIN QUERY PLAN SELECT * FROM MILL WHERE " + sql.text);
    ASSERT_TRUE(explained.Step());
    EXPECT_EQ(explained.Text(3), plan) << criteria;
  }
}

}  // namespace
}  // namespace orxdb
