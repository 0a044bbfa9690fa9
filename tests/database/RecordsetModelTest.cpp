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
};

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return text;
}

enum class Kind { InKeyOrder, Ordered, Selective, Snapshot };

/// What the contract says, in memory: all members in their order, and a place among them.
class Model {
 public:
  Model(Kind kind, std::map<int, Tool>& table) : m_kind(kind), m_table(table) { Requery(); }

  void Requery() {
    m_members.clear();
    for (const auto& [key, tool] : m_table) {
      if (Belongs(tool)) m_members.push_back(key);
    }
    m_copy = m_table;
    if (m_kind == Kind::Ordered) {
      std::stable_sort(m_members.begin(), m_members.end(), [&](int a, int b) {
        const Tool& x = m_table[a];
        const Tool& y = m_table[b];
        if (x.diameter != y.diameter) return x.diameter > y.diameter;  // none is the smallest
        return Lower(x.name) < Lower(y.name);
      });
    }
    m_at = -1;
    MoveFirst();
  }
  bool Exists(int key) const { return Rows().contains(key) && Belongs(Rows().at(key)); }
  const Tool& At(int key) const { return Rows().at(key); }
  int Place(int key) const {
    const auto found = std::find(m_members.begin(), m_members.end(), key);
    return found == m_members.end() ? -1 : static_cast<int>(found - m_members.begin());
  }

  bool IsEmpty() const { return m_at == -1; }
  bool IsEnd() const { return m_at == -1 || m_at == static_cast<int>(m_members.size()); }
  bool HasPlace() const { return !IsEnd(); }
  int Key() const { return m_members[static_cast<std::size_t>(m_at)]; }
  bool IsReadable() const { return HasPlace() && !m_deleted && Exists(Key()); }
  bool IsDeletedHere() const { return m_deleted; }
  std::size_t Existing() const {
    return static_cast<std::size_t>(
        std::count_if(m_members.begin(), m_members.end(), [&](int key) { return Exists(key); }));
  }

