// Rows as tables for people.
#pragma once

#include <memory>

#include "host/output/RowWriter.h"

namespace orxdb {

/// Aligned columns. With a `width`, long texts are shortened, so that lines have no more than so
/// many places, if that can be without shortening numbers. Columns are as wide as the first
/// thousand rows need; what is longer later sticks out, or is shortened.
std::unique_ptr<RowWriter> MakeTableWriter(Sink sink, std::size_t width);

/// The cells of one row, one a line behind its name.
std::unique_ptr<RowWriter> MakePropertyWriter(Sink sink);

}  // namespace orxdb
