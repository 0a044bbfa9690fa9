// Files and memory that fail at every place in turn: calls give stated results, files stay whole,
// nothing is lost, and the next call works. ORXDB_EVERY_FAULT leaves no allocation out.
#include <cstdlib>
#include <functional>
#include <limits>

#include "platform/framework/Text.h"
#include "tests/component/ComponentFixture.h"
#include "tests/component/FaultyFiles.h"
#include "tests/dispatch/FailingAllocations.h"

namespace orxdb::test {
namespace {

using Arm = std::function<void(int)>;  ///< so many operations succeed before one fails
using Disarm = std::function<int()>;   ///< gives how many have failed

constexpr const char* kOpen = "open";
constexpr const char* kNoCheck = "SELECT 1";

/// By the journal of the file.
class FaultTest : public ComponentTest, public testing::WithParamInterface<const char*> {
 protected:
  struct Call {
    const char* name;
    HRESULT status;             ///< when nothing fails
    const char* check;          ///< SQL, true when the call has done its work
    std::function<LONG()> run;  ///< the status; what was seen of the result goes to m_seen
  };

  void Close() {
    m_db.reset();
    m_db = NewObject();
  }
  void Open() {
    Close();
    EXPECT_EQ(SetMdbFile(*m_db, m_file), S_OK);
  }
  void SetUp() override {
    FailFilesAfter(FileFault::Read, -1);
    ComponentTest::SetUp();
    SeedDatabase(m_file, "PRAGMA journal_mode = " + std::string(GetParam()));
    Open();
    ASSERT_EQ(m_db->ExportToolRecordsToFile(m_tap.get(), m_text.get(), 0), S_OK);
  }

  void TearDown() override {
    m_first.clear();
    m_second.clear();
    ComponentTest::TearDown();
  }

  LONG Elements(const Variant& array) {
    return array.empty() ? -1 : static_cast<LONG>(array.get().parray->rgsabound[0].cElements);
  }
  HRESULT WalkMills() {
    HRESULT status = m_db->SetTabFilter(m_mill.get(), m_where.get(), m_order.get());
    Variant names;
    Variant values;
    if (status == S_OK) status = m_db->GetFirstTool(m_mill.get(), names.put(), values.put());
    for (m_seen = 0; status == S_OK && !values.empty(); ++m_seen) {
      status = m_db->GetNextTool(m_mill.get(), values.put());
    }
    return status;
  }
  HRESULT See(HRESULT status, const Variant& result) {
    m_seen = Elements(result);
    return status;
  }

  /// Brings the tables back to what they were, as another program, which makes all caches stale.
  void Reset() {
    RunSql(
        m_file,
        "PRAGMA synchronous = OFF; BEGIN; DELETE FROM TAP; DELETE FROM MILL; INSERT INTO MILL "
        "SELECT value, 'F' || value, 10 - value, 1 FROM json_each('[1,2,3,4,5,6,7,8,9]'); COMMIT");
  }
  void EveryCallSurvives(const char* fault, int stride, const Arm& arm, const Disarm& disarm);

