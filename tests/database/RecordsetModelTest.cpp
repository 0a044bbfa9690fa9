// Random operations on recordsets against a simple model of their contract.
#include <algorithm>
#include <map>
#include <optional>
#include <random>

#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

struct Tool {
  std::string name;
  std::optional<int> diameter;

  /// As SQL writes it and as the fixture shows the two fields.
  std::string Text() const {
    return "'" + name + "', " + (diameter ? std::to_string(*diameter) : "null");
  }
};
using Table = std::map<int, Tool>;

std::string Lower(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return text;
}

enum class Kind { InKeyOrder, Ordered, Selective, Snapshot };

/// What the contract says, in memory: all members in their order, and a place among them.
class Model {
 public:
  Model(Kind kind, Table& table) : m_kind(kind), m_table(table) { Requery(); }

  void Requery() {
    m_members.clear();
    for (const auto& [key, tool] : m_table) {
      if (Belongs(tool)) m_members.push_back(key);
    }
    m_copy = m_table;
    if (m_kind == Kind::Ordered) {
      std::ranges::stable_sort(m_members, {}, [&](int key) {
        const Tool& tool = m_table[key];
        return std::pair(-tool.diameter.value_or(-1), Lower(tool.name));  // none is the smallest
      });
    }
    m_at = -1;
    MoveFirst();
  }
  bool Exists(int key) const { return Rows().contains(key) && Belongs(Rows().at(key)); }
  const Tool& Current() const { return Rows().at(Key()); }
  /// Where a key is among the members; behind the last one when it is none.
  int Place(int key) const {
    return static_cast<int>(std::ranges::find(m_members, key) - m_members.begin());
  }
  int Here() const { return m_at; }
  int Last() const { return static_cast<int>(m_members.size()) - 1; }
  bool IsEmpty() const { return m_at == -1; }
  bool HasPlace() const { return m_at >= 0 && m_at <= Last(); }
  int Key() const { return m_members[static_cast<std::size_t>(m_at)]; }
  bool IsReadable() const { return HasPlace() && !m_deleted && Exists(Key()); }
  long Existing() const {
    return std::ranges::count_if(m_members, [&](int key) { return Exists(key); });
  }

  template <typename Test>
  bool Find(Test test, int from, int step) {
    for (int at = from; at >= 0 && at <= Last(); at += step) {
      const int key = m_members[static_cast<std::size_t>(at)];
      if (!Exists(key) || !test(Rows().at(key))) continue;
      GoTo(at);
      return true;
    }
    return false;
  }
  void MoveFirst() {
    if (!Find(kAny, 0, 1)) m_at = -1;
  }
  void MoveLast() {
    if (!Find(kAny, Last(), -1)) m_at = -1;
  }
  void MoveNext() {
    if (!Find(kAny, m_at + 1, 1)) GoTo(Last() + 1);
  }
  void GoTo(int at) {
    m_at = at;
    m_deleted = false;
  }
  void Delete() {
    m_table.erase(Key());
    m_deleted = true;
  }
  void Add(int key, const Tool& tool) {
    const bool ended = !IsEmpty() && !HasPlace();
    m_table[key] = tool;
    m_members.push_back(key);
    if (IsEmpty()) MoveFirst();
    if (ended) m_at = Last() + 1;
  }
  void Change(const Tool& tool) { m_table[Key()] = tool; }

 private:
  static constexpr auto kAny = [](const Tool&) { return true; };
  bool Belongs(const Tool& tool) const { return m_kind != Kind::Selective || tool.diameter >= 3; }
  const Table& Rows() const { return m_kind == Kind::Snapshot ? m_copy : m_table; }

  Kind m_kind;
  Table& m_table;
  Table m_copy;
  std::vector<int> m_members;
  int m_at = -1;
  bool m_deleted = false;
};

struct Condition {
  const char* criteria;
  bool (*test)(const Tool&);
};
constexpr Condition kConditions[] = {
    {"D >= 4", [](const Tool& tool) { return tool.diameter >= 4; }},
    {"[Name] LIKE '?b*' OR D IS NULL",
     [](const Tool& tool) { return Lower(tool.name + " ")[1] == 'b' || !tool.diameter; }},
    {"MILL.D = 2", [](const Tool& tool) { return tool.diameter == 2; }},
    // Found through the index on names, so that SQLite sorts before it gives the first.
    {"Name IN ('a', 'B', 'ab', 'Bc', 'cA', 'bbb')",
     [](const Tool& tool) {
       const std::string names[] = {"a", "b", "ab", "bc", "ca", "bbb"};
       return std::ranges::count(names, Lower(tool.name)) != 0;
     }},
    {"Name = 'none'", [](const Tool&) { return false; }}};

