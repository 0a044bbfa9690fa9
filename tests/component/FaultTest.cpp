// Files and memory that fail at every place in turn: calls give stated results, files stay whole,
// nothing is lost, and the next call works. ORXDB_EVERY_FAULT leaves no allocation out.
#include <cstdlib>
#include <functional>
#include <limits>
#include <optional>

#include "platform/framework/Exception.h"
#include "tests/component/ComponentFixture.h"
#include "tests/component/FaultyFiles.h"
#include "tests/support/FailingAllocations.h"

namespace orxdb::test {
namespace {

using Arm = std::function<void(int)>;  ///< so many operations succeed before one fails; -1: all
using Failed = std::function<int()>;   ///< how many have failed since

/// By the journal of the file.
class FaultTest : public ComponentTest, public testing::WithParamInterface<const char*> {
 protected:
  struct Call {
    const char* name;
    std::function<HRESULT()> run;    ///< what was seen of the result goes to m_seen
    const char* check = "SELECT 1";  ///< SQL, true when the call has done its work
    HRESULT status = S_OK;           ///< when nothing fails
  };

  void SetUp() override {
    FailFilesAfter(FileFault::Read, -1);
    ComponentTest::SetUp();
    OpenSeeded("PRAGMA journal_mode = " + std::string(GetParam()));
    ASSERT_EQ(m_db->ExportToolRecordsToFile(m_tap.get(), m_text.get(), 0), S_OK);
  }
  void TearDown() override {
    for (Variant& result : m_results) result.clear();
    ComponentTest::TearDown();
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
  /// Runs a call with results and sees the length of the last one; -1 for an empty one.
  template <typename Work>
  HRESULT See(Work work) {
    const HRESULT status = work(m_results[0].put(), m_results[1].put());
    const Variant& last = m_results[m_results[1].empty() ? 0 : 1];
    m_seen = last.empty() ? -1 : static_cast<LONG>(last.get().parray->rgsabound[0].cElements);
    return status;
  }

  /// Brings the tables back to what they were, as another program, which makes all caches stale.
  /// That program stays unless opening alone is looked at.
  void Reset(bool opening) {
    if (!m_other) m_other.emplace(m_file);
    m_other->Execute(
        "BEGIN; DELETE FROM TAP; DELETE FROM MILL; INSERT INTO MILL SELECT value, 'F' || value, "
        "10 - value, 1 FROM json_each('[1,2,3,4,5,6,7,8,9]'); COMMIT");
    if (!opening) return;
    m_other.reset();
    m_db.reset();
    m_db = NewObject();
  }
  void EveryCallSurvives(const std::string& fault, int stride, const Arm& arm,
                         const Failed& failed);

  const Bstr m_mill{u"MILL"}, m_tap{u"TAP"}, m_where{u"Diameter > 2"}, m_order{u"Name DESC"},
      m_material{u"Material"}, m_name{u"f3"};
  const Bstr m_text = WidenToBstr((m_folder / "taps.txt").string());
  const Bstr m_export = WidenToBstr((m_folder / "mills.txt").string());
  const Bstr m_path = WidenToBstr(m_file.string());
  Properties m_tool = std::move(Properties().Add("Name", "new").Add("Diameter", 77.0));
  VARIANT* const m_names = m_tool.Names();
  VARIANT* const m_values = m_tool.Values();
  LONG m_seen = 0;
  Variant m_results[2];
  std::optional<OtherProgram> m_other;
  const std::vector<Call> m_calls = {
      {"open", [this] { return m_db->SetMdbFile(m_path.get()); }},
      {"walk", [this] { return WalkMills(); }},
      {"add", [this] { return m_db->AddNewRecord(m_mill.get(), m_names, m_values, &m_id); },
       "SELECT count(*) = 1 FROM MILL WHERE Name = 'new' AND Diameter = 77"},
      {"set", [this] { return m_db->SetToolProps(m_mill.get(), 4, m_names, m_values); },
       "SELECT Name = 'new' AND Diameter = 77 FROM MILL WHERE ID = 4"},
      {"delete", [this] { return m_db->DeleteTool(m_mill.get(), 5); }, "SELECT 1", E_FAIL},
      {"defaults",
       [this] {
         See([this](auto... out) { return m_db->GetDefPropsValues(m_mill.get(), out...); });
         return m_seen < 0 ? E_FAIL : S_OK;  // a failing addition leaves them empty
       }},
      {"tool",
       [this] {
         return See([this](auto... out) { return m_db->GetToolProps(m_mill.get(), 6, out...); });
       }},
      {"permissible values",
       [this] {
         return See([this](VARIANT* out, VARIANT*) {
           return m_db->GetPermissibleValues(m_tap.get(), m_material.get(), 0, out);
         });
       }},
      {"name",
       [this] {
         VARIANT_BOOL unique = 5;
         const HRESULT status = m_db->IsToolNameUnique(m_mill.get(), m_name.get(), &unique);
         m_seen = unique;
         return status;
       }},
      {"export", [this] { return m_db->ExportToolRecordsToFile(m_mill.get(), m_export.get(), 0); }},
      {"import", [this] { return m_db->ImportToolRecordsFromFile(m_text.get(), 0); }}};
};

void FaultTest::EveryCallSurvives(const std::string& fault, int stride, const Arm& arm,
                                  const Failed& failed) {
  for (const Call& call : m_calls) {
    const bool opening = &call == &m_calls[0];
    const auto succeeds = [&] {
      Reset(opening);
      EXPECT_EQ(call.run(), call.status);
      return m_seen;
    };
    const LONG seen = succeeds();
    for (int n = 0, failures = 1; failures > 0 && !HasFailure(); n += 1 + n / stride) {
      SCOPED_TRACE(fault + " after " + std::to_string(n) + " in " + call.name);
      Reset(opening);
      HRESULT status = E_FAIL;
      arm(n);
      try {
        status = call.run();
      } catch (const CMemoryException&) {
        arm(-1);
        EXPECT_TRUE(opening) << "only opening lets it through";
      }
      arm(-1);
      failures = failed();
      EXPECT_THAT(status, testing::AnyOf(call.status, E_FAIL));
      if (!m_other) m_other.emplace(m_file);
      if (status == S_OK) {
        EXPECT_EQ(m_seen, seen);
        EXPECT_EQ(m_other->Ask(call.check), "1");
      }
      EXPECT_EQ(m_other->Ask("PRAGMA integrity_check"), "ok");
      EXPECT_EQ(succeeds(), seen);
    }
  }
}

TEST_P(FaultTest, FailingFiles) {
  using enum FileFault;
  for (const auto fault : {Read, Write, FullDisk, Sync, Lock, SharedMemory}) {
    EveryCallSurvives(
        "file fault " + std::to_string(static_cast<int>(fault)), std::numeric_limits<int>::max(),
        [=](int n) { FailFilesAfter(fault, n); }, [] { return FaultyFiles::failed; });
  }
}

// Allocations are many: later ones are tried here and there.
TEST_P(FaultTest, FailingAllocations) {
  const int stride = std::getenv("ORXDB_EVERY_FAULT") ? std::numeric_limits<int>::max() : 24;
  for (const int failures : {1, -1}) {
    EveryCallSurvives(
        failures < 0 ? "allocations" : "allocation", stride,
        [=](int n) { FailAllocationsAfter(n, failures); }, FailedAllocations);
  }
}

INSTANTIATE_TEST_SUITE_P(Journals, FaultTest, testing::Values("DELETE", "WAL"));

}  // namespace
}  // namespace orxdb::test