  template <typename Test>
  bool Find(Test test, int from, int step) {
    for (int at = from; at >= 0 && at < static_cast<int>(m_members.size()); at += step) {
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
    if (!Find(kAny, m_at + 1, 1)) {
      m_at = static_cast<int>(m_members.size());
      m_deleted = false;
    }
  }
  int Here() const { return m_at; }
  int Last() const { return static_cast<int>(m_members.size()) - 1; }
  void GoTo(int at) {
    m_at = at;
    m_deleted = false;
  }
  void Delete() {
    m_table.erase(Key());
    m_deleted = true;
  }
  void Add(int key, Tool tool) {
    const bool ended = m_at == static_cast<int>(m_members.size()) && !m_members.empty();
    m_table[key] = std::move(tool);
    m_members.push_back(key);
    if (IsEmpty()) MoveFirst();
    if (ended) m_at = static_cast<int>(m_members.size());
  }
  void Change(const Tool& tool) { m_table[Key()] = tool; }

  static constexpr auto kAny = [](const Tool&) { return true; };

 private:
  bool Belongs(const Tool& tool) const { return m_kind != Kind::Selective || tool.diameter >= 3; }
  const std::map<int, Tool>& Rows() const { return m_kind == Kind::Snapshot ? m_copy : m_table; }

  Kind m_kind;
  std::map<int, Tool>& m_table;
  std::map<int, Tool> m_copy;
  std::vector<int> m_members;
  int m_at = -1;
  bool m_deleted = false;
};

class RecordsetModelTest : public RecordsetFixture,
                           public ::testing::WithParamInterface<std::tuple<Kind, unsigned>> {
 protected:
  struct Condition {
    const char* criteria;
    bool (*test)(const Tool&);
  };
  static constexpr Condition kConditions[] = {
      {"D >= 4", [](const Tool& tool) { return tool.diameter >= 4; }},
      {"[Name] LIKE '?b*' OR D IS NULL",
       [](const Tool& tool) {
         return (tool.name.size() > 1 && (tool.name[1] | 32) == 'b') || !tool.diameter;
       }},
      {"MILL.D = 2", [](const Tool& tool) { return tool.diameter == 2; }},
      // Found through the index on names, so that SQLite sorts before it gives the first.
      {"Name IN ('a', 'B', 'ab', 'Bc', 'cA', 'bbb')",
       [](const Tool& tool) {
         const std::string name = Lower(tool.name);
         return name == "a" || name == "b" || name == "ab" || name == "bc" || name == "ca" ||
                name == "bbb";
       }},
      {"Name = 'none'", [](const Tool&) { return false; }}};

  unsigned Random(unsigned below) { return static_cast<unsigned>(m_random() % below); }
  Tool RandomTool() {
    Tool tool;
    for (unsigned i = 1 + Random(3); i > 0; --i) tool.name += "abcABC"[Random(6)];
    if (Random(6) != 0) tool.diameter = static_cast<int>(Random(6));
    return tool;
  }
  static std::string Sql(const Tool& tool) {
    return "'" + tool.name + "', " + (tool.diameter ? std::to_string(*tool.diameter) : "NULL");
  }
  void Set(const Tool& tool) {
    m_records->SetFieldValue("Name", Text(tool.name).get());
    m_records->SetFieldValue(
        "D", (tool.diameter ? Variant::FromI4(*tool.diameter) : Variant::Null()).get());
  }

  void StepOutside() {
    switch (Random(3)) {
      case 0: {
        const Tool tool = RandomTool();
        Execute("INSERT INTO MILL (Name, D) VALUES (" + Sql(tool) + ")");
        m_table[std::stoi(Ask("SELECT max(ID) FROM MILL"))] = tool;
        break;
      }
      case 1:
        if (const int key = RandomKey(); key != 0) {
          Execute("DELETE FROM MILL WHERE ID = " + std::to_string(key));
          m_table.erase(key);
        }
        break;
      default:
        if (const int key = RandomKey(); key != 0) {
          m_table[key] = RandomTool();
          Execute("UPDATE MILL SET (Name, D) = (SELECT " + Sql(m_table[key]) +
                  ") WHERE ID = " + std::to_string(key));
        }
    }
  }
  int RandomKey() {
    return m_table.empty() ? 0
                           : std::next(m_table.begin(), Random(unsigned(m_table.size())))->first;
  }

  void StepMove(Model& model) {
    if (Random(6) == 0) m_condition = Random(std::size(kConditions));
    const Condition& condition = kConditions[m_condition];
    switch (Random(7)) {
      case 0:
        m_records->MoveFirst();
        model.MoveFirst();
        break;
      case 1:
        m_records->MoveLast();
        model.MoveLast();
        if (m_kind == Kind::InKeyOrder) {
          EXPECT_EQ(m_records->GetRecordCount(), static_cast<long>(model.Existing()));
        }
        break;
      case 2:
        EXPECT_EQ(m_records->FindFirst(condition.criteria), model.Find(condition.test, 0, 1));
        break;
      case 3:
        EXPECT_EQ(m_records->FindLast(condition.criteria),
                  model.Find(condition.test, model.Last(), -1));
        break;
      case 4:
        if (model.HasPlace()) {
          EXPECT_EQ(m_records->FindNext(condition.criteria),
                    model.Find(condition.test, model.Here() + 1, 1));
        } else {
          EXPECT_EQ(ErrorOf([&] { m_records->FindNext(condition.criteria); }), DaoError::NoRecord);
        }
        break;
      default:
        if (model.HasPlace()) {
          m_records->MoveNext();
          model.MoveNext();
        } else {
          EXPECT_EQ(ErrorOf([&] { m_records->MoveNext(); }), DaoError::NoRecord);
        }
    }
  }

  void StepBookmark(Model& model) {
    if (model.IsReadable() && Random(2) == 0) {
      m_bookmarks.emplace_back(model.Key(), m_records->GetBookmark());
    } else if (!m_bookmarks.empty()) {
      const auto& marked = m_bookmarks[Random(unsigned(m_bookmarks.size()))];
      const VARIANT& bookmark = marked.second.get();
      const int place = model.Place(marked.first);
      if (place >= 0 && model.Exists(marked.first)) {
        m_records->SetBookmark(bookmark);
        model.GoTo(place);
      } else {
        EXPECT_EQ(ErrorOf([&] { m_records->SetBookmark(bookmark); }), DaoError::BadBookmark);
      }
    }
  }

  void StepEdit(Model& model) {
    const Tool tool = RandomTool();
    const bool store = Random(4) != 0;
    if (m_kind == Kind::Snapshot) {
      EXPECT_EQ(ErrorOf([&] { m_records->AddNew(); }), DaoError::ReadOnly);
      EXPECT_EQ(ErrorOf([&] { m_records->Delete(); }), DaoError::ReadOnly);
      return;
    }
    if (const unsigned choice = Random(4); choice == 0) {
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
      ASSERT_EQ(Show(m_records->GetFieldValue("Name")), "'" + tool.name + "'");
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
    ASSERT_EQ(m_records->IsEOF(), model.IsEnd());
    if (!model.IsReadable()) {
      ASSERT_EQ(ErrorOf([&] { m_records->GetFieldValue("Name"); }),
                model.HasPlace() ? DaoError::RecordDeleted : DaoError::NoRecord);
      return;
    }
    const Tool& tool = model.At(model.Key());
    ASSERT_EQ(Show(m_records->GetFieldValue("ID")), std::to_string(model.Key()));
    ASSERT_EQ(Show(m_records->GetFieldValue("Name")), "'" + tool.name + "'");
    ASSERT_EQ(Show(m_records->GetFieldValue("D")),
              tool.diameter ? std::to_string(*tool.diameter) : "null");
  }

  Kind m_kind = Kind::InKeyOrder;
  unsigned m_condition = 0;
  std::mt19937 m_random;
  std::map<int, Tool> m_table;
  std::unique_ptr<CDaoRecordset> m_records;
  std::vector<std::pair<int, Variant>> m_bookmarks;
};

TEST_P(RecordsetModelTest, BehavesAsItsContractSays) {
  const auto [kind, seed] = GetParam();
  m_kind = kind;
  m_random.seed(seed);
  // Few records, or more than are read at a time.
  std::string rows;
  for (int i = 1; i <= (seed % 2 == 0 ? 12 : 400); ++i) {
    m_table[i] = RandomTool();
    rows += (rows.empty() ? "(" : ", (") + Sql(m_table[i]) + ")";
  }
  Execute("INSERT INTO MILL (Name, D) VALUES " + rows);
  m_records = kind == Kind::InKeyOrder  ? Open("Q_MILL")
              : kind == Kind::Snapshot  ? Open("Q_MILL", dbOpenSnapshot)
              : kind == Kind::Selective ? Open("SELECT * FROM MILL WHERE D >= 3")
                                        : Open("SELECT * FROM Q_MILL ORDER BY D DESC, [Name]");
  Model model(kind, m_table);
  for (int step = 0; step < 1500; ++step) {
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
    Compare(model);
    if (HasFatalFailure() || HasNonfatalFailure()) return;
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
  const struct {
    const char* query;
    const char* keys;
  } cases[] = {{"Q_HEADS", "123"},
               {"SELECT * FROM Q_HEADS ORDER BY Name", "213"},
               {"SELECT * FROM Q_HEADS ORDER BY H", "321"},
               {"SELECT MILL.ID FROM MILL INNER JOIN HEAD ON HEAD.Mill = MILL.ID", "12"}};
  for (const auto& [query, keys] : cases) {
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

TEST_F(RecordsetFixture, ForeignAndGarbledBookmarksAreRefused) {
  Execute("INSERT INTO MILL (Name) VALUES ('a'), ('b')");
  const auto mills = Open("Q_MILL");
  const auto coatings = Open("SELECT * FROM COATING");
  mills->MoveNext();
  const Variant good = mills->GetBookmark();
  Variant garbled = good.Copy();
  ArrayAccess<BYTE>(garbled.get().parray)[3] ^= 0x40;
  Variant cut = Variant::FromArray(VT_UI1, SafeArray::Vector(VT_UI1, 3));
  for (const Variant* bad : {&garbled, &cut}) {
    EXPECT_EQ(ErrorOf([&] { mills->SetBookmark(bad->get()); }), DaoError::BadBookmark);
  }
  EXPECT_EQ(ErrorOf([&] { mills->SetBookmark(Variant::FromI4(1).get()); }), DaoError::BadBookmark);
  EXPECT_EQ(ErrorOf([&] { coatings->SetBookmark(good.get()); }), DaoError::BadBookmark);
  EXPECT_EQ(Show(mills->GetFieldValue("ID")), "2");
}

}  // namespace
}  // namespace orxdb
