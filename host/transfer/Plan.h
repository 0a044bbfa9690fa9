// What becomes of the records of a source.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>

namespace orxdb {

enum class Outcome {
  Added,
  Present,  ///< a tool has all of its values
  Differs,  ///< it is there with other values, and stays as it is
  Updated,
  Refused,
};

/// One record, and what becomes of it.
struct PlanLine {
  Outcome outcome = Outcome::Refused;
  std::string source;
  std::string place;
  std::string table;
  std::string reason;  ///< sentences

  /// "tools.csv, line 7: refused: ...".
  std::string Text() const;
};

/// Is told what becomes of each record, in the order of the source.
using PlanListener = std::function<void(const PlanLine&)>;

/// Counts that add up to the records read.
struct PlanCounts {
  std::array<long long, 5> by{};

  long long& operator[](Outcome outcome) noexcept { return by[static_cast<std::size_t>(outcome)]; }
  long long operator[](Outcome outcome) const noexcept {
    return by[static_cast<std::size_t>(outcome)];
  }
  long long Records() const noexcept;
  /// Whether all that the source says is then in the database.
  bool IsComplete() const noexcept {
    return (*this)[Outcome::Differs] == 0 && (*this)[Outcome::Refused] == 0;
  }
};

}  // namespace orxdb
