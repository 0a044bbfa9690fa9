// Rows of cells as text, for people or for programs.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/library/Cell.h"

namespace orxdb {

enum class Format {
  Table,  ///< aligned columns for people
  Json,   ///< an array of one object per row
  /// RFC 4180: CR LF; text with a separator, quote or line end, and empty text, in double quotes;
  /// characters that are none of a text are shown as �
  Csv,
  Tsv,  ///< one line per row; tab, line ends and backslash as \t \n \r \\.
};

/// How rows are written.
struct Layout {
  Layout(Format kind = Format::Table) : format(kind) {}  // NOLINT(google-explicit-constructor)

  Format format;
  std::size_t width = 0;  ///< places that a line of a table has; 0 for as many as it takes
};

/// Takes the text as it comes.
using Sink = std::function<void(std::string_view text)>;

/// Writes a header, then rows of as many cells, then what ends the output.
class RowWriter {
 public:
  explicit RowWriter(Sink sink) : m_sink(std::move(sink)) {}
  RowWriter(const RowWriter&) = delete;
  RowWriter& operator=(const RowWriter&) = delete;
  virtual ~RowWriter() = default;
  virtual void Header(const std::vector<std::string>& columns) = 0;
  virtual void Row(std::vector<Cell> cells) = 0;
  /// Must be the last call.
  virtual void End() {}

 protected:
  void Put(std::string_view text) { m_sink(text); }

 private:
  Sink m_sink;
};

std::unique_ptr<RowWriter> MakeRowWriter(Layout layout, Sink sink);

/// As Csv, with any separator and all characters as they are.
std::unique_ptr<RowWriter> MakeCsvWriter(Sink sink, char separator);

/// An object per row, each on a line of its own.
std::unique_ptr<RowWriter> MakeJsonLinesWriter(Sink sink);

/// For rows whose last cell is all that people want to see: one a line without a header for them.
std::unique_ptr<RowWriter> MakeBareWriter(Layout layout, Sink sink);

/// For one row: a property a line for people, one object as JSON, a header and a row otherwise.
std::unique_ptr<RowWriter> MakeRecordWriter(Layout layout, Sink sink);

}  // namespace orxdb