class RecordsetModelTest : public RecordsetFixture,
                           public ::testing::WithParamInterface<std::tuple<Kind, unsigned>> {
 protected:
  unsigned Random(unsigned below) { return static_cast<unsigned>(m_random() % below); }
  Tool RandomTool() {
    Tool tool;
    for (unsigned i = 1 + Random(3); i > 0; --i) tool.name += "abcABC"[Random(6)];
    if (Random(6) != 0) tool.diameter = static_cast<int>(Random(6));
    return tool;
  }
  void Set(const Tool& tool) {
    m_records->SetFieldValue("Name", Text(tool.name).get());
    m_records->SetFieldValue(
        "D", (tool.diameter ? Variant::FromI4(*tool.diameter) : Variant::Null()).get());
  }

  void StepOutside() {
    const Tool tool = RandomTool();
    const unsigned choice = m_table.empty() ? 0 : Random(3);
    if (choice == 0) {
      Execute("INSERT INTO MILL (Name, D) VALUES (" + tool.Text() + ")");
      m_table[std::stoi(Ask("SELECT max(ID) FROM MILL"))] = tool;
      return;
    }
    const auto row = std::next(m_table.begin(), Random(unsigned(m_table.size())));
    const std::string where = " WHERE ID = " + std::to_string(row->first);
    if (choice == 1) {
      Execute("DELETE FROM MILL" + where);
      m_table.erase(row);
    } else {
      Execute("UPDATE MILL SET (Name, D) = (SELECT " + tool.Text() + ")" + where);
      row->second = tool;
    }
  }

  void StepMove(Model& model) {
    if (Random(6) == 0) m_condition = Random(std::size(kConditions));
    const auto& [criteria, test] = kConditions[m_condition];
    switch (const unsigned move = Random(7)) {
      case 0:
        m_records->MoveFirst();
        return model.MoveFirst();
      case 1:
        m_records->MoveLast();
        model.MoveLast();
        if (m_kind == Kind::InKeyOrder) {
          EXPECT_EQ(m_records->GetRecordCount(), model.Existing());
        }
        return;
      case 2:
        EXPECT_EQ(m_records->FindFirst(criteria), model.Find(test, 0, 1));
        return;
      case 3:
        EXPECT_EQ(m_records->FindLast(criteria), model.Find(test, model.Last(), -1));
        return;
      default:
        if (!model.HasPlace()) {
          EXPECT_EQ(ErrorOf([&, &text = criteria] {
                      move == 4 ? void(m_records->FindNext(text)) : m_records->MoveNext();
                    }),
                    DaoError::NoRecord);
        } else if (move == 4) {
          EXPECT_EQ(m_records->FindNext(criteria), model.Find(test, model.Here() + 1, 1));
        } else {
          m_records->MoveNext();
          model.MoveNext();
        }
    }
  }

  void StepBookmark(Model& model) {
    if (model.IsReadable() && Random(2) == 0) {
      m_bookmarks.emplace_back(model.Key(), m_records->GetBookmark());
    } else if (!m_bookmarks.empty()) {
      const auto& [key, bookmark] = m_bookmarks[Random(unsigned(m_bookmarks.size()))];
      const auto go = [&, &to = bookmark] { m_records->SetBookmark(to.get()); };
      if (const int place = model.Place(key); place <= model.Last() && model.Exists(key)) {
        go();
        model.GoTo(place);
      } else {
        EXPECT_EQ(ErrorOf(go), DaoError::BadBookmark);
      }
    }
  }

  void StepEdit(Model& model) {
    const Tool tool = RandomTool();
    const bool store = Random(4) != 0;
    if (m_kind == Kind::Snapshot) {
      EXPECT_EQ(ErrorOf([&] { m_records->AddNew(); }), DaoError::ReadOnly);
      EXPECT_EQ(ErrorOf([&] { m_records->Delete(); }), DaoError::ReadOnly);
    } else if (const unsigned choice = Random(4); choice == 0) {
      m_records->AddNew();
      Set(tool);
      if (!store) return;
      m_records->Update();
      model.Add(std::stoi(Ask("SELECT max(ID) FROM MILL")), tool);
    } else if (!model.IsReadable()) {
      EXPECT_THROW(choice == 1 ? m_records->Delete() : m_records->Edit(), CDaoException);
    } else if (choice == 1) {
      m_records->Delete();
      model.Delete();
    } else {
      m_records->Edit();
      Set(tool);
      ASSERT_EQ(Values(*m_records, {"Name", "D"}), tool.Text());
      if (store) {
        m_records->Update();
        model.Change(tool);
      } else {
        m_records->SetBookmark(m_records->GetBookmark().get());  // gives the edit up
      }
    }
  }

  void Compare(const Model& model) {
    ASSERT_EQ(m_records->IsBOF(), model.IsEmpty());
    ASSERT_EQ(m_records->IsEOF(), !model.HasPlace());
    if (model.IsReadable()) {
      ASSERT_EQ(Values(*m_records, {"ID", "Name", "D"}),
                std::to_string(model.Key()) + ", " + model.Current().Text());
    } else {
      ASSERT_EQ(ErrorOf([&] { m_records->GetFieldValue("Name"); }),
                model.HasPlace() ? DaoError::RecordDeleted : DaoError::NoRecord);
    }
  }

  Kind m_kind = std::get<Kind>(GetParam());
  unsigned m_condition = 0;
  std::mt19937 m_random{std::get<unsigned>(GetParam())};
  Table m_table;
  std::unique_ptr<CDaoRecordset> m_records;
  std::vector<std::pair<int, Variant>> m_bookmarks;
};