  const Bstr m_mill{u"MILL"}, m_tap{u"TAP"}, m_where{u"Diameter > 2"}, m_order{u"Name DESC"},
      m_material{u"Material"}, m_name{u"f3"};
  const Bstr m_text = WidenToBstr((m_folder / "taps.txt").string());
  const Bstr m_export = WidenToBstr((m_folder / "mills.txt").string());
  const Bstr m_path = WidenToBstr(m_file.string());
  Properties m_tool = std::move(Properties().Add("Name", "new").Add("Diameter", 77.0));
  VARIANT* const m_names = m_tool.Names();
  VARIANT* const m_values = m_tool.Values();
  LONG m_seen = 0;
  Variant m_first, m_second;
  const std::vector<Call> m_calls = {
      {kOpen, S_OK, kNoCheck, [this] { return m_db->SetMdbFile(m_path.get()); }},
      {"walk", S_OK, kNoCheck, [this] { return WalkMills(); }},
      {"add", S_OK, "SELECT count(*) = 1 FROM MILL WHERE Name = 'new' AND Diameter = 77",
       [this] { return m_db->AddNewRecord(m_mill.get(), m_names, m_values, &m_id); }},
      {"set", S_OK, "SELECT Name = 'new' AND Diameter = 77 FROM MILL WHERE ID = 4",
       [this] { return m_db->SetToolProps(m_mill.get(), 4, m_names, m_values); }},
      {"delete", E_FAIL, kNoCheck, [this] { return m_db->DeleteTool(m_mill.get(), 5); }},
      {"defaults", S_OK, kNoCheck,
       [this] {
         See(m_db->GetDefPropsValues(m_mill.get(), m_first.put(), m_second.put()), m_second);
         return m_seen < 0 ? E_FAIL : S_OK;  // a failing addition leaves them empty
       }},
      {"tool", S_OK, kNoCheck,
       [this] {
         return See(m_db->GetToolProps(m_mill.get(), 6, m_first.put(), m_second.put()), m_second);
       }},
      {"permissible values", S_OK, kNoCheck,
       [this] {
         return See(m_db->GetPermissibleValues(m_tap.get(), m_material.get(), 0, m_first.put()),
                    m_first);
       }},
      {"name", S_OK, kNoCheck,
       [this] {
         VARIANT_BOOL unique = 5;
         const HRESULT status = m_db->IsToolNameUnique(m_mill.get(), m_name.get(), &unique);
         m_seen = unique;
         return status;
       }},
      {"export", S_OK, kNoCheck,
       [this] { return m_db->ExportToolRecordsToFile(m_mill.get(), m_export.get(), 0); }},
      {"import", S_OK, kNoCheck,
       [this] { return m_db->ImportToolRecordsFromFile(m_text.get(), 0); }}};
};

void FaultTest::EveryCallSurvives(const char* fault, int stride, const Arm& arm,
                                  const Disarm& disarm) {
  for (const Call& call : m_calls) {
    const bool opening = call.name == kOpen;
    LONG seen = 0;
    const auto succeeds = [&](LONG& result) {
      Reset();
      if (opening) Open();
      EXPECT_EQ(call.run(), call.status);
      result = m_seen;
    };
    succeeds(seen);
    for (int n = 0, failed = 1; failed > 0; n += 1 + n / stride) {
      SCOPED_TRACE(std::string(fault) + " after " + std::to_string(n) + " in " + call.name);
      Reset();
      if (opening) Close();
      arm(n);
      HRESULT status = E_FAIL;
      try {
        status = call.run();
      } catch (const std::bad_alloc&) {
        disarm();
        EXPECT_TRUE(opening) << "only opening lets it through";
      }
      failed = disarm();
      EXPECT_THAT(status, testing::AnyOf(call.status, E_FAIL));
      if (status == S_OK) {
        EXPECT_EQ(m_seen, seen);
        EXPECT_EQ(QueryRows(m_file, call.check), "1");
      }
      EXPECT_EQ(QueryRows(m_file, "PRAGMA integrity_check"), "ok");
      LONG again = 0;
      succeeds(again);
      EXPECT_EQ(again, seen);
      if (HasFailure()) return;
    }
  }
}

constexpr int kEvery = std::numeric_limits<int>::max();
/// Allocations are many: later ones are tried here and there.
const int kSome = std::getenv("ORXDB_EVERY_FAULT") ? kEvery : 32;

TEST_P(FaultTest, FailingFiles) {
  for (const auto& [name, fault] : {std::pair{"read", FileFault::Read},
                                    {"write", FileFault::Write},
                                    {"full disk", FileFault::FullDisk},
                                    {"sync", FileFault::Sync},
                                    {"truncation", FileFault::Truncate},
                                    {"lock", FileFault::Lock},
                                    {"shared memory", FileFault::SharedMemory}}) {
    EveryCallSurvives(
        name, kEvery, [fault = fault](int n) { FailFilesAfter(fault, n); }, StopFailingFiles);
  }
}

TEST_P(FaultTest, FailingAllocations) {
  for (const int failures : {1, -1}) {
    EveryCallSurvives(
        failures < 0 ? "allocations" : "allocation", kSome,
        [=](int n) { FailAllocationsAfter(n, failures); },
        [] {
          FailAllocationsAfter(-1);
          return FailedAllocations();
        });
  }
}

INSTANTIATE_TEST_SUITE_P(Journals, FaultTest, testing::Values("DELETE", "WAL"));

}  // namespace
}  // namespace orxdb::test
