// Random operations on recordsets against a simple model of their contract, for every way through
// the records: in key order, along a list of keys, through a copy.
#include <random>

#include "tests/database/RecordsetFixture.h"
#include "tests/database/RecordsetModel.h"

namespace orxdb {
namespace {

struct Condition {
  const char* criteria;
  bool (*test)(const Tool&);
};
constexpr Condition kConditions[] = {
    {"D >= 4", [](const Tool& tool) { return tool.diameter >= 4; }},
    {"[Name] LIKE '?b*' OR D IS NULL",
     [](const Tool& tool) { return Folded(tool.name + " ")[1] == 'b' || !tool.diameter; }},
    {"MILL.D = 2", [](const Tool& tool) { return tool.diameter == 2; }},
    // Found through the index on names, so that SQLite sorts before it gives the first.
    {"Name IN ('a', 'B', 'ab', 'Bc', 'cA', 'bbb')",
     [](const Tool& tool) {
       const std::string names[] = {"a", "b", "ab", "bc", "ca", "bbb"};
       return std::ranges::count(names, Folded(tool.name)) != 0;
     }},
    {"Name = 'none'", [](const Tool&) { return false; }}};

class RecordsetModelTest : public RecordsetFixture,
                           public ::testing::WithParamInterface<std::tuple<Shape, int>> {
 protected:
  int Pick(std::size_t below) { return static_cast<int>(m_random() % below); }
  Tool RandomTool() {
    Tool tool;
    for (int i = 1 + Pick(3); i > 0; --i) tool.name += "abcABC"[Pick(6)];
    if (Pick(6) != 0) tool.diameter = Pick(6);
    tool.coating = Pick(3);
    return tool;
  }
  static void Set(CDaoRecordset& records, const Tool& tool) {
    records.SetFieldValue("Name", Text(tool.name).get());
    records.SetFieldValue(
        "D", (tool.diameter ? Variant::FromI4(*tool.diameter) : Variant::Null()).get());
  }

  /// Tells the key, which is never one given out here before, not even in a cancelled group.
  int AddNew(CDaoRecordset& records) {
    records.AddNew();
    return m_lastKey = m_countedKey = std::max(m_lastKey, m_countedKey) + 1;
  }

  void StepGroup(Model& model) {
    if (!Database().IsChanging()) {
      EXPECT_THROW(Pick(2) == 0 ? Database().EndChanges() : Database().CancelChanges(),
                   CDaoException);
      Database().BeginChanges();
      model.BeginGroup();
      m_tableBefore = m_table;
      m_countedKeyBefore = m_countedKey;
      return;
    }
    EXPECT_THROW(Database().BeginChanges(), CDaoException);
    if (Pick(3) == 0) return Database().EndChanges();
    m_records->GetPosition();  // the first record, if nobody has asked yet, is that of the group
    Database().CancelChanges();
    m_table = m_tableBefore;
    m_countedKey = m_countedKeyBefore;
    if (model.Cancel()) m_positions.clear();
  }

  /// A record is added, deleted or changed by another program, or by another recordset here.
  void StepAround() {
    Tool tool = RandomTool();
    const int choice = m_table.empty() ? 0 : Pick(3);
    const auto row = std::next(m_table.begin(), choice == 0 ? 0 : Pick(m_table.size()));
    const std::string where = " WHERE ID = " + (choice == 0 ? "0" : std::to_string(row->first));
    int key = choice == 0 ? 0 : row->first;
    if (!Database().IsChanging() && Pick(2) == 0) {
      // What other programs change before a list of keys is needed may still count.
      if (m_shape.listed) m_records->GetPosition();
      Execute(choice == 0   ? "INSERT INTO MILL (Name, D, Coating) VALUES " + tool.Row()
              : choice == 1 ? "DELETE FROM MILL" + where
                            : "UPDATE MILL SET (Name, D, Coating) = " + tool.Row() + where);
      if (choice == 0) key = ++m_countedKey;
    } else {
      const auto editor = Open("SELECT * FROM MILL" + where);
      if (choice == 1) {
        editor->Delete();
      } else {
        choice == 0 ? void(key = AddNew(*editor)) : editor->Edit();
        Set(*editor, tool);
        editor->SetFieldValue("Coating", Variant::FromI4(tool.coating).get());
        editor->Update();
      }
    }
    if (choice == 1) {
      m_table.erase(row);
    } else {
      m_table[key] = tool;
    }
  }

  void StepMove(Model& model) {
    if (Pick(6) == 0) m_condition = static_cast<std::size_t>(Pick(std::size(kConditions)));
    const auto& [criteria, test] = kConditions[m_condition];
    switch (const int move = Pick(7)) {
      case 0:
        m_records->MoveFirst();
        return model.MoveFirst();
      case 1:
        m_records->MoveLast();
        return model.MoveLast();
      case 2:
        EXPECT_EQ(m_records->FindFirst(criteria), model.Find(test, 0, 1));
        return;
      case 3:
        EXPECT_EQ(m_records->FindLast(criteria), model.Find(test, model.Last(), -1));
        return model.ReachAll();
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

  /// Keeps the place, or goes back to one: by a bookmark, which leads to a record that exists, or
  /// by the position, which also leads to where one was.
  void StepBack(Model& model) {
    if (model.HasPlace() && Pick(2) == 0) {
      if (model.IsReadable()) m_bookmarks.emplace_back(model.Key(), m_records->GetBookmark());
      if (!model.IsDeleted()) m_positions.emplace_back(model.Here(), m_records->GetPosition());
    } else if (!m_positions.empty() && Pick(2) == 0) {
      const auto& [place, position] =
          m_positions[static_cast<std::size_t>(Pick(m_positions.size()))];
      const bool refused = model.IsDeleted() && model.Here() == place;
      ASSERT_EQ(m_records->ReturnTo(position), !refused);
      if (!refused) model.GoTo(place);
    } else if (!m_bookmarks.empty()) {
      const auto& [key, bookmark] = m_bookmarks[static_cast<std::size_t>(Pick(m_bookmarks.size()))];
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
    Tool tool = RandomTool();
    const bool store = Pick(4) != 0;
    const int choice = Pick(4);
    if (m_shape.type == dbOpenSnapshot) {
      EXPECT_EQ(ErrorOf([&] { m_records->AddNew(); }), DaoError::ReadOnly);
      EXPECT_EQ(ErrorOf([&] { m_records->Delete(); }), DaoError::ReadOnly);
    } else if (choice == 0) {
      tool.coating = 0;
      const int key = AddNew(*m_records);
      Set(*m_records, tool);
      if (!store) return;
      m_records->Update();
      m_table[key] = tool;
    } else if (!model.IsReadable()) {
      EXPECT_THROW(choice == 1 ? m_records->Delete() : m_records->Edit(), CDaoException);
    } else if (choice == 1) {
      m_records->Delete();
      model.Delete();
    } else {
      tool.coating = model.Current().coating;
      m_records->Edit();
      Set(*m_records, tool);
      ASSERT_EQ(Values(*m_records, {"Name", "D"}), tool.Text());
      if (store) {
        m_records->Update();
        model.Change(tool);
      } else {
        m_records->SetBookmark(m_records->GetBookmark().get());  // gives the edit up
      }
    }
  }

  void Requery(Model& model) {
    m_records->Requery();
    model.Requery();
    m_positions.clear();
    if (Pick(2) == 0) StepAround();  // before anybody has looked
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
    ASSERT_EQ(m_records->GetRecordCount(), model.Count());
  }

  const Shape m_shape = std::get<Shape>(GetParam());
  std::size_t m_condition = 0;
  std::mt19937 m_random = Random(7);
  Table m_table;
  int m_lastKey = 0;                             ///< given out here
  int m_countedKey = std::get<int>(GetParam());  ///< in the file
  Table m_tableBefore;                           ///< the group of changes
  int m_countedKeyBefore = 0;
  std::unique_ptr<CDaoRecordset> m_records;
  std::vector<std::pair<int, Variant>> m_bookmarks;   ///< by key
  std::vector<std::pair<int, Position>> m_positions;  ///< by place
};

TEST_P(RecordsetModelTest, BehavesAsItsContractSays) {
  std::string rows;
  for (int i = 1; i <= m_countedKey; ++i) {
    m_table[i] = RandomTool();
    rows += (rows.empty() ? "" : ", ") + m_table[i].Row();
  }
  Execute("INSERT INTO MILL (Name, D, Coating) VALUES " + rows);
  m_records = Open(m_shape.query, m_shape.type);
  Model model(m_shape, m_table);
  for (int step = 0; step < 600 && !HasFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    // Now and then nobody writes: what was read ahead stays good for longer.
    const int choice = step % 100 == 0 ? 20 : Pick(step % 100 < 40 ? 13 : 24);
    if (choice < 10) {
      StepMove(model);
    } else if (choice < 13) {
      StepBack(model);
    } else if (choice < 16) {
      StepEdit(model);
    } else if (choice < 20) {
      StepAround();
    } else if (choice < 21) {
      Requery(model);
    } else {
      StepGroup(model);
    }
    // What is not looked at need not be looked up either.
    if (!HasFailure() && Pick(3) != 0) Compare(model);
  }
  m_bookmarks.clear();
}

// Few records, or more than are read at a time.
INSTANTIATE_TEST_SUITE_P(Shapes, RecordsetModelTest,
                         ::testing::Combine(::testing::ValuesIn(kShapes),
                                            ::testing::Values(12, 400)),
                         [](const auto& each) {
                           return std::get<0>(each.param).name +
                                  std::to_string(std::get<1>(each.param));
                         });

TEST_F(RecordsetFixture, RequeryForgetsListedKeys) {
  Execute("INSERT INTO MILL (Name) VALUES ('a'), ('b'), ('A')");
  const auto records = Open("Q_MILL");
  Execute("INSERT INTO MILL (Name) VALUES ('B')");
  for (const char* keys : {"123", "1234"}) {
    std::string walk;
    for (bool found = records->FindFirst("Name IN ('a', 'b')"); found;
         found = records->FindNext("Name IN ('a', 'b')")) {
      walk += Show(records->GetFieldValue("ID"));
    }
    EXPECT_EQ(walk, keys);
    records->Requery();
  }
}

}  // namespace
}  // namespace orxdb