TEST_P(RecordsetModelTest, BehavesAsItsContractSays) {
  // Few records, or more than are read at a time.
  std::string rows;
  for (int i = 1; i <= (std::get<unsigned>(GetParam()) % 2 == 0 ? 12 : 400); ++i) {
    m_table[i] = RandomTool();
    rows += (rows.empty() ? "(" : ", (") + m_table[i].Text() + ")";
  }
  Execute("INSERT INTO MILL (Name, D) VALUES " + rows);
  m_records = m_kind == Kind::Selective ? Open("SELECT * FROM MILL WHERE D >= 3")
              : m_kind == Kind::Ordered
                  ? Open("SELECT * FROM Q_MILL ORDER BY D DESC, [Name]")
                  : Open("Q_MILL", m_kind == Kind::Snapshot ? dbOpenSnapshot : dbOpenDynaset);
  Model model(m_kind, m_table);
  for (int step = 0; step < 1500 && !HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    // Keys are listed at the first move; until then changes made elsewhere may still count.
    if (step % 100 == 0) {
      m_records->Requery();
      m_records->MoveFirst();
      model.Requery();
    }
    // Now and then nobody writes: what was read ahead stays good for longer.
    const unsigned choice = Random(step % 100 < 40 ? 13 : 20);
    if (choice < 10) {
      StepMove(model);
    } else if (choice < 13) {
      StepBookmark(model);
    } else if (choice < 17) {
      StepEdit(model);
    } else {
      StepOutside();
    }
    if (!HasFailure()) Compare(model);
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, RecordsetModelTest,
                         ::testing::Combine(::testing::Values(Kind::InKeyOrder, Kind::Ordered,
                                                              Kind::Selective, Kind::Snapshot),
                                            ::testing::Range(1U, 6U)));

TEST_F(RecordsetFixture, JoinThatMeetsMoreRowsShowsItsRecordOnce) {
  Execute(
      "INSERT INTO MILL (Name) VALUES ('b'), ('a'), ('c');"
      "CREATE TABLE HEAD (ID INTEGER PRIMARY KEY, Mill LONG, H TEXT(5));"
      "INSERT INTO HEAD (Mill, H) VALUES (1, 'x'), (2, 'y'), (1, 'z'), (2, 'w');"
      "CREATE VIEW Q_HEADS AS SELECT M.ID AS ID, M.Name AS Name, H.H AS H"
      " FROM MILL AS M LEFT JOIN HEAD AS H ON H.Mill = M.ID;");
  using Row = std::pair<const char*, const char*>;
  for (const auto& [query, keys] :
       {Row("Q_HEADS", "123"), Row("SELECT * FROM Q_HEADS ORDER BY Name", "213"),
        Row("SELECT * FROM Q_HEADS ORDER BY H", "321"),
        Row("SELECT MILL.ID FROM MILL INNER JOIN HEAD ON HEAD.Mill = MILL.ID", "12")}) {
    const auto records = Open(query);
    std::string walk;
    for (; !records->IsEOF() && walk.size() < 10; records->MoveNext()) {
      walk += Show(records->GetFieldValue("ID"));
    }
    EXPECT_EQ(walk, keys) << query;
    records->MoveLast();
    EXPECT_EQ(records->GetRecordCount(), static_cast<long>(walk.size())) << query;
  }
}

}  // namespace
}  // namespace orxdb
