// The dialect's translator. An input has lines: criteria, an ordering, and a SELECT to run instead
// of the stored query; lines that are missing are empty.
#include <sstream>

#include "tests/database/RecordsetFixture.h"

namespace orxdb {
namespace {

class DialectFuzz : public RecordsetFixture {
 public:
  DialectFuzz() {
    GTEST_FLAG_SET(break_on_failure, true);
    Execute(
        "INSERT INTO MILL (Name, D, Coating, Fav, Made) VALUES ('F1', 1.5, 1, -1, "
        "'2024-05-06'), ('f2', -2, NULL, 0, NULL), (NULL, NULL, 2, NULL, 'no date')");
    Database();
  }

  void Run(std::istringstream lines) {
    const std::string version = Ask("PRAGMA data_version");
    std::string criteria, order, select;
    std::getline(std::getline(std::getline(lines, criteria), order), select);
    if (select.empty()) select = "SELECT * FROM Q_MILL";
    if (!order.empty()) select += " ORDER BY " + order;
    for (const int type : {dbOpenDynaset, dbOpenSnapshot}) {
      try {
        CDaoRecordset records(&Database());
        records.Open(type, select);
        for (bool found = records.FindFirst(criteria); found; found = records.FindNext(criteria)) {
          for (int i = 0; i < records.GetFieldCount(); ++i) records.GetFieldValue(i);
        }
        records.FindLast(criteria);
      } catch (const CDaoException&) {
        // Most texts are refused.
      }
    }
    EXPECT_EQ(Ask("PRAGMA data_version"), version) << "a text wrote to the file";
  }

  void TestBody() override {}
};

}  // namespace
}  // namespace orxdb

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static orxdb::DialectFuzz database;
  database.Run(std::istringstream(std::string(reinterpret_cast<const char*>(data), size)));
  return 0;
}
