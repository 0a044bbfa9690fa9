// What the calls of the host give back, for a front end to show.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/library/Cell.h"

namespace orxdb {

/// Rows, and what is to be said beside them.
struct Answer {
  explicit Answer(std::vector<std::string> names) : columns(std::move(names)) {}
  /// One row.
  Answer(std::vector<std::string> names, std::vector<Cell> row) : columns(std::move(names)) {
    rows.push_back(std::move(row));
  }

  std::vector<std::string> columns;
  std::vector<std::vector<Cell>> rows;
  std::vector<std::string> remarks;  ///< sentences
  /// What could not be done although the rest was, in sentences on lines of their own; empty when
  /// all is well.
  std::string complaint;

  void Complain(const std::string& sentence) {
    complaint += (complaint.empty() ? "" : "\n") + sentence;
  }
};

/// Is told, now and then, what a long call is doing and how much of it is done; `total` is 0 when
/// it is not known.
using Progress = std::function<void(std::string_view what, long long done, long long total)>;

}  // namespace orxdb
